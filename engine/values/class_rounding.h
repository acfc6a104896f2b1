/// @file class_rounding.h
/// What rounding leaves of the outputs of the library's class.
#ifndef HALVORN_ENGINE_VALUES_CLASS_ROUNDING_H
#define HALVORN_ENGINE_VALUES_CLASS_ROUNDING_H

#include <vector>

#include "geometry/box.h"
#include "model/class_outputs.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Returns how large the area of points on one line may come out, for the rounding of their
/// coordinates along the perimeter [L^2].
double AreaRounding(const Points& points);

/// How far the library's sums over a section may be off by rounding. Each ring's share is
/// (8 + sqrt(n) / 2) u a X^i Y^k, with its n points, u = 2^-53, the area a of its box and its reach
/// from the origin, X = largest |x| + width and Y likewise (docs/theory.md, Rounding of class
/// values).
struct SumRounding {
    double firstX = 0.0;         ///< of the moments of area [L^3]
    double firstY = 0.0;         ///< likewise
    double inertiaX = 0.0;       ///< of second moments about the centre of gravity [L^4]
    double inertiaY = 0.0;       ///< likewise
    double inertiaXY = 0.0;      ///< likewise
    double turnedInertia = 0.0;  ///< what a given angle of a quarter turn leaves of a given 0 [L^4]
    double turnedShear = 0.0;    ///< likewise [L^2]
};

SumRounding RoundingOf(const std::vector<Element>& elements);

/// Of a line that may be a wall: its box with the thickness around it.
SumRounding RoundingOf(const Polyline& polyline);

/// Sets to 0 what is no more than rounding of 0: centres of gravity and product moments on an axis
/// of symmetry, what a quarter turn leaves of a given 0.
void ClearRounding(const SumRounding& rounding, ClassOutputs* out);

/// Likewise of a polyline.
void ClearRounding(const SumRounding& rounding, PolylineOutputs* out);

}  // namespace halvorn::engine

#endif
