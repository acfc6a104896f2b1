/// @file polygon_area.h
/// The area of a ring, with its orientation or without.
#ifndef HALVORN_KERNEL_POLYGON_AREA_H
#define HALVORN_KERNEL_POLYGON_AREA_H

namespace halvorn {

/// Returns the signed area of a ring [L^2], positive for a clockwise one (the opposite of
/// `ContourSignedArea`).
/// @param xy n points as 2n interleaved doubles, read only
/// @param n  number of points; below 3 the area is 0
///
/// Sums the trapezoids between each edge and the x axis in the order of the edges. Cost: one pass.
double KPolygonSignedArea(const double* xy, int n);

/// Returns the absolute value of `KPolygonSignedArea` [L^2].
double KPolygonArea(const double* xy, int n);

}  // namespace halvorn

#endif
