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

DimensionKey Optional(const char* key, double example) {
    return {key, example, true, false};
}

// Of an I, a channel or a tee. A taper is nominal half way along the flange.
std::vector<DimensionKey> FlangedKeys(double height, double width, double web, double flange,
                                      double rootRadius, double fromToe) {
    constexpr double kSlope = 0.08;
    return {{"height", height},
            {"width", width},
            {"web", web},
            {"flange", flange},
            Optional("root_radius", rootRadius),
            Optional("flange_slope", kSlope),
            Optional("toe_radius", 0.5 * flange),
            Optional("flange_at_from_toe", fromToe)};
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
    static const std::vector<ShapeKind> kKinds = {
        {"i", "I section", FlangedKeys(300, 150, 7.1, 10.7, 15, 37.5), DrawFlanged<DrawISection>},
        {"i_mono",
         "I section with different flanges",
         {{"height", 300},
          {"web", 8},
          {"top_width", 120},
          {"top_flange", 10},
          {"bottom_width", 200},
          {"bottom_flange", 16},
          Optional("root_radius", 12)},
         DrawMonosymmetric},
        {"channel", "Channel", FlangedKeys(200, 80, 6, 11, 13, 37), DrawFlanged<DrawChannel>},
        {"tee", "T section", FlangedKeys(150, 150, 7.1, 10.7, 15, 37.5), DrawFlanged<DrawTee>},
        {"angle",
         "Angle",
         {{"height", 100},
          {"width", 75},
          {"thickness", 9},
          Optional("root_radius", 10),
          Optional("toe_radius", 5)},
         DrawAngleShape},
        {"rhs",
         "Rectangular hollow section",
         {{"height", 120},
          {"width", 80},
          {"thickness", 5},
          {"outer_radius", 7.5, true},
          Optional("inner_radius", 5)},
         DrawRhs},
        {"chs", "Circular hollow section", {{"diameter", 114.3}, {"thickness", 5}}, DrawChs},
        {"plate", "Plate", {{"width", 200}, {"height", 20}}, DrawPlateShape},
        {"round", "Round bar", {{"diameter", 40}}, DrawRoundShape},
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
