/// @file difference.h
/// What is left of a section of which another one is taken away.
#ifndef HALVORN_ENGINE_REGION_DIFFERENCE_H
#define HALVORN_ENGINE_REGION_DIFFERENCE_H

#include <vector>

#include "model/section_model.h"

namespace halvorn::engine {

/// Elements of which others were taken away.
struct Difference {
    std::vector<Element> elements;  ///< empty: nothing is left
    bool isWhole = false;           ///< nothing was there to be taken away
};

/// Returns the elements without the material of others, which goes through all materials of a
/// composite section. Elements apart from what is taken away stay as they are. Of others each
/// connected piece of one material becomes a solid and its holes, so that nothing of the cut lies
/// where there is no material, and what is added later is whole.
/// @param elements  at least one
/// @param taken     at least one; of a composite section the material of all ratios
/// @throws ArrangementError
Difference DifferenceOf(const std::vector<Element>& elements, const std::vector<Element>& taken);

}  // namespace halvorn::engine

#endif
