/// @file numbers.h
/// Numbers read from texts and written as texts, with a decimal point whatever the locale.
#ifndef HALVORN_ENGINE_BASE_NUMBERS_H
#define HALVORN_ENGINE_BASE_NUMBERS_H

#include <optional>
#include <string>
#include <string_view>

namespace halvorn::engine {

/// Returns the number that the whole text is, in plain or exponential decimals, perhaps with a plus
/// sign, and "inf" and "nan" too; nothing for any other text (blanks, "0x10", "") and for numbers
/// beyond the range of a double.
std::optional<double> NumberIn(std::string_view text);

/// Returns the same when it is finite.
std::optional<double> FiniteNumberIn(std::string_view text);

/// Returns the whole number that the whole text is, perhaps with a plus sign.
std::optional<int> WholeNumberIn(std::string_view text);

/// Returns the shortest text that reads back as the same double.
std::string EveryDigit(double value);

/// Returns a number in at most so many significant digits without zeros at their end: of the plain
/// and the exponential form the one that printf's %g takes. For messages.
std::string ShortNumber(double value, int digits = 6);

/// Returns a place as "(x, y)", for messages: in so many digits, or to three decimals when these
/// are more.
std::string PlaceText(double x, double y, int digits = 6);

/// Returns a number in so many significant digits, at most 17, without exponent and without zeros
/// at the end of its decimals.
std::string PlainNumber(double value, int digits);

/// Returns the same for a column of numbers: from 1e15 on and below 1e-4 with an exponent, whose
/// digits are all shown.
std::string TableNumber(double value, int digits);

/// Returns a number for a column with how far off it can be, "19.753 ± 0.002": the bound in one
/// digit, rounded up so that it covers what rounding the number to that digit adds. A bound below
/// the last digit that `TableNumber` shows is not shown. Both have exponents where `TableNumber`
/// does, when the bound is 1e4 or more, and when they would be wider than 22 characters; a 0 only
/// for the bound.
/// @param error  0 or more
std::string NumberWithin(double value, double error, int digits);

/// Returns a number with at most so many decimals, without zeros at their end. What rounds to 0 has
/// no sign.
std::string FixedNumber(double value, int decimals);

}  // namespace halvorn::engine

#endif
