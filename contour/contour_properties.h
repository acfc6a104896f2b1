/// @file contour_properties.h
/// The properties of one closed contour of solid material.
#ifndef HALVORN_CONTOUR_CONTOUR_PROPERTIES_H
#define HALVORN_CONTOUR_CONTOUR_PROPERTIES_H

#include "numeric/point2d.h"

namespace halvorn {

/// Properties of one contour; independent of its orientation.
struct ContourProperties {
    double area;             ///< never negative [L^2]
    point2D centroid;        ///< (0, 0) for an area within 1e-15 of 0 [L]
    double torsionConstant;  ///< of the equivalent ellipse; 0 for a polar moment below 1e-10 [L^4]
    double torsionModulus;   ///< of the equivalent ellipse [L^3]
    double shearAreaY;       ///< first shear-area term [L^2]
    double shearAreaZ;       ///< second one, always equal to the first [L^2]
    double secondMomentX;    ///< integral of y^2 dA about the host's origin [L^4]
    double secondMomentY;    ///< integral of x^2 dA about the host's origin [L^4]
    double productMoment;    ///< integral of x y dA about the host's origin [L^4]
};

/// Returns the properties of a ring of n points whose coordinates are relative to `frameOrigin`, a
/// point in the host's axes; `n` below 1 gives zeros.
///
/// Integrates about the ring's first vertex, so that area, torsion and shear are as accurate for a
/// ring far from the host's origin as near it; only the moments about the origin then carry the
/// distance. Clears `CalculValid` for a zero area. One pass, no allocation.
ContourProperties ComputeContourProperties(int n, const point2D* ring,
                                           const point2D& frameOrigin = {0.0, 0.0});

}  // namespace halvorn

#endif
