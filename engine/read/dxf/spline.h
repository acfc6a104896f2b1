/// @file spline.h
/// Rational B-splines of a drawing.
#ifndef HALVORN_ENGINE_READ_DXF_SPLINE_H
#define HALVORN_ENGINE_READ_DXF_SPLINE_H

#include <optional>
#include <vector>

#include "read/dxf/flatten.h"

namespace halvorn::engine::dxf {

/// A spline as a drawing gives it: by control points and knots, or by fit points alone.
struct Spline {
    int degree = 3;
    bool isClosed = false;
    std::vector<double> knots;    ///< control points + degree + 1, never falling
    std::vector<double> weights;  ///< one per control point, positive; or none: all 1
    Points control;
    Points fit;
    std::optional<Point> startTangent;  ///< of fit points
    std::optional<Point> endTangent;    ///< likewise
};

/// Returns points on the spline from one end to the other, both included; of a closed one the first
/// point comes again as the last, if the data close it.
///
/// The knots from number `degree` to number `control points` bound the curve. Fit points alone do
/// not say which curve is meant: here the cubic spline through them with continuous curvature
/// whose parameter grows by the lengths of the chords, its ends along the tangents or, without
/// them, without curvature; closed: periodic.
/// @throws std::domain_error for data that are no spline
/// @throws std::invalid_argument when it would take too many points
Points FlattenSpline(const Spline& spline, double tolerance);

}  // namespace halvorn::engine::dxf

#endif
