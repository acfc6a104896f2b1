/// @file stress_bands.h
/// From stresses at the points of a mesh to the rings around where they reach a level.
#ifndef HALVORN_ENGINE_FIGURE_STRESS_BANDS_H
#define HALVORN_ENGINE_FIGURE_STRESS_BANDS_H

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "geometry/point.h"
#include "geometry/triangulation.h"

namespace halvorn::engine::figure {

/// One value at each point of a mesh of triangles, linear over each of them.
///
/// Rings are closed, outlines counter-clockwise and holes clockwise; none passes a point twice.
/// Where material hangs together in one point only, rings touch there. Cost: n log n once, then n
/// for each level.
class StressBands {
public:
    using Triangles = std::vector<std::array<Index, 3>>;

    /// @param points     [L]
    /// @param triangles  counter-clockwise, edge to edge
    /// @param values     at each point
    /// @throws std::runtime_error for a value that is none, or beyond 1e300
    StressBands(const Points& points, const Triangles& triangles, std::span<const double> values);

    /// Returns the rings around all triangles.
    std::vector<Points> Rim() const;

    /// Returns the rings around where the value is `level` or more. Places where it is equal to the
    /// level and less all around have no area and give no ring.
    std::vector<Points> AtLeast(double level) const;

    /// Ends of the values at corners of triangles; 0 and 0 without triangles.
    double Lowest() const { return lowest_; }
    double Highest() const { return highest_; }

private:
    // A corner of a ring: a point of the mesh, or after all of these where an edge is cut.
    using Node = std::size_t;
    struct Segment {
        Node from;
        Node to;
    };
    struct Edge {
        Index low;
        Index high;
        std::size_t use = 0;  // triangles with this edge: 1 at the rim
    };

    void NumberEdges();
    Node CutOf(std::size_t edge, Index up, double level) const;
    Point PlaceOf(Node node, double level) const;
    void AddPieces(std::size_t triangle, double level, std::vector<Segment>* segments) const;

    const Points& points_;
    const Triangles& triangles_;
    std::span<const double> values_;
    std::vector<Edge> edges_;
    std::vector<std::array<std::size_t, 3>> edgesOf_;  // edge i runs from corner i to i + 1
    double lowest_ = 0.0;
    double highest_ = 0.0;
};

}  // namespace halvorn::engine::figure

#endif
