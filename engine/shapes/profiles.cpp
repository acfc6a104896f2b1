#include "shapes/profiles.h"

#include <algorithm>
#include <numbers>
#include <stdexcept>
#include <string>

#include "base/dimension_checks.h"

namespace halvorn::engine::shapes {
namespace {

// Thickness of a flange at its toe and where its inner face would meet the web.
struct FlangeThickness {
    double toe;
    double root;
};

// @param overhang from the face of the web to the toe [L]
FlangeThickness CheckFlange(const char* shape, const FlangedProfile& profile, double overhang) {
    const FlangeTaper& taper = profile.taper;
    RequireNotNegative(shape, {{"root radius", profile.rootRadius, "root_radius"},
                               {"toe radius", taper.toeRadius, "toe_radius"},
                               {"slope of the flanges", taper.slope, "flange_slope"},
                               {"distance from the toe at which the flange thickness is measured",
                                taper.flangeAtFromToe, "flange_at_from_toe"}});
    const double toe = profile.flange - taper.slope * taper.flangeAtFromToe;
    RequirePositive(shape, {{"flange thickness at the toe", toe, "flange"}});
    return {toe, toe + taper.slope * overhang};
}

void CheckFlangedProfile(const char* shape, const FlangedProfile& profile) {
    RequirePositive(shape, {{"height", profile.height, "height"},
                            {"width", profile.width, "width"},
                            {"web thickness", profile.web, "web"},
                            {"flange thickness", profile.flange, "flange"}});
    RequireSmaller(shape, {"web thickness", profile.web, "web"}, {"width", profile.width, "width"});
}

// The right-hand side of an I or a channel, upwards from the lower toe to the upper one.
// @param webFace abscissa of the web's right face [L]
std::vector<Corner> RightSide(const char* shape, const FlangedProfile& profile, double webFace) {
    const FlangeThickness flange = CheckFlange(shape, profile, profile.width - webFace);
    RequireSmaller(shape, {"thickness of both flanges at the web", 2.0 * flange.root, "flange"},
                   {"height", profile.height, "height"});
    const double root = profile.rootRadius;
    const double toe = profile.taper.toeRadius;
    return {{profile.width, 0.0, 0.0},
            {profile.width, flange.toe, toe},
            {webFace, flange.root, root},
            {webFace, profile.height - flange.root, root},
            {profile.width, profile.height - flange.toe, toe},
            {profile.width, profile.height, 0.0}};
}

// @param largestRadius of this rectangle's corners and those of one within or around it [L]
Points RoundedRectangle(double left, double bottom, double right, double top, double radius,
                        double largestRadius, const ArcDivision& division) {
    const Corner corners[] = {{right, bottom, radius, largestRadius},
                              {right, top, radius, largestRadius},
                              {left, top, radius, largestRadius},
                              {left, bottom, radius, largestRadius}};
    return RoundedPolygon(corners, division);
}

}  // namespace

Outline DrawISection(const FlangedProfile& profile, const ArcDivision& division) {
    constexpr const char* shape = "I section";
    CheckFlangedProfile(shape, profile);
    std::vector<Corner> corners = RightSide(shape, profile, 0.5 * (profile.width + profile.web));
    // The left side is the right one turned by half a turn about the middle.
    const std::size_t half = corners.size();
    for (std::size_t i = 0; i < half; ++i) {
        corners.push_back(
            {profile.width - corners[i].x, profile.height - corners[i].y, corners[i].radius});
    }
    return {RoundedPolygon(corners, division), {}};
}

Outline DrawMonosymmetricISection(const MonosymmetricProfile& profile,
                                  const ArcDivision& division) {
    constexpr const char* shape = "I section";
    const Dimension web = {"web thickness", profile.web, "web"};
    const Dimension height = {"height", profile.height, "height"};
    const Dimension widths[] = {{"width of the bottom flange", profile.bottomWidth, "bottom_width"},
                                {"width of the top flange", profile.topWidth, "top_width"}};
    RequirePositive(shape, {height,
                            web,
                            widths[0],
                            widths[1],
                            {"top flange thickness", profile.topFlange, "top_flange"},
                            {"bottom flange thickness", profile.bottomFlange, "bottom_flange"}});
    RequireNotNegative(shape, {{"root radius", profile.rootRadius, "root_radius"}});
    for (const Dimension& width : widths) RequireSmaller(shape, web, width);
    RequireSmaller(
        shape,
        {"thickness of both flanges", profile.topFlange + profile.bottomFlange, "top_flange"},
        height);

    const double middle = 0.5 * std::max(profile.topWidth, profile.bottomWidth);
    const double low = profile.bottomFlange;
    const double high = profile.height - profile.topFlange;
    const double webFace = middle + 0.5 * profile.web;
    const double bottomToe = middle + 0.5 * profile.bottomWidth;
    const double topToe = middle + 0.5 * profile.topWidth;
    std::vector<Corner> corners = {{bottomToe, 0.0, 0.0},
                                   {bottomToe, low, 0.0},
                                   {webFace, low, profile.rootRadius},
                                   {webFace, high, profile.rootRadius},
                                   {topToe, high, 0.0},
                                   {topToe, profile.height, 0.0}};
    // The left side is the right one in a mirror, downwards.
    for (std::size_t i = corners.size(); i-- > 0;) {
        corners.push_back({2.0 * middle - corners[i].x, corners[i].y, corners[i].radius});
    }
    return {RoundedPolygon(corners, division), {}};
}

Outline DrawChannel(const FlangedProfile& profile, const ArcDivision& division) {
    constexpr const char* shape = "channel";
    CheckFlangedProfile(shape, profile);
    std::vector<Corner> corners = RightSide(shape, profile, profile.web);
    corners.push_back({0.0, profile.height, 0.0});
    corners.push_back({0.0, 0.0, 0.0});
    return {RoundedPolygon(corners, division), {}};
}

Outline DrawTee(const FlangedProfile& profile, const ArcDivision& division) {
    constexpr const char* shape = "tee";
    CheckFlangedProfile(shape, profile);
    const double right = 0.5 * (profile.width + profile.web);
    const double left = profile.width - right;
    const FlangeThickness flange = CheckFlange(shape, profile, left);
    RequireSmaller(shape, {"flange thickness at the web", flange.root, "flange"},
                   {"height", profile.height, "height"});
    const double atRoot = profile.height - flange.root;
    const double atToe = profile.height - flange.toe;
    const Corner corners[] = {{left, 0.0, 0.0},
                              {right, 0.0, 0.0},
                              {right, atRoot, profile.rootRadius},
                              {profile.width, atToe, profile.taper.toeRadius},
                              {profile.width, profile.height, 0.0},
                              {0.0, profile.height, 0.0},
                              {0.0, atToe, profile.taper.toeRadius},
                              {left, atRoot, profile.rootRadius}};
    return {RoundedPolygon(corners, division), {}};
}

Outline DrawAngle(const AngleProfile& profile, const ArcDivision& division) {
    constexpr const char* shape = "angle";
    const double t = profile.thickness;
    RequirePositive(shape, {{"height", profile.height, "height"},
                            {"width", profile.width, "width"},
                            {"thickness", t, "thickness"}});
    RequireNotNegative(shape, {{"root radius", profile.rootRadius, "root_radius"},
                               {"toe radius", profile.toeRadius, "toe_radius"}});
    RequireSmaller(shape, {"thickness", t, "thickness"}, {"height", profile.height, "height"});
    RequireSmaller(shape, {"thickness", t, "thickness"}, {"width", profile.width, "width"});
    const Corner corners[] = {{0.0, 0.0, 0.0},
                              {profile.width, 0.0, 0.0},
                              {profile.width, t, profile.toeRadius},
                              {t, t, profile.rootRadius},
                              {t, profile.height, profile.toeRadius},
                              {0.0, profile.height, 0.0}};
    return {RoundedPolygon(corners, division), {}};
}

Outline DrawRectangularHollow(const RectangularHollowProfile& profile,
                              const ArcDivision& division) {
    constexpr const char* shape = "rectangular hollow section";
    const double t = profile.thickness;
    RequirePositive(shape, {{"height", profile.height, "height"},
                            {"width", profile.width, "width"},
                            {"thickness", t, "thickness"}});
    RequireNotNegative(shape, {{"outer radius", profile.outerRadius, "outer_radius"},
                               {"inner radius", profile.innerRadius, "inner_radius"}});
    RequireSmaller(shape, {"thickness of both walls", 2.0 * t, "thickness"},
                   {"height", profile.height, "height"});
    RequireSmaller(shape, {"thickness of both walls", 2.0 * t, "thickness"},
                   {"width", profile.width, "width"});
    // On the diagonal an arc of radius r stays r (sqrt 2 - 1) away from its corner; the inner
    // corner lies t sqrt 2 behind the outer one.
    constexpr double cut = std::numbers::sqrt2 - 1.0;
    RequireSmaller(shape,
                   {"distance of the outer corner arc from its corner", profile.outerRadius * cut,
                    "outer_radius"},
                   {"distance of the inner corner arc from it",
                    t * std::numbers::sqrt2 + profile.innerRadius * cut, "inner_radius"});
    const double largest = std::max(profile.outerRadius, profile.innerRadius);
    return {RoundedRectangle(0.0, 0.0, profile.width, profile.height, profile.outerRadius, largest,
                             division),
            RoundedRectangle(t, t, profile.width - t, profile.height - t, profile.innerRadius,
                             largest, division)};
}

Outline DrawCircularHollow(const CircularHollowProfile& profile, const ArcDivision& division) {
    constexpr const char* shape = "circular hollow section";
    const double d = profile.diameter;
    RequirePositive(shape,
                    {{"diameter", d, "diameter"}, {"thickness", profile.thickness, "thickness"}});
    RequireSmaller(shape, {"thickness of both walls", 2.0 * profile.thickness, "thickness"},
                   {"diameter", d, "diameter"});
    const double radius = 0.5 * d;
    return DrawRectangularHollow({d, d, profile.thickness, radius, radius - profile.thickness},
                                 division);
}

Outline DrawPlate(const Plate& plate, const ArcDivision& division) {
    RequirePositive("plate", {{"width", plate.width, "width"}, {"height", plate.height, "height"}});
    return {RoundedRectangle(0.0, 0.0, plate.width, plate.height, 0.0, 0.0, division), {}};
}

Outline DrawRound(double diameter, const ArcDivision& division) {
    RequirePositive("round bar", {{"diameter", diameter, "diameter"}});
    return {RoundedRectangle(0.0, 0.0, diameter, diameter, 0.5 * diameter, 0.0, division), {}};
}

}  // namespace halvorn::engine::shapes
