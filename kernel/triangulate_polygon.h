/// @file triangulate_polygon.h
/// Triangles and centroid of a ring.
#ifndef HALVORN_KERNEL_TRIANGULATE_POLYGON_H
#define HALVORN_KERNEL_TRIANGULATE_POLYGON_H

#include "kernel/records.h"

namespace halvorn {

/// Splits a valid simple ring of n points, of either orientation, into triangles by clipping ears.
/// @param triangles room for 3 (n - 2) indices into the ring; a triangle is three of them
/// @param count     number of triangles, never more than n - 2 (fewer where corners are straight)
/// @return 0, or -1 with a count of 0 when the ring has no such triangulation (n = 2 has one of no
///         triangles), -90 with a count of 0 when memory is exhausted. A ring that is not simple
///         may have triangles that are not found, and so may one with edges of 1e-6 and shorter,
///         whose corners pass for straight.
/// Method: G. H. Meisters, "Polygons have ears", American Mathematical Monthly 82, 1975. Cost: at
/// most 3 n corners are tried, each against the reflex vertices near its triangle: n log n for
/// outlines that are drawn, n^2 at worst.
int KTriangulatePolygon(const KPoint* ring, int n, int* triangles, int* count, double tol);

/// Writes the centroid of a ring of n points into `out` and returns it.
///
/// The area-weighted mean of the ring's triangles, for a ring that `KClassifyPolygon` finds valid
/// and whose triangles account for its area within 0.01 [L^2, absolute]; else the average of the
/// vertices, which also serves when memory is exhausted. n = 0 gives (0, 0), n = 1 the point, n = 2
/// the midpoint. Cost: that of `KClassifyPolygon` and `KTriangulatePolygon`.
KPoint* KPolygonCentroid(KPoint* out, const KPoint* ring, int n, double tol);

}  // namespace halvorn

#endif
