/// @file lengths.h
/// Distances between points and lengths of curves.
#ifndef HALVORN_ENGINE_GEOMETRY_LENGTHS_H
#define HALVORN_ENGINE_GEOMETRY_LENGTHS_H

#include <algorithm>
#include <cmath>

#include "geometry/point.h"

namespace halvorn::engine {

inline double Distance(const Point& p, const Point& q) {
    return std::hypot(p.x - q.x, p.y - q.y);
}

/// Returns the point of the segment between two points that is nearest to another.
inline Point NearestOnSegment(const Point& p, const Point& from, const Point& to) {
    const Point along = to - from;
    const double square = Dot(along, along);
    const double at = square > 0.0 ? std::clamp(Dot(p - from, along) / square, 0.0, 1.0) : 0.0;
    return from + at * along;
}

/// Returns the distance of a point from the segment between two others.
inline double DistanceToSegment(const Point& p, const Point& from, const Point& to) {
    return Distance(p, NearestOnSegment(p, from, to));
}

/// Returns the length of an open line through points.
inline double Length(const Points& points) {
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) length += Distance(points[i - 1], points[i]);
    return length;
}

/// Returns the length of a ring. @pre it has a point
inline double Perimeter(const Points& ring) {
    return Length(ring) + Distance(ring.back(), ring.front());
}

}  // namespace halvorn::engine

#endif
