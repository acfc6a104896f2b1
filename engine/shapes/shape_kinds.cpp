#include "shapes/shape_kinds.h"

#include <algorithm>
#include <stdexcept>

#include "shapes/profiles.h"

namespace halvorn::engine::shapes {

namespace {

template <auto Draw>
Outline DrawFlanged(const Dimensions& d, const ArcDivision& division) {
    const FlangedProfile profile = {
        d["height"],      d["width"],
        d["web"],         d["flange"],
        d["root_radius"], {d["flange_slope"], d["flange_at_from_toe"], d["toe_radius"]}};
    return Draw(profile, division);
}

Outline DrawMonosymmetric(const Dimensions& d, const ArcDivision& division) {
    const MonosymmetricProfile profile = {d["height"],     d["web"],          d["top_width"],
                                          d["top_flange"], d["bottom_width"], d["bottom_flange"],
                                          d["root_radius"]};
    return DrawMonosymmetricISection(profile, division);
}

Outline DrawAngleShape(const Dimensions& d, const ArcDivision& division) {
    const AngleProfile profile = {d["height"], d["width"], d["thickness"], d["root_radius"],
                                  d["toe_radius"]};
    return DrawAngle(profile, division);
}

Outline DrawRhs(const Dimensions& d, const ArcDivision& division) {
    const double concentric = std::max(0.0, d["outer_radius"] - d["thickness"]);
    const RectangularHollowProfile profile = {
        d["height"], d["width"], d["thickness"], d["outer_radius"],
        d.Has("inner_radius") ? d["inner_radius"] : concentric};
    return DrawRectangularHollow(profile, division);
}

Outline DrawChs(const Dimensions& d, const ArcDivision& division) {
    return DrawCircularHollow({d["diameter"], d["thickness"]}, division);
}

Outline DrawPlateShape(const Dimensions& d, const ArcDivision& division) {
    return DrawPlate({d["width"], d["height"]}, division);
}

Outline DrawRoundShape(const Dimensions& d, const ArcDivision& division) {
    return DrawRound(d["diameter"], division);
}

DimensionKey Optional(const char* key) {
    return {key, true, false};
}

}  // namespace

double Dimensions::operator[](std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? 0.0 : found->second;
}

std::string Dimensions::KeyOfRadius(double value) const {
    for (const auto& [key, dimension] : values_) {
        if (dimension == value && key.ends_with("radius")) return std::string(key);
    }
    return "";
}

const std::vector<ShapeKind>& ShapeKinds() {
    static const std::vector<DimensionKey> kFlangedKeys = {{"height"},
                                                           {"width"},
                                                           {"web"},
                                                           {"flange"},
                                                           Optional("root_radius"),
                                                           Optional("flange_slope"),
                                                           Optional("toe_radius"),
                                                           Optional("flange_at_from_toe")};
    static const std::vector<ShapeKind> kKinds = {
        {"i", kFlangedKeys, DrawFlanged<DrawISection>},
        {"i_mono",
         {{"height"},
          {"web"},
          {"top_width"},
          {"top_flange"},
          {"bottom_width"},
          {"bottom_flange"},
          Optional("root_radius")},
         DrawMonosymmetric},
        {"channel", kFlangedKeys, DrawFlanged<DrawChannel>},
        {"tee", kFlangedKeys, DrawFlanged<DrawTee>},
        {"angle",
         {{"height"}, {"width"}, {"thickness"}, Optional("root_radius"), Optional("toe_radius")},
         DrawAngleShape},
        {"rhs",
         {{"height"}, {"width"}, {"thickness"}, {"outer_radius", true}, Optional("inner_radius")},
         DrawRhs},
        {"chs", {{"diameter"}, {"thickness"}}, DrawChs},
        {"plate", {{"width"}, {"height"}}, DrawPlateShape},
        {"round", {{"diameter"}}, DrawRoundShape},
    };
    return kKinds;
}

const ShapeKind& ShapeKindOf(std::string_view name) {
    for (const ShapeKind& kind : ShapeKinds()) {
        if (kind.name == name) return kind;
    }
    throw std::out_of_range("unknown shape " + std::string(name));
}

}  // namespace halvorn::engine::shapes
