#include "geometry/sine.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "geometry/double_double.h"

namespace halvorn::engine {

namespace {

// pi / 2 as the sum of three doubles.
constexpr double kQuarterTurn = 1.5707963267948966;
constexpr double kQuarterTurnRest = 6.123233995736766e-17;
constexpr double kQuarterTurnLast = -1.4973849048591833e-33;
constexpr double kMostAngle = 1e3;  // [rad]; up to here a multiple of the parts keeps their digits

// 1 / n!, with a sign that changes every two: the coefficients of both series. What is left out is
// below 1e-32 of the sum for angles up to an eighth of a turn, and what the plain terms lose below
// 1e-25: they are below 2e-9.
constexpr std::size_t kTerms = 26;
constexpr std::size_t kFirstPlain = 11;

constexpr std::array<DoubleDouble, kTerms> Coefficients() {
    std::array<DoubleDouble, kTerms> coefficients;
    DoubleDouble factorial = 1.0;
    for (std::size_t n = 0; n < kTerms; ++n) {
        if (n > 1) factorial = factorial * DoubleDouble(static_cast<double>(n));
        const DoubleDouble inverse = DoubleDouble(1.0) / factorial;
        coefficients[n] = n % 4 < 2 ? inverse : -inverse;
    }
    return coefficients;
}

constexpr std::array<DoubleDouble, kTerms> kCoefficients = Coefficients();

// The terms of even or of odd powers, by Horner's rule in the square.
DoubleDouble Sum(const DoubleDouble& square, std::size_t lowest) {
    const auto plainSquare = static_cast<double>(square);
    std::size_t n = kTerms - 2 + lowest;
    auto plain = static_cast<double>(kCoefficients[n]);
    for (; n >= kFirstPlain + 2; n -= 2) {
        plain = plain * plainSquare + static_cast<double>(kCoefficients[n - 2]);
    }
    DoubleDouble sum = plain;
    for (; n > lowest; n -= 2) sum = sum * square + kCoefficients[n - 2];
    return sum;
}

}  // namespace

SineAndCosine SineAndCosineOf(double angle) {
    // Written so that NaN goes this way.
    if (!(std::fabs(angle) <= kMostAngle)) return {std::sin(angle), std::cos(angle)};
    const double quarters = std::nearbyint(angle / kQuarterTurn);
    // Products of a whole number, exact; what is left is at most an eighth of a turn.
    const ExactPair first = TwoProduct(quarters, kQuarterTurn);
    const ExactPair second = TwoProduct(quarters, kQuarterTurnRest);
    const DoubleDouble rest = DoubleDouble(angle) - DoubleDouble(first.high) -
                              DoubleDouble(first.low) - DoubleDouble(second.high) -
                              DoubleDouble(second.low) - DoubleDouble(quarters * kQuarterTurnLast);
    const DoubleDouble square = rest * rest;
    const auto sine = static_cast<double>(rest * Sum(square, 1));
    const auto cosine = static_cast<double>(Sum(square, 0));
    switch (static_cast<int>(quarters) & 3) {
        case 1:
            return {cosine, -sine};
        case 2:
            return {-sine, -cosine};
        case 3:
            return {-cosine, sine};
        default:
            return {sine, cosine};
    }
}

}  // namespace halvorn::engine
