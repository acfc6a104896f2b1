/// @file intersections.h
/// Where lines and segments meet.
#ifndef HALVORN_KERNEL_INTERSECTIONS_H
#define HALVORN_KERNEL_INTERSECTIONS_H

#include "kernel/kernel.h"
#include "numeric/constants.h"
#include "numeric/scalar.h"

namespace halvorn {

/// Returns 1 when numerator / denominator can be formed safely: |numerator| <= 1e100 and
/// |denominator| >= 1e-100; else 0, for NaNs too.
inline int KIsSafeQuotient(double numerator, double denominator) {
    return AbsValue(numerator) <= kLargestOperand && AbsValue(denominator) >= kSmallestDenominator;
}

/// Returns 1 when |u| <= 1e100 and |v| <= 1e100, so that their product is finite; else 0.
inline int KAreBounded(double u, double v) {
    return AbsValue(u) <= kLargestOperand && AbsValue(v) <= kLargestOperand;
}

/// Intersects the unbounded lines through `a`, `b` and through `c`, `d`.
/// @return 1 with the point in `out`, or 0 with (NaN, NaN): parallel lines (no relative tolerance:
///         the determinant [L^2] must be below 1e-100), coincident points, coordinates above 1e100
int KLineIntersection(const KPoint* a, const KPoint* b, const KPoint* c, const KPoint* d,
                      KPoint* out);

/// Intersects two closed segments, within `tol` [L].
/// @return 0 for no contact; 1 for one common point: an end of one on the other, or a crossing with
///         both pairs of ends farther than `tol` from the other's line on opposite sides; 2 for an
///         overlap: two distinct ends of the one or the other on the other one
int KIntersectSegments(const KSegment& first, const KSegment& second, double tol);

}  // namespace halvorn

#endif
