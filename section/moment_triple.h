/// @file moment_triple.h
/// Rotation and transfer of second-moment triples, which serve shear areas, too.
#ifndef HALVORN_SECTION_MOMENT_TRIPLE_H
#define HALVORN_SECTION_MOMENT_TRIPLE_H

#include "numeric/point2d.h"

namespace halvorn {

/// A symmetric 2 x 2 quantity in some pair of axes: for inertias [L^4] the integrals of y^2 dA,
/// x y dA and x^2 dA.
struct MomentTriple {
    double first;    ///< about the first axis
    double product;  ///< product term
    double second;   ///< about the second axis
};

/// Returns the triple in axes turned by `angle` [rad], counter-clockwise positive. From principal
/// axes, which stand at alpha to the host's, angle = -alpha leads to the host's axes.
MomentTriple RotateMoments(const MomentTriple& triple, double angle);

/// Returns a centroidal triple of an area about the origin; `centroid` is where its centroid is
/// (parallel-axis theorem).
MomentTriple TransferMoments(const MomentTriple& triple, double area, const point2D& centroid);

}  // namespace halvorn

#endif
