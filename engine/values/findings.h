/// @file findings.h
/// The one search for what is doubtful about a section.
#ifndef HALVORN_ENGINE_VALUES_FINDINGS_H
#define HALVORN_ENGINE_VALUES_FINDINGS_H

#include <vector>

#include "values/report.h"

namespace halvorn::engine {

/// Returns what the elements and the region of a section tell, worst first: rings without area,
/// repeated points, straight vertices and spikes; rings that cross themselves; overlaps, holes
/// outside, outlines that nearly touch, vertices that were set onto another outline, material that
/// hangs together in a point, parts apart; given values that contradict their outline; sizes too
/// small for the class; and what the reader left out.
/// @pre section, region and `whyNoRegion` of the report are there
std::vector<Finding> FindingsOf(const Report& report);

/// Returns where an outline crosses itself and cuts off more than 1e-6 of its area, or runs round
/// it the other way: the first such finding; null when there is none.
const Finding* FindSelfCrossing(const std::vector<Finding>& findings);

}  // namespace halvorn::engine

#endif
