/// @file part_shapes.h
/// Parts that are drawn by their dimensions, and walls by their mid-lines.
#ifndef HALVORN_ENGINE_READ_JSON_PART_SHAPES_H
#define HALVORN_ENGINE_READ_JSON_PART_SHAPES_H

#include <string_view>
#include <vector>

#include "geometry/arc_division.h"
#include "read/json/parts.h"

namespace halvorn::engine {

/// Returns the elements of a part with the key "shape", unplaced and without labels: its outline,
/// and a hole when it is hollow.
/// @param commonKeys  keys that any part may have
std::vector<Element> ReadShapePart(const Node& part, std::vector<std::string_view> commonKeys,
                                   const shapes::ArcDivision& division);

/// Returns the one element of a part with the key "wall", unplaced and without a label: a standard
/// profile. Area, centroid and inertias are those of its drawn faces; torsion and shear those of
/// the library's general wall formulas along the bent mid-line.
std::vector<Element> ReadWallPart(const Node& wall, const shapes::ArcDivision& division);

}  // namespace halvorn::engine

#endif
