/// @file plastic_halves.h
/// The halves of a region on both sides of a plastic axis.
#ifndef HALVORN_ENGINE_VALUES_PLASTIC_HALVES_H
#define HALVORN_ENGINE_VALUES_PLASTIC_HALVES_H

#include <array>
#include <string>
#include <vector>

#include "geometry/point.h"
#include "region/region.h"
#include "values/halving_line.h"

namespace halvorn::engine {

/// One side of a plastic axis, in the section's coordinates.
struct PlasticHalf {
    double area = 0.0;           ///< [L^2]
    Point centroid;              ///< [L]
    double leverArm = 0.0;       ///< distance of the centroid from the axis [L]
    std::vector<Points> pieces;  ///< the half itself; holes hang on by bridges [L]
};

/// Both halves: above and below a horizontal axis, to the right and to the left of a vertical one.
/// Their areas times their lever arms add up to the plastic modulus.
struct PlasticHalves {
    double axis = 0.0;  ///< y of a horizontal one, x of a vertical one [L]
    std::array<PlasticHalf, 2> sides;
    std::string whyMissing;  ///< one sentence without a full stop; empty: there are halves
};

/// Cuts every part of a region at its plastic axis, as `KCutPolygonByLine` cuts. The area of each
/// half agrees with half of the region's within 1e-9 of it, else there are none.
PlasticHalves HalvesOf(const Region& region, AxisDirection direction);

/// Returns what the sides about an axis are called: "above" and "below", "right" and "left".
std::array<const char*, 2> SidesOf(AxisDirection direction);

}  // namespace halvorn::engine

#endif
