#include "region/polygons.h"

#include <cstddef>
#include <map>
#include <utility>

#include "geometry/rings.h"

namespace halvorn::engine {

namespace {

// Divides a ring where it comes back to a point: a walk that does so leaves the loop as a ring.
std::vector<Points> LoopsOf(const Points& ring) {
    std::vector<Points> loops;
    Points path;
    std::map<Point, std::size_t> placeOnPath;
    for (const Point& point : ring) {
        const auto [at, isNew] = placeOnPath.try_emplace(point, path.size());
        if (!isNew) {
            const auto begin = path.begin() + static_cast<std::ptrdiff_t>(at->second);
            loops.emplace_back(begin, path.end());
            for (const Point& left : loops.back()) placeOnPath.erase(left);
            path.erase(begin, path.end());
            placeOnPath[point] = path.size();
        }
        path.push_back(point);
    }
    loops.push_back(std::move(path));
    return loops;
}

// An outline has one loop that runs counter-clockwise, since the part hangs together by edges: of
// what it touches the outside in a point, the rest is a hole.
void AddLoops(const Region& region, const Points& ring, Polygon* polygon) {
    for (Points& loop : LoopsOf(ring)) {
        const bool isOutline = TwiceArea(loop) > 0.0;
        for (Point& point : loop) point = region.frame.FromFrame(point);
        if (isOutline) {
            polygon->outline = std::move(loop);
        } else {
            polygon->holes.push_back(std::move(loop));
        }
    }
}

}  // namespace

std::vector<Polygon> PolygonsOf(const Region& region) {
    std::vector<Polygon> polygons;
    for (const Part& part : region.parts) {
        Polygon& polygon = polygons.emplace_back();
        AddLoops(region, part.outline, &polygon);
        for (const Points& hole : part.voids) AddLoops(region, hole, &polygon);
    }
    return polygons;
}

}  // namespace halvorn::engine
