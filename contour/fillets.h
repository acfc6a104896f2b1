/// @file fillets.h
/// Rounded corners: a polygon with corner radii becomes a polygon of chords.
#ifndef HALVORN_CONTOUR_FILLETS_H
#define HALVORN_CONTOUR_FILLETS_H

#include "kernel/kernel.h"

namespace halvorn {

/// Computes the arc that rounds the corner prev - vertex - next.
///
/// The arc's radius is radius + thickness / 2: corner radii are those of a wall's inner face, the
/// corner geometry is that of its mid-line; a solid has thickness 0.
/// @param thickness wall thickness [L], 0 for a solid
/// @param radius    corner radius [L]; up to 1e-15 the corner stays sharp
/// @param turnSign  +1.0 when the turn from `prev` to `next` about the vertex is counter-clockwise
///                  or the corner is not rounded, else -1.0
/// @return true when both tangent points lie within the adjacent edges. Callers may ignore it: a
///         radius too large for its edges gives overlapping arcs. A sharp or degenerate corner (a
///         spike, a neighbour closer than 1e-6) has centre and tangents at the vertex and gives
///         false.
bool CornerFillet(double thickness, double radius, const KPoint& prev, const KPoint& vertex,
                  const KPoint& next, KPoint* centre, KPoint* tangent1, KPoint* tangent2,
                  double* turnSign);

/// Computes the fillet of every vertex into four parallel arrays of n entries. The first and last
/// vertices of an open contour are not rounded: centre and tangents are the vertex itself, the turn
/// sign is 1.0.
void ContourFillets(int n, bool isOpen, double thickness, const double* radii, const KPoint* points,
                    KPoint* centres, KPoint* tangents1, KPoint* tangents2, double* turnSigns);

/// Replaces every vertex whose radius is not 0 (within 1e-15) by six points: the first tangent
/// point, four points of the arc, the second tangent point. Vertices that cannot be rounded (a
/// straight or degenerate corner, the end of an open line) are written six times.
/// @param radii one per vertex [L]
/// @param m     number of points written: n + 5 for each vertex with a radius
/// @param out   room for 6 n points
/// @throws std::bad_alloc for its four work arrays of n entries
void RoundContour(int n, bool isOpen, double thickness, const double* radii, const KPoint* points,
                  int* m, KPoint* out);

}  // namespace halvorn

#endif
