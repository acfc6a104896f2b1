/// @file ring_edges.h
/// The one loop over the edges of a ring.
#ifndef HALVORN_KERNEL_RING_EDGES_H
#define HALVORN_KERNEL_RING_EDGES_H

#include "kernel/kernel.h"

namespace halvorn {

/// Calls visit(start, end) for the edges 0, 1, ..., n - 2 and then for the closing edge (n - 1, 0).
/// Sums formed in `visit` therefore run in one fixed order, whatever the optimiser does.
///
/// Unrolled by four: otherwise integrals over long rings spend a quarter of their time in the loop.
/// A count below 1 visits nothing; one point is visited as the edge from itself to itself.
template <class Visit>
inline void ForEachRingEdge(int n, const KPoint* ring, Visit&& visit) {
    if (n < 1) return;
    const KPoint* point = ring;
    const KPoint* const last = ring + (n - 1);
    for (; last - point >= 4; point += 4) {
        visit(point[0], point[1]);
        visit(point[1], point[2]);
        visit(point[2], point[3]);
        visit(point[3], point[4]);
    }
    for (; point != last; ++point) visit(point[0], point[1]);
    visit(*last, *ring);
}

}  // namespace halvorn

#endif
