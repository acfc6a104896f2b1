/// @file outlines.h
/// From the elements of a section to what an arrangement takes.
#ifndef HALVORN_ENGINE_MODEL_OUTLINES_H
#define HALVORN_ENGINE_MODEL_OUTLINES_H

#include <vector>

#include "geometry/arrangement.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Returns the rings of elements in their order, solids with the weight 1 and holes with -1. They
/// refer to the elements.
std::vector<WeightedRing> OutlinesOf(const std::vector<Element>& elements);

}  // namespace halvorn::engine

#endif
