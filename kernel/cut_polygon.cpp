#include "kernel/cut_polygon.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "kernel/assemble_rings.h"
#include "kernel/box_tree.h"
#include "kernel/edge_graph.h"
#include "kernel/intersections.h"
#include "kernel/polygon_area.h"
#include "kernel/split_ring.h"
#include "kernel/vectors.h"
#include "numeric/c_array.h"
#include "numeric/constants.h"
#include "numeric/scalar.h"

namespace halvorn {

namespace {

// The bounding box of at least one point. Not finite when a coordinate is not.
KBox BoxOf(const KPoint* points, int n) {
    KBox box{points[0], points[0]};
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

// Assembles the pieces of a split ring. Every edge of the ring must belong to one.
int AssemblePieces(const KSplitRing& split, bool isClockwise, bool takeLoops, double tol,
                   int* count, int** ranges, KPoint** points) {
    KEdgeGraph graph;
    int status = KBuildEdgeGraph(&graph, split, tol);
    if (status == 0) {
        status = KAssembleRings(graph, isClockwise, takeLoops, tol, count, ranges, points);
    }
    if (status == kOutOfMemory) return status;
    if (status <= 0) return 0;
    for (int e = 0; e < graph.PolygonEdgeCount(); ++e) {
        if (graph.Live(e)) return 0;
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
    const KBox ringBox = BoxOf(ring, n);
    // Twice the vertices for every segment, and the stretches' edges, must be countable in an int.
    if (!IsFinite(ringBox.low) || n > std::numeric_limits<int>::max() / 16) return 0;
    KSplitRing split;
    int status = KBeginSplit(&split, ring, n);
    for (int i = 0; status == 0 && i + 1 < ncut; i += 2) {
        const KBox segmentBox = KBoxOfSegment(cut[i], cut[i + 1], tol);
        const KCutLine line = LineOf(cut[i], cut[i + 1], isUnbounded);
        if (!IsFinite(line.direction) || !KBoxesMeet(ringBox, segmentBox)) continue;
        status = KSplitAtLine(&split, line, tol);
    }
    if (status == kOutOfMemory) return status;
    if (status != 0) return 0;
    const bool isClockwise = KPolygonSignedArea(&ring->x, n) > 0.0;
    return AssemblePieces(split, isClockwise, isUnbounded && split.straddles, tol, count, ranges,
                          points);
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

    // Where the line crosses the two sides of the bounding box that it meets at the steeper angle.
    const KBox box = BoxOf(ring, n);
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
