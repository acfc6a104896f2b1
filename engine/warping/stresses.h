/// @file stresses.h
/// Stresses over a section under forces.
#ifndef HALVORN_ENGINE_WARPING_STRESSES_H
#define HALVORN_ENGINE_WARPING_STRESSES_H

#include <array>
#include <optional>
#include <vector>

#include "HalvornEngine.h"
#include "geometry/triangulation.h"
#include "warping/warping.h"

namespace halvorn::engine {

/// The largest magnitude of a stress, where it is, and an estimate of its error.
struct PeakStress {
    Estimate stress;  ///< signed where the stress has a sign [F/L^2]
    Point place;      ///< [L]
};

/// Stresses under forces. Circles about sharp corners are left out of the largest.
struct Stresses {
    PeakStress normal;    ///< positive in tension
    PeakStress shear;     ///< length of the vector of both shear stresses
    PeakStress vonMises;  ///< sqrt(normal^2 + 3 shear^2)
};

/// Stresses at points, linear between them over triangles.
struct StressField {
    Points points;                                ///< [L]
    std::vector<std::array<Index, 3>> triangles;  ///< counter-clockwise, edge to edge
    std::vector<double> normal;                   ///< at each point [F/L^2]
    Points shears;                                ///< of both shear stresses [F/L^2]
    std::vector<double> shear;                    ///< length of that [F/L^2]
    std::vector<double> vonMises;                 ///< [F/L^2]
};

/// The line on which the normal stress is 0.
struct NeutralLine {
    Point at;         ///< nearest to the centre of gravity [L]
    Point direction;  ///< of length 1
};

/// Returns the line under forces, or nothing when they make no moments.
/// @pre the region of the solution is one part
std::optional<NeutralLine> NeutralLineOf(const WarpingSolution& solution,
                                         const SectionForces& forces);

/// Returns the largest stresses under forces.
/// @pre the region of the solution is one part
Stresses LargestStresses(const WarpingSolution& solution, const SectionForces& forces);

/// Returns the stresses all over the region, for pictures. Its rings are unions of edges of the
/// triangles.
/// @pre as above
StressField StressFieldOf(const WarpingSolution& solution, const SectionForces& forces);

/// Returns the stresses at points: at one that triangles share the mean of theirs, as the field
/// has it, and NaN outside the region. Cost: log n for each point, and n log n once.
/// @pre as above
std::vector<PointStress> StressesAt(const WarpingSolution& solution, const SectionForces& forces,
                                    const Points& points);

}  // namespace halvorn::engine

#endif
