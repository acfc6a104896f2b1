/// @file placement.h
/// Moves of elements within a section.
#ifndef HALVORN_ENGINE_MODEL_PLACEMENT_H
#define HALVORN_ENGINE_MODEL_PLACEMENT_H

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "geometry/box.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Where a part goes: its origin becomes (0, 0), it is mirrored, rotated and moved, in this order.
struct Placement {
    Point origin = {0.0, 0.0};  ///< in the part's own coordinates [L]
    Mirror mirror = Mirror::None;
    double rotation = 0.0;    ///< counter-clockwise [degrees]
    Point move = {0.0, 0.0};  ///< [L]
};

/// Moves rings and given values. Multiples of 90 degrees are exact: no sine or cosine touches the
/// points. Mirrored rings run the other way round, which changes no result; the given plastic
/// moduli, which none depends on, stay.
void Place(const Placement& placement, std::vector<Element>& elements);

/// Returns the directions, in the part's own coordinates, that come to lie along the x and the y
/// axis of the section.
std::array<Point, 2> AxesOfSection(const Placement& placement);

/// Returns a corner of a box, the middle of one of its sides, or its own middle.
Point PointOfBox(const Box& box, Along x, Along y);

/// Moves elements so that a point of theirs comes to lie at another. What has the coordinate x or y
/// of the one gets exactly that of the other.
void MovePoint(const Point& from, const Point& to, std::vector<Element>& elements);

/// Turns solids into holes and holes into solids.
void MakeHoles(std::vector<Element>& elements);

/// What a row may have at most: copies, and points of all of them, as many as a drawing.
inline constexpr std::size_t kMostCopies = kMostCopiesInRow;
inline constexpr std::size_t kMostPointsOfRow = 1000000;

/// Returns how many points the rings of elements have together.
std::size_t PointCount(const std::vector<Element>& elements);

/// Returns so many copies of elements one after the other: the first where they are, each a step
/// beyond the one before.
std::vector<Element> CopiesInRow(const std::vector<Element>& elements, std::size_t count,
                                 const Point& step);

/// Returns the lower left corner of the box around the points of all rings.
/// @pre there is a point
Point LowerLeftCorner(const std::vector<Element>& elements);

/// Returns the centre of gravity as the library finds it, holes subtracted; not finite when the
/// areas cancel.
Point CentreOfGravity(const std::vector<Element>& elements);

}  // namespace halvorn::engine

#endif
