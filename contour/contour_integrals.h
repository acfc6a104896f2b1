/// @file contour_integrals.h
/// One integral over a closed ring each: area, first moments, second moments, perimeter.
///
/// A ring is n points, closed implicitly, as in kernel/kernel.h. "Raw" integrals carry the sign of
/// the orientation. Every function is one pass without allocation; n < 1 gives zeros.
#ifndef HALVORN_CONTOUR_CONTOUR_INTEGRALS_H
#define HALVORN_CONTOUR_CONTOUR_INTEGRALS_H

#include <utility>

#include "numeric/point2d.h"

namespace halvorn {

/// Returns the signed area [L^2], positive for a counter-clockwise ring (x to the right, y up).
double ContourSignedArea(int n, const point2D* ring);

/// Returns the raw first moments about the origin [L^3]: -integral of x dA and +integral of y dA
/// for a counter-clockwise ring, both negated for a clockwise one.
std::pair<double, double> ContourFirstMoments(int n, const point2D* ring);

/// Writes the raw second moments about the origin [L^4]: -integral of y^2 dA, -integral of x^2 dA
/// and -integral of x y dA for a counter-clockwise ring, all negated for a clockwise one.
void ContourSecondMoments(int n, const point2D* ring, double* ixxRaw, double* iyyRaw,
                          double* ixyRaw);

/// Returns the length of the closed ring [L].
double ContourPerimeter(int n, const point2D* ring);

}  // namespace halvorn

#endif
