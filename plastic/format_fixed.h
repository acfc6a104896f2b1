/// @file format_fixed.h
/// Numbers in the log of the plastic search.
#ifndef HALVORN_PLASTIC_FORMAT_FIXED_H
#define HALVORN_PLASTIC_FORMAT_FIXED_H

#include <string>

namespace halvorn {

/// Returns `value` in fixed notation with `precision` digits after the point (none below 0), in the
/// classic locale whatever the host's is.
std::string FormatFixed(double value, int precision);

}  // namespace halvorn

#endif
