/// @file simple_rings.h
/// Where a point lies in a ring, and a quick look whether rings neither meet nor nearly meet.
#ifndef HALVORN_ENGINE_GEOMETRY_SIMPLE_RINGS_H
#define HALVORN_ENGINE_GEOMETRY_SIMPLE_RINGS_H

#include <span>

#include "geometry/point.h"

namespace halvorn::engine {

/// Returns how often a ring runs round a point, counter-clockwise positive. Cost: n.
int WindingNumber(const Points& ring, const Point& point);

/// Whether every ring is simple and keeps clear of itself and of the others, so that an arrangement
/// of them would merge, move, cross and tell nothing. False where it is not so, where it is
/// doubtful, and where the answer costs more than a fixed number of steps a vertex.
/// @param rings  in a frame; no point follows itself
/// @param size   of all; the distances of geometry/arrangement.h are parts of it
bool AreSimpleAndApart(std::span<const Points> rings, double size);

}  // namespace halvorn::engine

#endif
