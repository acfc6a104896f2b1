#include "geometry/wall_outline.h"
#include "geometry/ring_area.h"

#include <algorithm>
#include <cmath>

namespace halvorn::engine::shapes {
namespace {

// Relative to an edge's length, as of arcs that touch in a rounded polygon.
constexpr double kFitTolerance = 1e-9;

std::vector<PolygonEdge> EdgesOf(const WallLine& line) {
    const std::size_t n = line.points.size();
    std::vector<PolygonEdge> edges;
    for (std::size_t i = 0; i < n - (line.isClosed ? 0 : 1); ++i) {
        edges.emplace_back(line.points[i], line.points[(i + 1) % n]);
    }
    return edges;
}

// The turn at every point, counter-clockwise positive [rad]; 0 at ends and beside edges without
// length.
std::vector<double> TurnsOf(const std::vector<PolygonEdge>& edges, const WallLine& line) {
    const std::size_t n = line.points.size();
    std::vector<double> turns(n, 0.0);
    for (std::size_t i = line.isClosed ? 0 : 1; i < edges.size(); ++i) {
        turns[i] = TurnBetween(edges[(i + n - 1) % n].along, edges[i].along);
    }
    return turns;
}

// The length that a corner takes from the edges of the mid-line, for the face at `offset` to the
// left of it.
double NeededLength(double turn, double radius, double thickness, double offset, FaceArcs arcs) {
    if (turn == 0.0) return 0.0;
    const double tangent = std::tan(0.5 * std::abs(turn));
    const double inwards = turn > 0.0 ? offset : -offset;
    if (radius == 0.0) return inwards == 0.0 ? 0.0 : inwards * tangent;
    const double bend = (radius + 0.5 * thickness) * tangent;
    return arcs == FaceArcs::Concentric ? bend : bend + inwards * tangent;
}

}  // namespace

std::optional<WallFault> FindWallFault(const WallLine& line, FaceArcs arcs) {
    using Kind = WallFault::Kind;
    const std::vector<PolygonEdge> edges = EdgesOf(line);
    const std::vector<double> turns = TurnsOf(edges, line);
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const std::size_t next = (i + 1) % line.points.size();
        const double available = edges[i].length;
        if (available == 0.0) {
            if (arcs == FaceArcs::Concentric)
                return WallFault{Kind::Coincident, std::max(i, next), 0.0, 0.0};
            continue;
        }
        for (const double side : {0.5, -0.5}) {
            const double offset = side * line.thickness;
            const double start =
                NeededLength(turns[i], line.radii[i], line.thickness, offset, arcs);
            const double end =
                NeededLength(turns[next], line.radii[next], line.thickness, offset, arcs);
            if (start + end <= available * (1.0 + kFitTolerance)) continue;
            // A bend is to blame before a sharp corner, and what needs more before what needs less.
            const auto isBend = [&](std::size_t k) {
                return line.radii[k] > 0.0 && turns[k] != 0.0;
            };
            const bool isStart = isBend(i) == isBend(next) ? start > end : isBend(i);
            const std::size_t blamed = isStart ? i : next;
            return WallFault{isBend(blamed) ? Kind::Radius : Kind::Thickness, blamed, start + end,
                             available};
        }
    }
    return std::nullopt;
}

std::vector<Corner> FaceCorners(const WallLine& line, double side, FaceArcs arcs) {
    const std::vector<PolygonEdge> edges = EdgesOf(line);
    const std::vector<double> turns = TurnsOf(edges, line);
    const std::size_t n = line.points.size();
    const double offset = side * 0.5 * line.thickness;
    std::vector<Corner> corners;
    corners.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        const bool isStart = !line.isClosed && i == 0;
        const bool isEnd = i == edges.size();
        const Point& in = edges[isStart ? 0 : (i + n - 1) % n].along;
        const Point& out = isEnd ? in : edges[i].along;
        // The sum of both unit normals, scaled to be the unit's distance from both edges.
        const double scale = offset == 0.0 ? 0.0 : offset / (1.0 + in.x * out.x + in.y * out.y);
        const double inner = isStart || isEnd ? 0.0 : line.radii[i];
        const double outer = inner + line.thickness;
        double radius = inner;
        if (inner > 0.0 && (arcs == FaceArcs::Equal || side == 0.0)) {
            radius += 0.5 * line.thickness;
        } else if (inner > 0.0 && turns[i] * side <= 0.0) {
            radius = outer;
        }
        corners.push_back({line.points[i].x - (in.y + out.y) * scale,
                           line.points[i].y + (in.x + out.x) * scale, radius, outer});
    }
    return corners;
}

Outline DrawWall(const WallLine& line, const ArcDivision& division) {
    std::vector<Corner> left = FaceCorners(line, 1.0, FaceArcs::Concentric);
    std::vector<Corner> right = FaceCorners(line, -1.0, FaceArcs::Concentric);
    if (!line.isClosed) {
        right.insert(right.end(), left.rbegin(), left.rend());
        return {RoundedPolygon(right, division), {}};
    }
    if (TwiceArea(line.points) < 0.0) {
        // Clockwise: the left face is the outer one. Reversed but for the first corner.
        std::swap(left, right);
        std::reverse(left.begin() + 1, left.end());
        std::reverse(right.begin() + 1, right.end());
    }
    return {RoundedPolygon(right, division), RoundedPolygon(left, division)};
}

Points WallKeyhole(const Outline& outline) {
    return outline.hole.empty() ? outline.solid : KeyholeRing(outline, 0, 0);
}

Points MidLine(const WallLine& line, const ArcDivision& division) {
    const std::vector<Corner> corners = FaceCorners(line, 0.0, FaceArcs::Concentric);
    return line.isClosed ? RoundedPolygon(corners, division) : RoundedLine(corners, division);
}

}  // namespace halvorn::engine::shapes
