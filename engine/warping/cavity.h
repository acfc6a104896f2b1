/// @file cavity.h
/// How a vertex comes into a constrained Delaunay triangulation.
#ifndef HALVORN_ENGINE_WARPING_CAVITY_H
#define HALVORN_ENGINE_WARPING_CAVITY_H

#include <cstdint>
#include <vector>

#include "warping/triangle_mesh.h"

namespace halvorn::engine {

/// The triangles in whose circles a point lies: a new vertex there takes their place, joined to the
/// edges around them (A. Bowyer 1981, D. F. Watson 1981). One object serves many vertices.
class Cavity {
public:
    /// An edge around the cavity, with the cavity on its left.
    struct Edge {
        Index from;
        Index to;
        Index within;            ///< the triangle of the cavity whose edge it is
        std::size_t edgeWithin;  ///< which of that
        Index beyond;            ///< kNone on a ring
        std::size_t edgeBeyond;
    };

    explicit Cavity(TriangleMesh& mesh) : mesh_(mesh) {}

    /// Finds the triangles around one that a point lies in.
    /// @param onEdgeFrom  the vertex at which an edge of a ring starts that the point divides, but
    ///                    for rounding; kNone for other points
    void Dig(const Point& point, Index triangle, Index onEdgeFrom = kNone);
    const std::vector<Edge>& Edges() const { return edges_; }

    /// Makes the point a vertex. Does nothing and returns false when rounding or a triangle without
    /// an area hides an edge from the point.
    bool Fill();
    /// The new triangles.
    const std::vector<Index>& Triangles() const { return triangles_; }

private:
    void AddNeighbours(Index triangle);
    bool SeesAllEdges() const;
    void JoinTriangles();

    TriangleMesh& mesh_;
    Point point_;
    Index onEdgeFrom_ = kNone;
    std::vector<Index> triangles_;
    std::vector<Edge> edges_;
    std::vector<std::uint32_t> numbers_;  // of each triangle: the last cavity that it was in
    std::uint32_t number_ = 0;
    std::vector<Index> leaving_;  // of each vertex: the new triangle whose outer edge starts there
};

}  // namespace halvorn::engine

#endif
