/// @file rounded_polygon.h
/// Polygons whose corners are rounded by tangent arcs, drawn as point rings.
#ifndef HALVORN_ENGINE_GEOMETRY_ROUNDED_POLYGON_H
#define HALVORN_ENGINE_GEOMETRY_ROUNDED_POLYGON_H

#include <span>
#include <vector>

#include "base/dimension_checks.h"
#include "geometry/arc_division.h"
#include "geometry/point.h"

namespace halvorn::engine::shapes {

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
    /// The largest radius of the arcs with the same centre, as `Arc::radius`; 0: its own.
    double largestRadius = 0.0;
};

/// An edge of a polygon, from one vertex to the next.
struct PolygonEdge {
    Point along;    ///< of length 1; (0, 0) between equal points, which have no direction
    double length;  ///< [L]

    PolygonEdge(const Point& from, const Point& to);
};

/// Returns the arc that rounds a corner between two edges, both tangent points included; the corner
/// alone when nothing rounds it: no radius, no turn or a turn straight back.
Points RoundedCorner(const PolygonEdge& in, const Corner& corner, const PolygonEdge& out,
                     const ArcDivision& division);

/// Returns the ring of a polygon with rounded corners, in the order of its
/// corners; the last point joins the first, which is not repeated.
///
/// Convex and concave corners, whatever the angle of their edges, get the arc tangent to both
/// edges, divided as in arc_division.h; both tangent points are points of the ring. A radius at a
/// straight corner has no effect. Two arcs that use up their common edge share its tangent point: a
/// square whose corners have half its side as radius is a circle.
/// @param corners  at least three, not repeated at the end
/// @throws std::invalid_argument for fewer corners, numbers that are not finite, a negative radius,
///         an edge of length 0, a radius at a corner that turns straight back, and arcs that need
///         more than their common edge by over 1e-9 of its length (RadiusError)
Points RoundedPolygon(std::span<const Corner> corners, const ArcDivision& division);

/// Returns the points of an open line in the same way; its ends are not rounded.
/// @param corners  at least two
Points RoundedLine(std::span<const Corner> corners, const ArcDivision& division);

}  // namespace halvorn::engine::shapes

#endif
