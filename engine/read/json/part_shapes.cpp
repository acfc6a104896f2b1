#include "read/json/part_shapes.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>

#include "model/push_element.h"
#include "shapes/thin_wall_torsion.h"

namespace halvorn::engine {

namespace {

using shapes::ArcDivision;

constexpr const char* kOpenMethod = "sum of b t^3 / 3";
constexpr const char* kClosedMethod = "4 Am^2 t / s";

// A rectangle at least ten times as long as thick is a wall: b t^3 / 3 is then at most 7 % too
// large.
constexpr double kThinPlate = 10.0;

struct DimensionKey {
    const char* key;
    Sign sign;
    bool isRequired;
};

// The dimensions of a shape by their keys; those that a file leaves out are 0.
class Dimensions {
public:
    Dimensions(const Node& part, const std::vector<DimensionKey>& keys) {
        for (const auto& [key, sign, isRequired] : keys) {
            const bool isGiven = isRequired || part.Has(key);
            if (isGiven) values_[key] = part.At(key).Number(sign);
        }
    }

    bool Has(std::string_view key) const { return values_.contains(key); }
    double operator[](std::string_view key) const {
        const auto found = values_.find(key);
        return found == values_.end() ? 0.0 : found->second;
    }
    // The key of the radius of this value; empty when there is none.
    std::string KeyOfRadius(double value) const {
        for (const auto& [key, dimension] : values_) {
            if (dimension == value && key.ends_with("radius")) return std::string(key);
        }
        return "";
    }

private:
    std::map<std::string_view, double> values_;
};

struct DrawnShape {
    shapes::Outline outline;
    std::optional<ThinWallTorsion> thinWall;
};

struct ShapeKind {
    std::string_view name;
    std::vector<DimensionKey> keys;
    DrawnShape (*draw)(const Dimensions&, const ArcDivision&);
};

shapes::FlangedProfile Flanged(const Dimensions& d) {
    return {d["height"],      d["width"],
            d["web"],         d["flange"],
            d["root_radius"], {d["flange_slope"], d["flange_at_from_toe"], d["toe_radius"]}};
}

template <auto Draw, auto Torsion>
DrawnShape DrawFlanged(const Dimensions& d, const ArcDivision& division) {
    const shapes::FlangedProfile profile = Flanged(d);
    return {Draw(profile, division), ThinWallTorsion{Torsion(profile), kOpenMethod}};
}

DrawnShape DrawMonosymmetric(const Dimensions& d, const ArcDivision& division) {
    const shapes::MonosymmetricProfile profile = {
        d["height"],       d["web"],           d["top_width"],  d["top_flange"],
        d["bottom_width"], d["bottom_flange"], d["root_radius"]};
    return {DrawMonosymmetricISection(profile, division),
            ThinWallTorsion{MonosymmetricISectionTorsion(profile), kOpenMethod}};
}

DrawnShape DrawAngleShape(const Dimensions& d, const ArcDivision& division) {
    const shapes::AngleProfile profile = {d["height"], d["width"], d["thickness"], d["root_radius"],
                                          d["toe_radius"]};
    return {DrawAngle(profile, division), ThinWallTorsion{AngleTorsion(profile), kOpenMethod}};
}

DrawnShape DrawRhs(const Dimensions& d, const ArcDivision& division) {
    const double concentric = std::max(0.0, d["outer_radius"] - d["thickness"]);
    const shapes::RectangularHollowProfile profile = {
        d["height"], d["width"], d["thickness"], d["outer_radius"],
        d.Has("inner_radius") ? d["inner_radius"] : concentric};
    return {DrawRectangularHollow(profile, division),
            ThinWallTorsion{RectangularHollowTorsion(profile), kClosedMethod}};
}

DrawnShape DrawChs(const Dimensions& d, const ArcDivision& division) {
    const shapes::CircularHollowProfile profile = {d["diameter"], d["thickness"]};
    return {DrawCircularHollow(profile, division),
            ThinWallTorsion{CircularHollowTorsion(profile), kClosedMethod}};
}

DrawnShape DrawPlateShape(const Dimensions& d, const ArcDivision& division) {
    const auto [thickness, length] = std::minmax({d["width"], d["height"]});
    DrawnShape drawn = {DrawPlate({d["width"], d["height"]}, division), {}};
    if (length >= kThinPlate * thickness) {
        drawn.thinWall = ThinWallTorsion{shapes::OpenTorsion({{length, thickness}}), kOpenMethod};
    }
    return drawn;
}

DrawnShape DrawRoundShape(const Dimensions& d, const ArcDivision& division) {
    return {shapes::DrawRound(d["diameter"], division), {}};
}

const std::vector<ShapeKind>& ShapeKinds() {
    constexpr Sign positive = Sign::Positive;
    constexpr Sign notNegative = Sign::NotNegative;
    static const std::vector<DimensionKey> kFlangedKeys = {
        {"height", positive, true},
        {"width", positive, true},
        {"web", positive, true},
        {"flange", positive, true},
        {"root_radius", notNegative, false},
        {"flange_slope", notNegative, false},
        {"toe_radius", notNegative, false},
        {"flange_at_from_toe", notNegative, false}};
    static const std::vector<ShapeKind> kKinds = {
        {"i", kFlangedKeys, DrawFlanged<shapes::DrawISection, shapes::ISectionTorsion>},
        {"i_mono",
         {{"height", positive, true},
          {"web", positive, true},
          {"top_width", positive, true},
          {"top_flange", positive, true},
          {"bottom_width", positive, true},
          {"bottom_flange", positive, true},
          {"root_radius", notNegative, false}},
         DrawMonosymmetric},
        {"channel", kFlangedKeys, DrawFlanged<shapes::DrawChannel, shapes::ChannelTorsion>},
        {"tee", kFlangedKeys, DrawFlanged<shapes::DrawTee, shapes::TeeTorsion>},
        {"angle",
         {{"height", positive, true},
          {"width", positive, true},
          {"thickness", positive, true},
          {"root_radius", notNegative, false},
          {"toe_radius", notNegative, false}},
         DrawAngleShape},
        {"rhs",
         {{"height", positive, true},
          {"width", positive, true},
          {"thickness", positive, true},
          {"outer_radius", notNegative, true},
          {"inner_radius", notNegative, false}},
         DrawRhs},
        {"chs", {{"diameter", positive, true}, {"thickness", positive, true}}, DrawChs},
        {"plate", {{"width", positive, true}, {"height", positive, true}}, DrawPlateShape},
        {"round", {{"diameter", positive, true}}, DrawRoundShape},
    };
    return kKinds;
}

const ShapeKind& KindOf(const Node& part) {
    std::vector<std::pair<std::string_view, const ShapeKind*>> choices;
    for (const ShapeKind& kind : ShapeKinds()) choices.emplace_back(kind.name, &kind);
    return *part.At("shape").Choice(choices);
}

// Fails where the user can mend it: at the key, or at the part when the key is not there.
[[noreturn]] void FailAt(const Node& part, const std::string& key, const std::exception& error,
                         const std::string& remedy) {
    if (!key.empty() && part.Has(key.c_str())) part.At(key.c_str()).Fail(error.what(), remedy);
    part.Fail(error.what(), remedy);
}

DrawnShape Draw(const Node& part, const ShapeKind& kind, const ArcDivision& division) {
    const Dimensions dimensions(part, kind.keys);
    try {
        return kind.draw(dimensions, division);
    } catch (const shapes::RadiusError& error) {
        const std::string key = dimensions.KeyOfRadius(error.Radius());
        FailAt(part, key, error, key.empty() ? error.Remedy() : "make \"" + key + "\" smaller");
    } catch (const shapes::DimensionError& error) {
        FailAt(part, error.Field(), error, error.Remedy());
    } catch (const std::invalid_argument& error) {
        FailAt(part, "", error, "correct the dimensions");
    }
}

// A slope says nothing without the place where the flange has its nominal thickness.
void CheckTaper(const Node& part) {
    for (const auto& [key, other] : {std::pair{"flange_slope", "flange_at_from_toe"},
                                     std::pair{"flange_at_from_toe", "flange_slope"}}) {
        if (part.Has(key) && !part.Has(other)) {
            part.At(key).Fail("stands without \"" + std::string(other) + "\"",
                              "give both of a tapered flange, none of a parallel one");
        }
    }
}

}  // namespace

std::vector<Element> ReadShapePart(const Node& part, std::vector<std::string_view> commonKeys,
                                   const ArcDivision& division) {
    const ShapeKind& kind = KindOf(part);
    commonKeys.push_back("shape");
    for (const DimensionKey& dimension : kind.keys) commonKeys.push_back(dimension.key);
    part.RequireKeys(commonKeys);
    CheckTaper(part);

    const DrawnShape drawn = Draw(part, kind, division);
    std::vector<Element> elements(drawn.outline.hole.empty() ? 1 : 2);
    elements[0].ring = PointsOf(drawn.outline.solid);
    elements[0].thinWall = drawn.thinWall;
    if (elements.size() == 2) {
        elements[1].isSolid = false;
        elements[1].insideOf = 0;
        elements[1].ring = PointsOf(drawn.outline.hole);
    }
    return elements;
}

}  // namespace halvorn::engine
