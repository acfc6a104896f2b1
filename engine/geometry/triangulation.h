/// @file triangulation.h
/// A constrained Delaunay triangulation that grows by points and segments.
///
/// Decisions rest on exact predicates (geometry/predicates.h), so that no input, however
/// degenerate, makes it inconsistent. Every edge may carry constraints: outlines that run along it.
#ifndef HALVORN_ENGINE_GEOMETRY_TRIANGULATION_H
#define HALVORN_ENGINE_GEOMETRY_TRIANGULATION_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "geometry/point.h"

namespace halvorn::engine {

/// Of a vertex or a triangle.
using Index = std::int32_t;

/// No vertex, no triangle, no outline.
inline constexpr Index kNone = -1;

/// Returns a number as the place in an array.
inline std::size_t Slot(Index i) {
    return static_cast<std::size_t>(i);
}

/// The outlines that run along an edge: `head` of a list in `Triangulation::Outlines`, kNone for an
/// edge without a constraint. `step` is how much the winding sum grows when the edge is crossed
/// from its right to its left; it is 0 where outlines cancel, as on a bridge to a hole.
struct Constraint {
    Index head = kNone;
    int step = 0;
    int turn = 1;  ///< the list is seen from this side (1) or from the other (-1)
};

/// Three vertices counter-clockwise. Edge i lies opposite vertex i and runs from vertex i + 1 to
/// vertex i + 2; this triangle is on its left.
struct Triangle {
    std::array<Index, 3> vertices;
    std::array<Index, 3> neighbours;  ///< across edge i; kNone at the rim of all
    std::array<Constraint, 3> edges;  ///< steps as seen from this triangle
};

/// An edge by a triangle and its place in it.
struct EdgeRef {
    Index triangle = kNone;
    int edge = 0;
};

/// One outline along an edge, and the next of the list. Its own winding number grows by `turn` when
/// the edge is crossed from its right to its left.
struct OutlineLink {
    Index outline = kNone;
    Index next = kNone;
    int turn = 1;
};

/// See the file's comment. Points lie in the square from -20 to 20; three outer vertices, 0 to 2,
/// far away hold everything.
class Triangulation {
public:
    static constexpr Index kOuterVertices = 3;

    Triangulation();

    const std::vector<Point>& Vertices() const { return points_; }
    const std::vector<Triangle>& Triangles() const { return triangles_; }
    const std::vector<OutlineLink>& Outlines() const { return outlines_; }
    const Triangle& At(Index triangle) const { return triangles_[Slot(triangle)]; }
    const Point& PointAt(Index vertex) const { return points_[Slot(vertex)]; }
    /// A triangle with this vertex.
    Index TriangleAt(Index vertex) const { return incident_[Slot(vertex)]; }

    /// Adds a point and returns its vertex, or the vertex that is there already. A constraint on
    /// whose edge it lies runs through it then. Cost: a walk from the last point, and the triangles
    /// in whose circle the point lies; points should come in an order in which neighbours follow
    /// each other, shuffled on the large scale.
    Index Insert(const Point& point);

    /// Returns the vertex within a distance of a point, the nearest of those of the triangle around
    /// it and its neighbours; kNone without one.
    Index NearVertex(const Point& point, double distance);

    /// What a segment meets first on its way.
    struct Meeting {
        Index vertex = kNone;  ///< this vertex lies on it, or is its end; the edge to it is there
        EdgeRef crossed;       ///< it crosses this constrained edge; nothing was changed
    };
    /// Makes an edge from vertex `from` towards vertex `to`, as far as the first vertex on the
    /// segment, unless it crosses a constrained edge first. @pre from != to
    Meeting Advance(Index from, Index to);

    /// Returns the edge between two vertices with the triangle on the left of `from` to `to`.
    std::optional<EdgeRef> FindEdge(Index from, Index to) const;
    /// Adds a constraint to an edge as seen from its triangle.
    void AddConstraint(EdgeRef at, const Constraint& constraint);
    /// Takes the constraint off an edge and returns it.
    Constraint TakeConstraint(EdgeRef at);
    /// Makes a list of one outline.
    Index MakeOutline(Index outline, int turn);

private:
    struct Location {
        Index triangle = kNone;
        int onEdge = -1;    // the point lies on this edge
        int atVertex = -1;  // or coincides with this vertex
    };

    Triangle& Mutable(Index triangle) { return triangles_[Slot(triangle)]; }
    Location Locate(const Point& point);
    Index AddPoint(const Point& point);
    Index AddTriangle();
    void Set(Index triangle, Index a, Index b, Index c);
    void Glue(Index triangle, int edge, const Triangle& old, int oldEdge);
    void Join(Index a, int edgeOfA, Index b, int edgeOfB, const Constraint& constraint);
    void SplitTriangle(Index triangle, Index vertex);
    void SplitEdge(Index triangle, int edge, Index vertex);
    void Flip(Index triangle, int edge);
    void Legalise(std::vector<Index> stack);
    int PlaceOf(Index triangle, Index neighbour) const;
    std::optional<std::vector<std::pair<Index, Index>>> EdgesAcross(Index from, Index to,
                                                                    Meeting& meeting) const;
    void MakeEdge(Index from, Index to, const std::vector<std::pair<Index, Index>>& across);
    void RestoreDelaunay(std::vector<std::pair<Index, Index>> edges,
                         const std::pair<Index, Index>& kept);

    std::vector<Point> points_;
    std::vector<Index> incident_;
    std::vector<Triangle> triangles_;
    std::vector<OutlineLink> outlines_;
    Index last_ = 0;            // where the next walk starts
    std::uint32_t random_ = 1;  // which edge a walk tries first
};

}  // namespace halvorn::engine

#endif
