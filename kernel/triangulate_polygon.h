/// @file triangulate_polygon.h
/// Splits a ring into triangles.
#ifndef HALVORN_KERNEL_TRIANGULATE_POLYGON_H
#define HALVORN_KERNEL_TRIANGULATE_POLYGON_H

#include "kernel/kernel.h"

namespace halvorn {

/// Splits a valid simple ring of n points, of either orientation, into triangles by clipping ears.
/// @param triangles room for 3 (n - 2) indices into the ring; a triangle is three of them
/// @param count     number of triangles, never more than n - 2 (fewer where corners are straight)
/// @return 0 (for n = 2 with no triangle), or with a count of 0: -1 when no triangulation is found,
///         -90 when memory is exhausted
///
/// -1 does not prove that there is none when the ring is not simple, or when it has edges of 1e-6
/// or less, whose corners count as straight. Method: G. H. Meisters, "Polygons have ears", American
/// Mathematical Monthly 82, 1975. Cost: at most 3 n corners are tried, each against the reflex
/// vertices near its triangle: n log n for outlines that are drawn, n^2 at worst.
int KTriangulatePolygon(const KPoint* ring, int n, int* triangles, int* count, double tol);

}  // namespace halvorn

#endif
