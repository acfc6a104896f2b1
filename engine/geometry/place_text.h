/// @file place_text.h
/// Points in messages.
#ifndef HALVORN_ENGINE_GEOMETRY_PLACE_TEXT_H
#define HALVORN_ENGINE_GEOMETRY_PLACE_TEXT_H

#include <string>

#include "base/numbers.h"
#include "geometry/point.h"

namespace halvorn::engine {

/// Returns "(x, y)" in six digits.
inline std::string PlaceText(const Point& point) {
    return PlaceText(point.x, point.y);
}

}  // namespace halvorn::engine

#endif
