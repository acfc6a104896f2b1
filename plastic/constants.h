/// @file constants.h
/// Fixed tolerances of the plastic computation and of the calculation values.
#ifndef HALVORN_PLASTIC_CONSTANTS_H
#define HALVORN_PLASTIC_CONSTANTS_H

namespace halvorn {

/// Coordinates [L] closer than this are one position: a point on the axis, a bound not moved.
inline constexpr double kSamePosition = 1e-10;

/// Fibre distances [L] within this of 0 have no elastic modulus; negative ones have a negative one.
inline constexpr double kZeroFibreDistance = 1e-10;

/// The axis is found when the areas on its two sides differ by less than this [L^2, absolute]. The
/// modulus of solid contours is least at the exact axis, so it comes out too large, by about
/// difference^2 / (4 width): in metres 1e-7 m^2 on a section 0.1 m wide is 2.5e-14 m^3. Where holes
/// or other flags give the contours other weights than the search, the error is of first order:
/// about (weighted difference of the areas) x difference / (2 width).
inline constexpr double kBalancedAreas = 1e-7;

/// The search ends after this many splits beyond the first, balanced or not.
inline constexpr int kMostBisections = 50;

/// Half length of the line that stands for an unbounded axis [L]; only its direction matters.
inline constexpr double kAxisReach = 10000.0;

/// A piece that reaches farther than this from the axis [L] and no farther than `kSamePosition`
/// beyond it lies on that side: its centroid cannot be within `kSamePosition` of the axis.
inline constexpr double kClearlyOneSided = 1e-6;

/// Cross product of an edge and a unit direction [L] below which the two are parallel.
inline constexpr double kParallelEdge = 1e-6;

}  // namespace halvorn

#endif
