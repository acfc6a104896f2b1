/// @file evaluate.h
/// From a section to its values, through the public interface of the library.
#ifndef HALVORN_ENGINE_VALUES_EVALUATE_H
#define HALVORN_ENGINE_VALUES_EVALUATE_H

#include "values/report.h"

namespace halvorn::engine {

/// Computes all values of a section; `shift` has no meaning for a polyline.
/// @throws InputError for a section that `isDrawn` with an outline that crosses itself (`FindLoop`)
Report Evaluate(const SectionModel& section, const Shift& shift);

}  // namespace halvorn::engine

#endif
