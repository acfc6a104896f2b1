/// @file tolerance.h
/// Tolerant comparisons of doubles.
///
/// Every geometric decision of the library goes through these functions. Tolerances are absolute,
/// in the unit of the compared values, and always the last argument; a tolerance of exactly 0.0
/// means an exact comparison. All functions are pure leaves without allocation.
#ifndef HALVORN_NUMERIC_TOLERANCE_H
#define HALVORN_NUMERIC_TOLERANCE_H

#include "numeric/scalar.h"

namespace halvorn {

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
