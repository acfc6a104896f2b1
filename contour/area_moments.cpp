#include "contour/area_moments.h"

#include "contour/edge_sums.h"
#include "kernel/ring_edges.h"

namespace halvorn {

AreaMoments SignedAreaMoments(int n, const point2D* ring, const point2D& reference) {
    EdgeSums sums;
    const double referenceX = reference.x;
    const double referenceY = reference.y;
    ForEachRingEdge(n, ring, [&](const point2D& start, const point2D& end) {
        const point2D p{start.x - referenceX, start.y - referenceY};
        const point2D q{end.x - referenceX, end.y - referenceY};
        const double dx = q.x - p.x;
        const double dy = q.y - p.y;
        const double sx = p.x + q.x;
        const double sy = p.y + q.y;
        sums.AddArea(sx, dy);
        sums.AddFirst(p, q, dx, dy);
        sums.AddSecond(p, q, dx, dy, sx, sy);
    });
    return {sums.area2 * 0.5,         -(sums.first6X / 6.0), sums.first6Y / 6.0,
            -(sums.second24X / 24.0), sums.second24Y / 24.0, -(sums.product24 / 24.0)};
}

}  // namespace halvorn
