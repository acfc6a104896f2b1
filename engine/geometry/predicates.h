/// @file predicates.h
/// The two questions on which a triangulation rests, answered without rounding.
///
/// Each is the sign of a determinant. It is computed in floating point first; only when the result
/// is smaller than its error bound, the determinant is formed exactly, as a sum of doubles that do
/// not overlap. Source: J. R. Shewchuk, "Adaptive precision floating-point arithmetic and fast
/// robust geometric predicates", Discrete & Computational Geometry 18, 1997.
///
/// @pre coordinates are 0 or between 1e-60 and 1e60 in magnitude, so that no product overflows and
///      no rounding error is lost below the smallest double
#ifndef HALVORN_ENGINE_GEOMETRY_PREDICATES_H
#define HALVORN_ENGINE_GEOMETRY_PREDICATES_H

#include "geometry/point.h"

namespace halvorn::engine {

/// Returns 1 when c lies to the left of the line from a to b, -1 to the right, 0 on it.
int Orientation(const Point& a, const Point& b, const Point& c);

/// Returns 1 when d lies inside the circle through a, b and c, -1 outside, 0 on it.
/// @pre a, b, c run counter-clockwise
int InCircle(const Point& a, const Point& b, const Point& c, const Point& d);

}  // namespace halvorn::engine

#endif
