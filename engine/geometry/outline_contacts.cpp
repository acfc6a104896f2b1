#include "geometry/outline_contacts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <map>
#include <new>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "geometry/arrangement.h"
#include "kernel/box_tree.h"

namespace halvorn::engine {

namespace {

double Length(const Point& v) {
    return std::hypot(v.x, v.y);
}

// Finds the vertex at a point or within the distance of one, by squares of that width.
class PointMerger {
public:
    PointMerger(double distance, std::vector<Point>& points)
        : distance_(distance), points_(points) {}

    Index VertexAt(const Point& point) {
        const auto column = static_cast<std::int64_t>(std::floor(point.x / distance_));
        const auto row = static_cast<std::int64_t>(std::floor(point.y / distance_));
        for (std::int64_t i = column - 1; i <= column + 1; ++i) {
            for (std::int64_t k = row - 1; k <= row + 1; ++k) {
                const auto [first, last] = squares_.equal_range(Key(i, k));
                for (auto found = first; found != last; ++found) {
                    if (Length(points_[Slot(found->second)] - point) <= distance_) {
                        return found->second;
                    }
                }
            }
        }
        points_.push_back(point);
        const auto vertex = static_cast<Index>(points_.size() - 1);
        squares_.emplace(Key(column, row), vertex);
        return vertex;
    }

private:
    static std::uint64_t Key(std::int64_t column, std::int64_t row) {
        return static_cast<std::uint64_t>(column) * 0x9E3779B97F4A7C15ULL ^
               static_cast<std::uint64_t>(row) * 0xC2B2AE3D27D4EB4FULL;
    }

    double distance_;
    std::vector<Point>& points_;
    std::unordered_multimap<std::uint64_t, Index> squares_;
};

// A segment and the points within a distance of it, those beyond its ends too.
struct FatSegment {
    Point from;
    Point along;  // unit vector
    double length;
    double distance;
    KBox box;

    FatSegment(const Point& a, const Point& b, double around)
        : from(a),
          length(Length(b - a)),
          distance(around),
          box(KBoxOfSegment({a.x, a.y}, {b.x, b.y}, around)) {
        if (length > 0.0) along = (1.0 / length) * (b - a);
    }

    // Whether a box comes near the line through the segment and meets its box.
    bool Meets(const KBox& other) const {
        if (!KBoxesMeet(box, other)) return false;
        const Point centre = {0.5 * (other.low.x + other.high.x),
                              0.5 * (other.low.y + other.high.y)};
        const double reach = 0.5 * (other.high.x - other.low.x) * std::fabs(along.y) +
                             0.5 * (other.high.y - other.low.y) * std::fabs(along.x);
        return std::fabs(Cross(along, centre - from)) <= (reach + distance) * (1.0 + 1e-12);
    }
};

class ContactJoiner {
public:
    ContactJoiner(const std::vector<std::vector<Point>>& rings, double size)
        : merge_(kMergeDistance * size),
          contact_(kContactDistance * size),
          nearMiss_(kNearMissDistance * size) {
        MergePoints(rings);
        if (rings.size() > 1) {
            BuildTree();
            JoinVertices();
            FindVerticesOnEdges();
        }
        WritePaths();
    }

    OutlinePaths Take() { return std::move(result_); }

private:
    void MergePoints(const std::vector<std::vector<Point>>& rings) {
        PointMerger merger(merge_, result_.points);
        for (std::size_t r = 0; r < rings.size(); ++r) {
            std::vector<Index>& path = result_.paths.emplace_back();
            for (const Point& point : rings[r]) {
                const Index vertex = merger.VertexAt(point);
                if (Slot(vertex) == owners_.size()) owners_.push_back(static_cast<Index>(r));
                if (!IsOf(vertex, static_cast<Index>(r))) Share(vertex, static_cast<Index>(r));
                path.push_back(vertex);
            }
        }
        targets_.resize(owners_.size());
        for (std::size_t v = 0; v < targets_.size(); ++v) targets_[v] = static_cast<Index>(v);
        nearest_.assign(owners_.size(), std::numeric_limits<double>::infinity());
    }

    // The outlines that a vertex is of.
    std::vector<Index> OwnersOf(Index vertex) const {
        std::vector<Index> owners = {owners_[Slot(vertex)]};
        const auto more = sharers_.find(vertex);
        if (more != sharers_.end()) {
            owners.insert(owners.end(), more->second.begin(), more->second.end());
        }
        return owners;
    }

    bool IsShared(Index vertex) const { return sharers_.contains(vertex); }

    bool IsOf(Index vertex, Index ring) const {
        if (owners_[Slot(vertex)] == ring) return true;
        const auto more = sharers_.find(vertex);
        return more != sharers_.end() &&
               std::find(more->second.begin(), more->second.end(), ring) != more->second.end();
    }

    // Of the outlines that a vertex is of the first other than one; that one if there is none.
    Index OwnerBeside(Index vertex, Index ring) const {
        for (const Index owner : OwnersOf(vertex)) {
            if (owner != ring) return owner;
        }
        return ring;
    }

    void Share(Index vertex, Index ring) {
        for (const Index owner : OwnersOf(vertex)) Touch(owner, ring);
        sharers_[vertex].push_back(ring);
    }

    void Touch(Index a, Index b) { touching_[std::minmax(a, b)] = true; }

    bool IsOfAnother(Index vertex, Index ring) const {
        return owners_[Slot(vertex)] != ring || IsShared(vertex);
    }

    void BuildTree() {
        const std::size_t n = result_.points.size();
        CArray<KBox> boxes(static_cast<KBox*>(std::calloc(n, sizeof(KBox))));
        if (!boxes) throw std::bad_alloc();
        for (std::size_t v = 0; v < n; ++v) {
            const KPoint point = {result_.points[v].x, result_.points[v].y};
            boxes[v] = {point, point};
        }
        if (KBuildBoxTree(&tree_, std::move(boxes), static_cast<int>(n)) != 0) {
            throw std::bad_alloc();
        }
    }

    // A vertex near an earlier one of another outline becomes that one.
    void JoinVertices() {
        for (std::size_t v = 0; v < owners_.size(); ++v) {
            const Point& point = result_.points[v];
            const KBox around = KBoxOfSegment({point.x, point.y}, {point.x, point.y}, contact_);
            Index nearest = kNone;
            double least = contact_;
            KVisitBoxTree(
                tree_, [&](const KBox& box) { return KBoxesMeet(box, around); },
                [&](int other) {
                    const bool isCandidate =
                        Slot(other) < v && targets_[Slot(other)] == other &&
                        (owners_[Slot(other)] != owners_[v] || IsShared(static_cast<Index>(v)));
                    const double distance = Length(result_.points[Slot(other)] - point);
                    if (!isCandidate || distance > least) return false;
                    least = distance;
                    nearest = other;
                    return false;
                });
            if (nearest == kNone) continue;
            targets_[v] = nearest;
            const Index of = owners_[v];
            const Index to = OwnerBeside(nearest, of);
            if (least > merge_ && of != to) {
                result_.moved.push_back(
                    {nearest, of, to, least, point, result_.points[Slot(nearest)]});
            }
            for (const Index owner : OwnersOf(static_cast<Index>(v))) {
                if (!IsOf(nearest, owner)) Share(nearest, owner);
            }
        }
    }

    // An edge of an outline: from the vertex at this place of its path to the next.
    void LookAlongEdge(Index ring, std::size_t place) {
        const std::vector<Index>& path = result_.paths[Slot(ring)];
        const Index from = targets_[Slot(path[place])];
        const Index to = targets_[Slot(path[place + 1 == path.size() ? 0 : place + 1])];
        if (from == to) return;
        const FatSegment edge(result_.points[Slot(from)], result_.points[Slot(to)], nearMiss_);
        KVisitBoxTree(
            tree_, [&](const KBox& box) { return edge.Meets(box); },
            [&](int vertex) {
                const bool isOther = vertex != from && vertex != to &&
                                     targets_[Slot(vertex)] == vertex && IsOfAnother(vertex, ring);
                if (isOther) LookAtVertex(ring, place, edge, vertex);
                return false;
            });
    }

    void LookAtVertex(Index ring, std::size_t place, const FatSegment& edge, Index vertex) {
        const Point offset = result_.points[Slot(vertex)] - edge.from;
        const double along = Dot(edge.along, offset);
        const double across = std::fabs(Cross(edge.along, offset));
        const Point& at = result_.points[Slot(vertex)];
        if (along > 0.0 && along < edge.length && across <= contact_) {
            stops_.push_back({ring, place, along, vertex});
            for (const Index owner : OwnersOf(vertex)) {
                if (owner != ring) Touch(owner, ring);
            }
            if (across < nearest_[Slot(vertex)]) {
                nearest_[Slot(vertex)] = across;
                feet_[vertex] = {vertex, OwnerBeside(vertex, ring),     ring, across,
                                 at,     edge.from + along * edge.along};
            }
            return;
        }
        const double beyond = std::max({0.0, -along, along - edge.length});
        const double distance = std::hypot(across, beyond);
        if (distance > nearMiss_ || IsOf(vertex, ring)) return;
        const Point foot = edge.from + std::clamp(along, 0.0, edge.length) * edge.along;
        for (const Index owner : OwnersOf(vertex)) {
            Contact& miss =
                misses_
                    .try_emplace(std::minmax(owner, ring), Contact{kNone, 0, 0, nearMiss_, {}, {}})
                    .first->second;
            if (distance <= miss.distance) miss = {vertex, owner, ring, distance, at, foot};
        }
    }

    void FindVerticesOnEdges() {
        for (std::size_t r = 0; r < result_.paths.size(); ++r) {
            for (std::size_t k = 0; k < result_.paths[r].size(); ++k) {
                LookAlongEdge(static_cast<Index>(r), k);
            }
        }
        for (const auto& [vertex, foot] : feet_) {
            if (foot.distance > merge_) result_.moved.push_back(foot);
            result_.points[Slot(vertex)] = foot.foot;
        }
        for (const auto& [pair, miss] : misses_) {
            if (miss.vertex != kNone && !touching_.contains(pair)) {
                result_.nearMisses.push_back(miss);
            }
        }
        std::sort(stops_.begin(), stops_.end());
    }

    // The paths by merged vertices, with the stops along each edge.
    void WritePaths() {
        auto stop = stops_.begin();
        for (std::size_t r = 0; r < result_.paths.size(); ++r) {
            std::vector<Index> path;
            const auto add = [&](Index vertex) {
                if (path.empty() || path.back() != vertex) path.push_back(vertex);
            };
            for (std::size_t k = 0; k < result_.paths[r].size(); ++k) {
                add(targets_[Slot(result_.paths[r][k])]);
                for (; stop != stops_.end() && stop->ring == static_cast<Index>(r) &&
                       stop->place == k;
                     ++stop) {
                    add(stop->vertex);
                }
            }
            while (path.size() > 1 && path.front() == path.back()) path.pop_back();
            result_.paths[r] = std::move(path);
        }
    }

    // A vertex on an edge of an outline, in the order of the way along it.
    struct Stop {
        Index ring;
        std::size_t place;
        double along;
        Index vertex;

        bool operator<(const Stop& other) const {
            return std::tie(ring, place, along, vertex) <
                   std::tie(other.ring, other.place, other.along, other.vertex);
        }
    };

    double merge_;
    double contact_;
    double nearMiss_;
    OutlinePaths result_;
    std::vector<Index> owners_;   // of each vertex: its first outline
    std::vector<Index> targets_;  // of each vertex: itself, or the one that it became
    std::vector<double> nearest_;
    KBoxTree tree_;
    std::vector<Stop> stops_;
    std::map<Index, std::vector<Index>> sharers_;  // of vertices of several outlines: the others
    std::map<Index, Contact> feet_;
    std::map<std::pair<Index, Index>, Contact> misses_;
    std::map<std::pair<Index, Index>, bool> touching_;
};

}  // namespace

OutlinePaths JoinContacts(const std::vector<std::vector<Point>>& rings, double size) {
    return ContactJoiner(rings, size).Take();
}

}  // namespace halvorn::engine
