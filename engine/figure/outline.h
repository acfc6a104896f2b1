/// @file outline.h
/// What of a ring is outline: its edges without bridges.
#ifndef HALVORN_ENGINE_FIGURE_OUTLINE_H
#define HALVORN_ENGINE_FIGURE_OUTLINE_H

#include <vector>

#include "geometry/point.h"

namespace halvorn::engine::figure {

/// One stretch of a ring's outline.
struct Stretch {
    Points points;
    bool isClosed;
};

/// Returns the outline of a ring without its bridges, the edges that it also runs backwards along:
/// the whole ring closed, or the stretches between bridges.
std::vector<Stretch> WithoutBridges(const Points& ring);

}  // namespace halvorn::engine::figure

#endif
