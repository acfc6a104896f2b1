/// @file thin_wall_torsion.h
/// Torsion constants of profiles as assemblies of thin walls, the estimates of textbooks.
///
/// Open profiles: the sum of b t^3 / 3 over their flat parts, each face to face without overlap;
/// fillets add nothing, which falls short by some per cent to a quarter for rolled profiles. Closed
/// ones: 4 Am^2 t / s (Bredt) with area and length of the mid-line. Dimensions are taken as
/// checked: draw the profile first.
#ifndef HALVORN_ENGINE_SHAPES_THIN_WALL_TORSION_H
#define HALVORN_ENGINE_SHAPES_THIN_WALL_TORSION_H

#include <initializer_list>

#include "shapes/profiles.h"

namespace halvorn::engine::shapes {

/// How results name the two formulas.
inline constexpr const char* kOpenTorsionMethod = "sum of b t^3 / 3";
inline constexpr const char* kClosedTorsionMethod = "4 Am^2 t / s";

/// A flat part of an open profile.
struct Strip {
    double length;     ///< b [L]
    double thickness;  ///< t [L]
};

/// Returns the sum of b t^3 / 3 [L^4].
double OpenTorsion(std::initializer_list<Strip> strips);

/// Returns 4 Am^2 t / s [L^4].
/// @param meanArea  inside the mid-line [L^2]
/// @param length    of the mid-line [L]
double ClosedTorsion(double meanArea, double length, double thickness);

/// Two flanges over the whole width and the web between them; a tapered flange counts with the mean
/// thickness of its overhangs.
double ISectionTorsion(const FlangedProfile& profile);
double MonosymmetricISectionTorsion(const MonosymmetricProfile& profile);
double ChannelTorsion(const FlangedProfile& profile);
/// One flange over the whole width and the web below it.
double TeeTorsion(const FlangedProfile& profile);
/// One leg over its whole length and the rest of the other.
double AngleTorsion(const AngleProfile& profile);

/// The corners of the mid-line have the mean of outer and inner radius.
double RectangularHollowTorsion(const RectangularHollowProfile& profile);
double CircularHollowTorsion(const CircularHollowProfile& profile);

}  // namespace halvorn::engine::shapes

#endif
