/// @file warping.h
/// Torsion, warping and shear of a region, each value between two bounds or with its error.
#ifndef HALVORN_ENGINE_WARPING_WARPING_H
#define HALVORN_ENGINE_WARPING_WARPING_H

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "HalvornEngine.h"
#include "region/region.h"

namespace halvorn::engine {

/// Two bounds between which the true value of the drawn outline lies.
struct Bracket {
    double lower = 0.0;
    double upper = 0.0;

    double Middle() const { return 0.5 * (lower + upper); }
    double HalfWidth() const { return 0.5 * (upper - lower); }
};

/// A value and an estimate of how far off it can be.
struct Estimate {
    double value = 0.0;
    double error = 0.0;  ///< 0 or more, same unit
};

struct WarpingOptions {
    /// Greatest half width of the brackets of torsion constant and shear stiffness areas, relative
    /// to their middle; from 1e-9 to 0.1.
    double tolerance = 1e-4;
    double poisson = 0.0;  ///< Poisson's ratio, from 0 to 0.5
    /// Of one field; the solution stops before a further step has more. The first step has about
    /// four for each vertex of the outlines, whatever this says.
    std::size_t mostUnknowns = 300000;
    /// Asked now and then; the solution stops when it returns true.
    std::function<bool()> isInterrupted;
};

enum class WarpingStatus {
    Reached,      ///< the brackets are as narrow as was asked
    TooMany,      ///< they take more unknowns than are allowed: they hold, and are wider
    Interrupted,  ///< likewise, since the solution was stopped
};

/// What is known of a region about torsion and shear. Axes, signs: docs/conventions.md. Lengths and
/// places are in the section's unit and coordinates [L].
struct WarpingValues {
    WarpingStatus status = WarpingStatus::Reached;
    std::size_t unknowns = 0;  ///< of the largest system that was solved
    std::size_t triangles = 0;
    std::size_t parts = 0;
    std::size_t voids = 0;
    std::size_t pinches = 0;

    Bracket torsionConstant;  ///< J [L^4]; of several parts the sum
    Estimate torsionModulus;  ///< T / largest stress of torsion [L^3]
    /// Corners at which the stress has no bound; a circle about each is left out of the largest
    /// stress [L].
    std::vector<Point> sharpCorners;
    double leftOutRadius = 0.0;  ///< of these circles [L]

    /// The rest is known of a region of one part only.
    bool isOnePart = false;
    Bracket shearAreaX;  ///< shear stiffness area for a shear force along x [L^2]
    Bracket shearAreaY;  ///< along y [L^2]
    /// Of the compliance, 1 / Asxy [1/L^2]: a force along y strains along x by V / (G Asxy).
    Bracket shearCoupling;
    /// With Poisson's ratio above 0 the three above are estimates, whose ends are their errors.
    bool areShearAreasBounds = true;
    Estimate shearCentreX;     ///< [L]; the error is a bound
    Estimate shearCentreY;     ///< [L]; likewise
    Estimate warpingConstant;  ///< Cw about the shear centre [L^6]

    /// x and y are principal axes; else there are no monosymmetry constants.
    bool arePrincipalAxes = false;
    Estimate monosymmetryX;  ///< integral of y (x^2 + y^2) / Ix - 2 (ys - yG) [L]
    Estimate monosymmetryY;  ///< integral of x (x^2 + y^2) / Iy - 2 (xs - xG) [L]
};

/// A region that has no solution: empty, or its numbers leave the range of doubles.
class WarpingError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

class WarpingFields;

/// The values, and the fields that they come from, which stresses are computed of.
struct WarpingSolution {
    WarpingValues values;
    std::shared_ptr<const WarpingFields> fields;
};

/// Solves torsion and shear over a region.
/// Cost: about linear in the number of vertices, and in that of the unknowns; memory below 3000
/// bytes for each of both (docs/performance.md).
/// @throws WarpingError; std::invalid_argument for options out of range; std::bad_alloc
WarpingSolution SolveWarping(const Region& region, const WarpingOptions& options = {});

}  // namespace halvorn::engine

#endif
