/// @file warping_fields.h
/// What a solution keeps for stresses.
#ifndef HALVORN_ENGINE_WARPING_WARPING_FIELDS_H
#define HALVORN_ENGINE_WARPING_WARPING_FIELDS_H

#include <vector>

#include "warping/part_solution.h"

namespace halvorn::engine {

/// The solutions of all parts, in the frame of the region.
class WarpingFields {
public:
    Frame frame;
    double poissonFactor = 0.0;  ///< nu / (1 + nu)
    double leftOutRadius = 0.0;  ///< about sharp corners, in the frame
    std::vector<PartSolution> parts;
};

}  // namespace halvorn::engine

#endif
