/// @file constants.h
/// Fixed tolerances and constants of contour geometry.
#ifndef HALVORN_CONTOUR_CONSTANTS_H
#define HALVORN_CONTOUR_CONSTANTS_H

#include "kernel/constants.h"

namespace halvorn {

inline constexpr double kTwoPi = 6.283185307179586;
inline constexpr double kHalfPi = 1.5707963267948966;

/// A contour whose area [L^2] is below this has no centroid of its own and gets (0, 0).
inline constexpr double kZeroArea = 1e-15;

/// Lengths [L], angles [rad] and wall thicknesses [L] below this count as 0 in corner geometry. In
/// metres as in millimetres only a 0 that was rounded is so small.
inline constexpr double kZeroCorner = 1e-15;

/// Areas [L^2], polar moments [L^4], squared semi-axes [L^2] and the ellipse's discriminant [L^4]
/// below this are 0 in the equivalent-ellipse formulas. Absolute: in metres a bar thinner than
/// about 5 mm has a polar moment below it, hence no torsion constant.
inline constexpr double kZeroEllipse = 1e-10;

/// A discriminant that is negative by no more than this fraction of (A/pi)^2 is a circle's 0,
/// rounded: the two squares that it is the difference of agree in their first ten digits.
inline constexpr double kCircleDiscriminant = 1e-10;

/// Number of chords that a rounded corner is drawn with.
inline constexpr int FILLET_ARC_STEPS = 5;

/// Number of points that a rounded corner takes.
inline constexpr int kPointsPerFillet = FILLET_ARC_STEPS + 1;

}  // namespace halvorn

#endif
