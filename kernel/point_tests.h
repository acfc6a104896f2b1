/// @file point_tests.h
/// Where a point lies: on a segment, in a polygon, on the line through two points.
#ifndef HALVORN_KERNEL_POINT_TESTS_H
#define HALVORN_KERNEL_POINT_TESTS_H

#include "kernel/records.h"

namespace halvorn {

/// Tells whether `p` lies on the segment from `a` to `b`, all coincidences per axis within `tol`
/// [L].
/// @return 1 when `p` coincides with `a`, 2 when with `b`, 3 when it lies between them, else 0. A
///         segment shorter than 1e-6 has no direction and so nothing between its ends.
int KPointOnSegment(const KPoint& p, const KPoint& a, const KPoint& b, double tol);

/// Tells whether `p` lies in a ring of n points, of either orientation.
/// @return 1 inside, 0 on the boundary (within `tol` per axis [L]), -1 outside
///
/// Sums the winding angle over the edges, which is about 2 pi or 0 for a simple ring. Vertices
/// nearer to `p` than 1e-6 have no direction from it (`KVectorAngle`): so near to a reflex vertex,
/// and in a ring of that size, the sum and the answer may be wrong. Cost: n.
int KPointInPolygon(const KPoint& p, const KPoint* ring, int n, double tol);

/// Intersects two closed segments, within `tol` [L].
/// @return 0 for no contact; 1 for one common point: an end of one on the other, or a crossing with
///         both pairs of ends farther than `tol` from the other's line on opposite sides; 2 for an
///         overlap: two distinct ends of the one or the other on the other one
int KIntersectSegments(const KSegment& first, const KSegment& second, double tol);

/// Projects `p` onto the unbounded line through `a` and `b`.
///
/// Every output may be null. They are reset first: foot (NaN, NaN), the others 0.
/// @param foot the projection
/// @param code where it lies: 1 at `a`, 2 at `b` (per axis within `tol`), 3 between, 4 before `a`,
///             5 beyond `b`
/// @param t    signed distance of the foot from `a` [L]
/// @param dist distance of `p` from the line, never negative [L]
/// @return 1, or 0 with the outputs reset when `a` and `b` coincide within `tol` per axis. Nearer
///         than 1e-6 but not within `tol` they give no direction (`KVectorNorm`): 1 with NaN.
int KProjectPointOnLine(const KPoint& p, const KPoint& a, const KPoint& b, double tol, KPoint* foot,
                        unsigned int* code, double* t, double* dist);

}  // namespace halvorn

#endif
