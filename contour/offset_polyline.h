/// @file offset_polyline.h
/// The two faces of a thin wall from its mid-line.
#ifndef HALVORN_CONTOUR_OFFSET_POLYLINE_H
#define HALVORN_CONTOUR_OFFSET_POLYLINE_H

#include "kernel/kernel.h"

namespace halvorn {

/// Writes the two face points of a wall at one vertex of its mid-line: `sideA` to the left of the
/// direction of travel, `sideB` to the right, each thickness / 2 from both segments (measured along
/// the corner's bisector).
///
/// A neighbour that coincides with the vertex (within 1e-15) counts as missing: with one missing
/// the offset is perpendicular to the real segment, with both the outputs are the vertex. Where the
/// line turns back so that its unit normals add up to less than `Tol3D`, or than 1e-6, their sum is
/// used unscaled: an exact reversal gives the vertex, a nearly exact one points about a thickness
/// away.
void OffsetVertex(double thickness, const KPoint& prev, const KPoint& vertex, const KPoint& next,
                  KPoint* sideA, KPoint* sideB);

/// Writes the two faces of a wall, n points each. `outB` is the outer face of a closed mid-line of
/// either orientation, `outA` the inner one (for a positive thickness). An open line has its ends
/// offset square to their segments and its faces chosen by the signed area between the line and its
/// chord in the same way.
/// @throws std::bad_alloc for a scratch copy of the points
void OffsetPolyline(int n, bool isOpen, double thickness, const KPoint* points, KPoint* outA,
                    KPoint* outB);

}  // namespace halvorn

#endif
