/// @file edge_sums.h
/// What one edge adds to the integrals over its ring.
#ifndef HALVORN_CONTOUR_EDGE_SUMS_H
#define HALVORN_CONTOUR_EDGE_SUMS_H

#include "numeric/point2d.h"

namespace halvorn {

/// Green's theorem turns each area integral into a sum over edges. With s = (x0 + x1, y0 + y1),
/// d = (x1 - x0, y1 - y0) and B = 2 (x0 y0 + x1 y1) + x0 y1 + x1 y0 of one edge, a
/// counter-clockwise ring has
///   A = sum of sx dy / 2;
///   integral of x dA = -sum of dx B / 6;
///   integral of y dA = sum of dy B / 6;
///   integral of y^2 dA = -sum of (dy^2 + sy^2) sy dx / 24;
///   integral of x^2 dA = sum of (dx^2 + sx^2) sx dy / 24;
///   integral of x y dA = -sum of dx (sx sy^2 + 2 (x0 y0^2 + x1 y1^2)) / 24.
/// Integrate the edge's linear parametrisation term by term. Every term carries dx or dy as a
/// factor and none is divided by it: the product moment of an edge that is vertical, exactly or but
/// for rounding, is then 0 or rounding. The divisors stay outside the sums.
struct EdgeSums {
    double area2 = 0.0;
    double first6X = 0.0;
    double first6Y = 0.0;
    double second24X = 0.0;
    double second24Y = 0.0;
    double product24 = 0.0;

    void AddArea(double sx, double dy) { area2 += sx * dy; }

    void AddFirst(const point2D& p, const point2D& q, double dx, double dy) {
        const double b = 2.0 * (p.x * p.y + q.x * q.y) + (p.x * q.y + q.x * p.y);
        first6X += dx * b;
        first6Y += dy * b;
    }

    void AddSecond(const point2D& p, const point2D& q, double dx, double dy, double sx, double sy) {
        const double sy2 = sy * sy;
        second24X += (dy * dy + sy2) * (sy * dx);
        second24Y += (dx * dx + sx * sx) * (sx * dy);
        product24 += dx * (sx * sy2 + 2.0 * (p.x * (p.y * p.y) + q.x * (q.y * q.y)));
    }
};

}  // namespace halvorn

#endif
