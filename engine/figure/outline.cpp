#include "figure/outline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "geometry/crossings.h"

namespace halvorn::engine::figure {

namespace {

using Edge = std::pair<Point, Point>;

Point Along(const Point& start, const Point& direction, double distance) {
    return {start.x + distance * direction.x, start.y + distance * direction.y};
}

// The direction from one point to another, (0, 0) between equal ones.
Point UnitTo(const Point& from, const Point& to) {
    const Point step = to - from;
    const double length = std::hypot(step.x, step.y);
    return length > 0.0 ? Point{step.x / length, step.y / length} : Point{0.0, 0.0};
}

// The points of the arc that rounds a corner, the tangent points included; the corner itself where
// there is nothing to round.
Points Rounded(const Point& previous, const Point& corner, const Point& next, double radius) {
    constexpr int kChords = 12;
    constexpr double kStraight = 1e-9;  // [rad]
    const Point back = UnitTo(corner, previous);
    const Point on = UnitTo(corner, next);
    const double half = 0.5 * std::atan2(std::fabs(Cross(back, on)), Dot(back, on));
    if (radius <= 0.0 || half < kStraight || half > std::numbers::pi / 2 - kStraight) {
        return {corner};
    }
    const Point bisector = UnitTo({0.0, 0.0}, {back.x + on.x, back.y + on.y});
    const Point centre = Along(corner, bisector, radius / std::sin(half));
    const Point arm = Along(corner, back, radius / std::tan(half)) - centre;
    const Point lastArm = Along(corner, on, radius / std::tan(half)) - centre;
    const double sweep = std::atan2(Cross(arm, lastArm), Dot(arm, lastArm));
    Points arc;
    for (int k = 0; k <= kChords; ++k) {
        const double cosine = std::cos(sweep * k / kChords);
        const double sine = std::sin(sweep * k / kChords);
        arc.emplace_back(centre.x + cosine * arm.x - sine * arm.y,
                         centre.y + sine * arm.x + cosine * arm.y);
    }
    return arc;
}

Points RoundedLine(const Points& line, const std::vector<double>& radii, double extra,
                   bool isOpen) {
    Points rounded;
    const std::size_t n = line.size();
    for (std::size_t i = 0; i < n; ++i) {
        const bool isEnd = isOpen && (i == 0 || i + 1 == n);
        const bool isSharp = isEnd || i >= radii.size() || radii[i] <= 0.0;
        const Points arc = Rounded(line[(i + n - 1) % n], line[i], line[(i + 1) % n],
                                   isSharp ? 0.0 : radii[i] + extra);
        rounded.insert(rounded.end(), arc.begin(), arc.end());
    }
    return rounded;
}

// The line at a distance to the left of another one, mitred at its corners.
Points Offset(const Points& line, double distance, bool isOpen) {
    Points face;
    const std::size_t n = line.size();
    for (std::size_t i = 0; i < n; ++i) {
        Point in = UnitTo(line[(i + n - 1) % n], line[i]);
        Point out = UnitTo(line[i], line[(i + 1) % n]);
        if (isOpen && i == 0) in = out;
        if (isOpen && i + 1 == n) out = in;
        if (in == Point{0.0, 0.0}) in = out;
        if (out == Point{0.0, 0.0}) out = in;
        const Point sum = {-in.y - out.y, in.x + out.x};
        const double square = sum.x * sum.x + sum.y * sum.y;
        // Where the line turns back there is no mitre.
        constexpr double kReversal = 1e-12;
        face.push_back(square > kReversal ? Along(line[i], sum, 2.0 * distance / square) : line[i]);
    }
    return face;
}

std::vector<Ring> WallRings(const Polyline& wall) {
    const bool isOpen = wall.kind == PolylineKind::OpenWall;
    const double half = 0.5 * wall.thickness;
    const auto face = [&](double distance) {
        return RoundedLine(Offset(wall.points, distance, isOpen), wall.radii, half, isOpen);
    };
    Points left = face(half);
    Points right = face(-half);
    if (isOpen) {
        left.insert(left.end(), right.rbegin(), right.rend());
        return {{left, true}};
    }
    // The left face of a counter-clockwise line is the inner one.
    if (TwiceArea(wall.points) > 0.0) std::swap(left, right);
    return {{left, true}, {right, false}};
}

}  // namespace

std::vector<Ring> RingsOf(const SectionModel& section) {
    std::vector<Ring> rings;
    for (const Element& element : section.elements) {
        rings.push_back({element.ring, element.isSolid});
    }
    if (!section.polyline) return rings;
    const Polyline& polyline = *section.polyline;
    if (polyline.kind != PolylineKind::Solid) return WallRings(polyline);
    return {{RoundedLine(polyline.points, polyline.radii, 0.0, false), true}};
}

std::vector<Stretch> WithoutBridges(const Points& ring) {
    const std::size_t n = ring.size();
    std::vector<Edge> edges;
    for (std::size_t i = 0; i < n; ++i) edges.emplace_back(ring[i], ring[(i + 1) % n]);
    std::vector<Edge> sorted = edges;
    std::sort(sorted.begin(), sorted.end());
    const auto isBridge = [&](std::size_t i) {
        return std::binary_search(sorted.begin(), sorted.end(),
                                  Edge{edges[i].second, edges[i].first});
    };
    std::size_t first = 0;
    while (first < n && !isBridge(first)) ++first;
    if (first == n) return {{ring, true}};

    std::vector<Stretch> stretches;
    bool isGap = true;
    for (std::size_t k = 1; k < n; ++k) {
        const std::size_t i = (first + k) % n;
        if (isBridge(i)) {
            isGap = true;
            continue;
        }
        if (isGap) stretches.push_back({{edges[i].first}, false});
        isGap = false;
        stretches.back().points.push_back(edges[i].second);
    }
    for (Stretch& stretch : stretches) {
        if (stretch.points.front() != stretch.points.back()) continue;
        stretch.points.pop_back();
        stretch.isClosed = true;
    }
    return stretches;
}

}  // namespace halvorn::engine::figure
