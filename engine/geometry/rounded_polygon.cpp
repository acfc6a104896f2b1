#include "geometry/rounded_polygon.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

#include "base/dimension_checks.h"
#include "base/numbers.h"

namespace halvorn::engine::shapes {
namespace {

// Relative to an edge's length. Tangent lengths and edge lengths carry a few rounding errors of
// 1e-16 each, and dimensions read from text or scaled by a unit carry theirs; arcs that meet to
// within this are taken to touch.
constexpr double touchingTolerance = 1e-9;

// A corner whose direction turns by less than this [rad] is straight: its arc would have no length.
constexpr double straightTurn = 1e-12;

struct Direction {
    double x;
    double y;
};

struct Edge {
    Direction along;  // unit vector from this corner to the next
    double length;
};

// The arc of one corner: `turn` is its signed sweep, counter-clockwise positive, and
// `tangentLength` the distance from the corner to each tangent point.
struct Rounding {
    double turn = 0.0;
    double tangentLength = 0.0;
};

std::string At(const Corner& corner) {
    return "at (" + ShortNumber(corner.x) + ", " + ShortNumber(corner.y) + ")";
}

void CheckCorners(std::span<const Corner> corners, bool isClosed) {
    if (isClosed && corners.size() < 3) {
        throw std::invalid_argument("a polygon needs at least three corners");
    }
    if (corners.size() < 2) throw std::invalid_argument("a line needs at least two corners");
    for (const Corner& corner : corners) {
        if (!std::isfinite(corner.x) || !std::isfinite(corner.y) || !std::isfinite(corner.radius)) {
            throw std::invalid_argument("the corner " + At(corner) + " is not a finite number");
        }
        if (corner.radius < 0.0) {
            throw std::invalid_argument("the corner radius " + At(corner) + " is negative");
        }
    }
}

// One edge from every corner, but for the last of a line.
std::vector<Edge> EdgesOf(std::span<const Corner> corners, bool isClosed) {
    std::vector<Edge> edges;
    edges.reserve(corners.size());
    for (std::size_t i = 0; i < corners.size() - (isClosed ? 0 : 1); ++i) {
        const Corner& from = corners[i];
        const Corner& to = corners[(i + 1) % corners.size()];
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        if (!(length > 0.0)) {
            throw std::invalid_argument("two successive corners coincide " + At(from));
        }
        edges.push_back({{(to.x - from.x) / length, (to.y - from.y) / length}, length});
    }
    return edges;
}

// A circle of radius r tangent to two lines that meet at a turn of angle a touches them at r
// tan(a / 2) from their intersection.
Rounding RoundCorner(const Corner& corner, const Direction& in, const Direction& out) {
    Rounding rounding;
    if (corner.radius == 0.0) return rounding;
    const double turn = std::atan2(in.x * out.y - in.y * out.x, in.x * out.x + in.y * out.y);
    if (std::abs(turn) < straightTurn) return rounding;
    if (std::numbers::pi - std::abs(turn) < straightTurn) {
        throw std::invalid_argument("the outline turns straight back " + At(corner) +
                                    ", so that no radius fits");
    }
    rounding.turn = turn;
    rounding.tangentLength = corner.radius * std::tan(0.5 * std::abs(turn));
    return rounding;
}

// Returns whether the arcs at both ends of an edge use it up.
bool ArcsTouch(const Corner& from, const Corner& to, const Edge& edge, const Rounding& start,
               const Rounding& end) {
    const double needed = start.tangentLength + end.tangentLength;
    const double margin = touchingTolerance * edge.length;
    if (needed > edge.length + margin) {
        const bool isStartWorse = start.tangentLength > end.tangentLength;
        throw RadiusError("the radii " + ShortNumber(from.radius) + " " + At(from) + " and " +
                              ShortNumber(to.radius) + " " + At(to) + " do not fit: they need " +
                              ShortNumber(needed) + " of an edge " + ShortNumber(edge.length) +
                              " long",
                          isStartWorse ? from.radius : to.radius);
    }
    return needed >= edge.length - margin;
}

// Appends the arc from the tangent point on the incoming edge to the one on the outgoing edge; both
// are computed from their own edge, so that they lie on it to rounding.
void AppendArc(const Corner& corner, const Direction& in, const Direction& out,
               const Rounding& rounding, const ArcDivision& division, std::vector<double>& ring) {
    const double startX = corner.x - in.x * rounding.tangentLength;
    const double startY = corner.y - in.y * rounding.tangentLength;
    // From the centre, which lies left of the edge in a left turn, to the first tangent point.
    const double side = std::copysign(corner.radius, rounding.turn);
    const Arc arc = {{startX, startY},
                     {in.y * side, -in.x * side},
                     {in.x * corner.radius, in.y * corner.radius},
                     std::abs(rounding.turn),
                     std::max(corner.radius, corner.largestRadius)};
    ring.insert(ring.end(), {startX, startY});
    for (const auto& [x, y] : division.PointsBetweenEnds(arc)) ring.insert(ring.end(), {x, y});
    ring.push_back(corner.x + out.x * rounding.tangentLength);
    ring.push_back(corner.y + out.y * rounding.tangentLength);
}

std::vector<double> Rounded(std::span<const Corner> corners, bool isClosed,
                            const ArcDivision& division) {
    CheckCorners(corners, isClosed);
    const std::size_t n = corners.size();
    const std::vector<Edge> edges = EdgesOf(corners, isClosed);
    std::vector<Rounding> roundings(n);
    for (std::size_t i = isClosed ? 0 : 1; i < edges.size(); ++i) {
        roundings[i] = RoundCorner(corners[i], edges[(i + n - 1) % n].along, edges[i].along);
    }
    std::vector<double> points;
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t next = (i + 1) % n;
        if (roundings[i].turn == 0.0) {
            points.insert(points.end(), {corners[i].x, corners[i].y});
        } else {
            AppendArc(corners[i], edges[(i + n - 1) % n].along, edges[i].along, roundings[i],
                      division, points);
        }
        if (i == edges.size()) continue;
        // The shared point is kept as the first of the next corner.
        if (ArcsTouch(corners[i], corners[next], edges[i], roundings[i], roundings[next])) {
            points.resize(points.size() - 2);
        }
    }
    return points;
}

}  // namespace

std::vector<double> RoundedPolygon(std::span<const Corner> corners, const ArcDivision& division) {
    return Rounded(corners, true, division);
}

std::vector<double> RoundedLine(std::span<const Corner> corners, const ArcDivision& division) {
    return Rounded(corners, false, division);
}

}  // namespace halvorn::engine::shapes
