/// @file scalar.h
/// Two sentinels among the doubles, and the small helpers: magnitude, square, root, order.
///
/// All functions are pure leaves without allocation.
#ifndef HALVORN_NUMERIC_SCALAR_H
#define HALVORN_NUMERIC_SCALAR_H

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "numeric/ieee_arithmetic.h"

namespace halvorn {

/// Not yet defined, or unbounded. Equal only to itself.
inline constexpr double UNDEFINED_VALUE = std::numeric_limits<double>::infinity();

/// An invalid result, such as the root of a negative number: the quiet NaN of exactly these bits.
/// Other NaN patterns are not the sentinel.
inline constexpr double INVALID_VALUE = std::bit_cast<double>(std::uint64_t{0x7FF8000000000000});

/// Returns whether `a` is `INVALID_VALUE`, by its bits.
constexpr bool IsInvalidValue(double a) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(INVALID_VALUE);
}

/// Returns `a` with its sign bit cleared: +0.0 for -0.0, a NaN stays a NaN.
constexpr double AbsValue(double a) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(a) & ~(std::uint64_t{1} << 63));
}

/// Returns a^2.
constexpr double Sqr(double a) {
    return a * a;
}

/// Returns the square root, or `INVALID_VALUE` for a negative number or any NaN.
inline double SqrtSafe(double a) {
    return a >= 0.0 ? std::sqrt(a) : INVALID_VALUE;
}

/// Returns `a` if a > b, else `b`: the second on a tie or when either is a NaN.
constexpr double MaxValue(double a, double b) {
    return a > b ? a : b;
}

/// Returns `a` if a < b, else `b`: the second on a tie or when either is a NaN.
constexpr double MinValue(double a, double b) {
    return a < b ? a : b;
}

/// Exchanges the two values.
constexpr void SwapValues(double& a, double& b) {
    const double first = a;
    a = b;
    b = first;
}

}  // namespace halvorn

#endif
