#include "figure/stress_bands.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <tuple>

namespace halvorn::engine::figure {

namespace {

// Takes out segments that run to and fro between the same two nodes: nothing is between them.
template <typename Segment>
void CancelOpposites(std::vector<Segment>* segments) {
    const auto key = [](const Segment& s) {
        return std::tuple(std::min(s.from, s.to), std::max(s.from, s.to), s.from);
    };
    std::sort(segments->begin(), segments->end(),
              [&](const Segment& a, const Segment& b) { return key(a) < key(b); });
    std::vector<Segment> kept;
    for (const Segment& segment : *segments) {
        const bool isBack =
            !kept.empty() && kept.back().from == segment.to && kept.back().to == segment.from;
        if (isBack) {
            kept.pop_back();
        } else {
            kept.push_back(segment);
        }
    }
    *segments = std::move(kept);
}

// Joins segments, of which as many end at each node as begin there, to rings that pass each of
// their nodes once: a walk that comes back to a node of its own leaves the loop as a ring.
template <typename Segment>
std::vector<std::vector<std::size_t>> Chained(std::vector<Segment> segments, std::size_t nodes) {
    std::sort(segments.begin(), segments.end(),
              [](const Segment& a, const Segment& b) { return a.from < b.from; });
    std::vector<std::size_t> next(nodes + 1, 0);  // first segment of a node that is not used yet
    for (const Segment& segment : segments) ++next[segment.from + 1];
    for (std::size_t i = 1; i <= nodes; ++i) next[i] += next[i - 1];
    constexpr std::size_t kOffPath = std::numeric_limits<std::size_t>::max();
    std::vector<std::size_t> placeOnPath(nodes, kOffPath);
    std::vector<bool> isUsed(segments.size(), false);
    std::vector<std::vector<std::size_t>> rings;
    std::vector<std::size_t> path;
    for (std::size_t start = 0; start < segments.size(); ++start) {
        if (isUsed[start]) continue;
        path = {segments[start].from};
        placeOnPath[path.front()] = 0;
        for (std::size_t at = start;; at = next[path.back()]) {
            ++next[segments[at].from];
            isUsed[at] = true;
            const std::size_t node = segments[at].to;
            const std::size_t place = placeOnPath[node];
            if (place == kOffPath) {
                placeOnPath[node] = path.size();
                path.push_back(node);
                continue;
            }
            const auto loop = path.begin() + static_cast<std::ptrdiff_t>(place);
            rings.emplace_back(loop, path.end());
            for (const std::size_t left : rings.back()) placeOnPath[left] = kOffPath;
            path.erase(loop, path.end());
            if (path.empty()) break;
            placeOnPath[node] = path.size();
            path.push_back(node);
        }
    }
    return rings;
}

}  // namespace

StressBands::StressBands(const Points& points, const Triangles& triangles,
                         std::span<const double> values)
    : points_(points), triangles_(triangles), values_(values) {
    constexpr double kLargest = 1e300;  // so that differences stay finite
    if (!triangles.empty()) lowest_ = highest_ = values[Slot(triangles.front()[0])];
    for (const auto& corners : triangles) {
        for (const Index corner : corners) {
            const double value = values[Slot(corner)];
            if (!(std::fabs(value) <= kLargest)) {
                throw std::runtime_error(
                    "the figure cannot be drawn: a stress is too large or not a number; give "
                    "smaller forces");
            }
            lowest_ = std::min(lowest_, value);
            highest_ = std::max(highest_, value);
        }
    }
    NumberEdges();
}

void StressBands::NumberEdges() {
    struct Side {
        Index low;
        Index high;
        std::size_t triangle;
        std::size_t place;
    };
    std::vector<Side> sides;
    for (std::size_t i = 0; i < triangles_.size(); ++i) {
        for (std::size_t k = 0; k < 3; ++k) {
            const auto [low, high] = std::minmax(triangles_[i][k], triangles_[i][(k + 1) % 3]);
            sides.push_back({low, high, i, k});
        }
    }
    std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) {
        return std::tie(a.low, a.high) < std::tie(b.low, b.high);
    });
    edgesOf_.resize(triangles_.size());
    for (const Side& side : sides) {
        const bool isNew =
            edges_.empty() || edges_.back().low != side.low || edges_.back().high != side.high;
        if (isNew) edges_.push_back({side.low, side.high});
        ++edges_.back().use;
        edgesOf_[side.triangle][side.place] = edges_.size() - 1;
    }
}

// Where an edge passes the level. Exactly at its upper end, when the value is the level there: so
// do all edges of that point, which then is one node and not several in one place.
StressBands::Node StressBands::CutOf(std::size_t edge, Index up, double level) const {
    return values_[Slot(up)] == level ? Slot(up) : points_.size() + edge;
}

Point StressBands::PlaceOf(Node node, double level) const {
    if (node < points_.size()) return points_[node];
    const Edge& edge = edges_[node - points_.size()];
    const double low = values_[Slot(edge.low)];
    const double high = values_[Slot(edge.high)];
    const double share = (level - low) / (high - low);
    const Point& from = points_[Slot(edge.low)];
    return from + share * (points_[Slot(edge.high)] - from);
}

// Of the part of a triangle at or above the level, what can be a boundary of the whole: its piece
// of each edge on the rim, and the chord between the two edges that pass the level. Pieces of inner
// edges bound the neighbour's part as well.
void StressBands::AddPieces(std::size_t triangle, double level,
                            std::vector<Segment>* segments) const {
    const std::array<Index, 3>& corners = triangles_[triangle];
    const auto isUp = [&](Index corner) { return values_[Slot(corner)] >= level; };
    const auto add = [&](Node from, Node to) {
        if (from != to) segments->push_back({from, to});
    };
    std::size_t ups = 0;
    Segment chord{};
    for (std::size_t k = 0; k < 3; ++k) {
        const Index from = corners[k];
        const Index to = corners[(k + 1) % 3];
        const std::size_t edge = edgesOf_[triangle][k];
        const bool isRim = edges_[edge].use == 1;
        if (isUp(from)) ++ups;
        if (isUp(from) && isUp(to) && isRim) add(Slot(from), Slot(to));
        if (isUp(from) && !isUp(to)) {
            chord.from = CutOf(edge, from, level);
            if (isRim) add(Slot(from), chord.from);
        }
        if (!isUp(from) && isUp(to)) {
            chord.to = CutOf(edge, to, level);
            if (isRim) add(chord.to, Slot(to));
        }
    }
    if (ups == 1 || ups == 2) add(chord.from, chord.to);
}

std::vector<Points> StressBands::AtLeast(double level) const {
    std::vector<Segment> segments;
    for (std::size_t i = 0; i < triangles_.size(); ++i) AddPieces(i, level, &segments);
    CancelOpposites(&segments);
    std::vector<Points> rings;
    const auto chains = Chained(std::move(segments), points_.size() + edges_.size());
    for (const auto& nodes : chains) {
        Points& ring = rings.emplace_back();
        for (const Node node : nodes) ring.push_back(PlaceOf(node, level));
    }
    return rings;
}

std::vector<Points> StressBands::Rim() const {
    return AtLeast(-std::numeric_limits<double>::infinity());
}

}  // namespace halvorn::engine::figure
