/// @file faces.h
/// The faces of an arrangement: which outlines run round each.
#ifndef HALVORN_ENGINE_GEOMETRY_FACES_H
#define HALVORN_ENGINE_GEOMETRY_FACES_H

#include <utility>
#include <vector>

#include "geometry/arrangement.h"
#include "geometry/point.h"

namespace halvorn::engine {

/// A stretch of the plane that no outline divides.
struct Face {
    double area = 0.0;  ///< in the frame
    Point place;        ///< a point well within, in the frame
    int sum = 0;        ///< of the weighted winding numbers
    /// Outlines that run round it and how often, counter-clockwise positive; sorted.
    std::vector<std::pair<Index, int>> windings;
};

/// Returns all faces but the one outside. Cost: the number of triangles, and for each face the
/// number of outlines round it.
/// @param faceOf  unless null: of each triangle its face, kNone outside
std::vector<Face> FacesOf(const Arrangement& arrangement, std::vector<Index>* faceOf = nullptr);

}  // namespace halvorn::engine

#endif
