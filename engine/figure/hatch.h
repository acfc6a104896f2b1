/// @file hatch.h
/// Where a section counts more than once, or less than nothing.
#ifndef HALVORN_ENGINE_FIGURE_HATCH_H
#define HALVORN_ENGINE_FIGURE_HATCH_H

#include <utility>
#include <vector>

#include "figure/page.h"

namespace halvorn::engine::figure {

struct Hatching {
    std::vector<std::pair<Spot, Spot>> doubled;  ///< solids less holes are 2 or more
    std::vector<std::pair<Spot, Spot>> missing;  ///< a hole where there is no solid for it
};

/// Returns hatch lines at 45 degrees, `spacing` points apart, over the parts of the section that
/// lie in two solids at once (rising) and over holes outside of solids (falling). A ring counts
/// where its winding number is not 0. Shared edges give none.
Hatching HatchedParts(const std::vector<Area>& areas, double spacing);

}  // namespace halvorn::engine::figure

#endif
