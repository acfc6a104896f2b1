/// @file field_space.h
/// Piecewise polynomials on a mesh: which order each triangle and edge has, and the rings.
#ifndef HALVORN_ENGINE_WARPING_FIELD_SPACE_H
#define HALVORN_ENGINE_WARPING_FIELD_SPACE_H

#include <array>
#include <cstddef>
#include <vector>

#include "warping/triangle_mesh.h"

namespace halvorn::engine {

/// A closed line of edges without a neighbour, with the material on its left. What it encloses is
/// integrated with the sign of its direction: positive for the outline, negative for a void.
struct RimRing {
    std::vector<EdgeRef> edges;
    double area = 0.0;    ///< enclosed
    double firstX = 0.0;  ///< integral of x over what is enclosed
    double firstY = 0.0;  ///< of y
};

/// Continuous functions over a mesh that are polynomials on each triangle, of an order of its own.
/// An edge has the higher order of its triangles; one on a ring has order 3 at least, since the
/// flux of linear loads is given there by cubic stress functions.
struct FieldSpace {
    TriangleMesh mesh;        ///< about the centre of gravity
    std::vector<int> orders;  ///< of each triangle, from 2 to kHighestOrder

    std::vector<std::array<Index, 3>> edges;  ///< of each triangle
    std::vector<int> edgeOrders;
    std::vector<RimRing> rings;  ///< the outline, then the voids
    std::vector<Index> ringAt;   ///< of each vertex; kNone within the part

    /// Returns the highest order among a triangle and its edges.
    int HighestOrderAt(Index triangle) const;
    /// Returns whether an edge is run along from the vertex with the smaller number to the other.
    bool RunsUp(Index triangle, int edge) const;
    const Point& CornerAt(Index triangle, int corner) const {
        return mesh.vertices[Slot(mesh.corners[Slot(triangle)][Slot(corner % 3)])];
    }
    std::size_t TriangleCount() const { return mesh.corners.size(); }
    std::size_t VoidCount() const { return rings.size() - 1; }
};

/// Numbers edges and rings of the mesh and sets the orders of edges, from `mesh` and `orders`.
void CompleteSpace(FieldSpace* space);

/// Returns by how much the outline turns at each vertex on a ring, negative into the material
/// [radians]; 0 within the part.
std::vector<double> TurnsOf(const FieldSpace& space);

/// The affine map from the reference triangle.
struct TriangleMap {
    double area = 0.0;
    Point byXi;   ///< gradient of xi
    Point byEta;  ///< gradient of eta
};

/// Returns the map of a triangle; one without height gets a little.
TriangleMap MapOf(const FieldSpace& space, Index triangle);

}  // namespace halvorn::engine

#endif
