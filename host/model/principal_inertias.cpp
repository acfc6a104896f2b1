#include "model/principal_inertias.h"

#include <cmath>

namespace halvorn::host {

PrincipalInertias PrincipalInertiasOf(double inertiaX, double inertiaY, double inertiaXY) {
    const double mean = 0.5 * (inertiaX + inertiaY);
    const double half = 0.5 * (inertiaX - inertiaY);
    const double radius = std::hypot(half, inertiaXY);
    // 0.0 - Ixy, so that a product of 0 never gives atan2 the negative zero that means -pi.
    return {mean + radius, mean - radius, 0.5 * std::atan2(0.0 - inertiaXY, half)};
}

}  // namespace halvorn::host
