#include "kernel/assemble_rings.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

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

// The edge that goes on from `current` at its cut point; `firstEdge` stands for the one that began
// the ring, which is used by now. Returns -1 when there is none.
int Continuation(const KEdgeGraph& graph, const KSegment& current, int cutPoint, int startEdge,
                 const KSegment& firstEdge, bool isClockwise, double tol) {
    int best = -1;
    int twin = -1;
    KSegment bestEdge{};
    double bestTurn = 0.0;
    bool hasTurn = false;
    const auto consider = [&](int e, const KSegment& edge) {
        if (KPointsEqualTol(edge.end, current.start, tol)) {
            twin = e;
            return;
        }
        if (best < 0) {
            best = e;
            bestEdge = edge;
            return;
        }
        if (!hasTurn) bestTurn = TurnInside(current, bestEdge, isClockwise);
        hasTurn = true;
        const double turn = TurnInside(current, edge, isClockwise);
        // Equal turns: the earlier edge for a counter-clockwise polygon, the later for a clockwise.
        if (turn > bestTurn || (isClockwise && turn == bestTurn)) {
            best = e;
            bestEdge = edge;
            bestTurn = turn;
        }
    };
    for (int k = graph.firstOutgoing[cutPoint]; k < graph.firstOutgoing[cutPoint + 1]; ++k) {
        const int e = graph.outgoing[k];
        if (e == startEdge) {
            consider(e, firstEdge);
        } else if (KIsLiveEdge(graph.edges, e)) {
            consider(e, EdgeOf(graph, e));
        }
    }
    return best >= 0 ? best : twin;
}

// Drops vertices that lie on the segment between their neighbours, one at a time, so that of two
// coincident neighbours one stays. Returns how many are left, at least three of three or more.
int DropStraightVertices(KPoint* ring, int n, double tol) {
    if (n < 4) return n;
    int kept = 0;
    int live = n;
    for (int i = 0; i < n; ++i) {
        const KPoint& previous = kept > 0 ? ring[kept - 1] : ring[n - 1];
        const KPoint& next = i + 1 < n ? ring[i + 1] : ring[0];
        if (live > 3 && KPointOnSegment(ring[i], previous, next, tol) != 0) {
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

template <class T>
T* CopyOut(const T* source, std::size_t count) {
    CArray<T> copy = AllocateZeroed<T>(count);
    if (copy) std::memcpy(copy.get(), source, count * sizeof(T));
    return copy.release();
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
    const KSegment firstEdge = EdgeOf(graph, startEdge);
    KSegment current = firstEdge;
    for (int e = startEdge;;) {
        ring[(*size)++] = current.start;
        MarkUsed(graph, e);
        const int cutPoint = graph.endCutPoint[e];
        if (cutPoint >= 0) {
            e = Continuation(graph, current, cutPoint, startEdge, firstEdge, isClockwise, tol);
        } else {
            e = e + 1 < graph.polygonEdgeCount ? e + 1 : 0;
        }
        if (e == startEdge) return 0;
        if (e < 0 || !KIsLiveEdge(graph.edges, e)) return -2;
        current = EdgeOf(graph, e);
    }
}

int KAssembleRings(const KEdgeGraph& graph, bool isClockwise, bool takeLoops, double tol,
                   int* count, int** ranges, KPoint** points) {
    *count = 0;
    *ranges = nullptr;
    *points = nullptr;
    const auto edgeCount = static_cast<std::size_t>(graph.edgeCount);
    Collected rings;
    rings.points = AllocateZeroed<KPoint>(edgeCount);
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

    CArray<int> handedRanges(
        CopyOut(rings.ranges.get(), static_cast<std::size_t>(rings.ringCount) + 1));
    CArray<KPoint> handedPoints(
        CopyOut(rings.points.get(), static_cast<std::size_t>(rings.pointCount)));
    if (!handedRanges || !handedPoints) return kOutOfMemory;
    *count = rings.ringCount;
    *ranges = handedRanges.release();
    *points = handedPoints.release();
    return 1;
}

}  // namespace halvorn
