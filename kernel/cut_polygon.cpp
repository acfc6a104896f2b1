#include "kernel/cut_polygon.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "kernel/assemble_rings.h"
#include "kernel/primitives.h"
#include "kernel/split_ring.h"
#include "numeric/c_array.h"
#include "numeric/tolerance.h"

namespace halvorn {

namespace {

struct Box {
    KPoint low;
    KPoint high;
};

// The bounding box of at least one point. Not finite when a coordinate is not.
Box BoxOf(const KPoint* points, int n) {
    Box box{points[0], points[0]};
    double check = 0.0;
    for (int i = 0; i < n; ++i) {
        box.low = {MinValue(points[i].x, box.low.x), MinValue(points[i].y, box.low.y)};
        box.high = {MaxValue(points[i].x, box.high.x), MaxValue(points[i].y, box.high.y)};
        check += 0.0 * points[i].x + 0.0 * points[i].y;  // 0, or NaN from an infinity or a NaN
    }
    box.low.x += check;
    return box;
}

bool IsFinite(const KPoint& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

bool BoxesMeet(const Box& a, const Box& b, double tol) {
    return a.low.x - tol <= b.high.x && b.low.x <= a.high.x + tol && a.low.y - tol <= b.high.y &&
           b.low.y <= a.high.y + tol;
}

// Arrays behind one KEdgeGraph.
struct GraphStorage {
    CArray<KPoint> edges;
    CArray<unsigned int> flags;
    CArray<int> startCutPoint;
    CArray<int> endCutPoint;
    CArray<int> firstOutgoing;
    CArray<int> outgoing;

    bool Allocate(std::size_t edgeCount, std::size_t cutPointCount) {
        edges = AllocateZeroed<KPoint>(2 * edgeCount);
        flags = AllocateZeroed<unsigned int>(edgeCount);
        startCutPoint = AllocateZeroed<int>(edgeCount);
        endCutPoint = AllocateZeroed<int>(edgeCount);
        firstOutgoing = AllocateZeroed<int>(cutPointCount + 2);
        outgoing = AllocateZeroed<int>(edgeCount);
        return edges && flags && startCutPoint && endCutPoint && firstOutgoing && outgoing;
    }

    void SetEdge(int e, const KSegment& edge, KEdgeOrigin origin, int start, int end) {
        const auto at = static_cast<std::size_t>(e);
        edges[2 * at] = edge.start;
        edges[2 * at + 1] = edge.end;
        flags[at] = origin;
        startCutPoint[at] = start;
        endCutPoint[at] = end;
    }

    void RemoveEdge(int e) {
        const auto at = static_cast<std::size_t>(e);
        edges[2 * at] = edges[2 * at + 1] = {UNDEFINED_VALUE, UNDEFINED_VALUE};
    }
};

// Removes the chains that leave a cut point and come back to it without enclosing anything: edges
// within one cut point, and needles that are thinner than the tolerance where the line cuts them. A
// hole that hangs on a bridge comes back, too, and stays.
void RemoveNeedles(const KSplitRing& split, double tol, GraphStorage* storage) {
    const int n = split.count;
    int first = 0;
    while (first < n && split.cutPointOf[static_cast<std::size_t>(first)] < 0) ++first;
    if (first == n) return;
    const auto vertexAt = [&](int i) -> const KPoint& {
        return split.vertices[static_cast<std::size_t>(i % n)];
    };
    for (int start = first, end = 0; start < first + n; start = end) {
        const int cutPoint = split.cutPointOf[static_cast<std::size_t>(start % n)];
        double area = 0.0;
        double length = 0.0;
        for (end = start + 1;; ++end) {
            KPoint in;
            KPoint out;
            KVectorDiff(&in, &vertexAt(start), &vertexAt(end - 1));
            KVectorDiff(&out, &vertexAt(end - 1), &vertexAt(end));
            area += 0.5 * KCross(&in, &out);
            length += AbsValue(out.x) + AbsValue(out.y);
            if (split.cutPointOf[static_cast<std::size_t>(end % n)] >= 0) break;
        }
        const bool comesBack = split.cutPointOf[static_cast<std::size_t>(end % n)] == cutPoint;
        if (!comesBack || AbsValue(area) > tol * length) continue;
        for (int i = start; i < end; ++i) storage->RemoveEdge(i % n);
    }
}

// The polygon's edges, then each stretch there and back.
void FillEdges(const KSplitRing& split, GraphStorage* storage) {
    const int n = split.count;
    for (int i = 0; i < n; ++i) {
        const auto from = static_cast<std::size_t>(i);
        const auto to = static_cast<std::size_t>(i + 1 < n ? i + 1 : 0);
        const int start = split.cutPointOf[from];
        const int end = split.cutPointOf[to];
        storage->SetEdge(i, {split.vertices[from], split.vertices[to]}, kPolygonEdge, start, end);
    }
    for (int s = 0; s < split.stretchCount; ++s) {
        const KStretch& stretch = split.stretches[static_cast<std::size_t>(s)];
        const KPoint& a = split.cutPoints[static_cast<std::size_t>(stretch.start)];
        const KPoint& b = split.cutPoints[static_cast<std::size_t>(stretch.end)];
        storage->SetEdge(n + 2 * s, {a, b}, kCuttingEdge, stretch.start, stretch.end);
        storage->SetEdge(n + 2 * s + 1, {b, a}, kCuttingEdge, stretch.end, stretch.start);
    }
}

// Removes the stretches that end freely inside the ring. The edges back stay out of the search:
// each would match the ends of its own edge there.
void PruneDanglingStretches(const KSplitRing& split, double tol, GraphStorage* storage) {
    const int n = split.count;
    const int edgeCount = n + 2 * split.stretchCount;
    for (int e = n + 1; e < edgeCount; e += 2) storage->RemoveEdge(e);
    for (int point; (point = KFindDanglingEdge(storage->edges.get(), 2 * edgeCount, tol)) >= 0;) {
        storage->RemoveEdge(point / 2);
    }
    for (int e = n; e < edgeCount; e += 2) {
        if (!KIsLiveEdge(storage->edges.get(), e)) continue;
        const auto at = 2 * static_cast<std::size_t>(e);
        storage->edges[at + 2] = storage->edges[at + 1];
        storage->edges[at + 3] = storage->edges[at];
    }
}

// Groups the live edges by the cut point that they start at (counting sort, edges ascending).
void IndexOutgoing(int edgeCount, int cutPointCount, GraphStorage* storage) {
    const auto forEachStart = [&](auto&& act) {
        for (int e = 0; e < edgeCount; ++e) {
            const int cutPoint = storage->startCutPoint[static_cast<std::size_t>(e)];
            if (cutPoint >= 0 && KIsLiveEdge(storage->edges.get(), e)) {
                act(static_cast<std::size_t>(cutPoint), e);
            }
        }
    };
    // Counts two places up, so that filling moves each start to where the next group begins.
    forEachStart([&](std::size_t cutPoint, int) { ++storage->firstOutgoing[cutPoint + 2]; });
    for (std::size_t k = 2; k < static_cast<std::size_t>(cutPointCount) + 2; ++k) {
        storage->firstOutgoing[k] += storage->firstOutgoing[k - 1];
    }
    forEachStart([&](std::size_t cutPoint, int e) {
        storage->outgoing[static_cast<std::size_t>(storage->firstOutgoing[cutPoint + 1]++)] = e;
    });
}

int AssemblePieces(KSplitRing split, bool isClockwise, bool takeLoops, double tol, int* count,
                   int** ranges, KPoint** points) {
    const int edgeCount = split.count + 2 * split.stretchCount;
    GraphStorage storage;
    if (!storage.Allocate(static_cast<std::size_t>(edgeCount),
                          static_cast<std::size_t>(split.cutPointCount))) {
        return kOutOfMemory;
    }
    FillEdges(split, &storage);
    RemoveNeedles(split, tol, &storage);
    if (split.hasFreeEnd) PruneDanglingStretches(split, tol, &storage);
    IndexOutgoing(edgeCount, split.cutPointCount, &storage);
    // The edges hold it all now; a large ring is better not kept twice.
    split.vertices.reset();
    split.cutPointOf.reset();
    const KEdgeGraph graph{edgeCount,
                           split.count,
                           storage.edges.get(),
                           storage.flags.get(),
                           storage.startCutPoint.get(),
                           storage.endCutPoint.get(),
                           storage.firstOutgoing.get(),
                           storage.outgoing.get()};
    const int status = KAssembleRings(graph, isClockwise, takeLoops, tol, count, ranges, points);
    if (status == kOutOfMemory) return status;
    if (status <= 0) return 0;
    for (int e = 0; e < split.count; ++e) {
        if (KIsLiveEdge(graph.edges, e)) return 0;
    }
    return *count > 0 ? 1 : 0;
}

void ReleasePieces(int* count, int** ranges, KPoint** points) {
    std::free(*ranges);
    std::free(*points);
    *count = 0;
    *ranges = nullptr;
    *points = nullptr;
}

// The line of the cutting segment from `start` to `end`; direction NaN when they are one point.
KCutLine LineOf(const KPoint& start, const KPoint& end, bool isUnbounded) {
    KPoint along;
    KVectorDiff(&along, &start, &end);
    const double length = KDistance(&start, &end);
    return {start, KScaleVector(along, 1.0 / length), isUnbounded ? -UNDEFINED_VALUE : 0.0,
            isUnbounded ? UNDEFINED_VALUE : length};
}

int SplitRing(const KPoint* ring, int n, const KPoint* cut, int ncut, bool isUnbounded, double tol,
              int* count, int** ranges, KPoint** points) {
    const Box ringBox = BoxOf(ring, n);
    // Twice the vertices for every segment, and the edges of the stretches, stay countable.
    if (!IsFinite(ringBox.low) || n > std::numeric_limits<int>::max() / 16) return 0;
    KSplitRing split;
    int status = KBeginSplit(&split, ring, n, tol);
    for (int i = 0; status == 0 && i + 1 < ncut; i += 2) {
        const Box segmentBox = BoxOf(cut + i, 2);
        const KCutLine line = LineOf(cut[i], cut[i + 1], isUnbounded);
        if (!IsFinite(line.direction) || !BoxesMeet(ringBox, segmentBox, tol)) continue;
        status = KSplitAtLine(&split, line, tol);
    }
    if (status == kOutOfMemory) return status;
    if (status != 0) return 0;
    const bool isClockwise = KPolygonSignedArea(&ring->x, n) > 0.0;
    return AssemblePieces(std::move(split), isClockwise, isUnbounded && split.straddles, tol, count,
                          ranges, points);
}

int CopyRing(const KPoint* ring, int n, int* count, int** ranges, KPoint** points) {
    CArray<int> offsets = AllocateZeroed<int>(2);
    CArray<KPoint> copy = AllocateZeroed<KPoint>(static_cast<std::size_t>(n));
    if (!offsets || (n > 0 && !copy)) return kOutOfMemory;
    offsets[1] = n;
    std::copy_n(ring, n, copy.get());
    *count = 2;
    *ranges = offsets.release();
    *points = copy.release();
    return 1;
}

int Split(const KPoint* ring, int n, const KPoint* cut, int ncut, bool isUnbounded, double tol,
          int* count, int** ranges, KPoint** points) {
    *count = 0;
    *ranges = nullptr;
    *points = nullptr;
    n = std::max(n, 0);
    if (ncut == 0) return CopyRing(ring, n, count, ranges, points);
    if (n == 0) return 0;
    const int status = SplitRing(ring, n, cut, ncut, isUnbounded, tol, count, ranges, points);
    if (status <= 0) ReleasePieces(count, ranges, points);
    return status;
}

}  // namespace

int KSplitPolygonByPolyline(const KPoint* ring, int n, const KPoint* cut, int ncut, double tol,
                            int* count, int** ranges, KPoint** points) {
    return Split(ring, n, cut, ncut, false, tol, count, ranges, points);
}

int KCutPolygonByLine(const KPoint* ring, int n, const KPoint& p1, const KPoint& p2, double tol,
                      int* count, int** ranges, KPoint** points) {
    *count = 0;
    *ranges = nullptr;
    *points = nullptr;
    if (n < 1 || KPointsEqualTol(p1, p2, tol)) return 0;

    // The line's crossings with the two sides of the bounding box that it meets at the steeper
    // angle.
    const Box box = BoxOf(ring, n);
    const KPoint lowLow = box.low;
    const KPoint highHigh = box.high;
    const KPoint lowHigh{box.low.x, box.high.y};
    const KPoint highLow{box.high.x, box.low.y};
    const KPoint xAxis{1.0, 0.0};
    KPoint along;
    KVectorDiff(&along, &p1, &p2);
    const double angle = AbsValue(KVectorAngle(&xAxis, &along));
    const bool isNearerHorizontal = angle <= kQuarterPi || angle >= kThreeQuarterPi;
    KPoint ends[2];
    const int hasStart = isNearerHorizontal
                             ? KLineIntersection(&p1, &p2, &lowLow, &lowHigh, &ends[0])
                             : KLineIntersection(&p1, &p2, &highHigh, &lowHigh, &ends[0]);
    const int hasEnd = isNearerHorizontal
                           ? KLineIntersection(&p1, &p2, &highHigh, &highLow, &ends[1])
                           : KLineIntersection(&p1, &p2, &lowLow, &highLow, &ends[1]);
    if (hasStart == 0 || hasEnd == 0) return 0;
    return std::max(Split(ring, n, ends, 2, true, tol, count, ranges, points), 0);
}

}  // namespace halvorn
