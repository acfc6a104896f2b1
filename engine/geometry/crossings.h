/// @file crossings.h
/// The area of a ring, and where it meets itself.
#ifndef HALVORN_ENGINE_GEOMETRY_CROSSINGS_H
#define HALVORN_ENGINE_GEOMETRY_CROSSINGS_H

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "geometry/point.h"

namespace halvorn::engine {

/// Returns twice the area of a ring, positive when it runs counter-clockwise; summed about its
/// first point.
double TwiceArea(const Points& ring);

/// A place where two edges of a ring cross or touch. Edge i runs from point i to the next.
struct Crossing {
    std::size_t firstEdge = 0;
    std::size_t secondEdge = 0;
    Point place;
    bool isProper = false;  ///< the edges cross; otherwise they touch or run along each other
};

/// Returns the places where edges of a ring without repeated points meet that do not follow each
/// other, and the tips of spikes, where an edge runs back over the one before, at most `most` and
/// one of several in one point; bridges of keyhole rings, two edges with the same ends, are no such
/// places. The cost is that of sorting the edges and comparing those that overlap in x.
/// @param isOpen the last point does not join the first
std::vector<Crossing> FindCrossings(const Points& ring, bool isOpen, std::size_t most);

/// Returns a place where a ring crosses itself and so cuts off a loop of more than 1e-6 of its
/// area: the integrals count one of both parts negatively or twice. Less is what rounding does to
/// curves that meet at a tangent. The points may repeat; rings of more than 20000 points are not
/// looked at.
std::optional<Point> FindLoop(const Points& ring);

/// Returns "(x, y)" in six digits.
std::string PlaceText(const Point& point);

}  // namespace halvorn::engine

#endif
