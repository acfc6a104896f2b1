/// @file edge_graph.h
/// The directed edges of a split ring and where they join.
#ifndef HALVORN_KERNEL_EDGE_GRAPH_H
#define HALVORN_KERNEL_EDGE_GRAPH_H

#include "kernel/kernel.h"
#include "kernel/split_ring.h"
#include "numeric/c_array.h"

namespace halvorn {

/// Flag of an edge: where it came from.
enum KEdgeFlags : unsigned int {
    kPolygonEdge = 0,  ///< the ring being cut
    kCuttingEdge = 1   ///< the cutting line
};

/// The edges of a split ring, by number: the ring's own first, in their order, edge e from vertex
/// e to the next; then each stretch of the cutting line there and back. Edge e is continued by edge
/// e + 1, and the ring's last by its first, wherever no cut point lies between. At every cut
/// point as many live edges end as start; they coincide there within the tolerance, not to the last
/// bit.
///
/// The edges are read from the split ring, not kept as a list: on a ring of 10^5 vertices filling
/// the list would take longer than everything else.
struct KEdgeGraph {
    const KSplitRing* split = nullptr;
    CArray<bool> isLive;        ///< per edge: neither removed nor used
    CArray<int> firstOutgoing;  ///< per cut point and one more: offsets into `outgoing`
    CArray<int> outgoing;       ///< live edges that start at each cut point, ascending

    int PolygonEdgeCount() const { return split->count; }
    int EdgeCount() const { return split->count + 2 * split->stretchCount; }
    KEdgeFlags Flag(int e) const { return e < split->count ? kPolygonEdge : kCuttingEdge; }
    KSegment Edge(int e) const;
    int StartCutPoint(int e) const;  ///< or -1
    int EndCutPoint(int e) const;    ///< or -1
    bool& Live(int e) { return isLive[static_cast<std::size_t>(e)]; }
};

/// Builds the graph of a split ring, which must outlive it. Left out are
/// - chains that leave a cut point and come back to it without enclosing anything: edges within one
///   cut point, and needles thinner than `tol` where the line cuts them. A hole that hangs on a
///   bridge comes back, too, but encloses an area and stays;
/// - stretches that end freely inside the ring, or lie within one cut point.
/// @return 0, or -90 when memory is exhausted. Cost: one pass over vertices and stretches each for
/// needles, free ends and joins.
int KBuildEdgeGraph(KEdgeGraph* graph, const KSplitRing& split, double tol);

}  // namespace halvorn

#endif
