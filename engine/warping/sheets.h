/// @file sheets.h
/// Stress functions of shear: what is given along the rings, and the jumps across cuts.
///
/// With g = a x + b y the shear stress is t + (psi_y, -psi_x), where t = -(a, b) s^2 / 2 takes up
/// the load; s is the distance from the line through the centre of gravity on which g is 0. On a
/// thin strip in any direction t is no larger than the stress, which it would lose digits of. No
/// stress leaves the part, which gives psi along each ring up to a constant. Over a void, the load
/// of a whole plate would have a resultant: psi does not return to its value round it. It is made
/// single-valued by a cut from each void to another ring, across which it jumps by a constant;
/// stresses, its derivatives, do not.
#ifndef HALVORN_ENGINE_WARPING_SHEETS_H
#define HALVORN_ENGINE_WARPING_SHEETS_H

#include <array>
#include <vector>

#include "geometry/point.h"
#include "warping/field_space.h"

namespace halvorn::engine {

/// The loads g = a x + b y whose shear stress has a resultant of 1 along x, and along y.
struct LinearLoads {
    std::array<Point, 2> slopes;      ///< (a, b) for the force along x, and along y
    std::array<Point, 2> directions;  ///< the same, of length 1

    /// Returns the stress that takes up a load at a point.
    Point StressAt(const Point& at, std::size_t load) const {
        const double distance = Dot(directions[load], at);
        return -0.5 * distance * distance * slopes[load];
    }
};

/// Stress functions of both loads where they are given.
struct RimData {
    /// At each vertex on a ring, 0 where the ring starts; without the constant of a void.
    std::vector<std::array<double, 2>> atVertex;
    /// Coefficients of the edge functions of order 2 and 3 along each edge of a ring, as its
    /// triangle runs along it; by the number of the edge.
    std::vector<std::array<std::array<double, 2>, 2>> atEdge;
    /// What is added at each corner of each triangle to what stands at its vertex; empty without
    /// voids.
    std::vector<std::array<std::array<double, 2>, 3>> jumps;

    /// Returns the addition at a corner of a triangle for a load.
    double JumpAt(Index triangle, int corner, std::size_t load) const {
        return jumps.empty() ? 0.0 : jumps[Slot(triangle)][Slot(corner)][load];
    }
};

/// Returns the given stress functions. Cost: linear in triangles, times voids for the cuts.
RimData RimDataOf(const FieldSpace& space, const LinearLoads& loads);

}  // namespace halvorn::engine

#endif
