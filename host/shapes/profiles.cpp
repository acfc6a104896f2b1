#include "shapes/profiles.h"

#include <algorithm>
#include <numbers>
#include <stdexcept>
#include <string>

#include "shapes/dimension_checks.h"

namespace halvorn::shapes {
namespace {

// Thickness of a flange at its toe and where its inner face would meet the web.
struct FlangeThickness {
    double toe;
    double root;
};

// @param overhang from the face of the web to the toe [L]
FlangeThickness CheckFlange(const char* shape, const FlangedProfile& profile, double overhang) {
    const FlangeTaper& taper = profile.taper;
    RequireNotNegative(shape, {{"root radius", profile.rootRadius},
                               {"toe radius", taper.toeRadius},
                               {"slope of the flanges", taper.slope},
                               {"distance from the toe at which the flange thickness is measured",
                                taper.flangeAtFromToe}});
    const double toe = profile.flange - taper.slope * taper.flangeAtFromToe;
    RequirePositive(shape, {{"flange thickness at the toe", toe}});
    return {toe, toe + taper.slope * overhang};
}

void CheckFlangedProfile(const char* shape, const FlangedProfile& profile) {
    RequirePositive(shape, {{"height", profile.height},
                            {"width", profile.width},
                            {"web thickness", profile.web},
                            {"flange thickness", profile.flange}});
    RequireSmaller(shape, {"web thickness", profile.web}, {"width", profile.width});
}

// The right-hand side of an I or a channel, upwards from the lower toe to the upper one.
// @param webFace abscissa of the web's right face [L]
std::vector<Corner> RightSide(const char* shape, const FlangedProfile& profile, double webFace) {
    const FlangeThickness flange = CheckFlange(shape, profile, profile.width - webFace);
    RequireSmaller(shape, {"thickness of both flanges at the web", 2.0 * flange.root},
                   {"height", profile.height});
    const double root = profile.rootRadius;
    const double toe = profile.taper.toeRadius;
    return {{profile.width, 0.0, 0.0},
            {profile.width, flange.toe, toe},
            {webFace, flange.root, root},
            {webFace, profile.height - flange.root, root},
            {profile.width, profile.height - flange.toe, toe},
            {profile.width, profile.height, 0.0}};
}

std::vector<double> RoundedRectangle(double left, double bottom, double right, double top,
                                     double radius, const ArcDivision& division) {
    const Corner corners[] = {
        {right, bottom, radius}, {right, top, radius}, {left, top, radius}, {left, bottom, radius}};
    return RoundedPolygon(corners, division);
}

// Index of the point that lies farthest in the direction (1, 1).
std::size_t FarthestUpRight(const std::vector<double>& ring) {
    std::size_t farthest = 0;
    for (std::size_t i = 1; i < ring.size() / 2; ++i) {
        if (ring[2 * i] + ring[2 * i + 1] > ring[2 * farthest] + ring[2 * farthest + 1]) {
            farthest = i;
        }
    }
    return farthest;
}

// Appends all points of a ring from `start` round to `start` again, backwards when asked.
void AppendRound(const std::vector<double>& ring, std::size_t start, bool backwards,
                 std::vector<double>& contour) {
    const std::size_t n = ring.size() / 2;
    for (std::size_t k = 0; k <= n; ++k) {
        const std::size_t i = (start + (backwards ? n - k : k)) % n;
        contour.insert(contour.end(), {ring[2 * i], ring[2 * i + 1]});
    }
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
    RequireSmaller(shape, {"flange thickness at the web", flange.root}, {"height", profile.height});
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
    RequirePositive(shape,
                    {{"height", profile.height}, {"width", profile.width}, {"thickness", t}});
    RequireNotNegative(shape,
                       {{"root radius", profile.rootRadius}, {"toe radius", profile.toeRadius}});
    RequireSmaller(shape, {"thickness", t}, {"height", profile.height});
    RequireSmaller(shape, {"thickness", t}, {"width", profile.width});
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
    RequirePositive(shape,
                    {{"height", profile.height}, {"width", profile.width}, {"thickness", t}});
    RequireNotNegative(
        shape, {{"outer radius", profile.outerRadius}, {"inner radius", profile.innerRadius}});
    RequireSmaller(shape, {"thickness of both walls", 2.0 * t}, {"height", profile.height});
    RequireSmaller(shape, {"thickness of both walls", 2.0 * t}, {"width", profile.width});
    // On the diagonal an arc of radius r stays r (sqrt 2 - 1) away from its corner; the inner
    // corner lies t sqrt 2 behind the outer one.
    constexpr double cut = std::numbers::sqrt2 - 1.0;
    RequireSmaller(shape,
                   {"distance of the outer corner arc from its corner", profile.outerRadius * cut},
                   {"distance of the inner corner arc from it",
                    t * std::numbers::sqrt2 + profile.innerRadius * cut});
    return {
        RoundedRectangle(0.0, 0.0, profile.width, profile.height, profile.outerRadius, division),
        RoundedRectangle(t, t, profile.width - t, profile.height - t, profile.innerRadius,
                         division)};
}

Outline DrawCircularHollow(const CircularHollowProfile& profile, const ArcDivision& division) {
    constexpr const char* shape = "circular hollow section";
    const double d = profile.diameter;
    RequirePositive(shape, {{"diameter", d}, {"thickness", profile.thickness}});
    RequireSmaller(shape, {"thickness of both walls", 2.0 * profile.thickness}, {"diameter", d});
    const double radius = 0.5 * d;
    return DrawRectangularHollow({d, d, profile.thickness, radius, radius - profile.thickness},
                                 division);
}

std::vector<double> KeyholeRing(const Outline& outline) {
    if (outline.hole.empty()) return outline.solid;
    std::vector<double> contour;
    contour.reserve(outline.solid.size() + outline.hole.size() + 4);
    AppendRound(outline.solid, FarthestUpRight(outline.solid), false, contour);
    AppendRound(outline.hole, FarthestUpRight(outline.hole), true, contour);
    return contour;
}

}  // namespace halvorn::shapes
