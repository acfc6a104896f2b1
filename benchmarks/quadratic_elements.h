/// @file quadratic_elements.h
/// The way of most programs: one warping function and two shear functions of second order on a
/// uniform mesh.
#ifndef HALVORN_BENCHMARKS_QUADRATIC_ELEMENTS_H
#define HALVORN_BENCHMARKS_QUADRATIC_ELEMENTS_H

#include <cstddef>

#include "region/region.h"

namespace halvorn::benchmarks {

/// Values in the frame of the region, about its own axes.
struct QuadraticValues {
    double torsionConstant = 0.0;
    double shearAreaX = 0.0;
    double shearAreaY = 0.0;
    std::size_t unknowns = 0;
};

/// Returns the values of a region of one part, by triangles of at most an area in the frame, on the
/// mesher of the engine: the fields are those that the engine bounds on one side by.
QuadraticValues SolveQuadratic(const engine::Region& region, double largestArea);

}  // namespace halvorn::benchmarks

#endif
