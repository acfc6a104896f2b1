/// @file constants.h
/// Every fixed tolerance, limit and angle of the library, each with its unit and reason.
///
/// Tolerances are absolute unless they say otherwise, made for metres and millimetres; none depends
/// on a section. docs/conventions.md says what they decide for a host.
#ifndef HALVORN_NUMERIC_CONSTANTS_H
#define HALVORN_NUMERIC_CONSTANTS_H

#include <limits>

namespace halvorn {

// Angles [rad].

inline constexpr double kTwoPi = 6.283185307179586;
inline constexpr double kPi = 3.141592653589793;
inline constexpr double kThreeQuarterPi = 2.356194490192345;
inline constexpr double kHalfPi = 1.5707963267948966;
inline constexpr double kQuarterPi = 0.7853981633974483;

// State of the whole process.

/// `Tol3D` until a host sets it: a length of the sum of two unit normals.
inline constexpr double kDefaultTol3D = 1e-8;

// The polygon kernel.

/// A vector whose length [L] or squared length [L^2] is below this has no direction. Tested on
/// both: the squared test alone already treats lengths below 1e-6 as none.
inline constexpr double kZeroVector = 1e-12;

/// A squared distance [L^2] below this is 0: its root would be below 1e-50.
inline constexpr double kZeroSquaredDistance = 1e-100;

/// Largest magnitude of a factor or numerator in `KLineIntersection`: the products stay finite.
inline constexpr double kLargestOperand = 1e100;

/// Smallest magnitude of a denominator in `KLineIntersection`; parallel lines fall below it.
inline constexpr double kSmallestDenominator = 1e-100;

/// The triangles of a ring account for its area when the two differ by less than this [L^2,
/// absolute]: no triangle is missing because it was too thin to count.
inline constexpr double kAreaAgreement = 0.01;

/// Three points are in line when the cross product of their two edges is no larger than this times
/// the largest coordinate times the lengths of the edges: a few units in the last place.
inline constexpr double kInLineRounding = 4.0 * std::numeric_limits<double>::epsilon();

// Contours.

/// A contour whose area [L^2] is below this has no centroid of its own and gets (0, 0).
inline constexpr double kZeroArea = 1e-15;

/// Lengths [L], angles [rad] and wall thicknesses [L] below this count as 0 in corner geometry. In
/// metres and in millimetres alike, only a rounded 0 is this small.
inline constexpr double kZeroCorner = 1e-15;

/// Areas [L^2], polar moments [L^4], squared semi-axes [L^2] and the ellipse's discriminant [L^4]
/// below this are 0 in the equivalent-ellipse formulas. Absolute: in metres a bar thinner than
/// about 5 mm has a polar moment below it, hence no torsion constant.
inline constexpr double kZeroEllipse = 1e-10;

/// A discriminant that is negative by no more than this fraction of (A/pi)^2 is that of a circle, 0
/// but for rounding: the two squares whose difference it is agree in their first ten digits.
inline constexpr double kCircleDiscriminant = 1e-10;

/// Number of chords that a rounded corner is drawn with.
inline constexpr int FILLET_ARC_STEPS = 5;

/// Number of points that a rounded corner takes.
inline constexpr int kPointsPerFillet = FILLET_ARC_STEPS + 1;

/// Most vertices of a polyline: the points of the two faces of a wall must be countable in an int.
inline constexpr int kMostVertices = std::numeric_limits<int>::max() / (2 * kPointsPerFillet);

// Plastic moduli and fibres.

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

/// The search ends after this many lines beyond the first, balanced or not.
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
