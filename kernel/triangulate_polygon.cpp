#include "kernel/triangulate_polygon.h"

#include <cstddef>
#include <utility>

#include "kernel/box_tree.h"
#include "kernel/classify_polygon.h"
#include "kernel/point_tests.h"
#include "kernel/primitives.h"
#include "numeric/c_array.h"

namespace halvorn {

namespace {

// Twice the signed area of a triangle [L^2], positive counter-clockwise; below 1e-12 it is 0.
double CornerCross(const KPoint& a, const KPoint& b, const KPoint& c) {
    KPoint in;
    KPoint out;
    KVectorDiff(&in, &a, &b);
    KVectorDiff(&out, &b, &c);
    const double cross = KCross(&in, &out);
    return SignTol(cross, kZeroVector) == 0 ? 0.0 : cross;
}

// The vertices that are still there, as a closed chain of indices, and those of them that can lie
// in the way of an ear: the reflex and straight ones.
//
// Only they are looked at. If no reflex vertex lies in the triangle of a convex corner of a simple
// ring, no vertex does, and then no edge meets its diagonal either: it would have to enter the
// triangle through an edge of the ring.
struct LiveRing {
    const KPoint* ring;
    CArray<int> next;
    KBoxTree obstacles;
    int live;

    int Next(int i) const { return next[static_cast<std::size_t>(i)]; }
};

// Begins with all vertices of a ring; `reference` is its orientation, +1 or -1.
int BeginLiveRing(LiveRing* chain, const KPoint* ring, int n, double reference) {
    chain->ring = ring;
    chain->live = n;
    chain->next = AllocateZeroed<int>(static_cast<std::size_t>(n));
    CArray<KBox> boxes = AllocateZeroed<KBox>(static_cast<std::size_t>(n));
    if (!chain->next || !boxes) return kOutOfMemory;
    for (int i = 0; i < n; ++i) {
        chain->next[static_cast<std::size_t>(i)] = i + 1 < n ? i + 1 : 0;
        boxes[static_cast<std::size_t>(i)] = KBoxOfSegment(ring[i], ring[i], 0.0);
    }
    const int status = KBuildBoxTree(&chain->obstacles, std::move(boxes), n);
    for (int i = 0; status == 0 && i < n; ++i) {
        const KPoint& previous = ring[i > 0 ? i - 1 : n - 1];
        // A convex corner stays convex while ears are cut off beside it.
        if (CornerCross(previous, ring[i], ring[chain->Next(i)]) * reference > 0.0) {
            KRemoveFromBoxTree(&chain->obstacles, i);
        }
    }
    return status;
}

// Whether the triangle at `previous`, a convex corner, can be cut off: no obstacle in or on it.
bool IsEar(const LiveRing& chain, int previous, double tol) {
    const int current = chain.Next(previous);
    const int following = chain.Next(current);
    const KPoint triangle[3] = {chain.ring[previous], chain.ring[current], chain.ring[following]};
    KBox box = KBoxOfSegment(triangle[0], triangle[1], tol);
    box = {{MinValue(box.low.x, triangle[2].x - tol), MinValue(box.low.y, triangle[2].y - tol)},
           {MaxValue(box.high.x, triangle[2].x + tol), MaxValue(box.high.y, triangle[2].y + tol)}};
    return !KVisitBoxTree(chain.obstacles, box, [&](int i) {
        if (i == previous || i == current || i == following) return false;
        return KPointInPolygon(chain.ring[i], triangle, 3, tol) != -1;
    });
}

}  // namespace

int KTriangulatePolygon(const KPoint* ring, int n, int* triangles, int* count, double tol) {
    *count = 0;
    if (n < 3) return -1;
    const double reference = KPolygonSignedArea(&ring->x, n) < 0.0 ? 1.0 : -1.0;
    LiveRing chain;
    if (BeginLiveRing(&chain, ring, n, reference) != 0) return kOutOfMemory;

    int written = 0;
    int failures = 0;
    int previous = 0;
    while (chain.live >= 3) {
        const int current = chain.Next(previous);
        const int following = chain.Next(current);
        const double cross = CornerCross(ring[previous], ring[current], ring[following]);
        const bool isEar = cross * reference > 0.0 && IsEar(chain, previous, tol);
        if (isEar) {
            triangles[3 * written] = previous;
            triangles[3 * written + 1] = current;
            triangles[3 * written + 2] = following;
            ++written;
        } else if (cross != 0.0) {
            if (++failures >= chain.live) return -1;
            previous = current;
            continue;
        }
        chain.next[static_cast<std::size_t>(previous)] = following;
        KRemoveFromBoxTree(&chain.obstacles, current);
        --chain.live;
        failures = 0;
        // Moving on after an ear keeps triangles small and so the boxes to search; staying would
        // draw fans across the ring.
        if (isEar) previous = following;
    }
    *count = written;
    return 0;
}

KPoint* KPolygonCentroid(KPoint* out, const KPoint* ring, int n, double tol) {
    if (n < 1) return KMakePoint(out, 0.0, 0.0);
    if (n == 1) return KMakePoint(out, ring[0].x, ring[0].y);
    if (n == 2) return KMidpoint(out, &ring[0], &ring[1]);

    KPoint sum{0.0, 0.0};
    for (int i = 0; i < n; ++i) sum = KTranslatePoint(sum, ring[i]);
    KMakePoint(out, sum.x / n, sum.y / n);
    if (n == 3) return out;

    const int classified = KClassifyPolygon(ring, n, tol);
    if (classified != kSimplePolygon && classified != kConvexPolygon) return out;
    const CArray<int> triangles = AllocateZeroed<int>(3 * (static_cast<std::size_t>(n) - 2));
    int count = 0;
    if (!triangles || KTriangulatePolygon(ring, n, triangles.get(), &count, tol) != 0) return out;

    double area = 0.0;
    KPoint moment{0.0, 0.0};
    for (const int* triangle = triangles.get(); count > 0; --count, triangle += 3) {
        const KPoint& a = ring[triangle[0]];
        const KPoint& b = ring[triangle[1]];
        const KPoint& c = ring[triangle[2]];
        const double part = 0.5 * AbsValue(CornerCross(a, b, c));
        area += part;
        moment.x += part * ((b.x + a.x + c.x) / 3.0);
        moment.y += part * ((b.y + a.y + c.y) / 3.0);
    }
    // An absolute difference of areas: triangles that were too thin to count must not be missed.
    constexpr double kAreaAgreement = 0.01;
    if (area != 0.0 && IsEqualTol(KPolygonArea(&ring->x, n), area, kAreaAgreement)) {
        KMakePoint(out, moment.x / area, moment.y / area);
    }
    return out;
}

}  // namespace halvorn
