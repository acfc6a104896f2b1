/// @file lengths.h
/// Distances between points and lengths of lines.
#ifndef HALVORN_ENGINE_GEOMETRY_LENGTHS_H
#define HALVORN_ENGINE_GEOMETRY_LENGTHS_H

#include <algorithm>
#include <cmath>

#include "geometry/point.h"

namespace halvorn::engine {

inline double Distance(const Point& p, const Point& q) {
    return std::hypot(p.x - q.x, p.y - q.y);
}

/// Returns the distance of a point from the segment between two others.
inline double DistanceToSegment(const Point& p, const Point& from, const Point& to) {
    const double alongX = to.x - from.x, alongY = to.y - from.y;
    const double x = p.x - from.x, y = p.y - from.y;
    const double length2 = alongX * alongX + alongY * alongY;
    const double at =
        length2 > 0.0 ? std::clamp((x * alongX + y * alongY) / length2, 0.0, 1.0) : 0.0;
    return std::hypot(x - at * alongX, y - at * alongY);
}

/// Returns the length of an open line through points.
inline double Length(const Points& points) {
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) length += Distance(points[i - 1], points[i]);
    return length;
}

}  // namespace halvorn::engine

#endif
