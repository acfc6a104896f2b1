#include "values/derived.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "geometry/crossings.h"
#include "model/outlines.h"
#include "model/principal_inertias.h"
#include "model/push_element.h"
#include "region/region.h"
#include "values/methods.h"
#include "values/net_plastic.h"
#include "values/plastic_axis.h"
#include "values/rounding.h"
#include "values/values.h"

namespace halvorn::engine {

namespace {

// A number or why there is none.
struct Result {
    double number = 0.0;
    std::string whyMissing;

    static Result Missing(const std::string& why) { return {0.0, why}; }
};

// Reads the values computed so far and appends new ones under their keys.
class Deriver {
public:
    explicit Deriver(Report& report) : report_(report) {}

    const SectionModel& Section() const { return report_.section; }

    Result Get(std::string_view key) const {
        for (const std::vector<Value>* list : {&report_.values, &report_.derived}) {
            for (const Value& value : *list) {
                if (value.key == key) return {value.number, value.whyMissing};
            }
        }
        return Result::Missing("there is no " + std::string(key));
    }

    void Add(std::string_view key, const std::string& method, const Result& result) {
        const auto* const description =
            std::find_if(kDerivedValues.begin(), kDerivedValues.end(),
                         [&](const DerivedDescription& entry) { return entry.key == key; });
        Value value;
        value.key = description->key;
        value.name = description->name;
        value.symbol = description->symbol;
        value.power = description->power;
        value.unit = value.power == 0 ? description->unit
                                      : UnitLabel(report_.section.unit, description->power);
        value.number = result.number + 0.0;  // no value is -0
        value.method = method;
        value.whyMissing = result.whyMissing;
        if (value.IsComputed() && !std::isfinite(value.number)) {
            value.whyMissing = "the result is not a finite number";
        }
        report_.derived.push_back(value);
    }

private:
    Report& report_;
};

bool IsHole(const Element& element) {
    return !element.isSolid;
}

bool HasHole(const SectionModel& section) {
    return std::any_of(section.elements.begin(), section.elements.end(), IsHole);
}

// Why there is no smaller principal inertia; of given values there is one, 0 if need be.
Result SecondInertia(const SectionModel& section, const Moments& moments, double second,
                     const std::string& whyNoDigits) {
    const bool isLost =
        std::fabs(second) <= SecondPrincipalRounding(moments, RoundingOf(section.elements));
    if (!isLost) return {second, ""};
    const bool hasGiven =
        std::any_of(section.elements.begin(), section.elements.end(),
                    [](const Element& element) { return element.given.has_value(); });
    return {0.0, hasGiven ? "" : whyNoDigits};
}

void AddPrincipalAxes(Deriver& deriver, const std::string& whyNoDigits) {
    const Result x = deriver.Get("inertia_x"), y = deriver.Get("inertia_y"),
                 xy = deriver.Get("inertia_xy");
    const std::string why = !x.whyMissing.empty()   ? x.whyMissing
                            : !y.whyMissing.empty() ? y.whyMissing
                                                    : xy.whyMissing;
    const SumRounding sums = RoundingOf(deriver.Section().elements);
    const double rounding = std::max(1e-12 * (std::fabs(x.number) + std::fabs(y.number)),
                                     sums.inertiaX + sums.inertiaY);
    const bool areEqual = std::fabs(x.number - y.number) <= rounding;
    const double product = std::fabs(xy.number) <= rounding ? 0.0 : xy.number;
    const PrincipalInertias exact = PrincipalInertiasOf(x.number, y.number, xy.number);
    const PrincipalInertias axes =
        PrincipalInertiasOf(x.number, areEqual ? x.number : y.number, product);
    const char* const method = "Mohr's circle";
    deriver.Add("principal_inertia_1", method, {exact.first, why});
    deriver.Add("principal_inertia_2", method,
                why.empty() ? SecondInertia(deriver.Section(), {x.number, y.number, xy.number},
                                            exact.second, whyNoDigits)
                            : Result::Missing(why));
    deriver.Add("principal_angle", method, {axes.angle * 180.0 / std::numbers::pi, why});
}

void AddRadiiOfGyration(Deriver& deriver) {
    const Result area = deriver.Get("area");
    const auto add = [&](const std::string& axis, const std::string& inertiaKey,
                         const char* method) {
        const Result inertia = deriver.Get(inertiaKey);
        Result radius = {std::sqrt(inertia.number / area.number),
                         area.whyMissing.empty() ? inertia.whyMissing : area.whyMissing};
        if (radius.whyMissing.empty() && !(area.number > 0.0 && inertia.number >= 0.0)) {
            radius.whyMissing = "the area or the second moment is not positive";
        }
        deriver.Add("radius_of_gyration_" + axis, method, radius);
    };
    add("x", "inertia_x", "sqrt(Ix / A)");
    add("y", "inertia_y", "sqrt(Iy / A)");
    add("1", "principal_inertia_1", "sqrt(I1 / A)");
    add("2", "principal_inertia_2", "sqrt(I2 / A)");
}

constexpr const char* kNothingToHalve =
    "the outlines enclose no area to halve, or their coordinates are too large";

// A region, or why there is none of which net values could be told.
struct NetRegion {
    Region region;
    std::string whyMissing;
};

std::string WhyOdd(const OddPlace& odd, const std::vector<Element>& elements) {
    std::string names;
    for (const std::size_t i : odd.outlines) {
        if (elements[i].isSolid != (odd.sum > 1)) continue;
        names += (names.empty() ? "" : " and ") + elements[i].label;
    }
    const std::string place = " at " + PlaceText(odd.place);
    if (odd.sum > 1) return "the material of " + names + " overlaps" + place;
    return (names.empty() ? "an outline that crosses itself" : "the hole " + names) +
           " takes away what is not there" + place;
}

NetRegion NetRegionOf(const std::vector<Element>& elements) {
    NetRegion net;
    try {
        net.region = RegionOf(OutlinesOf(elements));
    } catch (const ArrangementError& error) {
        net.whyMissing = error.what();
        return net;
    }
    if (net.region.IsEmpty()) net.whyMissing = kNothingToHalve;
    if (!net.region.oddPlaces.empty()) {
        net.whyMissing = WhyOdd(net.region.oddPlaces.front(), elements);
    }
    return net;
}

void AddNetPlasticValues(Deriver& deriver) {
    NetRegion net;
    net.whyMissing = deriver.Get("plastic_axis_y").whyMissing;
    if (net.whyMissing.empty()) net = NetRegionOf(deriver.Section().elements);
    const auto missing = Result::Missing(net.whyMissing);
    const bool isKnown = net.whyMissing.empty();
    const PlasticModuli moduli = isKnown ? NetPlasticModuli(net.region) : PlasticModuli{};
    const char* const method = "net: the material as it is, about halving axes";
    deriver.Add("plastic_modulus_x_net", method, isKnown ? Result{moduli.x, ""} : missing);
    deriver.Add("plastic_modulus_y_net", method, isKnown ? Result{moduli.y, ""} : missing);
    const auto addAxis = [&](const char* key, AxisDirection direction) {
        Result result = missing;
        if (isKnown) {
            const auto line = PlasticAxis(net.region, direction);
            const double value = line.value_or(0.0);
            const Point at = net.region.frame.FromFrame({value, value});
            result = {direction == AxisDirection::Horizontal ? at.y : at.x,
                      line ? "" : kNothingToHalve};
        }
        deriver.Add(key, "halves the net area", result);
    };
    addAxis("plastic_axis_y_net", AxisDirection::Horizontal);
    addAxis("plastic_axis_x_net", AxisDirection::Vertical);
}

void AddPlasticValues(Deriver& deriver) {
    const SectionModel& section = deriver.Section();
    const bool hasHole = HasHole(section);
    const char* const method = hasHole ? "halves the gross area: holes added" : "halves the area";
    std::vector<Points> rings;
    for (const Element& element : section.elements) rings.push_back(element.ring);
    const auto addAxis = [&](const char* key, AxisDirection direction) {
        const auto line = HalvingLine(rings, direction);
        deriver.Add(key, method, line ? Result{*line, ""} : Result::Missing(kNothingToHalve));
    };
    addAxis("plastic_axis_y", AxisDirection::Horizontal);
    addAxis("plastic_axis_x", AxisDirection::Vertical);
    if (hasHole) AddNetPlasticValues(deriver);
}

void AddShapeFactors(Deriver& deriver) {
    const std::string net = HasHole(deriver.Section()) ? "_net" : "";
    const Box box = BoxOf(deriver.Section().elements);
    const auto add = [&](const std::string& axis, const char* centroidKey, double low,
                         double high) {
        const Result plastic = deriver.Get("plastic_modulus_" + axis + net);
        const Result inertia = deriver.Get("inertia_" + axis);
        const Result centroid = deriver.Get(centroidKey);
        const double fibre = std::max(high - centroid.number, centroid.number - low);
        Result factor = {plastic.number * fibre / inertia.number, plastic.whyMissing};
        for (const Result* part : {&inertia, &centroid}) {
            if (factor.whyMissing.empty()) factor.whyMissing = part->whyMissing;
        }
        if (factor.whyMissing.empty() && !(inertia.number > 0.0)) {
            factor.whyMissing = "the second moment is not positive";
        }
        deriver.Add("shape_factor_" + axis,
                    net.empty() ? "Wpl / smaller Wel" : "net Wpl / smaller Wel", factor);
    };
    add("x", "centroid_y", box.bottom, box.top);
    add("y", "centroid_x", box.left, box.right);
}

// Whether the thin-wall formula of the profile around a hole knows the hole.
bool HasThinWallAround(const Element& hole, const std::vector<Element>& elements) {
    if (!hole.insideOf) return false;
    const Element& profile = elements.at(*hole.insideOf);
    return profile.isSolid && profile.thinWall;
}

void AddThinWallTorsion(Deriver& deriver) {
    const std::vector<Element>& elements = deriver.Section().elements;
    double sum = 0.0;
    std::vector<std::string> methods;
    std::string why;
    for (const Element& element : elements) {
        if (!element.isSolid) {
            if (!HasThinWallAround(element, elements)) {
                why = "no thin-wall formula takes the hole " + element.label + " into account";
            }
            continue;
        }
        if (!element.thinWall) return;
        sum += element.thinWall->constant;
        methods.push_back(element.thinWall->method);
    }
    if (!methods.empty())
        deriver.Add("torsion_constant_thin_wall", JoinMethods(methods), {sum, why});
}

void AddMass(Deriver& deriver) {
    const SectionModel& section = deriver.Section();
    if (!section.density) return;
    const Result area = deriver.Get("area");
    const double metres = MetresPer(section.unit);
    deriver.Add("mass_per_metre", "density x A",
                {*section.density * area.number * metres * metres, area.whyMissing});
}

}  // namespace

void AddDerived(Report* report, const std::string& whyNoDigits) {
    Deriver deriver(*report);
    AddPrincipalAxes(deriver, whyNoDigits);
    AddRadiiOfGyration(deriver);
    AddPlasticValues(deriver);
    AddShapeFactors(deriver);
    AddThinWallTorsion(deriver);
    AddMass(deriver);
}

}  // namespace halvorn::engine
