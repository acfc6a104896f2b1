/// @file circle_stress.h
/// Shear stress along the circles that are left out about sharp corners.
///
/// The arcs of these circles within the material bound what is left of it, as its outline does: the
/// largest stress can lie on one.
#ifndef HALVORN_ENGINE_WARPING_CIRCLE_STRESS_H
#define HALVORN_ENGINE_WARPING_CIRCLE_STRESS_H

#include <vector>

#include "warping/left_out_circles.h"
#include "warping/soft_corners.h"
#include "warping/stress_at.h"

namespace halvorn::engine {

/// A shear stress at a point of an arc.
struct ArcStress {
    Point at;
    double shear = 0.0;  ///< length of the vector
    double error = 0.0;  ///< of it, estimated
};

/// Returns stresses along the arcs within the material, but within other circles: at their ends, at
/// points so near to each other that little is missed between, and where the shear and the von
/// Mises stress are largest between these. Without circles there are none, and no cost; a circle
/// costs log n and what triangles meet it.
std::vector<ArcStress> StressesAlongCircles(const Fields& fields, const FieldFactors& factors,
                                            const LeftOutCircles& circles,
                                            const SoftCorners& softCorners);

}  // namespace halvorn::engine

#endif
