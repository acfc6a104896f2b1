/// @file boundary_stress.h
/// Shear stress along the rings of a part.
///
/// At a corner that turns into the material the stress of the drawn outline has no bound. The
/// chords of an arc have such corners, the arc does not: of a chord the mean stress counts, which
/// comes near that of the arc with the square of the chord's length. Elsewhere on straight sides
/// the stress at points counts, but near a chord: there it is the mean over as much as the chord is
/// long. About corners sharper than `kSharpTurn` a circle is left out.
#ifndef HALVORN_ENGINE_WARPING_BOUNDARY_STRESS_H
#define HALVORN_ENGINE_WARPING_BOUNDARY_STRESS_H

#include <numbers>
#include <vector>

#include "warping/stress_at.h"

namespace halvorn::engine {

/// Where the outline turns into the material by more, it has a corner; by less, an arc [radians].
inline constexpr double kSharpTurn = 25.0 * std::numbers::pi / 180.0;

/// Returns the corners of a part that turn into the material by more than `kSharpTurn`.
Points SharpCornersOf(const FieldSpace& space);

/// A stress along a ring: at a point, or the mean of a stretch.
struct BoundaryStress {
    double free = 0.0;  ///< along the ring, by the continuous fields
    double held = 0.0;  ///< by those in equilibrium
    Point from, to;     ///< ends of the stretch; the same for a point

    double Middle() const { return 0.5 * (free + held); }
};

/// Returns the stresses all along the rings, but within a radius of the sharp corners.
std::vector<BoundaryStress> StressesAlongRings(const Fields& fields, const FieldFactors& factors,
                                               double radius);

}  // namespace halvorn::engine

#endif
