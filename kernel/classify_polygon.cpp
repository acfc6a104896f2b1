#include "kernel/classify_polygon.h"

#include <cstddef>
#include <utility>

#include "kernel/box_tree.h"
#include "kernel/intersections.h"
#include "kernel/point_tests.h"
#include "kernel/vectors.h"
#include "numeric/c_array.h"

namespace halvorn {

namespace {

const KPoint& Next(const KPoint* ring, int n, int i) {
    return ring[i + 1 < n ? i + 1 : 0];
}
const KPoint& Previous(const KPoint* ring, int n, int i) {
    return ring[i > 0 ? i - 1 : n - 1];
}

// Looks for two vertices that coincide, among those in a box twice as wide as the tolerance asks.
int FindCoincidentVertices(const KPoint* ring, int n, double tol, bool* found) {
    CArray<KBox> boxes = AllocateZeroed<KBox>(static_cast<std::size_t>(n));
    if (!boxes) return kOutOfMemory;
    for (int i = 0; i < n; ++i) {
        boxes[static_cast<std::size_t>(i)] = KBoxOfSegment(ring[i], ring[i], 0.0);
    }
    KBoxTree tree;
    const int status = KBuildBoxTree(&tree, std::move(boxes), n);
    for (int i = 0; status == 0 && i < n && !*found; ++i) {
        const KBox near = KBoxOfSegment(ring[i], ring[i], 2.0 * tol);
        *found = KVisitBoxTree(
            tree, [&near](const KBox& box) { return KBoxesMeet(box, near); },
            [&](int j) { return j != i && KPointsEqualTol(ring[i], ring[j], tol); });
    }
    return status;
}

bool HasVertexOnNeighbours(const KPoint* ring, int n, double tol) {
    for (int i = 0; i < n; ++i) {
        if (KPointOnSegment(ring[i], Previous(ring, n, i), Next(ring, n, i), tol) != 0) return true;
    }
    return false;
}

// Looks for edges that meet. Edges that share a vertex have exactly that one point in common, all
// others none; only edges whose boxes come within the tolerance can have any. Neighbours are tested
// whatever their boxes, so that a NaN vertex is found.
int FindMeetingEdges(const KPoint* ring, int n, double tol, bool* found) {
    CArray<KBox> boxes = AllocateZeroed<KBox>(static_cast<std::size_t>(n));
    if (!boxes) return kOutOfMemory;
    for (int i = 0; i < n; ++i) {
        boxes[static_cast<std::size_t>(i)] = KBoxOfSegment(ring[i], Next(ring, n, i), tol);
    }
    KBoxTree tree;
    const int status = KBuildBoxTree(&tree, std::move(boxes), n);
    for (int i = 0; i < n && !*found; ++i) {
        const KSegment first{ring[i], Next(ring, n, i)};
        const KSegment second{first.end, Next(ring, n, i + 1 < n ? i + 1 : 0)};
        *found = KIntersectSegments(first, second, tol) != 1;
    }
    for (int i = 0; status == 0 && i < n && !*found; ++i) {
        const KSegment first{ring[i], Next(ring, n, i)};
        const KBox& near = tree.boxes[static_cast<std::size_t>(i)];
        *found = KVisitBoxTree(
            tree, [&near](const KBox& box) { return KBoxesMeet(box, near); },
            [&](int j) {
                const bool shareVertex = j - i == 1 || j - i == n - 1;
                if (j <= i || shareVertex) return false;
                return KIntersectSegments(first, {ring[j], Next(ring, n, j)}, tol) != 0;
            });
    }
    return status;
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
    bool found = false;
    if (FindCoincidentVertices(ring, n, tol, &found) != 0) return kOutOfMemory;
    if (found) return kVerticesCoincide;
    if (HasVertexOnNeighbours(ring, n, tol)) return kVertexOnNeighbours;
    if (FindMeetingEdges(ring, n, tol, &found) != 0) return kOutOfMemory;
    if (found) return kEdgesMeet;
    return IsConvex(ring, n) ? kConvexPolygon : kSimplePolygon;
}

}  // namespace halvorn
