/// @file assemble_rings.h
/// Rebuilds closed rings from directed edges.
#ifndef HALVORN_KERNEL_ASSEMBLE_RINGS_H
#define HALVORN_KERNEL_ASSEMBLE_RINGS_H

#include "kernel/edge_graph.h"
#include "kernel/kernel.h"

namespace halvorn {

/// Traces one ring from `startEdge` and marks its edges used. Its points are the starts of the
/// edges taken, and their ends where the next edge starts beside them.
///
/// Where several edges go on from a cut point, the one that turns farthest to the inside is taken:
/// to the left for a counter-clockwise ring, to the right for a clockwise one. The edge back
/// along the current one is taken only when nothing else goes on. The new ring is closed when it is
/// back at its first point and no live edge turns farther inside than its first edge. A hole that
/// hangs on a bridge at that point therefore belongs to the ring.
/// @param isClockwise orientation of the ring that was cut
/// @param ring        room for both ends of all live edges
/// @param size        number of points written
/// @return 0, or -2 when the chain ends before it closes
int KTraceRing(KEdgeGraph& graph, int startEdge, bool isClockwise, double tol, KPoint* ring,
               int* size);

/// Assembles every ring that contains a cutting edge, and drops vertices that lie within `tol` on
/// the segment joining their neighbours, as long as three remain and the area changes by no more
/// than rounding.
/// @param takeLoops also assembles rings from the edges of the cut ring that are left: pieces that
///                  hang together at a single cut point
/// @param count     number of rings
/// @param ranges    count + 1 cumulative offsets, the first 0; the caller frees
/// @param points    all rings back to back; the caller frees
/// @return 1 (also for no ring, with null arrays), -2 as `KTraceRing`, or -90; a failure leaves 0
///         and null outputs
int KAssembleRings(KEdgeGraph& graph, bool isClockwise, bool takeLoops, double tol, int* count,
                   int** ranges, KPoint** points);

}  // namespace halvorn

#endif
