/// @file push_element.h
/// From an element of the model to the library.
#ifndef HALVORN_ENGINE_MODEL_PUSH_ELEMENT_H
#define HALVORN_ENGINE_MODEL_PUSH_ELEMENT_H

#include <CSectionTools.h>

#include <vector>

#include "model/section_model.h"

namespace halvorn::engine {

/// Returns x0, y0, x1, y1, ... of points, as the library takes them.
std::vector<double> CoordinatesOf(const Points& points);

/// Pushes an element: a free contour, or a standard profile with its given values. Given values
/// that are not known are pushed as 0; no sum with them is a result.
void PushElement(CSectionTools& tools, const Element& element);

}  // namespace halvorn::engine

#endif
