/// @file outlines.h
/// From drawn outlines to the elements of a section, and from those to what an arrangement takes.
#ifndef HALVORN_ENGINE_MODEL_OUTLINES_H
#define HALVORN_ENGINE_MODEL_OUTLINES_H

#include <span>
#include <vector>

#include "geometry/arc_division.h"
#include "geometry/arrangement.h"
#include "geometry/box.h"
#include "geometry/outline.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Returns the rings of elements in their order, solids with the weight 1 and holes with -1, those
/// of a composite section as `OutlinesFrom`. They refer to the elements.
std::vector<WeightedRing> OutlinesOf(const std::vector<Element>& elements);

/// Returns the box around the rings of all elements.
/// @pre there is an element
Box BoxOf(std::span<const Element> elements);

/// Returns the elements of a drawn profile or wall: a solid and, of a hollow one, its hole.
std::vector<Element> ElementsOf(const shapes::Outline& outline);

/// Returns what a polyline encloses: its outline with rounded corners, or the faces of its wall, of
/// which a closed one is a solid and a hole. The faces of a bend are concentric.
/// @throws std::invalid_argument as `shapes::RoundedPolygon`; for a wall whose faces cross at a
///         corner the outline crosses itself
std::vector<Element> ElementsOf(const Polyline& polyline, const shapes::ArcDivision& division);

}  // namespace halvorn::engine

#endif
