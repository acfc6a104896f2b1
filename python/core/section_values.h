/// @file section_values.h
/// The seventeen values of a section, as the library writes them and in reading order.
#ifndef HALVORN_PYTHON_CORE_SECTION_VALUES_H
#define HALVORN_PYTHON_CORE_SECTION_VALUES_H

#include <CSectionTools.h>

#include <array>
#include <cstddef>

#include "section_rounding.h"

namespace halvorn::python {

constexpr std::size_t kValueCount = 17;
using Values = std::array<double, kValueCount>;

/// One value in reading order.
struct ValueName {
    const char* name;    // as section files and results name it
    std::size_t output;  // position among the outputs of `GetCalculValues`, from 0
};
extern const std::array<ValueName, kValueCount> kReadingOrder;

/// The names of the outputs of `GetCalculValues` in its order, with blanks between them.
extern const char* const kOutputNames;

/// The first output that `GetCalculValues` does not write when a fibre distance is 0.
constexpr std::size_t kFirstUnwritten = 14;

/// Calls `GetCalculValues`.
/// @returns whether it wrote every output; if not, those from `kFirstUnwritten` on are NaN
bool GetOutputs(CSectionTools& tools, double dx, double dy, Values* outputs);

/// What rounding took of inertias.
struct DigitLoss {
    double relative = 0.0;      // error of the worse one; 0 while a table's seven digits are right
    bool isByDistance = false;  // from the origin; else the outline is thin for its size
};

/// The values of a section in reading order.
struct SectionValues {
    Values values{};              // NaN for what was not computed or is no finite number
    const char* fault = nullptr;  // why a section like this has no properties, after "the section "
    DigitLoss loss;               // of inertias that are given
};

/// Computes the values in reading order.
///
/// All are NaN when the section cannot be: without area or with a negative one, with inertias that
/// no section has or a centre of gravity outside its box, or when the library takes its contours
/// for nothing. Inertias without a digit left, and what follows from them, are NaN. A centre of
/// gravity and a product moment that are no more than their rounding are 0.
SectionValues ReadingOrder(CSectionTools& tools, double dx, double dy,
                           const SectionRounding& rounding);

}  // namespace halvorn::python

#endif
