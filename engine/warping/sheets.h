/// @file sheets.h
/// Stress functions of shear: what is given along the rings, and the jumps across cuts.
///
/// With g = c u + d v along the principal axes the shear stress is t + (psi_y, -psi_x), where
/// t = -(c u^2, d v^2) / 2 takes up the load. Along other axes t would be far larger than the
/// stress of a thin strip and take its digits. No stress leaves the part, which gives psi along
/// each ring up to a constant. Over a void, the load of a whole plate would have a resultant: psi
/// does not return to its value round it. It is made single-valued by a cut from each void to
/// another ring, across which it jumps by a constant; stresses, its derivatives, do not.
#ifndef HALVORN_ENGINE_WARPING_SHEETS_H
#define HALVORN_ENGINE_WARPING_SHEETS_H

#include <array>
#include <vector>

#include "geometry/double_double.h"
#include "geometry/point.h"
#include "warping/field_space.h"

namespace halvorn::engine {

/// Coordinates u and v along the principal axes of a part. Its first moments about them are 0 to
/// the last digit of a thin strip's thickness, which vertices about the centre of gravity lack.
struct PrincipalAxes {
    std::array<Point, 2> directions;
    Point origin;  ///< what is taken off, about 0

    Point From(const Point& at) const {
        return {Along(directions[0], at) - origin.x, Along(directions[1], at) - origin.y};
    }

private:
    // Dot, without what cancels.
    static double Along(const Point& direction, const Point& at) {
        const ExactPair first = TwoProduct(direction.x, at.x);
        const ExactPair second = TwoProduct(direction.y, at.y);
        const ExactPair sum = TwoSum(first.high, second.high);
        return sum.high + (sum.low + first.low + second.low);
    }
};

/// The loads g = a x + b y = c u + d v whose shear stress has a resultant of 1 along x, and along
/// y.
struct LinearLoads {
    std::array<Point, 2> slopes;  ///< (a, b) for the force along x, and along y
    PrincipalAxes axes;
    std::array<Point, 2> amounts;  ///< (c, d) for the force along x, and along y

    /// Returns a load at a point.
    double At(const Point& at, std::size_t load) const { return Dot(amounts[load], axes.From(at)); }
    /// Returns the stress t that takes up a load at a point.
    Point StressAt(const Point& at, std::size_t load) const {
        const Point place = axes.From(at);
        return -0.5 * (amounts[load].x * place.x * place.x * axes.directions[0] +
                       amounts[load].y * place.y * place.y * axes.directions[1]);
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
