/// @file nesting.h
/// Which of the rings of a drawing are solid and which are holes.
#ifndef HALVORN_HOST_INPUT_NESTING_H
#define HALVORN_HOST_INPUT_NESTING_H

#include <vector>

#include "model/section_model.h"

namespace halvorn::host {

/// Sets `isSolid` of every element by the number of other rings around it: an even one makes it
/// solid, an odd one a hole. A ring is around another when it has the larger area and holds the
/// first of its vertices and edge middles that does not lie on it, so rings may touch. Of rings
/// that cross each other nothing sensible can be said; `Diagnose` finds them.
/// Cost: for every pair whose bounding boxes lie in each other the number of vertices.
void ClassifyByNesting(std::vector<Element>* elements);

}  // namespace halvorn::host

#endif
