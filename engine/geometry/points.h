/// @file points.h
/// Vertices of rings and lines.
#ifndef HALVORN_ENGINE_GEOMETRY_POINTS_H
#define HALVORN_ENGINE_GEOMETRY_POINTS_H

#include <utility>
#include <vector>

namespace halvorn::engine {

/// Vertices (x, y) in the unit of the section; a ring does not repeat its first vertex.
using Points = std::vector<std::pair<double, double>>;

}  // namespace halvorn::engine

#endif
