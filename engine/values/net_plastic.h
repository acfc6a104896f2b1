/// @file net_plastic.h
/// The plastic axes of a region, and its halves on both sides of them.
#ifndef HALVORN_ENGINE_VALUES_NET_PLASTIC_H
#define HALVORN_ENGINE_VALUES_NET_PLASTIC_H

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "geometry/point.h"
#include "region/region.h"
#include "values/plastic_axis.h"

namespace halvorn::engine {

/// Returns where a line halves the area of a region, as `HalvingLine` does, in its frame; empty
/// when there is no area.
std::optional<double> PlasticAxis(const Region& region, AxisDirection direction);

/// The plastic moduli of a region [L^3]: the integral of the distance from the plastic axis.
struct PlasticModuli {
    double x = 0.0;  ///< about the horizontal axis
    double y = 0.0;  ///< about the vertical axis
};

/// Returns the moduli about the plastic axes, by integrals along the rings of the parts.
PlasticModuli NetPlasticModuli(const Region& region);

/// One side of a plastic axis, in the section's coordinates.
struct PlasticHalf {
    double area = 0.0;           ///< [L^2]
    Point centroid;              ///< [L]
    double leverArm = 0.0;       ///< distance of the centroid from the axis [L]
    std::vector<Points> pieces;  ///< the half itself; holes hang on by bridges [L]
};

/// Both halves: above and below a horizontal axis, to the right and to the left of a vertical one.
struct PlasticHalves {
    std::array<PlasticHalf, 2> sides;
    std::string whyMissing;  ///< one sentence without a full stop; empty: there are halves
};

/// Cuts every part of a region at its plastic axis, as `KCutPolygonByLine` cuts. The areas of the
/// halves agree with half of the region's within 1e-9 of it, else there are none.
PlasticHalves HalvesOf(const Region& region, AxisDirection direction);

}  // namespace halvorn::engine

#endif
