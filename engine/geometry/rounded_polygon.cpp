#include "geometry/rounded_polygon.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

#include "base/dimension_checks.h"
#include "base/numbers.h"
#include "geometry/lengths.h"

namespace halvorn::engine::shapes {
namespace {

// Relative to an edge's length. Tangent lengths and edge lengths carry a few rounding errors of
// 1e-16 each, and dimensions read from text or scaled by a unit carry theirs; arcs that meet to
// within this are taken to touch.
constexpr double touchingTolerance = 1e-9;

// A corner whose direction turns by less than this [rad] is straight: its arc would have no length.
constexpr double straightTurn = 1e-12;

// The arc of one corner: `turn` is its signed sweep, counter-clockwise positive, and
// `tangentLength` the distance from the corner to each tangent point.
struct Rounding {
    double turn = 0.0;
    double tangentLength = 0.0;
};

std::string At(const Corner& corner) {
    return "at " + PlaceText(corner.x, corner.y);
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
std::vector<PolygonEdge> EdgesOf(std::span<const Corner> corners, bool isClosed) {
    std::vector<PolygonEdge> edges;
    edges.reserve(corners.size());
    for (std::size_t i = 0; i < corners.size() - (isClosed ? 0 : 1); ++i) {
        const Corner& from = corners[i];
        const Corner& to = corners[(i + 1) % corners.size()];
        edges.emplace_back(Point{from.x, from.y}, Point{to.x, to.y});
        if (!(edges.back().length > 0.0)) {
            throw std::invalid_argument("two successive corners coincide " + At(from));
        }
    }
    return edges;
}

bool IsReversal(double turn) {
    return std::numbers::pi - std::abs(turn) < straightTurn;
}

// A circle of radius r tangent to two lines that meet at a turn of angle a touches them at r
// tan(a / 2) from their intersection.
Rounding RoundingOf(const Corner& corner, double turn) {
    if (corner.radius == 0.0 || std::abs(turn) < straightTurn) return {};
    return {turn, corner.radius * std::tan(0.5 * std::abs(turn))};
}

// Returns whether the arcs at both ends of an edge use it up.
bool ArcsTouch(const Corner& from, const Corner& to, const PolygonEdge& edge, const Rounding& start,
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

// The arc from the tangent point on the incoming edge to the one on the outgoing edge; both are
// computed from their own edge, so that they lie on it to rounding.
Points ArcOf(const Corner& corner, const Point& in, const Point& out, const Rounding& rounding,
             const ArcDivision& division) {
    const Point start = {corner.x - in.x * rounding.tangentLength,
                         corner.y - in.y * rounding.tangentLength};
    // From the centre, which lies left of the edge in a left turn, to the first tangent point.
    const double side = std::copysign(corner.radius, rounding.turn);
    const Arc arc = {start,
                     {in.y * side, -in.x * side},
                     {in.x * corner.radius, in.y * corner.radius},
                     std::abs(rounding.turn),
                     std::max(corner.radius, corner.largestRadius)};
    Points points = division.PointsBetweenEnds(arc);
    points.insert(points.begin(), start);
    points.emplace_back(corner.x + out.x * rounding.tangentLength,
                        corner.y + out.y * rounding.tangentLength);
    return points;
}

Points Rounded(std::span<const Corner> corners, bool isClosed, const ArcDivision& division) {
    CheckCorners(corners, isClosed);
    const std::size_t n = corners.size();
    const std::vector<PolygonEdge> edges = EdgesOf(corners, isClosed);
    std::vector<Rounding> roundings(n);
    for (std::size_t i = isClosed ? 0 : 1; i < edges.size(); ++i) {
        const double turn = TurnBetween(edges[(i + n - 1) % n].along, edges[i].along);
        roundings[i] = RoundingOf(corners[i], turn);
        if (roundings[i].turn != 0.0 && IsReversal(turn)) {
            throw std::invalid_argument("the outline turns straight back " + At(corners[i]) +
                                        ", so that no radius fits");
        }
    }
    Points points;
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t next = (i + 1) % n;
        if (roundings[i].turn == 0.0) {
            points.emplace_back(corners[i].x, corners[i].y);
        } else {
            const Points arc = ArcOf(corners[i], edges[(i + n - 1) % n].along, edges[i].along,
                                     roundings[i], division);
            points.insert(points.end(), arc.begin(), arc.end());
        }
        if (i == edges.size()) continue;
        // The shared point is kept as the first of the next corner.
        if (ArcsTouch(corners[i], corners[next], edges[i], roundings[i], roundings[next])) {
            points.pop_back();
        }
    }
    return points;
}

}  // namespace

PolygonEdge::PolygonEdge(const Point& from, const Point& to) : length(Distance(from, to)) {
    const Point step = to - from;
    if (length > 0.0) along = {step.x / length, step.y / length};
}

Points RoundedCorner(const PolygonEdge& in, const Corner& corner, const PolygonEdge& out,
                     const ArcDivision& division) {
    const double turn = TurnBetween(in.along, out.along);
    const Rounding rounding = RoundingOf(corner, turn);
    if (rounding.turn == 0.0 || IsReversal(turn)) return {Point(corner.x, corner.y)};
    return ArcOf(corner, in.along, out.along, rounding, division);
}

Points RoundedPolygon(std::span<const Corner> corners, const ArcDivision& division) {
    return Rounded(corners, true, division);
}

Points RoundedLine(std::span<const Corner> corners, const ArcDivision& division) {
    return Rounded(corners, false, division);
}

}  // namespace halvorn::engine::shapes
