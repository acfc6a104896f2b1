/// @file rings.h
/// The area of a ring, and a ring without repeated points.
#ifndef HALVORN_ENGINE_GEOMETRY_RINGS_H
#define HALVORN_ENGINE_GEOMETRY_RINGS_H

#include <algorithm>
#include <cmath>
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

/// Returns the area of a ring, whichever way it runs [L^2].
inline double AreaOf(const Points& ring) {
    return 0.5 * std::fabs(TwiceArea(ring));
}

/// Drops the points of a ring that repeat the one before, also a last one that repeats the first.
inline void DropRepeatedPoints(Points& ring) {
    ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
    while (ring.size() > 1 && ring.front() == ring.back()) ring.pop_back();
}

}  // namespace halvorn::engine

#endif
