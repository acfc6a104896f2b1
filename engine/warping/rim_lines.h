/// @file rim_lines.h
/// The edges of a part's rings as lines that a mesh divides.
#ifndef HALVORN_ENGINE_WARPING_RIM_LINES_H
#define HALVORN_ENGINE_WARPING_RIM_LINES_H

#include <vector>

#include "warping/triangle_mesh.h"

namespace halvorn::engine {

/// Knows of each vertex on which line it lies, and how to divide lines so that small angles between
/// them do no harm.
///
/// Where two lines enclose a small angle, a vertex on one is so near to the other that it asks for
/// a vertex there, which asks for one nearer to the corner, and so on. Vertices at equal distances
/// from the corner, powers of two, do not (J. Ruppert 1995: concentric shells).
class RimLines {
public:
    /// @param mesh  whose vertices all lie on its rings and are their corners
    explicit RimLines(const TriangleMesh& mesh);

    /// Returns where to divide the edge from `from` to `to` of a ring.
    Point Division(const TriangleMesh& mesh, Index from, Index to) const;
    /// Takes note of a vertex that divides an edge of a ring that starts at `from`.
    void AddVertexOnEdgeFrom(Index from) { AddVertexOn(lineFrom_[Slot(from)]); }
    /// Takes note of a vertex within the part.
    void AddVertexWithin() { AddVertexOn(kNone); }

    /// Whether nothing can widen the angle of a triangle at a corner: edges of rings enclose it, or
    /// its other two corners lie on one shell about the corner where two lines meet.
    bool Impose(const TriangleMesh& mesh, Index triangle, std::size_t corner) const;

private:
    void AddVertexOn(Index line) {
        lineOf_.push_back(line);
        lineFrom_.push_back(line);
    }
    bool IsSharp(Index vertex) const {
        return Slot(vertex) < isSharp_.size() && isSharp_[Slot(vertex)];
    }

    // A line has the number of the corner at which it starts.
    std::vector<Index> lineFrom_;  // of each vertex: the line that leaves it along the ring
    std::vector<Index> lineOf_;    // that it divides; kNone for corners and within
    std::vector<Index> endOf_;     // of each line: the corner at which it ends
    std::vector<bool> isSharp_;    // of each corner: its angle is small
};

}  // namespace halvorn::engine

#endif
