/// @file area_moments.h
/// Area and moments of a region, all in one pass over its ring, and what is done with them.
///
/// A ring is n points, closed implicitly, as in kernel/kernel.h. Integrals carry the sign of the
/// orientation. Every function is one pass without allocation; n < 1 gives zeros.
#ifndef HALVORN_CONTOUR_AREA_MOMENTS_H
#define HALVORN_CONTOUR_AREA_MOMENTS_H

#include "numeric/point2d.h"

namespace halvorn {

/// Area and moments of a region, positive for solid material, about some reference point.
struct AreaMoments {
    double area;           ///< [L^2]
    double firstX;         ///< integral of x dA [L^3]
    double firstY;         ///< integral of y dA [L^3]
    double secondX;        ///< integral of y^2 dA, about the x axis [L^4]
    double secondY;        ///< integral of x^2 dA, about the y axis [L^4]
    double productMoment;  ///< integral of x y dA [L^4]
};

/// Returns area and moments of a ring about `reference`, with the sign of its orientation: positive
/// for a counter-clockwise ring. The same sums as in contour/contour_integrals.h, with the
/// coordinates taken relative to `reference`.
///
/// About a vertex of the ring the result is as accurate as the coordinates allow; about a distant
/// point the moments cancel and digits are lost as the square of distance over size.
AreaMoments SignedAreaMoments(int n, const point2D* ring, const point2D& reference);

/// Returns `moments` times `factor`, for example -1.0 to change the orientation.
inline AreaMoments Scaled(const AreaMoments& moments, double factor) {
    return {moments.area * factor,    moments.firstX * factor,  moments.firstY * factor,
            moments.secondX * factor, moments.secondY * factor, moments.productMoment * factor};
}

/// Returns outer - inner, term by term: a region with a hole.
inline AreaMoments Difference(const AreaMoments& outer, const AreaMoments& inner) {
    return {outer.area - inner.area,       outer.firstX - inner.firstX,
            outer.firstY - inner.firstY,   outer.secondX - inner.secondX,
            outer.secondY - inner.secondY, outer.productMoment - inner.productMoment};
}

/// Returns the moments about a new reference point, from which the present one lies at `offset`
/// (parallel-axis theorem).
inline AreaMoments Transferred(const AreaMoments& moments, const point2D& offset) {
    const double dx = offset.x;
    const double dy = offset.y;
    AreaMoments moved = moments;
    moved.firstX += dx * moments.area;
    moved.firstY += dy * moments.area;
    moved.secondX += dy * (2.0 * moments.firstY + dy * moments.area);
    moved.secondY += dx * (2.0 * moments.firstX + dx * moments.area);
    moved.productMoment += dx * moments.firstY + dy * moments.firstX + dx * dy * moments.area;
    return moved;
}

/// Returns -1.0 for a negative signed area, else +1.0.
inline double OrientationSign(double signedArea) {
    return signedArea < 0.0 ? -1.0 : 1.0;
}

}  // namespace halvorn

#endif
