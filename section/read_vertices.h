/// @file read_vertices.h
/// Copies the host's coordinates into a section.
#ifndef HALVORN_SECTION_READ_VERTICES_H
#define HALVORN_SECTION_READ_VERTICES_H

#include <vector>

#include "numeric/point2d.h"

namespace halvorn {

/// A bounding box that grows with every point [L], by reference to where a section keeps it.
struct BoundingBoxRef {
    double& xMin;
    double& xMax;
    double& yMin;
    double& yMax;
};

/// Returns `count` vertices from 2 * count interleaved doubles, none for a count below 1, and
/// widens `box` by each. Plain comparisons: a NaN coordinate moves no bound.
/// @throws std::bad_alloc before `box` is touched
std::vector<point2D> ReadVertices(int count, const double* coords, const BoundingBoxRef& box);

}  // namespace halvorn

#endif
