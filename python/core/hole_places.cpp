#include "hole_places.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace halvorn::python {

namespace {

// Of width and height of all outlines together.
constexpr double kStickOut = 1e-6;

// How far the middle of an edge is moved into its hole, in tolerances: off an edge that it shares.
constexpr double kInwards = 4.0;

// Up to this many holes it pays to look at all edges for each one first.
constexpr std::size_t kFewHoles = 8;

struct Point {
    double x;
    double y;
};

struct Edge {
    Point low;
    Point high;
    std::size_t outline;
};

struct Probe {
    Point at;
    std::size_t outline;
};

double Cross(const Point& a, const Point& b, const Point& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

double Squared(const Point& a, const Point& b) {
    return (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
}

// Of a point from an edge.
double SquaredDistance(const Point& a, const Point& b, const Point& p) {
    const double squared = Squared(a, b);
    const double along = (p.x - a.x) * (b.x - a.x) + (p.y - a.y) * (b.y - a.y);
    const double t = squared > 0.0 ? std::clamp(along / squared, 0.0, 1.0) : 0.0;
    return Squared({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)}, p);
}

// Whether the ray from a point to the right crosses an edge, which ends below its upper end.
bool IsLeftOf(const Point& low, const Point& high, const Point& p) {
    return low.y <= p.y && p.y < high.y && Cross(low, high, p) > 0.0;
}

// Calls visit(start, end) for every edge.
template <typename Visit>
void ForEachEdge(const Outline& outline, const Visit& visit) {
    const double* const xy = outline.coordinates;
    Point before{xy[2 * outline.count - 2], xy[2 * outline.count - 1]};
    for (std::size_t i = 0; i < outline.count; ++i) {
        const Point point{xy[2 * i], xy[2 * i + 1]};
        visit(before, point);
        before = point;
    }
}

struct Box {
    Point low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Point high{-low.x, -low.y};

    void Add(const Outline& outline) {
        ForEachEdge(outline, [&](const Point&, const Point& p) {
            low = {std::min(low.x, p.x), std::min(low.y, p.y)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y)};
        });
    }

    bool IsClearOf(const Point& a, const Point& b) const {
        return std::max(a.x, b.x) < low.x || std::min(a.x, b.x) > high.x ||
               std::max(a.y, b.y) < low.y || std::min(a.y, b.y) > high.y;
    }
};

// Whether no other edge reaches into the box and the circle around a hole, and its middle lies in
// more solids than holes: then all of it does.
bool IsClearlyInPlace(const std::vector<Outline>& outlines, const Outline& hole) {
    Box box;
    box.Add(hole);
    const Point middle{0.5 * (box.low.x + box.high.x), 0.5 * (box.low.y + box.high.y)};
    double radius2 = 0.0;
    ForEachEdge(hole, [&](const Point&, const Point& p) {
        radius2 = std::max(radius2, Squared(middle, p));
    });
    int layers = 0;
    for (const Outline& other : outlines) {
        if (&other == &hole) continue;
        bool isInside = false;
        bool isClear = true;
        ForEachEdge(other, [&](const Point& a, const Point& b) {
            isClear = isClear && (box.IsClearOf(a, b) || SquaredDistance(a, b, middle) > radius2);
            isInside = isInside != (a.y < b.y ? IsLeftOf(a, b, middle) : IsLeftOf(b, a, middle));
        });
        if (!isClear) return false;
        if (isInside) layers += other.isSolid ? 1 : -1;
    }
    return layers >= 1;
}

void AddProbes(const Outline& hole, std::size_t index, double inwards, std::vector<Probe>* probes) {
    const Point first{hole.coordinates[0], hole.coordinates[1]};
    double area2 = 0.0;
    ForEachEdge(hole, [&](const Point& a, const Point& b) { area2 += Cross(first, a, b); });
    const double side = area2 < 0.0 ? -inwards : inwards;
    ForEachEdge(hole, [&](const Point& a, const Point& b) {
        probes->push_back({b, index});
        const double dx = b.x - a.x;
        const double dy = b.y - a.y;
        const double length = std::sqrt(dx * dx + dy * dy);
        // Shorter edges are no longer than the tolerance around their ends.
        if (!(length > 2.0 * inwards)) return;
        probes->push_back(
            {{0.5 * (a.x + b.x) - side * dy / length, 0.5 * (a.y + b.y) + side * dx / length},
             index});
    });
}

// Goes through probes from the bottom upwards, with the edges at their height.
class Sweep {
public:
    Sweep(std::vector<Edge> edges, const std::vector<Outline>& outlines, double tolerance)
        : edges_(std::move(edges)),
          outlines_(outlines),
          isInside_(outlines.size()),
          tolerance_(tolerance) {
        std::sort(edges_.begin(), edges_.end(),
                  [](const Edge& a, const Edge& b) { return a.low.y < b.low.y; });
    }

    // Probes must come in the order of y.
    bool IsMisplaced(const Probe& probe) {
        const Point& p = probe.at;
        while (next_ < edges_.size() && edges_[next_].low.y <= p.y + tolerance_) {
            active_.push_back(edges_[next_++]);
        }
        std::fill(isInside_.begin(), isInside_.end(), false);
        int layers = 0;  // of solids, less the other holes
        bool isOnEdge = false;
        for (std::size_t i = 0; i < active_.size();) {
            const Edge& edge = active_[i];
            if (edge.high.y < p.y - tolerance_) {
                active_[i] = active_.back();
                active_.pop_back();
                continue;
            }
            ++i;
            if (edge.outline == probe.outline) continue;
            isOnEdge =
                isOnEdge || SquaredDistance(edge.low, edge.high, p) <= tolerance_ * tolerance_;
            if (!IsLeftOf(edge.low, edge.high, p)) continue;
            isInside_[edge.outline].flip();
            layers += isInside_[edge.outline] == outlines_[edge.outline].isSolid ? 1 : -1;
        }
        return !isOnEdge && layers < 1;
    }

private:
    std::vector<Edge> edges_;
    const std::vector<Outline>& outlines_;
    std::vector<Edge> active_;
    std::vector<bool> isInside_;  // an odd number of edges to the right
    std::size_t next_ = 0;
    double tolerance_;
};

}  // namespace

std::optional<MisplacedPoint> FindMisplacedHole(const std::vector<Outline>& outlines) {
    const auto isHole = [](const Outline& outline) { return !outline.isSolid; };
    const auto holes = std::count_if(outlines.begin(), outlines.end(), isHole);
    const auto isInPlace = [&](const Outline& outline) {
        return outline.isSolid || IsClearlyInPlace(outlines, outline);
    };
    if (static_cast<std::size_t>(holes) <= kFewHoles &&
        std::all_of(outlines.begin(), outlines.end(), isInPlace)) {
        return std::nullopt;
    }

    Box box;
    for (const Outline& outline : outlines) box.Add(outline);
    const double tolerance = kStickOut * ((box.high.x - box.low.x) + (box.high.y - box.low.y));
    std::vector<Edge> edges;
    std::vector<Probe> probes;
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        ForEachEdge(outlines[i], [&](const Point& a, const Point& b) {
            edges.push_back(a.y < b.y ? Edge{a, b, i} : Edge{b, a, i});
        });
        if (!outlines[i].isSolid) AddProbes(outlines[i], i, kInwards * tolerance, &probes);
    }
    std::sort(probes.begin(), probes.end(),
              [](const Probe& a, const Probe& b) { return a.at.y < b.at.y; });
    Sweep sweep(std::move(edges), outlines, tolerance);
    for (const Probe& probe : probes) {
        if (sweep.IsMisplaced(probe)) return MisplacedPoint{probe.outline, probe.at.x, probe.at.y};
    }
    return std::nullopt;
}

}  // namespace halvorn::python
