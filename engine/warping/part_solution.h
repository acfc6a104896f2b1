/// @file part_solution.h
/// Torsion and shear of one part of a region, in the units of its mesh.
#ifndef HALVORN_ENGINE_WARPING_PART_SOLUTION_H
#define HALVORN_ENGINE_WARPING_PART_SOLUTION_H

#include <cstddef>

#include "warping/energies.h"
#include "warping/fields.h"
#include "warping/warping.h"

namespace halvorn::engine {

/// Integrals over a part about its centre of gravity.
struct PartMoments {
    double area = 0.0;
    Point centroid;  ///< in the frame of the region
    double xx = 0.0, xy = 0.0, yy = 0.0;
    PrincipalAxes axes;
    /// The inverse of the second moments as a matrix, along these axes: that of a thin strip in any
    /// direction keeps its digits.
    double inverseUU = 0.0, inverseUV = 0.0, inverseVV = 0.0;
    double xxx = 0.0, xxy = 0.0, xyy = 0.0, yyy = 0.0;

    /// Returns the slopes along the axes, of what is linear and has a first moment.
    Point SlopesOf(const Point& moment) const {
        const double u = Dot(axes.directions[0], moment);
        const double v = Dot(axes.directions[1], moment);
        return {inverseUU * u + inverseUV * v, inverseUV * u + inverseVV * v};
    }
};

/// Moves a mesh to its centre of gravity and returns its moments.
PartMoments CentreMesh(TriangleMesh* mesh);

struct PartSolution {
    WarpingStatus status = WarpingStatus::Reached;
    PartMoments moments;
    Fields fields;
    Energies energies;
};

/// Solves until the brackets are as narrow as the options ask.
/// @throws WarpingError
PartSolution SolvePart(const Part& part, const WarpingOptions& options);

}  // namespace halvorn::engine

#endif
