/// @file arbitrary_contour.h
/// Properties of one polyline section: a solid outline, a closed thin wall or an open one.
#ifndef HALVORN_CONTOUR_ARBITRARY_CONTOUR_H
#define HALVORN_CONTOUR_ARBITRARY_CONTOUR_H

#include <utility>

#include "contour/contour_properties.h"
#include "kernel/kernel.h"

namespace halvorn {

/// A thin wall given by its mid-line.
struct ThinWall {
    int n;                 ///< vertices of the mid-line
    const KPoint* points;  ///< the vertices [L]
    const double* radii;   ///< one inner-face radius per vertex [L]
    double thickness;      ///< not 0 [L]
    bool useTubeFormulas;  ///< torsion as a thin circular tube of the same area
};

/// Returns the properties of a solid outline of n >= 3 points with rounded corners, in coordinates
/// relative to `frameOrigin`. @throws std::bad_alloc
ContourProperties SolidOutlineProperties(int n, bool isOpen, const KPoint* points,
                                         const double* radii, const point2D& frameOrigin);

/// Returns the properties of a hollow tube, in coordinates relative to `frameOrigin`.
///
/// The centroid is that of the whole region within the outer face. Torsion, general formulas:
/// Bredt, J = 4 Am^2 t / P with the mean enclosed area Am and the perimeter P of the outer face,
/// and Wt = 2 t Am (R. Bredt, "Kritische Bemerkungen zur Drehungselastizitaet", 1896).
/// @throws std::bad_alloc
ContourProperties ClosedWallProperties(const ThinWall& wall, const point2D& frameOrigin);

/// Returns the properties of a bent plate, in coordinates relative to `frameOrigin`.
///
/// Torsion constant |P t^3 / 3| with the perimeter P of the whole outline, both faces and both
/// ends: about twice that of a strip of the mid-line's length. Torsion modulus 2 t A, or the
/// tube's.
/// @throws std::bad_alloc
ContourProperties OpenWallProperties(const ThinWall& wall, const point2D& frameOrigin);

/// What a polyline stands for.
struct ArbitraryContour {
    double thickness;      ///< of the wall along it; exactly 0: it is a solid outline [L]
    bool isOpen;           ///< its end vertices are not rounded
    bool useTubeFormulas;  ///< of a wall: torsion as a thin circular tube of the same area
};

/// Returns the properties of a polyline of n vertices, at most `kMostVertices`; zeros when they are
/// too few (solid: 3, wall: 2).
/// @param radii one per vertex [L]
/// @throws std::bad_alloc
ContourProperties ArbitraryContourProperties(const ArbitraryContour& contour, int n,
                                             const std::pair<double, double>* points,
                                             const double* radii);

}  // namespace halvorn

#endif
