#include "kernel/assemble_rings.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>

#include "kernel/point_tests.h"
#include "kernel/primitives.h"
#include "numeric/c_array.h"
#include "numeric/tolerance.h"

namespace halvorn {

namespace {

// A turn this close to a half turn [rad] is one, to the one side or the other by rounding.
constexpr double kHalfTurn = 1e-9;

KSegment EdgeOf(const KEdgeGraph& graph, int e) {
    const std::ptrdiff_t at = 2 * static_cast<std::ptrdiff_t>(e);
    return {graph.edges[at], graph.edges[at + 1]};
}

void MarkUsed(const KEdgeGraph& graph, int e) {
    const std::ptrdiff_t at = 2 * static_cast<std::ptrdiff_t>(e);
    graph.edges[at] = graph.edges[at + 1] = {INVALID_VALUE, INVALID_VALUE};
}

KPoint UnitDirection(const KSegment& edge) {
    KPoint direction;
    KVectorDiff(&direction, &edge.start, &edge.end);
    // The true length: edges shorter than KVectorNorm's cut-off have a direction, too.
    return KScaleVector(direction, 1.0 / KDistance(&edge.start, &edge.end));
}

// How far `candidate` turns to the inside from `current` [rad]; a half turn counts as the least.
double TurnInside(const KSegment& current, const KSegment& candidate, bool isClockwise) {
    const KPoint from = UnitDirection(current);
    const KPoint to = UnitDirection(candidate);
    const double angle = KVectorAngle(&from, &to);
    if (AbsValue(angle) > kPi - kHalfTurn) return -kPi;
    return isClockwise ? -angle : angle;
}

// The edge that a trace has reached: its index and, as it is marked used by now, its ends.
struct TracedEdge {
    int index;
    KSegment segment;
};

// Whether edge e, which starts where `current` ends, leads back to where it starts.
bool IsTwin(const KEdgeGraph& graph, const TracedEdge& current, int e, const KSegment& edge,
            double tol) {
    const int start = graph.startCutPoint[current.index];
    const int end = graph.endCutPoint[e];
    return start >= 0 || end >= 0 ? start == end
                                  : KPointsEqualTol(edge.end, current.segment.start, tol);
}

// The edge that goes on from `current` at its cut point; `first` is the one that began the ring.
// Returns -1 when there is none.
int Continuation(const KEdgeGraph& graph, const TracedEdge& current, const TracedEdge& first,
                 bool isClockwise, double tol) {
    int best = -1;
    int twin = -1;
    KSegment bestEdge{};
    double bestTurn = 0.0;
    bool hasTurn = false;
    const auto consider = [&](int e, const KSegment& edge) {
        if (IsTwin(graph, current, e, edge, tol)) {
            twin = e;
            return;
        }
        if (best < 0) {
            best = e;
            bestEdge = edge;
            return;
        }
        if (!hasTurn) bestTurn = TurnInside(current.segment, bestEdge, isClockwise);
        hasTurn = true;
        const double turn = TurnInside(current.segment, edge, isClockwise);
        // Equal turns: the earlier edge for a counter-clockwise polygon, the later for a clockwise.
        if (turn > bestTurn || (isClockwise && turn == bestTurn)) {
            best = e;
            bestEdge = edge;
            bestTurn = turn;
        }
    };
    const int cutPoint = graph.endCutPoint[current.index];
    for (int k = graph.firstOutgoing[cutPoint]; k < graph.firstOutgoing[cutPoint + 1]; ++k) {
        const int e = graph.outgoing[k];
        if (e == first.index) {
            consider(e, first.segment);
        } else if (KIsLiveEdge(graph.edges, e)) {
            consider(e, EdgeOf(graph, e));
        }
    }
    return best >= 0 ? best : twin;
}

// Whether the corner at p is straight but for the rounding of its coordinates: its triangle is no
// larger than one unit in their last place sweeps along the two edges. The tolerance alone would
// let a long flange lose 1e-10 of its thickness at a vertex that a line just misses.
bool IsStraight(const KPoint& previous, const KPoint& p, const KPoint& next) {
    constexpr double kRounding = 4.0 * std::numeric_limits<double>::epsilon();
    KPoint in;
    KPoint out;
    KVectorDiff(&in, &previous, &p);
    KVectorDiff(&out, &p, &next);
    const double reach = MaxValue(AbsValue(p.x), AbsValue(p.y));
    const double edges = AbsValue(in.x) + AbsValue(in.y) + AbsValue(out.x) + AbsValue(out.y);
    return AbsValue(KCross(&in, &out)) <= kRounding * reach * edges;
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
        if (live > 3 && IsStraight(previous, ring[i], next) &&
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

int CollectRing(const KEdgeGraph& graph, int startEdge, bool isClockwise, double tol,
                Collected* rings) {
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

// Hands an array out with no more room than its `count` elements take. What is left of it is put
// back with realloc: a copy would double the memory of a large result for a moment.
template <class T>
T* HandOut(CArray<T>* array, int count) {
    void* const trimmed = std::realloc(array->get(), static_cast<std::size_t>(count) * sizeof(T));
    if (trimmed) static_cast<void>(array->release());
    return static_cast<T*>(trimmed);
}

}  // namespace

bool KIsLiveEdge(const KPoint* edges, int e) {
    return AbsValue(edges[2 * static_cast<std::ptrdiff_t>(e)].x) < UNDEFINED_VALUE;
}

int KFindDanglingEdge(const KPoint* edges, int pointCount, double tol) {
    const auto isMatched = [&](int point, int edge) {
        for (int i = 0; i < pointCount; ++i) {
            if (i / 2 != edge && KPointsEqualTol(edges[point], edges[i], tol)) return true;
        }
        return false;
    };
    for (int e = 0; 2 * e + 1 < pointCount; ++e) {
        if (!KIsLiveEdge(edges, e)) continue;
        if (!isMatched(2 * e, e) || !isMatched(2 * e + 1, e)) return 2 * e;
    }
    return -1;
}

int KTraceRing(const KEdgeGraph& graph, int startEdge, bool isClockwise, double tol, KPoint* ring,
               int* size) {
    *size = 0;
    const TracedEdge first{startEdge, EdgeOf(graph, startEdge)};
    for (TracedEdge current = first;;) {
        ring[(*size)++] = current.segment.start;
        MarkUsed(graph, current.index);
        int next = current.index + 1 < graph.polygonEdgeCount ? current.index + 1 : 0;
        if (graph.endCutPoint[current.index] >= 0) {
            next = Continuation(graph, current, first, isClockwise, tol);
        }
        const bool isClosed = next == startEdge;
        if (!isClosed && (next < 0 || !KIsLiveEdge(graph.edges, next))) return -2;
        const KSegment segment = isClosed ? first.segment : EdgeOf(graph, next);
        const KPoint& end = current.segment.end;
        if (end.x != segment.start.x || end.y != segment.start.y) ring[(*size)++] = end;
        if (isClosed) return 0;
        current = {next, segment};
    }
}

int KAssembleRings(const KEdgeGraph& graph, bool isClockwise, bool takeLoops, double tol,
                   int* count, int** ranges, KPoint** points) {
    *count = 0;
    *ranges = nullptr;
    *points = nullptr;
    const auto edgeCount = static_cast<std::size_t>(graph.edgeCount);
    Collected rings;
    rings.points = AllocateZeroed<KPoint>(2 * edgeCount);
    rings.ranges = AllocateZeroed<int>(edgeCount + 1);
    if (!rings.ranges || (edgeCount > 0 && !rings.points)) return kOutOfMemory;

    for (int e = 0; e < graph.edgeCount; ++e) {
        if (graph.flags[e] != kCuttingEdge || !KIsLiveEdge(graph.edges, e)) continue;
        const int status = CollectRing(graph, e, isClockwise, tol, &rings);
        if (status != 0) return status;
    }
    for (int e = 0; takeLoops && e < graph.polygonEdgeCount; ++e) {
        if (graph.startCutPoint[e] < 0 || !KIsLiveEdge(graph.edges, e)) continue;
        const int status = CollectRing(graph, e, isClockwise, tol, &rings);
        if (status != 0) return status;
    }
    if (rings.ringCount == 0) return 1;

    CArray<int> handedRanges(HandOut(&rings.ranges, rings.ringCount + 1));
    CArray<KPoint> handedPoints(HandOut(&rings.points, rings.pointCount));
    if (!handedRanges || !handedPoints) return kOutOfMemory;
    *count = rings.ringCount;
    *ranges = handedRanges.release();
    *points = handedPoints.release();
    return 1;
}

}  // namespace halvorn
