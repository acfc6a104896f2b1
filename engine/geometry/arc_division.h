/// @file arc_division.h
/// Arcs as polygons of the same area.
///
/// The ends of an arc and its points with a horizontal or vertical tangent lie on it, so that
/// width, height and tangents are exact; the points between them lie outside, so far that the
/// polygon and the arc enclose the same area. Convex and concave arcs alike. Second moments of a
/// circle so drawn hold to 1e-8, those of any arc about its centre to 1e-5, whatever the size.
#ifndef HALVORN_ENGINE_GEOMETRY_ARC_DIVISION_H
#define HALVORN_ENGINE_GEOMETRY_ARC_DIVISION_H

#include <utility>
#include <vector>

#include "geometry/point.h"

namespace halvorn::engine::shapes {

/// The points start + (cos t - 1) spoke + sin t ahead for t from 0 to `sweep`: an arc of a circle
/// or, as its image under an affine map, of an ellipse.
struct Arc {
    Point start;
    Point spoke;   ///< from the centre to `start`
    Point ahead;   ///< of a circle the spoke turned by a quarter, the way the arc runs
    double sweep;  ///< positive, at most a full turn [rad]
    /// What decides the number of chords: a circle's radius, an ellipse's larger one. Arcs of one
    /// centre and sweep that share the largest of their radii become similar polygons, which never
    /// cross.
    double radius;
};

/// How finely an arc is divided into chords.
class ArcDivision {
public:
    /// Every arc gets `steps` chords per quarter turn, rounded up to a whole number of chords.
    /// @throws std::invalid_argument unless 1 <= steps <= 100000
    static ArcDivision StepsPerQuarter(int steps);

    /// Every arc gets as few equal chords as keep the polygon within `distance` [L] of the arc, on
    /// either side, and turn by at most 1/192 of a full turn each.
    /// @throws std::invalid_argument unless the distance is positive and finite
    static ArcDivision ChordError(double distance);

    /// Returns this division for arcs `factor` times as large.
    ArcDivision Scaled(double factor) const;

    /// Returns a division that also keeps those points on the arc which lie farthest along two more
    /// directions: the ones that become the axes when what is drawn is rotated or stretched.
    ArcDivision AlsoExtremeAlong(Point first, Point second) const;

    /// Returns the points of an arc's polygon between its ends, which are points of it too.
    /// Farthest points nearer than 1e-6 rad to an end or to another are not kept: they would add
    /// less than 1e-12 of the radius to the extent.
    /// @throws DimensionError for an arc of more than 400000 chords
    std::vector<Point> PointsBetweenEnds(const Arc& arc) const;

private:
    ArcDivision(int steps, double distance) : stepsPerQuarter_(steps), chordError_(distance) {}

    double LargestStep(double radius) const;
    std::vector<double> Bounds(const Arc& arc) const;

    int stepsPerQuarter_;  // with a chord error the least
    double chordError_;    // [L], 0: divided by steps
    std::vector<Point> directions_ = {{1.0, 0.0}, {0.0, 1.0}};
};

}  // namespace halvorn::engine::shapes

#endif
