/// @file digits.h
/// Digits that rounding has taken are not shown.
#ifndef HALVORN_ENGINE_VALUES_DIGITS_H
#define HALVORN_ENGINE_VALUES_DIGITS_H

#include <string>

#include "values/report.h"

namespace halvorn::engine {

/// Of a value [-]: beyond it the seven digits of a table are not all right.
inline constexpr double kTooFewDigits = 1e-7;

/// What takes the digits of second moments.
enum class LostBy {
    Distance,    ///< the section lies far from the origin for its size
    Slenderness  ///< the outline is thin for its size
};

/// @param size  the longer side of a box [L]
/// @param far   its largest coordinate [L]
LostBy LostByOf(double size, double far);

/// Returns why no digit is left of a value, one sentence.
std::string WhyNoDigits(LostBy cause);

/// Whether a relative error leaves no digit.
bool LeavesNoDigit(double relative);

/// Rounds a number to the digits that an error leaves where these are fewer than a table shows.
/// @returns false when none is left
bool KeepDigits(double error, double* number);

/// Does the same to a value, and takes it away when no digit is left.
void KeepDigits(double error, const std::string& whyNone, Value* value);

/// Returns the finding that names the digits that are left: a warning.
/// @param values    what they are of: "the values"
/// @param relative  the relative error of the worst of them
Finding LostDigits(const std::string& element, const std::string& values, double relative,
                   LostBy cause);

}  // namespace halvorn::engine

#endif
