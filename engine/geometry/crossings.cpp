#include "geometry/crossings.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"

namespace halvorn::engine {

namespace {

struct Edge {
    std::size_t index;
    Point from, to;

    double Left() const { return std::min(from.x, to.x); }
    double Right() const { return std::max(from.x, to.x); }
    double Bottom() const { return std::min(from.y, to.y); }
    double Top() const { return std::max(from.y, to.y); }
    bool HasEnd(const Point& point) const { return from == point || to == point; }
};

// Twice the area to the left of a -> b on the side of c; 0 when that is no more than rounding.
double Side(const Point& a, const Point& b, const Point& c) {
    constexpr double kRounding = 8.0 * 2.2e-16;
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double ex = c.x - a.x, ey = c.y - a.y;
    const double largest =
        std::max({std::fabs(a.x), std::fabs(a.y), std::fabs(c.x), std::fabs(c.y)});
    const double bound = kRounding * (std::fabs(dx * ey) + std::fabs(dy * ex) +
                                      largest * (std::fabs(dx) + std::fabs(dy)));
    const double cross = dx * ey - dy * ex;
    return std::fabs(cross) <= bound ? 0.0 : cross;
}

bool IsWithin(const Edge& edge, const Point& point) {
    return point.x >= edge.Left() && point.x <= edge.Right() && point.y >= edge.Bottom() &&
           point.y <= edge.Top();
}

// The place where the edges meet, if they do.
std::optional<Crossing> Meeting(const Edge& a, const Edge& b) {
    const double fromSide = Side(a.from, a.to, b.from), toSide = Side(a.from, a.to, b.to);
    const double backFrom = Side(b.from, b.to, a.from), backTo = Side(b.from, b.to, a.to);
    Crossing crossing{a.index, b.index, {}, false};
    if (fromSide * toSide < 0.0 && backFrom * backTo < 0.0) {
        const double t = fromSide / (fromSide - toSide);
        crossing.place = {b.from.x + t * (b.to.x - b.from.x), b.from.y + t * (b.to.y - b.from.y)};
        crossing.isProper = true;
        return crossing;
    }
    const auto touches = [&](double side, const Edge& edge, const Point& point) {
        crossing.place = point;
        return side == 0.0 && IsWithin(edge, point);
    };
    if (touches(fromSide, a, b.from) || touches(toSide, a, b.to) || touches(backFrom, b, a.from) ||
        touches(backTo, b, a.to)) {
        return crossing;
    }
    return std::nullopt;
}

// Edges that follow each other meet in their common point; they are at fault only when the second
// runs back over the first.
bool RunsBack(const Edge& first, const Edge& second) {
    const double dot = (first.to.x - first.from.x) * (second.to.x - second.from.x) +
                       (first.to.y - first.from.y) * (second.to.y - second.from.y);
    return dot < 0.0 && Side(first.from, first.to, second.to) == 0.0;
}

// The ends of edges that are drawn twice, there and back: a keyhole ring meets itself there.
std::vector<Point> BridgeEnds(const std::vector<Edge>& edges) {
    std::vector<std::pair<Point, Point>> spans;
    spans.reserve(edges.size());
    for (const Edge& edge : edges) spans.push_back(std::minmax(edge.from, edge.to));
    std::sort(spans.begin(), spans.end());
    std::vector<Point> ends;
    for (std::size_t i = 1; i < spans.size(); ++i) {
        if (spans[i] != spans[i - 1]) continue;
        ends.push_back(spans[i].first);
        ends.push_back(spans[i].second);
    }
    std::sort(ends.begin(), ends.end());
    return ends;
}

// Twice the area of the triangle, positive when it runs counter-clockwise.
double Cross(const Point& a, const Point& b, const Point& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// Twice the area between a point and the vertices from one to another.
double AreaBeside(const Point& apex, const Points& points, std::size_t from, std::size_t to) {
    double area = 0.0;
    for (std::size_t i = from; i < to; ++i) area += Cross(apex, points[i], points[i + 1]);
    return area;
}

}  // namespace

double TwiceArea(const Points& ring) {
    return ring.empty() ? 0.0 : AreaBeside(ring[0], ring, 0, ring.size() - 1);
}

std::vector<Crossing> FindCrossings(const Points& ring, bool isOpen, std::size_t most) {
    std::vector<Edge> edges;
    for (std::size_t i = 0; i + (isOpen ? 1 : 0) < ring.size(); ++i) {
        edges.push_back({i, ring[i], ring[(i + 1) % ring.size()]});
    }
    const std::size_t count = edges.size();
    std::sort(edges.begin(), edges.end(),
              [](const Edge& a, const Edge& b) { return a.Left() < b.Left(); });
    std::vector<Crossing> found;
    // A vertex on an edge touches it with both of its own edges.
    const std::vector<Point> bridgeEnds = BridgeEnds(edges);
    const auto add = [&](const Crossing& crossing) {
        if (!crossing.isProper &&
            std::binary_search(bridgeEnds.begin(), bridgeEnds.end(), crossing.place)) {
            return;
        }
        for (const Crossing& other : found) {
            if (other.place == crossing.place) return;
        }
        found.push_back(crossing);
    };
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t k = i + 1; k < count && edges[k].Left() <= edges[i].Right(); ++k) {
            const Edge& a = edges[i].index < edges[k].index ? edges[i] : edges[k];
            const Edge& b = edges[i].index < edges[k].index ? edges[k] : edges[i];
            if (a.Top() < b.Bottom() || b.Top() < a.Bottom()) continue;
            const bool isBridge = a.HasEnd(b.from) && a.HasEnd(b.to);
            const bool isNext = b.index == a.index + 1;
            const bool isLast = !isOpen && a.index == 0 && b.index == count - 1;
            if (isNext || isLast) {
                const Edge& first = isNext ? a : b;
                if (RunsBack(first, isNext ? b : a)) {
                    found.push_back({a.index, b.index, first.to, false});
                }
            } else if (!isBridge) {
                const std::optional<Crossing> meeting = Meeting(a, b);
                if (meeting) add(*meeting);
            }
            if (found.size() == most) return found;
        }
    }
    return found;
}

std::optional<Point> FindLoop(const Points& ring) {
    constexpr std::size_t kMostPoints = 20000;
    constexpr std::size_t kMostCrossings = 1000;
    constexpr double kNegligible = 1e-6;
    Points points = ring;
    points.erase(std::unique(points.begin(), points.end()), points.end());
    while (points.size() > 1 && points.front() == points.back()) points.pop_back();
    if (points.size() < 4 || points.size() > kMostPoints) return std::nullopt;
    for (const Crossing& crossing : FindCrossings(points, false, kMostCrossings)) {
        if (!crossing.isProper) continue;
        const double whole = AreaBeside(crossing.place, points, 0, points.size() - 1) +
                             Cross(crossing.place, points.back(), points.front());
        const double loop =
            AreaBeside(crossing.place, points, crossing.firstEdge + 1, crossing.secondEdge);
        const double rest = whole - loop;
        const double smaller = std::min(std::fabs(loop), std::fabs(rest));
        if (smaller > kNegligible * (std::fabs(loop) + std::fabs(rest))) return crossing.place;
    }
    return std::nullopt;
}

std::string PlaceText(const Point& point) {
    return PlaceText(point.x, point.y);
}

}  // namespace halvorn::engine
