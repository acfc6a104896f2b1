#include "values/composite_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "base/numbers.h"
#include "model/composite.h"
#include "values/digits.h"
#include "values/method_words.h"
#include "values/net_plastic.h"
#include "values/values.h"

namespace halvorn::engine {

namespace {

constexpr std::array<std::string_view, 7> kTransformedValues = {
    "area",       "centroid_",           "fibre_distance_", "inertia_",
    "principal_", "radius_of_gyration_", "static_moment_"};
constexpr std::array<std::string_view, 3> kOfTheOutline = {"width", "height", "perimeter"};

constexpr const char* kNoPrincipalModuli =
    "the section is composite; the elastic moduli of its parts are given about x and y, not about "
    "its principal axes";

constexpr const char* kNoMassOfComposite =
    "the section is composite; one density does not hold for all of its parts";
constexpr const char* kTakenAway = "holes and stiffer parts take all of it";
constexpr const char* kOnTheAxis =
    "the fibre lies on the axis of bending, where there is no stress";

template <typename Starts>
bool StartsWithOneOf(const Starts& starts, std::string_view key) {
    return std::any_of(starts.begin(), starts.end(),
                       [&](std::string_view start) { return key.starts_with(start); });
}

// All material of at least a modular ratio, and what is added to the weight there.
struct Level {
    Region region;
    double weight;
};

// From the greatest ratio down; the last one is the whole section.
std::vector<Level> LevelsOf(const std::vector<Element>& elements, const Region& whole) {
    const std::vector<double> ratios = ModularRatiosOf(elements);
    std::vector<Level> levels;
    for (std::size_t i = 0; i + 1 < ratios.size(); ++i) {
        Region level = RegionOf(OutlinesFrom(elements, ratios[i]));
        if (!level.IsEmpty()) levels.push_back({std::move(level), ratios[i] - ratios[i + 1]});
    }
    levels.push_back({whole, ratios.back()});
    return levels;
}

// One of the four sides of a section, by the fibre distance there.
struct Side {
    const char* key;
    double Moments::*distance;
    double Shift::*shift;
    int sign;  // of the shift's part in the distance
    bool isVertical;

    // From the axis through the reference point to the fibre of a region that may be a part of the
    // section, whose moments are `all`.
    double DistanceIn(const Moments& own, const Moments& all) const {
        const Point arm = all.centroid - own.centroid;
        return own.*distance + sign * (isVertical ? arm.y : arm.x);
    }
};

constexpr std::array<Side, 4> kSides = {{
    {"elastic_modulus_bottom", &Moments::toBottom, &Shift::dy, 1, true},
    {"elastic_modulus_top", &Moments::toTop, &Shift::dy, -1, true},
    {"elastic_modulus_left", &Moments::toLeft, &Shift::dx, 1, false},
    {"elastic_modulus_right", &Moments::toRight, &Shift::dx, -1, false},
}};

class CompositeValues {
public:
    explicit CompositeValues(Report& report) : report_(report), all_(*report.transformed) {}

    void Add() {
        SetStaticMoments();
        for (const MaterialPart& part : MaterialPartsOf(report_.section.elements)) AddPart(part);
        for (std::size_t i = 0; i < kSides.size(); ++i) SetModulus(kSides[i], stiffest_[i]);
    }

private:
    // Both sides of an axis through the transformed centre of gravity have the same.
    void SetStaticMoments() {
        PlasticModuli sum;
        for (const Level& level : LevelsOf(report_.section.elements, report_.region)) {
            const PlasticModuli own = StaticMoments(level.region, all_.centroid);
            sum.x += level.weight * own.x;
            sum.y += level.weight * own.y;
        }
        for (Value& value : report_.values) {
            if (value.key == "static_moment_x") value.number = sum.x;
            if (value.key == "static_moment_y") value.number = sum.y;
        }
    }

    double Size(const Side& side) const {
        return side.isVertical ? all_.toBottom + all_.toTop : all_.toLeft + all_.toRight;
    }

    void AddPart(const MaterialPart& material) {
        CompositePart part{material.name, material.modularRatio, {}};
        std::string why;
        std::optional<Moments> own;
        Region& region = report_.partRegions.emplace_back();
        try {
            region = RegionOf(OutlinesOf(report_.section.elements, material));
            if (!region.IsEmpty()) own = MomentsOf(region);
            why = own ? "" : kTakenAway;
        } catch (const ArrangementError& error) {
            why = error.what();
        }
        for (std::size_t i = 0; i < kSides.size(); ++i) {
            const Side& side = kSides[i];
            Value& value = part.moduli.emplace_back(Described(side));
            value.whyMissing = why;
            if (!own) continue;
            const double distance = side.DistanceIn(*own, all_);
            SetModulus(side, distance, part.modularRatio, &value);
            // A fibre this near to the outermost one is set onto it where outlines meet.
            const double within = kContactDistance * std::max(Size(kSides[0]), Size(kSides[2]));
            if (all_.*side.distance - distance <= within) {
                stiffest_[i] = std::max(stiffest_[i], part.modularRatio);
            }
        }
        report_.parts.push_back(std::move(part));
    }

    Value Described(const Side& side) const {
        const auto* const description = std::find_if(
            kValues.begin(), kValues.end(),
            [&](const ValueDescription& entry) { return std::string_view(entry.key) == side.key; });
        return DescribedValue(*description, report_.section.unit);
    }

    // @param distance  of the fibre from the centre of gravity [L]
    void SetModulus(const Side& side, double distance, double ratio, Value* value) const {
        constexpr double kOnAxis = 1e-12;  // of the section's extent
        const double inertia = side.isVertical ? all_.inertiaX : all_.inertiaY;
        const double error = side.isVertical ? all_.inertiaXError : all_.inertiaYError;
        const double first = side.isVertical ? all_.firstYError : all_.firstXError;
        const double arm = distance + side.sign * report_.shift.*side.shift;
        value->number = inertia / (ratio * arm) + 0.0;  // no value is -0
        value->method = std::string(side.isVertical ? "Ix" : "Iy") + " / (n " +
                        (side.isVertical ? "y" : "x") + "), n = " + ShortNumber(ratio);
        if (std::fabs(arm) <= kOnAxis * Size(side)) {
            value->whyMissing = kOnTheAxis;
        } else if (!std::isfinite(value->number)) {
            value->whyMissing = kBeyondDoubles;
        } else {
            const double far = std::max(std::fabs(all_.centroid.x), std::fabs(all_.centroid.y));
            const double relative = error / inertia + first / all_.area / std::fabs(arm);
            KeepDigits(relative * std::fabs(value->number),
                       WhyNoDigits(LostByOf(std::max(Size(kSides[0]), Size(kSides[2])), far)),
                       value);
        }
    }

    // The modulus of the section, unless it is missing already.
    void SetModulus(const Side& side, double ratio) {
        for (Value& value : report_.values) {
            if (value.key != side.key || !value.IsComputed()) continue;
            SetModulus(side, all_.*side.distance, ratio, &value);
        }
    }

    Report& report_;
    Moments all_;
    std::array<double, 4> stiffest_{};  // modular ratio at the outermost fibre of each side
};

// Keeps what is transformed, and takes away what only one material has.
void DescribeValues(Report& report) {
    for (Value& value : report.values) {
        const std::string_view key = value.key;
        const bool isModulus =
            std::any_of(kSides.begin(), kSides.end(), [&](const Side& s) { return key == s.key; });
        if (isModulus || StartsWithOneOf(kOfTheOutline, key)) continue;
        if (StartsWithOneOf(kTransformedValues, key)) {
            value.method = kTransformed;
        } else if (key.starts_with("elastic_modulus_")) {
            value.whyMissing = kNoPrincipalModuli;
        } else if (key == "mass_per_metre") {
            value.whyMissing = kNoMassOfComposite;
        } else if (value.whyMissing != kNoWarpingOfComposite) {
            value.whyMissing = kNoPlasticOfComposite;
        }
    }
}

}  // namespace

Moments TransformedMoments(const std::vector<Element>& elements, const Region& region) {
    std::vector<WeightedMoments> levels;
    for (const Level& level : LevelsOf(elements, region)) {
        levels.push_back({MomentsOf(level.region), level.weight});
    }
    return SumOf(levels);
}

void AddComposite(Report* report) {
    if (!report->transformed) return;
    DescribeValues(*report);
    CompositeValues(*report).Add();
}

}  // namespace halvorn::engine
