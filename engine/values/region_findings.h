/// @file region_findings.h
/// What the region of a section tells.
#ifndef HALVORN_ENGINE_VALUES_REGION_FINDINGS_H
#define HALVORN_ENGINE_VALUES_REGION_FINDINGS_H

#include <vector>

#include "HalvornEngine.h"
#include "model/section_model.h"
#include "region/region.h"

namespace halvorn::engine {

/// Adds what a region tells: rings that cross themselves, run round twice or enclose nothing,
/// overlaps, holes outside, outlines that nearly touch, vertices that were set onto another
/// outline, material that hangs together in a point, parts apart.
void AddRegionFindings(const SectionModel& section, const Region& region,
                       std::vector<Finding>* findings);

}  // namespace halvorn::engine

#endif
