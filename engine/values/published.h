/// @file published.h
/// What tables publish of a catalogue profile, beside what its outline has.
#ifndef HALVORN_ENGINE_VALUES_PUBLISHED_H
#define HALVORN_ENGINE_VALUES_PUBLISHED_H

#include "values/report.h"

namespace halvorn::engine {

/// Fills in the published values of a report and puts each beside the value that it is of: a
/// smaller elastic modulus beside the smaller one of both sides, and nowhere when the reference
/// point is shifted.
/// @pre section and values of the report are there
void AddPublished(Report* report);

/// Makes the remark on published values that differ by more than 1 %, in place of an earlier one.
void CompareWithPublished(Report* report);

}  // namespace halvorn::engine

#endif
