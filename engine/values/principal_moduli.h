/// @file principal_moduli.h
/// Elastic and plastic moduli about the principal axes.
#ifndef HALVORN_ENGINE_VALUES_PRINCIPAL_MODULI_H
#define HALVORN_ENGINE_VALUES_PRINCIPAL_MODULI_H

#include "region/region.h"

namespace halvorn::engine {

/// What a region has along its principal axes, 1 and 2.
struct PrincipalModuli {
    double fibre1 = 0.0;  ///< distance of the outermost fibre from axis 1 through the centroid [L]
    double fibre2 = 0.0;  ///< from axis 2 [L]
    double plastic1 = 0.0;  ///< about the line along axis 1 that halves the area [L^3]
    double plastic2 = 0.0;  ///< along axis 2 [L^3]
};

/// Returns the distances and moduli by turning the rings. Cost: as those about x and y.
/// @param centroid  in the section's coordinates [L]
/// @param angle     from x to axis 1, counter-clockwise [rad]
PrincipalModuli PrincipalModuliOf(const Region& region, const Point& centroid, double angle);

}  // namespace halvorn::engine

#endif
