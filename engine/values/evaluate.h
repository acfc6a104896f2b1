/// @file evaluate.h
/// From a section to everything that is known about it.
#ifndef HALVORN_ENGINE_VALUES_EVALUATE_H
#define HALVORN_ENGINE_VALUES_EVALUATE_H

#include "values/report.h"

namespace halvorn::engine {

/// Computes all values of a section; `shift` has no meaning for the class's values of a polyline.
/// @throws InputError for a section that `isDrawn` with an outline that crosses itself
Report Evaluate(const SectionModel& section, const Shift& shift);

/// Returns what `Evaluate` finds, of outlines that cross themselves too.
std::vector<Finding> Diagnose(SectionModel section);

/// Adds the halves of the section about both plastic axes to its report.
void AddHalves(Report* report);

}  // namespace halvorn::engine

#endif
