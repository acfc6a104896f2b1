/// @file placement.h
/// Moves of elements within a section.
#ifndef HALVORN_ENGINE_MODEL_PLACEMENT_H
#define HALVORN_ENGINE_MODEL_PLACEMENT_H

#include <array>
#include <utility>
#include <vector>

#include "model/section_model.h"

namespace halvorn::engine {

/// The axis through the origin about which elements are turned over.
enum class Mirror { None, AboutX, AboutY };

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

/// Returns the lower left corner of the box around the points of all rings.
/// @pre there is a point
Point LowerLeftCorner(const std::vector<Element>& elements);

/// Returns the centre of gravity as the library finds it, holes subtracted; not finite when the
/// areas cancel.
Point CentreOfGravity(const std::vector<Element>& elements);

}  // namespace halvorn::engine

#endif
