/// @file classify_polygon.h
/// Whether a ring is a valid simple polygon, and whether it is convex.
#ifndef HALVORN_KERNEL_CLASSIFY_POLYGON_H
#define HALVORN_KERNEL_CLASSIFY_POLYGON_H

#include "kernel/kernel.h"

namespace halvorn {

/// Result of `KClassifyPolygon`, in the order of the tests.
enum KPolygonClass : int {
    kVerticesCoincide = -4,    ///< two vertices coincide
    kVertexOnNeighbours = -3,  ///< a vertex lies on the segment joining its two neighbours
    kEdgesMeet = -1,           ///< two edges cross or overlap
    kSimplePolygon = 1,        ///< valid, not convex
    kConvexPolygon = 2         ///< valid and convex; any ring of fewer than two points
};

/// Classifies a ring of n points; every coincidence is per axis within `tol` [L].
/// @return a `KPolygonClass`, or -90 when memory is exhausted
/// Cost: n log n + k for k pairs of edges with meeting boxes, and k is about n for outlines
/// that are drawn; n^2 at worst.
int KClassifyPolygon(const KPoint* ring, int n, double tol);

}  // namespace halvorn

#endif
