#include "model/principal_inertias.h"

#include <algorithm>
#include <cmath>

namespace halvorn::engine {

PrincipalInertias PrincipalInertiasOf(double inertiaX, double inertiaY, double inertiaXY) {
    const double mean = 0.5 * (inertiaX + inertiaY);
    const double half = 0.5 * (inertiaX - inertiaY);
    const double radius = std::hypot(half, inertiaXY);
    const double first = mean + radius;
    // The difference of mean and radius would leave no digit of a small one. The product of both is
    // Ix Iy - Ixy^2, divided before it could overflow.
    const auto [smaller, larger] = std::minmax(inertiaX, inertiaY);
    const double second =
        first > 0.0 ? smaller * (larger / first) - inertiaXY * (inertiaXY / first) : mean - radius;
    // 0.0 - Ixy, so that a product of 0 never gives atan2 the negative zero that means -pi.
    return {first, second, 0.5 * std::atan2(0.0 - inertiaXY, half)};
}

}  // namespace halvorn::engine
