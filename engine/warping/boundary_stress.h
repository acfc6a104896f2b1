/// @file boundary_stress.h
/// Shear stress along the rings of a part.
///
/// At a corner that turns into the material the stress of the drawn outline has no bound. The
/// chords of an arc have such corners, the arc does not: of a chord the mean stress counts, which
/// comes near that of the arc with the square of the chord's length. Elsewhere the stress at points
/// counts: on straight sides, and on chords so far as it is bent by more than their corners bend
/// it, since there it varies with the section and the outline hardly turns. Beside an arc the mean
/// over as much as its chord is long counts as a chord does. Where a corner that turns softly into
/// the material stands alone the mean counts as far as that corner raises the stress by 1 %, at
/// most a quarter of a wall's thickness. About corners sharper than `kSharpTurn` a circle is left
/// out.
#ifndef HALVORN_ENGINE_WARPING_BOUNDARY_STRESS_H
#define HALVORN_ENGINE_WARPING_BOUNDARY_STRESS_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "warping/ring_sides.h"
#include "warping/stress_at.h"

namespace halvorn::engine {

/// Returns the corners of a part that turn into the material by more than `kSharpTurn`.
Points SharpCornersOf(const FieldSpace& space);

/// A stress along a ring: at a point, or the mean of a stretch.
struct BoundaryStress {
    double free = 0.0;   ///< along the ring, by the continuous fields
    double held = 0.0;   ///< by those in equilibrium
    double error = 0.0;  ///< of their middle, estimated
    Point from, to;      ///< ends of the stretch; the same for a point
    /// Edges of the ring on which it is, first to first + count, all round.
    std::size_t ring = 0, first = 0, count = 1;

    double Middle() const { return 0.5 * (free + held); }
    bool IsMean() const { return !(from == to); }
};

/// The largest magnitude among stresses that are known to an error each.
struct LargestOf {
    double value = 0.0;
    double error = 0.0;     ///< of the largest itself
    double farthest = 0.0;  ///< the largest that one can be within its error

    /// Returns whether it is the largest till now.
    bool Add(double magnitude, double itsError) {
        farthest = std::max(farthest, magnitude + itsError);
        if (magnitude <= value) return false;
        value = magnitude;
        error = itsError;
        return true;
    }
    /// By how much the largest may be off: another may be the largest in truth.
    double Error() const { return std::max(error, farthest - value); }
};

/// Returns the largest magnitude among stresses along rings.
LargestOf LargestAlongRings(const std::vector<BoundaryStress>& stresses);

/// Returns the length of all rings.
double RimLength(const FieldSpace& space);

/// Returns the radius of the circles that are left out: half of half the thickness of a wall.
inline double LeftOutRadius(double area, double rimLength) {
    return area / (2.0 * rimLength);
}

/// Returns the shares of the triangles in the error of the largest stress along the rings: above 1
/// next to all stretches that may have the largest and are not known to an allowed error; none
/// when there is no such stretch.
std::vector<double> SharesInStress(const FieldSpace& space,
                                   const std::vector<BoundaryStress>& stresses, double allowed);

/// Returns the stresses all along the rings, but within a radius of the sharp corners.
std::vector<BoundaryStress> StressesAlongRings(const Fields& fields, const FieldFactors& factors,
                                               double radius);

}  // namespace halvorn::engine

#endif
