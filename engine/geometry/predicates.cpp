#include "geometry/predicates.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "geometry/double_double.h"

namespace halvorn::engine {

namespace {

// Relative rounding error of one operation.
constexpr double kUnit = 0.5 * std::numeric_limits<double>::epsilon();

// Shewchuk's bounds of the error of the plain determinants, relative to the sum of the absolute
// values of their terms.
constexpr double kOrientationBound = (3.0 + 16.0 * kUnit) * kUnit;
constexpr double kInCircleBound = (10.0 + 96.0 * kUnit) * kUnit;

// A number as a sum of doubles in increasing magnitude that do not overlap: its sign is that of the
// last one. Zeros are left out.
template <std::size_t N>
struct Expansion {
    std::array<double, N> terms;
    std::size_t count = 0;

    void Append(double term) {
        if (term != 0.0) terms[count++] = term;
    }
    int Sign() const {
        if (count == 0) return 0;
        return terms[count - 1] > 0.0 ? 1 : -1;
    }
};

Expansion<2> Difference(double a, double b) {
    const auto [high, low] = TwoSum(a, -b);
    Expansion<2> result;
    result.Append(low);
    result.Append(high);
    return result;
}

// Adds expansions by merging their terms in increasing magnitude (Shewchuk, FAST-EXPANSION-SUM with
// zero elimination, made safe for any input by the two-sum).
template <std::size_t N, std::size_t M>
Expansion<N + M> Sum(const Expansion<N>& a, const Expansion<M>& b) {
    Expansion<N + M> result;
    std::size_t i = 0;
    std::size_t k = 0;
    double carry = 0.0;
    while (i < a.count || k < b.count) {
        const bool isFromA =
            k == b.count || (i < a.count && std::fabs(a.terms[i]) < std::fabs(b.terms[k]));
        const double term = isFromA ? a.terms[i++] : b.terms[k++];
        const ExactPair sum = TwoSum(carry, term);
        result.Append(sum.low);
        carry = sum.high;
    }
    result.Append(carry);
    return result;
}

template <std::size_t N>
Expansion<N> Negative(Expansion<N> a) {
    for (std::size_t i = 0; i < a.count; ++i) a.terms[i] = -a.terms[i];
    return a;
}

// Shewchuk, SCALE-EXPANSION with zero elimination.
template <std::size_t N>
Expansion<2 * N> Scaled(const Expansion<N>& a, double factor) {
    Expansion<2 * N> result;
    double carry = 0.0;
    for (std::size_t i = 0; i < a.count; ++i) {
        const ExactPair product = TwoProduct(a.terms[i], factor);
        const ExactPair rest = TwoSum(carry, product.low);
        result.Append(rest.low);
        const ExactPair sum = TwoSum(product.high, rest.high);
        result.Append(sum.low);
        carry = sum.high;
    }
    result.Append(carry);
    return result;
}

// Products of short expansions: the sum of one scaled by each term of the other.
template <std::size_t N>
Expansion<4 * N> TimesTwo(const Expansion<N>& a, const Expansion<2>& b) {
    Expansion<2 * N> low;
    Expansion<2 * N> high;
    if (b.count > 0) low = Scaled(a, b.terms[0]);
    if (b.count > 1) high = Scaled(a, b.terms[1]);
    return Sum(low, high);
}

// a.x b.y - a.y b.x of vectors whose components are exact differences.
struct ExactVector {
    Expansion<2> x;
    Expansion<2> y;
};

ExactVector ExactDifference(const Point& a, const Point& b) {
    return {Difference(a.x, b.x), Difference(a.y, b.y)};
}

Expansion<16> ExactCross(const ExactVector& a, const ExactVector& b) {
    return Sum(TimesTwo(a.x, b.y), Negative(TimesTwo(a.y, b.x)));
}

// (x^2 + y^2) times a cross product.
Expansion<512> Lifted(const ExactVector& v, const Expansion<16>& cross) {
    return Sum(TimesTwo(TimesTwo(cross, v.x), v.x), TimesTwo(TimesTwo(cross, v.y), v.y));
}

int ExactOrientation(const Point& a, const Point& b, const Point& c) {
    return ExactCross(ExactDifference(a, c), ExactDifference(b, c)).Sign();
}

int ExactInCircle(const Point& a, const Point& b, const Point& c, const Point& d) {
    const ExactVector ad = ExactDifference(a, d);
    const ExactVector bd = ExactDifference(b, d);
    const ExactVector cd = ExactDifference(c, d);
    return Sum(Sum(Lifted(ad, ExactCross(bd, cd)), Lifted(bd, ExactCross(cd, ad))),
               Lifted(cd, ExactCross(ad, bd)))
        .Sign();
}

int SignOf(double value) {
    return value > 0.0 ? 1 : -1;
}

}  // namespace

int Orientation(const Point& a, const Point& b, const Point& c) {
    const double left = (a.x - c.x) * (b.y - c.y);
    const double right = (a.y - c.y) * (b.x - c.x);
    const double determinant = left - right;
    const double bound = kOrientationBound * (std::fabs(left) + std::fabs(right));
    if (std::fabs(determinant) > bound) return SignOf(determinant);
    return ExactOrientation(a, b, c);
}

int InCircle(const Point& a, const Point& b, const Point& c, const Point& d) {
    const Point ad = a - d;
    const Point bd = b - d;
    const Point cd = c - d;
    const double liftA = Dot(ad, ad);
    const double liftB = Dot(bd, bd);
    const double liftC = Dot(cd, cd);
    const double determinant =
        liftA * Cross(bd, cd) + liftB * Cross(cd, ad) + liftC * Cross(ad, bd);
    const double sum = (std::fabs(bd.x * cd.y) + std::fabs(bd.y * cd.x)) * liftA +
                       (std::fabs(cd.x * ad.y) + std::fabs(cd.y * ad.x)) * liftB +
                       (std::fabs(ad.x * bd.y) + std::fabs(ad.y * bd.x)) * liftC;
    if (std::fabs(determinant) > kInCircleBound * sum) return SignOf(determinant);
    return ExactInCircle(a, b, c, d);
}

}  // namespace halvorn::engine
