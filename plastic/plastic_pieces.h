/// @file plastic_pieces.h
/// The pieces of a section on the two sides of an axis, and their lever arms.
#ifndef HALVORN_PLASTIC_PLASTIC_PIECES_H
#define HALVORN_PLASTIC_PLASTIC_PIECES_H

#include <list>
#include <vector>

#include "contour/contour_record.h"
#include "numeric/point2d.h"

namespace halvorn {

/// A piece of a contour on one side of the axis.
struct PlasticPiece {
    int weight;                   ///< flag of the contour it came from
    double area;                  ///< never negative [L^2]
    point2D centroid;             ///< [L]
    std::vector<point2D> points;  ///< closed ring, the first point not repeated
};

/// Splits every contour at the axis at `pos` and fills the two lists and the two gross areas: every
/// contour counts with its area, whatever its flag.
///
/// A contour that reaches the axis within 1e-10 from one side is not cut. A piece whose centroid
/// lies within 1e-10 of the axis is left out, and so is a contour that cannot be cut. Centroids are
/// not set here.
/// @param iDir      an `AxisDirection`
/// @param pos       coordinate of the axis [L]
/// @param areaHigh  area above a horizontal or right of a vertical axis [L^2]
/// @param areaLow   area on the other side [L^2]
/// @throws std::bad_alloc, std::length_error
void SplitSectionAtAxis(const std::list<ContourRecord>& contours, int iDir, double pos,
                        double* areaHigh, double* areaLow, std::list<PlasticPiece>& high,
                        std::list<PlasticPiece>& low);

/// Returns whether a longest edge of the piece is parallel to `direction`, a unit vector across the
/// axis. The closing edge is not looked at. Fewer than two points: false.
bool IsLongestEdgeAcross(const PlasticPiece& piece, const point2D& direction);

/// Sets the centroids of the pieces and returns the sum of weight x area x distance from the axis
/// [L^3]; with `across`, a unit vector across the axis, of web-like pieces only: those for which
/// `IsLongestEdgeAcross` holds.
double LeverArmsOfPieces(std::list<PlasticPiece>& pieces, int iDir, double pos,
                         const point2D* across = nullptr);

}  // namespace halvorn

#endif
