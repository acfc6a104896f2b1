/// @file class_numbers.h
/// The outputs of the library's class as plain numbers, for sections that leave nothing to be said.
#ifndef HALVORN_ENGINE_VALUES_CLASS_NUMBERS_H
#define HALVORN_ENGINE_VALUES_CLASS_NUMBERS_H

#include <array>
#include <optional>

#include "HalvornEngine.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Returns the numbers of `Report::classValues`, to the bit, of a section of one drawn solid and
/// holes within it that keep clear of each other, when every value is there, none lost digits that
/// a table shows, and a report would have neither errors nor warnings. Nothing for all others, also
/// where a quick look leaves doubts: a report then says what is to be said.
/// Cost: that of the class, a few passes over the points, and the look whether outlines meet.
std::optional<std::array<double, kClassValueCount>> ClassNumbersOf(const SectionModel& section,
                                                                   const Shift& shift);

}  // namespace halvorn::engine

#endif
