/// @file entity_curve.h
/// One entity of a drawing as a curve in the plane.
#ifndef HALVORN_ENGINE_READ_DXF_ENTITY_CURVE_H
#define HALVORN_ENGINE_READ_DXF_ENTITY_CURVE_H

#include <limits>
#include <optional>
#include <span>
#include <string>

#include "read/dxf/drawing.h"
#include "read/dxf/flatten.h"
#include "read/dxf/plane_map.h"

namespace halvorn::engine::dxf {

/// A curve as points on it, from one end to the other; a closed one does not repeat its first.
struct Curve {
    Points points;
    bool isClosed = false;
    int line = 0;           ///< of the entity, or of the first of a chain
    bool isAslant = false;  ///< no part of the section: what is seen along z of a curve aslant to
                            ///< the x-y plane
};

/// A curve, or why there is none, and what was seen on the way.
struct CurveReading {
    std::optional<Curve> curve;  ///< with a problem: nothing or a curve that `isAslant`
    std::string problem;         ///< why it is left out: "not parallel to the x-y plane"
    std::string remark;          ///< worth counting in the remarks, or empty
    double lowest = std::numeric_limits<double>::infinity();  ///< least z
    double highest = -std::numeric_limits<double>::infinity();
};

/// Returns whether `ReadCurve` understands the kind of an entity.
bool IsCurve(std::string_view kind);

/// Reads an entity that `IsCurve`.
/// @param vertices  the VERTEX entities that follow a POLYLINE; else empty
/// @param placement how the block that holds the entity lies in the drawing
/// @param tolerance greatest distance of a chord from the curve, after the placement [L]
/// @throws InputError naming the line
CurveReading ReadCurve(const Entity& entity, std::span<const Entity> vertices,
                       const PlaneMap& placement, double tolerance, const std::string& source);

}  // namespace halvorn::engine::dxf

#endif
