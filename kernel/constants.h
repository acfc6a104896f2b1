/// @file constants.h
/// Fixed tolerances and limits of the polygon kernel. None depends on a section or a host setting.
#ifndef HALVORN_KERNEL_CONSTANTS_H
#define HALVORN_KERNEL_CONSTANTS_H

namespace halvorn {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kQuarterPi = 0.7853981633974483;
inline constexpr double kThreeQuarterPi = 2.356194490192345;

/// A vector whose length [L] or squared length [L^2] is below this has no direction. Tested on
/// both: the squared test alone already treats lengths below 1e-6 as none.
inline constexpr double kZeroVector = 1e-12;

/// A squared distance [L^2] below this is 0: its root would be below 1e-50.
inline constexpr double kZeroSquaredDistance = 1e-100;

/// Largest magnitude of a factor or numerator in `KLineIntersection`: the products stay finite.
inline constexpr double kLargestOperand = 1e100;

/// Smallest magnitude of a denominator in `KLineIntersection`; parallel lines fall below it.
inline constexpr double kSmallestDenominator = 1e-100;

}  // namespace halvorn

#endif
