#include "kernel/classify_polygon.h"

#include <algorithm>
#include <cstddef>

#include "kernel/point_tests.h"
#include "kernel/primitives.h"
#include "numeric/c_array.h"

namespace halvorn {

namespace {

const KPoint& Next(const KPoint* ring, int n, int i) {
    return ring[i + 1 < n ? i + 1 : 0];
}
const KPoint& Previous(const KPoint* ring, int n, int i) {
    return ring[i > 0 ? i - 1 : n - 1];
}

// Fills `order` with 0 .. n-1 sorted by `key`; a NaN key sorts last, so that the order is strict.
template <class Key>
void SortByKey(int* order, int n, Key&& key) {
    for (int i = 0; i < n; ++i) order[i] = i;
    std::sort(order, order + n, [&key](int i, int j) {
        const double a = key(i);
        const double b = key(j);
        return a < b || (b != b && a == a);
    });
}

bool HasCoincidentVertices(const KPoint* ring, int n, double tol, int* order) {
    SortByKey(order, n, [ring](int i) { return ring[i].x; });
    for (int i = 0; i < n; ++i) {
        for (int j = i + 1; j < n && ring[order[j]].x - ring[order[i]].x <= tol; ++j) {
            if (KPointsEqualTol(ring[order[i]], ring[order[j]], tol)) return true;
        }
    }
    return false;
}

bool HasVertexOnNeighbours(const KPoint* ring, int n, double tol) {
    for (int i = 0; i < n; ++i) {
        if (KPointOnSegment(ring[i], Previous(ring, n, i), Next(ring, n, i), tol) != 0) return true;
    }
    return false;
}

// Edges that share a vertex have exactly that one point in common, all others none. Edges whose
// bounding boxes, widened by tol, are apart have none; sorted by their least x, few remain to test.
bool HasMeetingEdges(const KPoint* ring, int n, double tol, int* order) {
    const auto lowX = [&](int i) { return MinValue(ring[i].x, Next(ring, n, i).x); };
    SortByKey(order, n, lowX);
    for (int a = 0; a < n; ++a) {
        const int i = order[a];
        const KSegment first{ring[i], Next(ring, n, i)};
        const double reach = MaxValue(first.start.x, first.end.x) + tol + tol;
        const double low = MinValue(first.start.y, first.end.y) - tol - tol;
        const double high = MaxValue(first.start.y, first.end.y) + tol + tol;
        for (int b = a + 1; b < n && lowX(order[b]) <= reach; ++b) {
            const int j = order[b];
            const KSegment second{ring[j], Next(ring, n, j)};
            if (MaxValue(second.start.y, second.end.y) < low ||
                MinValue(second.start.y, second.end.y) > high) {
                continue;
            }
            const int gap = i < j ? j - i : i - j;
            const bool shareVertex = gap == 1 || gap == n - 1;
            if (KIntersectSegments(first, second, tol) != (shareVertex ? 1 : 0)) return true;
        }
    }
    return false;
}

bool IsConvex(const KPoint* ring, int n) {
    const auto turn = [&](int i) {
        KPoint in;
        KPoint out;
        KVectorDiff(&in, &Previous(ring, n, i), &ring[i]);
        KVectorDiff(&out, &ring[i], &Next(ring, n, i));
        return KCross(&in, &out);
    };
    const double reference = turn(0);
    for (int i = 1; i < n; ++i) {
        if (turn(i) * reference < 0.0) return false;
    }
    return true;
}

}  // namespace

int KClassifyPolygon(const KPoint* ring, int n, double tol) {
    if (n < 2) return kConvexPolygon;
    const CArray<int> order = AllocateZeroed<int>(static_cast<std::size_t>(n));
    if (!order) return kOutOfMemory;
    if (HasCoincidentVertices(ring, n, tol, order.get())) return kVerticesCoincide;
    if (HasVertexOnNeighbours(ring, n, tol)) return kVertexOnNeighbours;
    if (HasMeetingEdges(ring, n, tol, order.get())) return kEdgesMeet;
    return IsConvex(ring, n) ? kConvexPolygon : kSimplePolygon;
}

}  // namespace halvorn
