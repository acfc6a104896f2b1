/// @file mesh_places.h
/// Corners and edges of the triangles of a mesh.
#ifndef HALVORN_ENGINE_WARPING_MESH_PLACES_H
#define HALVORN_ENGINE_WARPING_MESH_PLACES_H

#include "warping/triangle_mesh.h"

namespace halvorn::engine {

/// Returns the corner or edge of a triangle that comes next, counter-clockwise.
inline std::size_t After(std::size_t place) {
    return place == 2 ? 0 : place + 1;
}

/// Returns the corner or edge of a triangle that comes before.
inline std::size_t Before(std::size_t place) {
    return place == 0 ? 2 : place - 1;
}

/// Returns at which corner of a triangle a vertex is. @pre it is at one
inline std::size_t PlaceOf(const std::array<Index, 3>& corners, Index vertex) {
    if (corners[0] == vertex) return 0;
    return corners[1] == vertex ? 1 : 2;
}

/// Returns the edge of a triangle's neighbour that is edge `edge` of the triangle.
/// @pre there is a neighbour across that edge
inline std::size_t EdgeBeyond(const TriangleMesh& mesh, Index triangle, std::size_t edge) {
    // Beyond it the edge starts where it ends here, and lies opposite the corner before that.
    const Index end = mesh.corners[Slot(triangle)][Before(edge)];
    const Index beyond = mesh.neighbours[Slot(triangle)][edge];
    return Before(PlaceOf(mesh.corners[Slot(beyond)], end));
}

/// Returns the point at a corner of a triangle.
inline const Point& CornerPoint(const TriangleMesh& mesh, Index triangle, std::size_t corner) {
    return mesh.vertices[Slot(mesh.corners[Slot(triangle)][corner])];
}

}  // namespace halvorn::engine

#endif
