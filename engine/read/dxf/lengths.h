/// @file lengths.h
/// Distances between points and lengths of curves.
#ifndef HALVORN_ENGINE_READ_DXF_LENGTHS_H
#define HALVORN_ENGINE_READ_DXF_LENGTHS_H

#include <cmath>

#include "read/dxf/flatten.h"

namespace halvorn::engine::dxf {

inline double Distance(const Point& p, const Point& q) {
    return std::hypot(p.x - q.x, p.y - q.y);
}

/// Returns the length of an open line through points.
inline double Length(const Points& points) {
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) length += Distance(points[i - 1], points[i]);
    return length;
}

}  // namespace halvorn::engine::dxf

#endif
