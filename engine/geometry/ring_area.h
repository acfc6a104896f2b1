/// @file ring_area.h
/// The area of a ring.
#ifndef HALVORN_ENGINE_GEOMETRY_RING_AREA_H
#define HALVORN_ENGINE_GEOMETRY_RING_AREA_H

#include <cstddef>

#include "geometry/point.h"

namespace halvorn::engine {

/// Returns twice the area of a ring, positive when it runs counter-clockwise; summed about its
/// first point [L^2].
inline double TwiceArea(const Points& ring) {
    double area = 0.0;
    for (std::size_t i = 1; i + 1 < ring.size(); ++i) {
        area += Cross(ring[i] - ring[0], ring[i + 1] - ring[0]);
    }
    return area;
}

}  // namespace halvorn::engine

#endif
