#include "kernel/split_ring.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "kernel/vectors.h"
#include "numeric/scalar.h"

namespace halvorn {

namespace {

std::size_t Size(int count) {
    return static_cast<std::size_t>(count);
}

// One vertex on the line. `crosses` tells whether the ring, passing through this vertex, crosses a
// parallel just left of the line: it does when exactly one of its neighbours lies on that side.
struct LineVisit {
    double t;  // position along the line [L]
    int vertex;
    bool crosses;
};

// The visits of one cut point. After `SumAlongLine` the three numbers hold for the stretch from
// this cut point to the next one along the line.
struct CutPointSums {
    double t;
    int cutPoint;
    int crossings;
    int edgesAlong;
};

// Working storage of one line.
struct LineWork {
    CArray<signed char> side;  // per vertex: +1 left of the line, -1 right of it, 0 on it
    CArray<LineVisit> visits;
    int visitCount = 0;
    CArray<CutPointSums> sums;
    int sumCount = 0;
    CArray<int> sumOf;  // per vertex on the line: its entry in `sums`
};

double DistanceLeft(const KCutLine& line, const KPoint& p) {
    KPoint toPoint;
    KVectorDiff(&toPoint, &line.origin, &p);
    return KCross(&line.direction, &toPoint);
}

double PositionAlong(const KCutLine& line, const KPoint& p) {
    KPoint toPoint;
    KVectorDiff(&toPoint, &line.origin, &p);
    return KDot(&line.direction, &toPoint);
}

signed char SideOf(double distance, double tol) {
    return static_cast<signed char>(distance > tol ? 1 : distance < -tol ? -1 : 0);
}

// The point at which the edge from a to b crosses the line. Computed from the nearer end, so that
// the edge from b to a gives the same bits: the two edges of a bridge meet the line in one point.
KPoint Crossing(const KPoint& a, double distanceA, const KPoint& b, double distanceB) {
    const bool fromA = AbsValue(distanceA) < AbsValue(distanceB) ||
                       (AbsValue(distanceA) == AbsValue(distanceB) && distanceA > 0.0);
    const KPoint& from = fromA ? a : b;
    const KPoint& to = fromA ? b : a;
    const double distanceFrom = fromA ? distanceA : distanceB;
    const double distanceTo = fromA ? distanceB : distanceA;
    KPoint edge;
    KVectorDiff(&edge, &from, &to);
    return KTranslatePoint(from, KScaleVector(edge, distanceFrom / (distanceFrom - distanceTo)));
}

// Splits the edges that cross the line, in place, and records the side of each vertex.
int InsertCrossings(KSplitRing* split, const KCutLine& line, double tol, LineWork* work) {
    const int n = split->count;
    bool hasLeft = false;
    bool hasRight = false;
    std::size_t total = Size(n);
    signed char before = SideOf(DistanceLeft(line, split->vertices[Size(n - 1)]), tol);
    for (int i = 0; i < n; ++i) {
        const signed char side = SideOf(DistanceLeft(line, split->vertices[Size(i)]), tol);
        hasLeft = hasLeft || side > 0;
        hasRight = hasRight || side < 0;
        total += side * before < 0;
        before = side;
    }
    split->straddles = split->straddles || (hasLeft && hasRight);
    work->side = AllocateZeroed<signed char>(total);
    if (!work->side || !Resize(&split->vertices, total) || !Resize(&split->cutPointOf, total)) {
        return kOutOfMemory;
    }

    // From the last edge to the first, so that nothing is overwritten before it is read.
    std::size_t place = total;
    const auto put = [&](const KPoint& vertex, int cutPoint, signed char side) {
        --place;
        split->vertices[place] = vertex;
        split->cutPointOf[place] = cutPoint;
        work->side[place] = side;
    };
    KPoint next = split->vertices[0];
    double distanceNext = DistanceLeft(line, next);
    for (int i = n - 1; i >= 0; --i) {
        const KPoint here = split->vertices[Size(i)];
        const double distance = DistanceLeft(line, here);
        if (SideOf(distance, tol) * SideOf(distanceNext, tol) < 0) {
            put(Crossing(here, distance, next, distanceNext), -1, 0);
        }
        put(here, split->cutPointOf[Size(i)], SideOf(distance, tol));
        next = here;
        distanceNext = distance;
    }
    split->count = static_cast<int>(total);
    return 0;
}

// Lists the vertices on the line in the order in which they lie along it.
int ListVisits(const KSplitRing& split, const KCutLine& line, LineWork* work) {
    const int n = split.count;
    int count = 0;
    for (int i = 0; i < n; ++i) count += work->side[Size(i)] == 0;
    work->visits = AllocateZeroed<LineVisit>(Size(count));
    if (!work->visits && count > 0) return kOutOfMemory;
    for (int i = 0; i < n; ++i) {
        if (work->side[Size(i)] != 0) continue;
        const int before = work->side[Size(i > 0 ? i - 1 : n - 1)];
        const int after = work->side[Size(i + 1 < n ? i + 1 : 0)];
        const double t = PositionAlong(line, split.vertices[Size(i)]);
        if (!std::isfinite(t)) return -1;
        work->visits[Size(work->visitCount++)] = {t, i, (before > 0) != (after > 0)};
    }
    std::sort(work->visits.get(), work->visits.get() + count,
              [](const LineVisit& a, const LineVisit& b) {
                  return a.t < b.t || (a.t == b.t && a.vertex < b.vertex);
              });
    return 0;
}

int AppendCutPoint(KSplitRing* split, const KPoint& point) {
    split->cutPoints[Size(split->cutPointCount)] = point;
    return split->cutPointCount++;
}

// Makes one cut point of the visits that coincide. Their vertices keep their own coordinates:
// moving them would take area from pieces that are long across the line.
int MergeVisits(KSplitRing* split, double tol, LineWork* work) {
    const int count = work->visitCount;
    // Room for every visit and the two ends of a segment.
    const std::size_t capacity = Size(split->cutPointCount) + Size(count) + 2;
    if (!Resize(&split->cutPoints, capacity)) return kOutOfMemory;
    work->sums = AllocateZeroed<CutPointSums>(Size(count));
    work->sumOf = AllocateZeroed<int>(Size(split->count));
    if (count > 0 && (!work->sums || !work->sumOf)) return kOutOfMemory;

    for (int first = 0; first < count;) {
        const KPoint point = split->vertices[Size(work->visits[Size(first)].vertex)];
        int last = first;
        int cutPoint = -1;
        for (; last < count; ++last) {
            const int vertex = work->visits[Size(last)].vertex;
            if (!KPointsEqualTol(point, split->vertices[Size(vertex)], tol)) break;
            if (cutPoint < 0) cutPoint = split->cutPointOf[Size(vertex)];
        }
        // A point that does not coincide with itself, under a negative tolerance, stands alone.
        last = std::max(last, first + 1);
        if (cutPoint < 0) cutPoint = AppendCutPoint(split, point);

        CutPointSums& sums = work->sums[Size(work->sumCount)];
        sums = {work->visits[Size(first)].t, cutPoint, 0, 0};
        for (; first < last; ++first) {
            const LineVisit& visit = work->visits[Size(first)];
            const KPoint& vertex = split->vertices[Size(visit.vertex)];
            const KPoint& onto = split->cutPoints[Size(cutPoint)];
            split->besideCount += vertex.x != onto.x || vertex.y != onto.y;
            split->cutPointOf[Size(visit.vertex)] = cutPoint;
            work->sumOf[Size(visit.vertex)] = work->sumCount;
            sums.crossings += visit.crosses;
        }
        ++work->sumCount;
    }
    return 0;
}

// Turns the sums of each cut point into those of the stretch that follows it.
void SumAlongLine(const KSplitRing& split, LineWork* work) {
    for (int i = 0; i < split.count; ++i) {
        const int j = i + 1 < split.count ? i + 1 : 0;
        if (work->side[Size(i)] != 0 || work->side[Size(j)] != 0) continue;
        const int a = work->sumOf[Size(i)];
        const int b = work->sumOf[Size(j)];
        work->sums[Size(std::min(a, b))].edgesAlong += 1;
        work->sums[Size(std::max(a, b))].edgesAlong -= 1;
    }
    for (int k = 1; k < work->sumCount; ++k) {
        const CutPointSums& before = work->sums[Size(k - 1)];
        CutPointSums& here = work->sums[Size(k)];
        here.crossings += before.crossings;
        here.edgesAlong += before.edgesAlong;
    }
}

// The cut point at an end of a segment inside the ring; two segments may end there together.
int FreeEnd(KSplitRing* split, const KCutLine& line, double t, double tol) {
    const KPoint end = KTranslatePoint(line.origin, KScaleVector(line.direction, t));
    split->hasFreeEnd = true;
    for (int i = 0; i < split->cutPointCount; ++i) {
        if (KPointsEqualTol(split->cutPoints[Size(i)], end, tol)) return i;
    }
    return AppendCutPoint(split, end);
}

int AppendStretches(KSplitRing* split, const KCutLine& line, double tol, const LineWork& work) {
    const std::size_t capacity = Size(split->stretchCount) + Size(work.sumCount);
    if (capacity == 0) return 0;
    if (!Resize(&split->stretches, capacity)) return kOutOfMemory;
    for (int k = 0; k + 1 < work.sumCount; ++k) {
        const CutPointSums& here = work.sums[Size(k)];
        const CutPointSums& next = work.sums[Size(k + 1)];
        const bool isInside = here.crossings % 2 != 0 && here.edgesAlong == 0;
        const bool isOnSegment = next.t > line.low + tol && here.t < line.high - tol;
        if (!isInside || !isOnSegment) continue;
        const int start =
            here.t < line.low - tol ? FreeEnd(split, line, line.low, tol) : here.cutPoint;
        const int end =
            next.t > line.high + tol ? FreeEnd(split, line, line.high, tol) : next.cutPoint;
        split->stretches[Size(split->stretchCount++)] = {start, end};
    }
    return 0;
}

}  // namespace

int KBeginSplit(KSplitRing* split, const KPoint* ring, int n) {
    split->vertices = AllocateZeroed<KPoint>(Size(n));
    split->cutPointOf = AllocateZeroed<int>(Size(n));
    if (n > 0 && (!split->vertices || !split->cutPointOf)) return kOutOfMemory;
    const auto isSame = [](const KPoint& a, const KPoint& b) { return a.x == b.x && a.y == b.y; };
    int count = 0;
    for (int i = 0; i < n; ++i) {
        if (count > 0 && isSame(split->vertices[Size(count - 1)], ring[i])) continue;
        split->vertices[Size(count)] = ring[i];
        split->cutPointOf[Size(count)] = -1;
        ++count;
    }
    while (count > 1 && isSame(split->vertices[Size(count - 1)], split->vertices[0])) --count;
    split->count = count;
    return 0;
}

int KSplitAtLine(KSplitRing* split, const KCutLine& line, double tol) {
    LineWork work;
    int status = InsertCrossings(split, line, tol, &work);
    if (status == 0) status = ListVisits(*split, line, &work);
    if (status == 0) status = MergeVisits(split, tol, &work);
    if (status != 0) return status;
    SumAlongLine(*split, &work);
    return AppendStretches(split, line, tol, work);
}

}  // namespace halvorn
