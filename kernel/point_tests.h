/// @file point_tests.h
/// Where a point lies: on a segment, in a polygon.
#ifndef HALVORN_KERNEL_POINT_TESTS_H
#define HALVORN_KERNEL_POINT_TESTS_H

#include "kernel/kernel.h"

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

}  // namespace halvorn

#endif
