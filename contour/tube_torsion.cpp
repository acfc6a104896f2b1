#include "contour/tube_torsion.h"

#include "numeric/constants.h"
#include "numeric/scalar.h"

namespace halvorn {

double TubeTorsionConstant(double area, double thickness) {
    const double r = area / (kTwoPi * thickness);
    return (Sqr(thickness) + 4.0 * Sqr(r)) * r * kHalfPi * thickness;
}

double TubeTorsionModulus(double area, double thickness) {
    const double r = area / (kTwoPi * thickness);
    return (Sqr(thickness) + 4.0 * Sqr(r)) * (kPi * r * thickness) / (2.0 * r + thickness);
}

}  // namespace halvorn
