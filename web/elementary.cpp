// The elementary functions of the C library, rounded correctly: in quadruple precision first, which
// `long double` is on WebAssembly. The build machine's differ from that in the last digit once in a
// while, those of the C library here every other time; from there on the solutions of torsion and
// shear part, because triangles are chosen by energies that differ by rounding alone.
#if defined(__EMSCRIPTEN__)
#include <math.h>

namespace {

static_assert(__LDBL_MANT_DIG__ == 113);

double Rounded(long double value) {
    return static_cast<double>(value);
}

}  // namespace

extern "C" {

double sin(double x) {
    return Rounded(sinl(x));
}

double cos(double x) {
    return Rounded(cosl(x));
}

double tan(double x) {
    return Rounded(tanl(x));
}

double atan2(double y, double x) {
    return Rounded(atan2l(y, x));
}

double acos(double x) {
    return Rounded(acosl(x));
}

double hypot(double x, double y) {
    if (isinf(x) || isinf(y)) return INFINITY;
    return Rounded(sqrtl(static_cast<long double>(x) * x + static_cast<long double>(y) * y));
}

}  // extern "C"
#endif
