#include "geometry/simple_rings.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>
#include <vector>

#include "geometry/arrangement.h"
#include "kernel/box_tree.h"

namespace halvorn::engine {

namespace {

// Rings nearer than this, in parts of the size, take the long way: a trifle more than the distance
// of a near miss, and than that within which points of one ring merge.
constexpr double kClearOfOthers = 1.001 * kNearMissDistance;
constexpr double kClearOfItself = 2.0 * kMergeDistance;

// Comparisons of boxes a vertex, of which a profile needs some ten. What needs more takes the long
// way, whose cost is n log n.
constexpr std::size_t kStepsPerVertex = 16;

// Consecutive edges that turn neither back in x nor in y: the box around any run of them is that of
// its ends, and they do not meet each other.
struct MonotoneChain {
    std::size_t ring;
    std::size_t first;  // vertices, in the row of all
    std::size_t last;
};

double SquareDistance(const Point& p, const Point& a, const Point& b) {
    const Point along = b - a;
    const double share = std::clamp(Dot(p - a, along) / Dot(along, along), 0.0, 1.0);
    const Point off = p - (a + share * along);
    return Dot(off, off);
}

class SeparationCheck {
public:
    SeparationCheck(std::span<const Points> rings, double size)
        : clearOfOthers_(kClearOfOthers * size), clearOfItself_(kClearOfItself * size) {
        std::size_t count = rings.size();
        for (const Points& ring : rings) count += ring.size();
        vertices_.reserve(count);
        stepsLeft_ = kStepsPerVertex * count;
        areEdgesLongEnough_ = true;
        for (const Points& ring : rings) AddChains(ring);
    }

    bool Passes() {
        if (!areEdgesLongEnough_) return false;
        const KBoxTree tree = ChainTree();
        for (std::size_t i = 0; i < chains_.size(); ++i) {
            const MonotoneChain& a = chains_[i];
            const KBox around = BoxOf(a.first, a.last, clearOfOthers_);
            const bool isMet = KVisitBoxTree(
                tree, [&](const KBox& box) { return KBoxesMeet(box, around); },
                [&](int other) {
                    const auto k = static_cast<std::size_t>(other);
                    return k > i && !AreChainsApart(a, chains_[k]);
                });
            if (isMet) return false;
        }
        return true;
    }

private:
    void AddChains(const Points& ring) {
        const std::size_t first = vertices_.size();
        const std::size_t number = starts_.size();
        vertices_.insert(vertices_.end(), ring.begin(), ring.end());
        vertices_.push_back(ring.front());
        starts_.push_back(first);
        ends_.push_back(vertices_.size() - 1);
        int towardsX = 0;
        int towardsY = 0;
        std::size_t start = first;
        for (std::size_t i = first; i + 1 < vertices_.size(); ++i) {
            const Point along = vertices_[i + 1] - vertices_[i];
            if (Dot(along, along) <= clearOfItself_ * clearOfItself_) areEdgesLongEnough_ = false;
            const int x = (along.x > 0.0 ? 1 : 0) - (along.x < 0.0 ? 1 : 0);
            const int y = (along.y > 0.0 ? 1 : 0) - (along.y < 0.0 ? 1 : 0);
            if (x * towardsX < 0 || y * towardsY < 0) {
                chains_.push_back({number, start, i});
                start = i;
                towardsX = x;
                towardsY = y;
            }
            if (x != 0) towardsX = x;
            if (y != 0) towardsY = y;
        }
        chains_.push_back({number, start, vertices_.size() - 1});
    }

    KBoxTree ChainTree() const {
        const std::size_t n = chains_.size();
        CArray<KBox> boxes(static_cast<KBox*>(std::calloc(n, sizeof(KBox))));
        if (!boxes) throw std::bad_alloc();
        for (std::size_t i = 0; i < n; ++i) {
            boxes[i] = BoxOf(chains_[i].first, chains_[i].last, 0.0);
        }
        KBoxTree tree;
        if (KBuildBoxTree(&tree, std::move(boxes), static_cast<int>(n)) != 0) {
            throw std::bad_alloc();
        }
        return tree;
    }

    KBox BoxOf(std::size_t first, std::size_t last, double margin) const {
        const Point& a = vertices_[first];
        const Point& b = vertices_[last];
        return KBoxOfSegment({a.x, a.y}, {b.x, b.y}, margin);
    }

    bool AreChainsApart(const MonotoneChain& a, const MonotoneChain& b) {
        const double clear = a.ring == b.ring ? clearOfItself_ : clearOfOthers_;
        return AreApart(a, a.first, a.last, b, b.first, b.last, clear);
    }

    // Halves the chains until their boxes are apart or single edges are left.
    bool AreApart(const MonotoneChain& a, std::size_t a0, std::size_t a1, const MonotoneChain& b,
                  std::size_t b0, std::size_t b1, double clear) {
        if (stepsLeft_ == 0) return false;
        --stepsLeft_;
        if (!KBoxesMeet(BoxOf(a0, a1, clear), BoxOf(b0, b1, 0.0))) return true;
        if (a1 - a0 == 1 && b1 - b0 == 1) {
            return (a.ring == b.ring && FollowEachOther(a.ring, a0, b0)) ||
                   AreEdgesApart(a0, b0, clear);
        }
        if (a1 - a0 >= b1 - b0) {
            const std::size_t middle = a0 + (a1 - a0) / 2;
            return AreApart(a, a0, middle, b, b0, b1, clear) &&
                   AreApart(a, middle, a1, b, b0, b1, clear);
        }
        const std::size_t middle = b0 + (b1 - b0) / 2;
        return AreApart(a, a0, a1, b, b0, middle, clear) &&
               AreApart(a, a0, a1, b, middle, b1, clear);
    }

    // Whether the vertices of each edge keep clear of the other, and they do not cross. An edge
    // that crosses another and keeps its ends clear has them on both sides of it beyond doubt.
    bool AreEdgesApart(std::size_t a, std::size_t b, double clear) const {
        const Point &p = vertices_[a], &q = vertices_[a + 1], &r = vertices_[b],
                    &s = vertices_[b + 1];
        const double least = clear * clear;
        if (SquareDistance(p, r, s) <= least || SquareDistance(q, r, s) <= least ||
            SquareDistance(r, p, q) <= least || SquareDistance(s, p, q) <= least) {
            return false;
        }
        const bool isAcross = (Cross(q - p, r - p) > 0.0) != (Cross(q - p, s - p) > 0.0);
        const bool isAcrossBack = (Cross(s - r, p - r) > 0.0) != (Cross(s - r, q - r) > 0.0);
        return !(isAcross && isAcrossBack);
    }

    // Edges that follow each other meet in their common vertex alone: where one runs back along the
    // other, the next edge touches it, or the ring is a triangle without an area.
    bool FollowEachOther(std::size_t ring, std::size_t a, std::size_t b) const {
        if (a > b) std::swap(a, b);
        return b == a + 1 || (a == starts_[ring] && b + 1 == ends_[ring]);
    }

    double clearOfOthers_;
    double clearOfItself_;
    Points vertices_;                  // ring after ring, the first of each again at its end
    std::vector<std::size_t> starts_;  // of each ring
    std::vector<std::size_t> ends_;
    std::vector<MonotoneChain> chains_;
    std::size_t stepsLeft_ = 0;
    bool areEdgesLongEnough_ = false;
};

}  // namespace

int WindingNumber(const Points& ring, const Point& point) {
    int winding = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Point& a = ring[i];
        const Point& b = ring[i + 1 == ring.size() ? 0 : i + 1];
        if ((a.y <= point.y) == (b.y <= point.y)) continue;
        const double side = Cross(b - a, point - a);
        if (b.y > a.y && side > 0.0) ++winding;
        if (b.y < a.y && side < 0.0) --winding;
    }
    return winding;
}

bool AreSimpleAndApart(std::span<const Points> rings, double size) {
    const auto hasArea = [](const Points& ring) { return ring.size() >= 3; };
    return std::all_of(rings.begin(), rings.end(), hasArea) &&
           SeparationCheck(rings, size).Passes();
}

}  // namespace halvorn::engine
