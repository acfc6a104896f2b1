/// @file setting.h
/// Elements set on the side of others.
#ifndef HALVORN_ENGINE_MODEL_SETTING_H
#define HALVORN_ENGINE_MODEL_SETTING_H

#include <span>
#include <vector>

#include "model/placement.h"

namespace halvorn::engine {

/// More pairs of edges than this are not compared: they would take seconds.
inline constexpr double kMostEdgePairs = 2e8;

enum class SettingResult {
    Set,
    Misses,  ///< nothing of the elements lies opposite the others, so outlines never meet
    TooMany  ///< pairs of edges
};

/// Moves elements so that they touch others from outside. Without a gap and a shift away from the
/// side, edges along the axes that meet have the same coordinate to the last bit. Elements that are
/// not set stand somewhere else.
/// @pre there are others and elements
SettingResult SetOnSide(const Setting& setting, std::span<const Element> others,
                        std::vector<Element>& elements);

}  // namespace halvorn::engine

#endif
