/// @file setting.h
/// Elements set on the side of others.
#ifndef HALVORN_ENGINE_MODEL_SETTING_H
#define HALVORN_ENGINE_MODEL_SETTING_H

#include <span>
#include <vector>

#include "model/placement.h"

namespace halvorn::engine {

/// A side of a box.
enum class Side { Bottom, Top, Left, Right };

/// What of two parts touches.
enum class Touch {
    Boxes,    ///< the boxes around them
    Outlines  ///< their solid outlines, wherever they meet first
};

/// How elements are set on a side of others.
struct Setting {
    Side side = Side::Top;  ///< of the others
    Touch touch = Touch::Boxes;
    Along align = Along::Middle;  ///< which points of the two boxes are opposite each other
    double gap = 0.0;             ///< from where they touch, outwards [L]
    Point shift = {0.0, 0.0};     ///< likewise; the part of it along the side comes first [L]
};

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
