/// @file flatten.h
/// Curves as points, so close that no chord is farther from its piece of the curve than a tolerance
/// [L]. Arcs keep their area and extent (geometry/arc_division.h), those of ellipses too.
#ifndef HALVORN_ENGINE_READ_DXF_FLATTEN_H
#define HALVORN_ENGINE_READ_DXF_FLATTEN_H

#include <numbers>
#include <utility>
#include <vector>

#include "geometry/arc_division.h"
#include "model/section_model.h"

namespace halvorn::engine::dxf {

/// The sweep of a whole circle or ellipse [rad].
inline constexpr double kFullTurn = 2.0 * std::numbers::pi;

/// No curve and no drawing is flattened to more points than this.
constexpr std::size_t kMostPoints = 1000000;

/// A control point of a rational curve: its coordinates times its weight, and the weight.
struct WeightedPoint {
    double wx;
    double wy;
    double w;
};

/// Appends the arc from the last of `points` to `end`, without its first point.
/// @param bulge tangent of a quarter of the swept angle, counter-clockwise positive; 0: a line
/// @throws std::invalid_argument, as all here, when it would take too many points
void AppendBulge(Points& points, Point end, double bulge, const shapes::ArcDivision& division);

/// Appends centre + cos(t) major + sin(t) minor for t from `start` to `start + sweep`, both ends
/// included, but the second end of a full turn.
/// @param minor  at right angles to `major`
/// @param sweep  positive, at most a full turn [rad]
void AppendEllipse(Points& points, Point centre, Point major, Point minor, double start,
                   double sweep, const shapes::ArcDivision& division);

/// Appends a Bézier curve without its first point. The points lie on the curve, which turns by at
/// most 1/2048 of a turn between two of them but in a cusp: its area falls short by up to about
/// 1e-5.
/// @param control at least two, of positive weight
void AppendBezier(Points& points, const std::vector<WeightedPoint>& control, double tolerance);

}  // namespace halvorn::engine::dxf

#endif
