#include "contour/equivalent_ellipse.h"

#include <cmath>

#include "numeric/constants.h"
#include "numeric/tolerance.h"

namespace halvorn {

void EquivalentEllipse(double area, double polarMoment, double* a, double* b) {
    *a = 0.0;
    *b = 0.0;
    if (CompareTol(area, 0.0, kZeroEllipse) == 0) return;
    // h = (a^2 + b^2) / 2 and A / pi = a b, so d = h^2 - (a b)^2 = ((a^2 - b^2) / 2)^2 and
    // h + sqrt(d) = a^2.
    const double h = 2.0 * polarMoment / area;
    const double squaredProduct = Sqr(area / kPi);
    const double d = Sqr(h) - squaredProduct;
    if (CompareTol(d, 0.0, kZeroEllipse) < 0 && d < -kCircleDiscriminant * squaredProduct) return;
    const double squaredMajor = std::sqrt(MaxValue(d, 0.0)) + h;
    if (CompareTol(squaredMajor, 0.0, kZeroEllipse) <= 0) return;
    *a = std::sqrt(squaredMajor);
    *b = area / (kPi * *a);
}

double EllipseShearCoefficient(double a, double b) {
    if (a == 0.0 || b == 0.0) return 0.0;
    const double smaller = Sqr(MinValue(a, b));
    const double larger = Sqr(MaxValue(a, b));
    return 12.0 * (3.0 * smaller + larger) / (40.0 * smaller + 16.0 * larger);
}

double EllipseTorsionModulusOfAxes(double a, double b) {
    if (a < b) SwapValues(a, b);
    return a * kHalfPi * b * b;
}

double EllipseTorsionConstant(double area, double polarMoment) {
    if (CompareTol(polarMoment, 0.0, kZeroEllipse) == 0) return 0.0;
    // A^4 by squaring twice: two roundings and the same bits everywhere, where the last bit of
    // std::pow depends on the C library.
    return Sqr(Sqr(area)) / (4.0 * kPi * kPi * polarMoment);
}

double EllipseShearCoefficientX(double area, double polarMoment) {
    double a = 0.0;
    double b = 0.0;
    EquivalentEllipse(area, polarMoment, &a, &b);
    return EllipseShearCoefficient(a, b);
}

double EllipseShearCoefficientY(double area, double polarMoment) {
    return EllipseShearCoefficientX(area, polarMoment);
}

double EllipseTorsionModulus(double area, double polarMoment) {
    double a = 0.0;
    double b = 0.0;
    EquivalentEllipse(area, polarMoment, &a, &b);
    return EllipseTorsionModulusOfAxes(a, b);
}

}  // namespace halvorn
