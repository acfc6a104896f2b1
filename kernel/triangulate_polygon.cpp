#include "kernel/triangulate_polygon.h"

#include <cstddef>
#include <utility>

#include "kernel/box_tree.h"
#include "kernel/point_tests.h"
#include "kernel/polygon_area.h"
#include "kernel/vectors.h"
#include "numeric/c_array.h"
#include "numeric/scalar.h"

namespace halvorn {

namespace {

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

// The remaining vertices as a closed chain of indices; the obstacles, reflex and straight vertices
// that can lie in an ear's triangle; and a queue of corners that may be ears.
//
// Only obstacles need testing. If none lies in the triangle of a convex corner of a simple ring, no
// vertex does, and then no edge meets its diagonal either: it would have to enter the triangle
// through an edge of the ring. A reflex corner can become convex only when a neighbour is removed.
// The same holds for a convex corner that is not an ear to become one: of the vertices in its
// triangle, the one farthest from the diagonal stays reflex, and is not removed, as long as the
// triangle lasts. Both therefore wait outside the queue until a neighbour is removed, and at most
// 3 n corners are tried. Passing over all corners again and again would cost n^2 on a ring of
// scallops, and more on a spiral.
struct LiveRing {
    const KPoint* ring = nullptr;
    double reference = 0.0;  // orientation, +1 counter-clockwise, -1 clockwise
    int live = 0;
    CArray<int> previous;
    CArray<int> next;
    KBoxTree obstacles;
    CArray<int> obstacleOf;  // per vertex: its item in the tree, or -1
    CArray<int> vertexOf;    // per item
    CArray<int> queue;       // first in, first out, in a ring buffer of `capacity`
    CArray<bool> isQueued;
    int capacity = 0;
    int queueFront = 0;
    int queueSize = 0;

    // Positive for a convex corner, 0 for a straight one, negative for a reflex one [L^2].
    double Turn(int i) const {
        return KCornerCross(ring[previous[At(i)]], ring[i], ring[next[At(i)]]) * reference;
    }

    void Enqueue(int i) {
        if (isQueued[At(i)]) return;
        isQueued[At(i)] = true;
        queue[At((queueFront + queueSize++) % capacity)] = i;
    }

    // Straight corners go first: before an ear beside them makes a long thin triangle of each.
    void EnqueueNeighbour(int i) {
        const double turn = Turn(i);
        if (turn > 0.0) Enqueue(i);
        if (turn != 0.0 || isQueued[At(i)]) return;
        isQueued[At(i)] = true;
        queueFront = (queueFront + capacity - 1) % capacity;
        queue[At(queueFront)] = i;
        ++queueSize;
    }

    int Dequeue() {
        const int i = queue[At(queueFront)];
        queueFront = (queueFront + 1) % capacity;
        --queueSize;
        isQueued[At(i)] = false;
        return i;
    }

    void Remove(int i) {
        const int before = previous[At(i)];
        const int after = next[At(i)];
        next[At(before)] = after;
        previous[At(after)] = before;
        --live;
        if (obstacleOf[At(i)] >= 0) KRemoveFromBoxTree(&obstacles, obstacleOf[At(i)]);
        EnqueueNeighbour(before);
        EnqueueNeighbour(after);
    }
};

int BeginLiveRing(LiveRing* chain, const KPoint* ring, int n) {
    chain->ring = ring;
    chain->reference = KPolygonSignedArea(&ring->x, n) < 0.0 ? 1.0 : -1.0;
    chain->live = chain->capacity = n;
    chain->previous = AllocateZeroed<int>(At(n));
    chain->next = AllocateZeroed<int>(At(n));
    chain->queue = AllocateZeroed<int>(At(n));
    chain->isQueued = AllocateZeroed<bool>(At(n));
    chain->obstacleOf = AllocateZeroed<int>(At(n));
    chain->vertexOf = AllocateZeroed<int>(At(n));
    CArray<KBox> boxes = AllocateZeroed<KBox>(At(n));
    if (!chain->previous || !chain->next || !chain->queue || !chain->isQueued ||
        !chain->obstacleOf || !chain->vertexOf || !boxes) {
        return kOutOfMemory;
    }
    for (int i = 0; i < n; ++i) {
        chain->previous[At(i)] = i > 0 ? i - 1 : n - 1;
        chain->next[At(i)] = i + 1 < n ? i + 1 : 0;
    }
    int obstacles = 0;
    for (int i = 0; i < n; ++i) {
        const double turn = chain->Turn(i);
        if (turn >= 0.0) chain->Enqueue(i);
        // A convex corner stays convex while ears are cut off beside it.
        chain->obstacleOf[At(i)] = turn > 0.0 ? -1 : obstacles;
        if (turn > 0.0) continue;
        chain->vertexOf[At(obstacles)] = i;
        boxes[At(obstacles++)] = KBoxOfSegment(ring[i], ring[i], 0.0);
    }
    return KBuildBoxTree(&chain->obstacles, std::move(boxes), obstacles);
}

// A triangle as the tree of boxes sees it: a box meets it unless it lies, by more than the
// tolerance, outside its bounding box or beyond one of its sides.
struct TriangleQuery {
    KPoint corners[3];
    double reference;  // orientation, +1 counter-clockwise
    double tol;
    KBox bounds;

    bool operator()(const KBox& box) const {
        if (!KBoxesMeet(box, bounds)) return false;
        for (int i = 0; i < 3; ++i) {
            const KPoint& from = corners[i];
            KPoint side;
            KVectorDiff(&side, &from, &corners[i < 2 ? i + 1 : 0]);
            side = KScaleVector(side, reference);
            // The corner of the box that lies farthest to the inner side.
            const KPoint inner{side.y > 0.0 ? box.low.x : box.high.x,
                               side.x > 0.0 ? box.high.y : box.low.y};
            KPoint toInner;
            KVectorDiff(&toInner, &from, &inner);
            const double margin = 2.0 * tol * (AbsValue(side.x) + AbsValue(side.y));
            if (KCross(&side, &toInner) < -margin) return false;
        }
        return true;
    }
};

// Whether the triangle at a convex corner can be cut off: no obstacle in or on it.
bool IsEar(const LiveRing& chain, int corner, double tol) {
    const int before = chain.previous[At(corner)];
    const int after = chain.next[At(corner)];
    const KPoint& a = chain.ring[before];
    const KPoint& b = chain.ring[corner];
    const KPoint& c = chain.ring[after];
    const TriangleQuery triangle{{a, b, c},
                                 chain.reference,
                                 tol,
                                 KBoxAround(KBoxOfSegment(a, b, tol), KBoxOfSegment(b, c, tol))};
    return !KVisitBoxTree(chain.obstacles, triangle, [&](int item) {
        const int i = chain.vertexOf[At(item)];
        if (i == before || i == corner || i == after) return false;
        return KPointInPolygon(chain.ring[i], triangle.corners, 3, tol) != -1;
    });
}

}  // namespace

int KTriangulatePolygon(const KPoint* ring, int n, int* triangles, int* count, double tol) {
    *count = 0;
    if (n < 3) return n == 2 ? 0 : -1;
    LiveRing chain;
    if (BeginLiveRing(&chain, ring, n) != 0) return kOutOfMemory;

    int written = 0;
    while (chain.live >= 3) {
        if (chain.queueSize == 0) return -1;
        const int corner = chain.Dequeue();
        const double turn = chain.Turn(corner);
        const bool isEar = turn > 0.0 && IsEar(chain, corner, tol);
        if (isEar) {
            triangles[3 * written] = chain.previous[At(corner)];
            triangles[3 * written + 1] = corner;
            triangles[3 * written + 2] = chain.next[At(corner)];
            ++written;
        } else if (turn != 0.0) {
            continue;
        }
        chain.Remove(corner);
    }
    *count = written;
    return 0;
}

}  // namespace halvorn
