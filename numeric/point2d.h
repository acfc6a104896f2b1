/// @file point2d.h
/// The 2-D point that contours are made of.
#ifndef HALVORN_NUMERIC_POINT2D_H
#define HALVORN_NUMERIC_POINT2D_H

#include <type_traits>

#include "numeric/ieee_arithmetic.h"

namespace halvorn {

/// A point or vector [L]. Arrays of it are read as interleaved doubles x0, y0, x1, y1, ...
struct point2D {
    double x;
    double y;
};

static_assert(sizeof(point2D) == 2 * sizeof(double) && std::is_trivial_v<point2D> &&
                  std::is_standard_layout_v<point2D>,
              "arrays of points are arrays of interleaved doubles");

}  // namespace halvorn

#endif
