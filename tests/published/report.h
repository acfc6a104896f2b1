/// @file report.h
/// The comparison as text.
#ifndef HALVORN_TESTS_PUBLISHED_REPORT_H
#define HALVORN_TESTS_PUBLISHED_REPORT_H

#include <iosfwd>
#include <vector>

#include "comparison.h"

namespace halvorn::published {

/// Prints one line for each family and property: the number of values; how many rounding to the
/// nearest step explains, how many a note explains and how many neither; the median and the largest
/// relative difference and the profile that has it.
void PrintSummary(const std::vector<Difference>& differences, std::ostream& out);

/// Prints one line for each value outside its expected range.
/// @return the number of lines
int PrintOffenders(const std::vector<Difference>& differences, std::ostream& out);

/// Prints each note with the number of values that need it.
/// @return the number of notes that no value needs
int PrintNotes(const std::vector<Difference>& differences, const std::vector<TableNote>& notes,
               std::ostream& out);

}  // namespace halvorn::published

#endif
