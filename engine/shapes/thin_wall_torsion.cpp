#include "shapes/thin_wall_torsion.h"

#include <numbers>

namespace halvorn::engine::shapes {
namespace {

using std::numbers::pi;

// Mean thickness of a flange that overhangs the face of the web by the given length.
double MeanFlange(const FlangedProfile& profile, double overhang) {
    return profile.flange + profile.taper.slope * (0.5 * overhang - profile.taper.flangeAtFromToe);
}

double TwoFlanges(const FlangedProfile& profile, double overhang) {
    const double flange = MeanFlange(profile, overhang);
    return OpenTorsion({{profile.width, flange},
                        {profile.width, flange},
                        {profile.height - 2.0 * flange, profile.web}});
}

}  // namespace

double OpenTorsion(std::initializer_list<Strip> strips) {
    double sum = 0.0;
    for (const Strip& strip : strips) {
        sum += strip.length * strip.thickness * strip.thickness * strip.thickness / 3.0;
    }
    return sum;
}

double ClosedTorsion(double meanArea, double length, double thickness) {
    return 4.0 * meanArea * meanArea * thickness / length;
}

double ISectionTorsion(const FlangedProfile& profile) {
    return TwoFlanges(profile, 0.5 * (profile.width - profile.web));
}

double MonosymmetricISectionTorsion(const MonosymmetricProfile& profile) {
    return OpenTorsion({{profile.topWidth, profile.topFlange},
                        {profile.bottomWidth, profile.bottomFlange},
                        {profile.height - profile.topFlange - profile.bottomFlange, profile.web}});
}

double ChannelTorsion(const FlangedProfile& profile) {
    return TwoFlanges(profile, profile.width - profile.web);
}

double TeeTorsion(const FlangedProfile& profile) {
    const double flange = MeanFlange(profile, 0.5 * (profile.width - profile.web));
    return OpenTorsion({{profile.width, flange}, {profile.height - flange, profile.web}});
}

double AngleTorsion(const AngleProfile& profile) {
    const double t = profile.thickness;
    return OpenTorsion({{profile.height + profile.width - t, t}});
}

double RectangularHollowTorsion(const RectangularHollowProfile& profile) {
    const double width = profile.width - profile.thickness;
    const double height = profile.height - profile.thickness;
    const double radius = 0.5 * (profile.outerRadius + profile.innerRadius);
    return ClosedTorsion(width * height - (4.0 - pi) * radius * radius,
                         2.0 * (width + height) - (8.0 - 2.0 * pi) * radius, profile.thickness);
}

double CircularHollowTorsion(const CircularHollowProfile& profile) {
    const double diameter = profile.diameter - profile.thickness;
    return ClosedTorsion(0.25 * pi * diameter * diameter, pi * diameter, profile.thickness);
}

}  // namespace halvorn::engine::shapes
