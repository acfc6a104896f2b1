/// @file edge_list.h
/// A plain list of directed edges, and its free ends.
#ifndef HALVORN_KERNEL_EDGE_LIST_H
#define HALVORN_KERNEL_EDGE_LIST_H

#include "kernel/kernel.h"

namespace halvorn {

/// Directed edges, two points each: start and end of edge k at 2k and 2k + 1. An edge whose start x
/// is +infinity or NaN is removed or used.
struct KEdgeList {
    const KPoint* points;
    int pointCount;  ///< twice the number of edges
};

/// Returns the point index (even) of the first live edge with a free end, an end within `tol` per
/// axis of no end of another edge, or -1. Cost: the square of the number of edges; the splits of
/// this kernel count the ends at cut points instead.
int KFindDanglingEdge(const KEdgeList& edges, double tol);

}  // namespace halvorn

#endif
