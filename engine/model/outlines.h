/// @file outlines.h
/// From drawn outlines to the elements of a section, and from those to what an arrangement takes.
#ifndef HALVORN_ENGINE_MODEL_OUTLINES_H
#define HALVORN_ENGINE_MODEL_OUTLINES_H

#include <vector>

#include "geometry/arrangement.h"
#include "geometry/outline.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Returns the rings of elements in their order, solids with the weight 1 and holes with -1. They
/// refer to the elements.
std::vector<WeightedRing> OutlinesOf(const std::vector<Element>& elements);

/// Returns the elements of a drawn profile or wall: a solid and, of a hollow one, the hole inside.
std::vector<Element> ElementsOf(const shapes::Outline& outline);

}  // namespace halvorn::engine

#endif
