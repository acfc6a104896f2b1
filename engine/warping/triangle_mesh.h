/// @file triangle_mesh.h
/// Triangles that fill one part of a region edge to edge: the elements of the fields of torsion and
/// shear.
#ifndef HALVORN_ENGINE_WARPING_TRIANGLE_MESH_H
#define HALVORN_ENGINE_WARPING_TRIANGLE_MESH_H

#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "geometry/point.h"
#include "geometry/triangulation.h"
#include "region/region.h"

namespace halvorn::engine {

/// Arrays of three are indexed by corner; edge i lies opposite corner i and runs from corner i + 1
/// to corner i + 2, with the triangle on its left.
///
/// No two triangles meet in a vertex alone: where the part meets itself in a point, each side has a
/// vertex of its own there. The triangles around a vertex hence follow each other across edges, all
/// round it within the part, from rim to rim on a ring.
struct TriangleMesh {
    Points vertices;                               ///< in the frame of the region
    std::vector<std::array<Index, 3>> corners;     ///< of each triangle, counter-clockwise
    std::vector<std::array<Index, 3>> neighbours;  ///< across edge i; kNone on a ring of the part
};

/// How fine a mesh is.
struct MeshOptions {
    double smallestAngle = 25.0;  ///< [degrees]; smaller ones stay where rings meet so
    double largestArea = std::numeric_limits<double>::infinity();  ///< of a triangle, in the frame
    std::size_t largestCount = 200000;  ///< of vertices; beyond it angles stay as they are
};

/// Returns a mesh of a part of a region, whose rings are unions of edges of it. Two opposite edges
/// of the rings are never the same edge of the mesh. A new vertex lies on an edge of a ring but for
/// rounding. What is thinner than 1e-9 of the part stays as it is. Cost: n log n, and the vertices
/// that are added: one or two for each vertex of a profile, for a strip its length over its
/// thickness.
TriangleMesh MeshOf(const Part& part, const MeshOptions& options = {});

/// Divides each marked triangle into two across its longest edge, and others as far as it takes to
/// keep them edge to edge: M.-C. Rivara, International Journal for Numerical Methods in Engineering
/// 20, 1984. What is a union of triangles before is one after, but for the rounding of vertices;
/// angles stay above half the smallest. Triangles so thin that rounding leaves no room for a vertex
/// stay, and so do marked ones whose neighbours they keep from being divided. Cost: that of the
/// triangles that are divided, and a pass over all.
/// @param marked  triangles, each once at most
/// @returns of each triangle the one before in which it lies; those before keep their numbers
std::vector<Index> BisectTriangles(std::span<const Index> marked, TriangleMesh* mesh);

}  // namespace halvorn::engine

#endif
