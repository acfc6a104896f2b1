/// @file rounded_polygon.h
/// Polygons whose corners are rounded by tangent arcs, drawn as point rings.
#ifndef HALVORN_HOST_SHAPES_ROUNDED_POLYGON_H
#define HALVORN_HOST_SHAPES_ROUNDED_POLYGON_H

#include <span>
#include <vector>

#include "shapes/dimension_checks.h"

namespace halvorn::shapes {

/// How finely an arc is divided into chords. The points of a divided arc lie on it, so a convex arc
/// loses area and a concave one gains it: of the order of (step angle)^2 / 6 of its circular
/// sector.
class ArcDivision {
public:
    /// Every arc gets `steps` chords per quarter turn, rounded up to a whole number of chords.
    /// @throws std::invalid_argument unless 1 <= steps <= 100000
    static ArcDivision StepsPerQuarter(int steps);

    /// Every arc gets as few equal chords as keep the distance from chord to arc at or below
    /// `distance` [L], and at least so many chords per quarter turn: 64 hold the area of a circle
    /// to 1e-4 of it, whatever its radius.
    /// @throws std::invalid_argument unless the distance is positive and finite and
    ///         1 <= leastPerQuarter <= 100000
    static ArcDivision ChordError(double distance, int leastPerQuarter = 1);

    /// Returns the number of chords for an arc, at least 1.
    /// @param radius positive [L]
    /// @param sweep  positive [rad]
    /// @throws DimensionError for more than 100000 chords per quarter turn
    int Chords(double radius, double sweep) const;

private:
    ArcDivision(int steps, double distance) : stepsPerQuarter_(steps), chordError_(distance) {}

    int stepsPerQuarter_;  // with a chord error the least
    double chordError_;    // [L], 0: divided by steps
};

/// A radius that is too large for the edges at its corner.
class RadiusError : public DimensionError {
public:
    RadiusError(const std::string& problem, double radius)
        : DimensionError(problem, "", "make the larger of them smaller"), radius_(radius) {}

    /// The radius that needs more of the edge.
    double Radius() const { return radius_; }

private:
    double radius_;
};

/// One corner of a polygon and the radius of the arc that rounds it; radius 0 leaves it sharp.
struct Corner {
    double x;
    double y;
    double radius;
};

/// Returns the ring x0, y0, x1, y1, ... of a polygon with rounded corners, in the order of its
/// corners; the last point joins the first, which is not repeated.
///
/// Convex and concave corners, whatever the angle of their edges, get the arc tangent to both
/// edges; both tangent points are points of the ring. A radius at a straight corner has no effect.
/// Two arcs that use up their common edge share its tangent point: a square whose corners have half
/// its side as radius is a circle.
/// @param corners  at least three, not repeated at the end
/// @throws std::invalid_argument for fewer corners, numbers that are not finite, a negative radius,
///         an edge of length 0, a radius at a corner that turns straight back, and arcs that need
///         more than their common edge by over 1e-9 of its length (RadiusError)
std::vector<double> RoundedPolygon(std::span<const Corner> corners, const ArcDivision& division);

/// Returns the points of an open line in the same way; its ends are not rounded.
/// @param corners  at least two
std::vector<double> RoundedLine(std::span<const Corner> corners, const ArcDivision& division);

}  // namespace halvorn::shapes

#endif
