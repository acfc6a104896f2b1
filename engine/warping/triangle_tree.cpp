#include "warping/triangle_tree.h"

#include <cstdlib>
#include <new>
#include <utility>

#include "geometry/lengths.h"

namespace halvorn::engine {

PlaceOnTriangle NearestOnTriangle(const FieldSpace& space, Index triangle, const Point& point) {
    const TriangleMap map = MapOf(space, triangle);
    const Point& corner = space.CornerAt(triangle, 0);
    const auto at = [&](const Point& p) {
        return PlaceOnTriangle{triangle, Dot(map.byXi, p - corner), Dot(map.byEta, p - corner),
                               Distance(p, point)};
    };
    PlaceOnTriangle nearest = at(point);
    if (nearest.xi >= 0.0 && nearest.eta >= 0.0 && nearest.xi + nearest.eta <= 1.0) return nearest;
    nearest.distance = std::numeric_limits<double>::infinity();
    for (int edge = 0; edge < 3; ++edge) {
        const PlaceOnTriangle onEdge = at(NearestOnSegment(
            point, space.CornerAt(triangle, edge + 1), space.CornerAt(triangle, edge + 2)));
        if (onEdge.distance < nearest.distance) nearest = onEdge;
    }
    return nearest;
}

TriangleTree::TriangleTree(const FieldSpace& space, double margin) {
    const std::size_t n = space.TriangleCount();
    CArray<KBox> boxes(static_cast<KBox*>(std::calloc(n, sizeof(KBox))));
    if (!boxes) throw std::bad_alloc();
    for (std::size_t t = 0; t < n; ++t) {
        const auto corner = [&](int i) {
            const Point& p = space.CornerAt(static_cast<Index>(t), i);
            return KPoint{p.x, p.y};
        };
        boxes[t] = KBoxAround(KBoxOfSegment(corner(0), corner(1), margin),
                              KBoxOfSegment(corner(1), corner(2), margin));
    }
    if (KBuildBoxTree(&tree_, std::move(boxes), static_cast<int>(n)) != 0) throw std::bad_alloc();
}

}  // namespace halvorn::engine
