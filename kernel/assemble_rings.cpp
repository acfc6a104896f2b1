#include "kernel/assemble_rings.h"

#include <algorithm>
#include <cstddef>

#include "kernel/edge_graph.h"
#include "kernel/point_tests.h"
#include "kernel/vectors.h"
#include "numeric/c_array.h"
#include "numeric/constants.h"
#include "numeric/scalar.h"

namespace halvorn {

namespace {

KPoint UnitDirection(const KSegment& edge) {
    KPoint direction;
    KVectorDiff(&direction, &edge.start, &edge.end);
    // The true length: edges shorter than KVectorNorm's cut-off have a direction as well.
    return KScaleVector(direction, 1.0 / KDistance(&edge.start, &edge.end));
}

// Whether previous, p and next are in line up to the rounding of their coordinates: the triangle is
// no larger than what one unit in their last place sweeps along the two edges. A tolerance would be
// too coarse: a long flange would lose 1e-10 of its thickness at a vertex that a line just misses.
bool AreInLine(const KPoint& previous, const KPoint& p, const KPoint& next) {
    KPoint in;
    KPoint out;
    KVectorDiff(&in, &previous, &p);
    KVectorDiff(&out, &p, &next);
    const double reach = MaxValue(AbsValue(p.x), AbsValue(p.y));
    const double edges = AbsValue(in.x) + AbsValue(in.y) + AbsValue(out.x) + AbsValue(out.y);
    return AbsValue(KCross(&in, &out)) <= kInLineRounding * reach * edges;
}

// How far `candidate` turns to the inside from `current` [rad]. Rounding decides the side of a turn
// that doubles back along `current` itself, so it counts as the least turn. One that leaves that
// line, however little, keeps its angle.
double TurnInside(const KSegment& current, const KSegment& candidate, bool isClockwise) {
    const KPoint from = UnitDirection(current);
    const KPoint to = UnitDirection(candidate);
    if (KDot(&from, &to) < 0.0 && AreInLine(current.start, candidate.start, candidate.end)) {
        return -kPi;
    }
    const double angle = KVectorAngle(&from, &to);
    return isClockwise ? -angle : angle;
}

// Whether edge e, which starts where `current` ends, leads back to where it starts.
bool IsTwin(const KEdgeGraph& graph, int current, int e, double tol) {
    const int start = graph.StartCutPoint(current);
    const int end = graph.EndCutPoint(e);
    return start >= 0 || end >= 0
               ? start == end
               : KPointsEqualTol(graph.Edge(e).end, graph.Edge(current).start, tol);
}

// The edge that goes on from `current` at its cut point; `first`, which began the ring, counts as
// live. Returns -1 when there is none.
int Continuation(KEdgeGraph& graph, int current, int first, bool isClockwise, double tol) {
    const KSegment edge = graph.Edge(current);
    const int cutPoint = graph.EndCutPoint(current);
    int best = -1;
    int twin = -1;
    double bestTurn = 0.0;
    bool hasTurn = false;
    for (int k = graph.firstOutgoing[static_cast<std::size_t>(cutPoint)];
         k < graph.firstOutgoing[static_cast<std::size_t>(cutPoint) + 1]; ++k) {
        const int e = graph.outgoing[static_cast<std::size_t>(k)];
        if (e != first && !graph.Live(e)) continue;
        if (IsTwin(graph, current, e, tol)) {
            twin = e;
            continue;
        }
        if (best < 0) {
            best = e;
            continue;
        }
        if (!hasTurn) bestTurn = TurnInside(edge, graph.Edge(best), isClockwise);
        hasTurn = true;
        const double turn = TurnInside(edge, graph.Edge(e), isClockwise);
        // Equal turns: the earlier edge for a counter-clockwise ring, the later for a clockwise
        // one.
        if (turn > bestTurn || (isClockwise && turn == bestTurn)) {
            best = e;
            bestTurn = turn;
        }
    }
    return best >= 0 ? best : twin;
}

// Drops straight vertices on the segment between their neighbours, one at a time, so that of two
// coincident neighbours one stays. Returns how many are left, at least three of three or more.
int DropStraightVertices(KPoint* ring, int n, double tol) {
    if (n < 4) return n;
    int kept = 0;
    int live = n;
    for (int i = 0; i < n; ++i) {
        const KPoint& previous = kept > 0 ? ring[kept - 1] : ring[n - 1];
        const KPoint& next = i + 1 < n ? ring[i + 1] : ring[0];
        if (live > 3 && AreInLine(previous, ring[i], next) &&
            KPointOnSegment(ring[i], previous, next, tol) != 0) {
            --live;
        } else {
            ring[kept++] = ring[i];
        }
    }
    return kept;
}

// Traced rings, collected in room for every edge's start before they are handed out.
struct Collected {
    CArray<KPoint> points;
    CArray<int> ranges;
    int ringCount = 0;
    int pointCount = 0;
};

int CollectRing(KEdgeGraph& graph, int startEdge, bool isClockwise, double tol, Collected* rings) {
    KPoint* const ring = rings->points.get() + rings->pointCount;
    int size = 0;
    const int status = KTraceRing(graph, startEdge, isClockwise, tol, ring, &size);
    if (status != 0) return status;
    size = DropStraightVertices(ring, size, tol);
    if (size < 3) return 0;
    rings->pointCount += size;
    rings->ranges[static_cast<std::size_t>(++rings->ringCount)] = rings->pointCount;
    return 0;
}

}  // namespace

int KTraceRing(KEdgeGraph& graph, int startEdge, bool isClockwise, double tol, KPoint* ring,
               int* size) {
    *size = 0;
    for (int current = startEdge;;) {
        const KSegment edge = graph.Edge(current);
        ring[(*size)++] = edge.start;
        graph.Live(current) = false;
        int next = current + 1 < graph.PolygonEdgeCount() ? current + 1 : 0;
        if (graph.EndCutPoint(current) >= 0) {
            next = Continuation(graph, current, startEdge, isClockwise, tol);
        }
        const bool isClosed = next == startEdge;
        if (!isClosed && (next < 0 || !graph.Live(next))) return -2;
        const KPoint start = graph.Edge(next).start;
        if (edge.end.x != start.x || edge.end.y != start.y) ring[(*size)++] = edge.end;
        if (isClosed) return 0;
        current = next;
    }
}

int KAssembleRings(KEdgeGraph& graph, bool isClockwise, bool takeLoops, double tol, int* count,
                   int** ranges, KPoint** points) {
    *count = 0;
    *ranges = nullptr;
    *points = nullptr;
    const auto edgeCount = static_cast<std::size_t>(graph.EdgeCount());
    Collected rings;
    // The start of every edge, and the vertices beside a cut point where a trace enters and leaves.
    rings.points =
        AllocateZeroed<KPoint>(edgeCount + 2 * static_cast<std::size_t>(graph.split->besideCount));
    // Every ring has an edge that starts at a cut point.
    rings.ranges = AllocateZeroed<int>(
        static_cast<std::size_t>(
            graph.firstOutgoing[static_cast<std::size_t>(graph.split->cutPointCount)]) +
        1);
    if (!rings.ranges || (edgeCount > 0 && !rings.points)) return kOutOfMemory;

    for (int e = 0; e < graph.EdgeCount(); ++e) {
        if (graph.Flag(e) != kCuttingEdge || !graph.Live(e)) continue;
        const int status = CollectRing(graph, e, isClockwise, tol, &rings);
        if (status != 0) return status;
    }
    for (int e = 0; takeLoops && e < graph.PolygonEdgeCount(); ++e) {
        if (graph.StartCutPoint(e) < 0 || !graph.Live(e)) continue;
        const int status = CollectRing(graph, e, isClockwise, tol, &rings);
        if (status != 0) return status;
    }
    if (rings.ringCount == 0) return 1;

    // Trimmed in place: a copy would double the memory of a large result for a moment.
    if (!Resize(&rings.ranges, static_cast<std::size_t>(rings.ringCount) + 1) ||
        !Resize(&rings.points, static_cast<std::size_t>(rings.pointCount))) {
        return kOutOfMemory;
    }
    *count = rings.ringCount;
    *ranges = rings.ranges.release();
    *points = rings.points.release();
    return 1;
}

}  // namespace halvorn
