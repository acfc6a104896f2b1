/// @file halving_line.h
/// Where a line halves the area of a section.
#ifndef HALVORN_ENGINE_VALUES_HALVING_LINE_H
#define HALVORN_ENGINE_VALUES_HALVING_LINE_H

#include <optional>
#include <span>

#include "geometry/point.h"

namespace halvorn::engine {

/// Returns the height y of the horizontal line, or the abscissa x of the vertical one, that halves
/// the area of rings; counter-clockwise ones count positive, clockwise ones, which lie within them,
/// negative [L]. Empty when there is none. Where a gap halves it, such as between two equal plates,
/// it is the middle of the gap.
///
/// The area beyond a line is the sum over the edges of the strips between them and the line; it is
/// bisected to the last bit. Areas closer than 1e-13 of the sum of all strips are taken as equal,
/// so that the line is off by no more than this over the width of the section there; a line that is
/// no farther than that from the origin is at 0.
/// Cost: a few passes over the edges.
std::optional<double> HalvingLine(std::span<const Points* const> rings, AxisDirection direction);

/// Returns the integral of the distance from a line over the area of a ring [L^3], negative when it
/// runs clockwise.
double DistanceIntegral(const Points& ring, AxisDirection direction, double line);

}  // namespace halvorn::engine

#endif
