/// @file plane_map.h
/// Affine maps of the plane: how a block lies in a drawing.
#ifndef HALVORN_ENGINE_READ_DXF_PLANE_MAP_H
#define HALVORN_ENGINE_READ_DXF_PLANE_MAP_H

#include <cmath>
#include <utility>

#include "geometry/point.h"

namespace halvorn::engine::dxf {

/// (x, y) -> (xx x + xy y + dx, yx x + yy y + dy). The default changes nothing.
struct PlaneMap {
    double xx = 1.0, xy = 0.0, dx = 0.0;
    double yx = 0.0, yy = 1.0, dy = 0.0;

    Point operator()(const Point& point) const {
        const auto [x, y] = point;
        return {xx * x + xy * y + dx, yx * x + yy * y + dy};
    }

    /// Returns the map that applies `inner` first.
    PlaneMap After(const PlaneMap& inner) const {
        const auto [x, y] = (*this)({inner.dx, inner.dy});
        return {xx * inner.xx + xy * inner.yx, xx * inner.xy + xy * inner.yy, x,
                yx * inner.xx + yy * inner.yx, yx * inner.xy + yy * inner.yy, y};
    }

    /// Returns the largest factor by which a distance can grow: the greater singular value of the
    /// linear part, half the sum of the radii of its two turning parts.
    double LargestScale() const {
        return 0.5 * (std::hypot(xx + yy, yx - xy) + std::hypot(xx - yy, yx + xy));
    }
};

}  // namespace halvorn::engine::dxf

#endif
