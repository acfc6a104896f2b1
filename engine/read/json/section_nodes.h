/// @file section_nodes.h
/// What several places of a section file have in common.
#ifndef HALVORN_ENGINE_READ_JSON_SECTION_NODES_H
#define HALVORN_ENGINE_READ_JSON_SECTION_NODES_H

#include <span>
#include <string>
#include <utility>
#include <vector>

#include "geometry/wall_outline.h"
#include "model/section_model.h"
#include "read/json/json_node.h"

namespace halvorn::engine {

constexpr std::size_t kFewestRingPoints = 3;
constexpr std::size_t kFewestLinePoints = 2;

Point ReadPoint(const Node& node);

/// Reads a list of at least `fewest` points.
Points ReadPoints(const Node& node, std::size_t fewest);

/// Reads the radii of a line, one per point; all 0 when the key is missing.
std::vector<double> ReadRadii(const Node& line, std::size_t pointCount);

/// Reads the text under a key; empty when it is missing.
std::string ReadOptionalText(const Node& node, const char* key);

/// Sets the modular ratio of the elements of a node, 1 where it gives none. A hole has none and
/// acts on all materials.
void ReadModularRatio(const Node& node, bool isHole, std::span<Element> elements);

/// Fails at the point, radius or thickness of a line that leaves a face of its wall, or its
/// outline, without room for its corners.
/// @param node  has "points" and perhaps "radii" and "thickness"
void RequireRoom(const Node& node, const shapes::WallLine& line, shapes::FaceArcs arcs);

}  // namespace halvorn::engine

#endif
