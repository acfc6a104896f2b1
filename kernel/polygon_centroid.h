/// @file polygon_centroid.h
/// The centroid of a ring.
#ifndef HALVORN_KERNEL_POLYGON_CENTROID_H
#define HALVORN_KERNEL_POLYGON_CENTROID_H

#include "kernel/kernel.h"

namespace halvorn {

/// Writes the centroid of a ring of n points into `out` and returns it.
///
/// For a ring that `KClassifyPolygon` finds valid and whose triangles account for its area within
/// 0.01 [L^2, absolute], this is the area-weighted mean of the triangles; else, also when memory is
/// exhausted, the average of the vertices. n = 0 gives (0, 0), n = 1 the point, n = 2
/// the midpoint. Cost: that of `KClassifyPolygon` and `KTriangulatePolygon`.
KPoint* KPolygonCentroid(KPoint* out, const KPoint* ring, int n, double tol);

}  // namespace halvorn

#endif
