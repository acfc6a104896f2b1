/// @file energies.h
/// What is integrated over the fields of a part: energies, whose differences bound the errors, and
/// moments.
#ifndef HALVORN_ENGINE_WARPING_ENERGIES_H
#define HALVORN_ENGINE_WARPING_ENERGIES_H

#include <array>
#include <vector>

#include "warping/fields.h"

namespace halvorn::engine {

/// Both loads by both loads.
using LoadMatrix = std::array<std::array<double, 2>, 2>;

/// Integrals over a part, about its centre of gravity, in the units of the mesh.
///
/// Each energy comes from a field that is continuous and from one that is in equilibrium. The
/// energy of the difference of their stresses is the distance of the bounds: W. Prager and J. L.
/// Synge, Quarterly of Applied Mathematics 5, 1947.
struct Energies {
    double torsionUpper = 0.0;  ///< of J
    double torsionLower = 0.0;
    LoadMatrix shearUpper{};  ///< of the compliance; off the diagonal no bounds
    LoadMatrix shearLower{};
    /// Of each triangle: its share in the distance of the bounds of J and of both compliances.
    std::vector<std::array<double, 3>> gaps;

    std::array<double, 2> torqueOfFree{};  ///< of the stress of `ShearX`, `ShearY`
    std::array<double, 2> torqueOfHeld{};  ///< of that of `StressX`, `StressY`
    double warping = 0.0;                  ///< integral of w
    double warpingX = 0.0;                 ///< of w x
    double warpingY = 0.0;                 ///< of w y
    double warpingSquare = 0.0;            ///< of w^2
    LoadMatrix swayUpper{};     ///< energies of what Poisson's ratio adds, by `SwayX`, `SwayY`
    LoadMatrix lateralLower{};  ///< by `LateralX`, `LateralY`; off the diagonal no bounds
    std::array<double, 2> torqueOfLateral{};  ///< the mean of both
};

/// Stresses of all fields at a point of a triangle; the lateral ones 0 where they are not solved.
struct FieldStresses {
    Point torsionFree, torsionHeld;
    std::array<Point, 2> shearFree, shearHeld, lateralFree, lateralHeld;
};

/// Returns the stresses from the fields' derivatives.
/// @param byX, byY  of each field at the point
FieldStresses StressesFrom(const Fields& fields, const Point& at,
                           const Eigen::Ref<const Eigen::VectorXd>& byX,
                           const Eigen::Ref<const Eigen::VectorXd>& byY);

/// Integrates, exactly but for rounding. Cost: linear in triangles.
/// @throws WarpingError where rounding has left no numbers
Energies EnergiesOf(const Fields& fields);

}  // namespace halvorn::engine

#endif
