#include "figure/outline.h"

#include <algorithm>
#include <cstddef>

#include "geometry/crossings.h"
#include "geometry/wall_outline.h"

namespace halvorn::engine::figure {

namespace {

using Edge = std::pair<Point, Point>;

// One face of a wall, or a line without thickness, with its corners rounded. Unlike `DrawWall` it
// draws whatever the library computes, also where corners leave nothing of an edge.
Points Face(const shapes::WallLine& line, double side) {
    // Coarse, for the eye: within 1e-3 of the radius.
    static const auto kDivision = shapes::ArcDivision::StepsPerQuarter(16);
    const std::vector<shapes::Corner> corners = FaceCorners(line, side, shapes::FaceArcs::Equal);
    const std::size_t n = corners.size();
    const auto at = [&](std::size_t i) { return Point(corners[i % n].x, corners[i % n].y); };
    Points face;
    for (std::size_t i = 0; i < n; ++i) {
        const Points arc =
            RoundedCorner({at(i + n - 1), at(i)}, corners[i], {at(i), at(i + 1)}, kDivision);
        face.insert(face.end(), arc.begin(), arc.end());
    }
    return face;
}

std::vector<Ring> PolylineRings(const Polyline& polyline) {
    const bool isOpen = polyline.kind == PolylineKind::OpenWall;
    shapes::WallLine line = {polyline.points, polyline.radii, polyline.thickness, !isOpen};
    if (polyline.kind == PolylineKind::Solid) return {{Face(line, 0.0), true}};
    Points left = Face(line, 1.0);
    Points right = Face(line, -1.0);
    if (isOpen) {
        left.insert(left.end(), right.rbegin(), right.rend());
        return {{left, true}};
    }
    // The left face of a counter-clockwise line is the inner one.
    if (TwiceArea(line.points) > 0.0) std::swap(left, right);
    return {{left, true}, {right, false}};
}

}  // namespace

std::vector<Ring> RingsOf(const SectionModel& section) {
    std::vector<Ring> rings;
    for (const Element& element : section.elements) {
        rings.push_back({element.ring, element.isSolid});
    }
    return section.polyline ? PolylineRings(*section.polyline) : rings;
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
