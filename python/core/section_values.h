/// @file section_values.h
/// The seventeen values of a section, as the library writes them and in reading order.
#ifndef HALVORN_PYTHON_CORE_SECTION_VALUES_H
#define HALVORN_PYTHON_CORE_SECTION_VALUES_H

#include <CSectionTools.h>

#include <array>
#include <cstddef>

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

/// Returns how far the area of a contour may be off, for the rounding of its coordinates along its
/// edges [L^2].
/// @param coordinates x0, y0, x1, y1, ... of `count` points [L]
double AreaRounding(const double* coordinates, std::size_t count);

/// Returns the values in reading order; NaN for what was not computed or is no finite number, for
/// all when the area is no more than its rounding.
/// @param areaRounding of all free contours; 0 when there are none
Values ReadingOrder(CSectionTools& tools, double dx, double dy, double areaRounding);

}  // namespace halvorn::python

#endif
