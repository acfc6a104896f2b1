/// @file tolerance.h
/// Tolerant comparisons of doubles, the two sentinels they know, and the small numeric helpers.
///
/// Every geometric decision of the library goes through these functions. Tolerances are absolute,
/// in the unit of the compared values, and always the last argument; a tolerance of exactly 0.0
/// means an exact comparison. All functions are pure leaves without allocation.
#ifndef HALVORN_NUMERIC_TOLERANCE_H
#define HALVORN_NUMERIC_TOLERANCE_H

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

/// Returns whether `a` and `b` differ by less than `tol`, strictly. `UNDEFINED_VALUE` equals only
/// itself; `INVALID_VALUE` equals nothing.
constexpr bool IsEqualTol(double a, double b, double tol) {
    if (a == UNDEFINED_VALUE) return b == UNDEFINED_VALUE;
    if (b == UNDEFINED_VALUE) return false;
    if (IsInvalidValue(a) || IsInvalidValue(b)) return false;
    if (tol == 0.0) return a == b;
    return tol > AbsValue(a - b);
}

/// Compares with a tolerance: -1 when a < b, 0 when equal, +1 when a > b.
///
/// Any NaN on either side, the sentinel included, gives +1. `UNDEFINED_VALUE` is above every finite
/// value. The ordering adds the tolerance to the smaller operand, so a difference of exactly `tol`
/// is unequal unless the sum rounds past the larger operand.
constexpr int CompareTol(double a, double b, double tol) {
    if (IsEqualTol(a, b, tol)) return 0;
    if (b > a) return a + tol > b ? 0 : -1;
    // Written so that an unordered pair, for which every ordered test fails, ends at +1.
    return b + tol > a ? 0 : 1;
}

/// Returns whether |a| is below `tol`, strictly; with a tolerance of 0.0, whether a == 0.0.
constexpr bool IsZeroTol(double a, double tol) {
    if (a == UNDEFINED_VALUE || IsInvalidValue(a)) return false;
    if (tol == 0.0) return a == 0.0;
    return tol > AbsValue(a);
}

/// Returns the sign of `a`, 0 within `tol`. `UNDEFINED_VALUE` gives +1, any NaN -1.
constexpr int SignTol(double a, double tol) {
    if (IsZeroTol(a, tol)) return 0;
    return a > 0.0 ? 1 : -1;
}

}  // namespace halvorn

#endif
