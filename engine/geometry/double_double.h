/// @file double_double.h
/// Numbers of twice the digits of a double, as the sum of two.
#ifndef HALVORN_ENGINE_GEOMETRY_DOUBLE_DOUBLE_H
#define HALVORN_ENGINE_GEOMETRY_DOUBLE_DOUBLE_H

namespace halvorn::engine {

/// Two doubles whose sum is an exact result.
struct ExactPair {
    double high;  ///< the rounded result
    double low;   ///< what rounding took
};

/// Returns a + b exactly (D. E. Knuth, The Art of Computer Programming 2, 4.2.2).
constexpr ExactPair TwoSum(double a, double b) {
    const double sum = a + b;
    const double ofB = sum - a;
    return {sum, (a - (sum - ofB)) + (b - ofB)};
}

/// Returns a b exactly, without a fused operation, which not every machine has (Dekker).
/// @pre neither the product nor 2^27 times a factor overflows, and the product's low part does not
///      underflow
constexpr ExactPair TwoProduct(double a, double b) {
    // The leading and the trailing 26 bits.
    const auto halves = [](double value) {
        constexpr double kSplitter = 134217729.0;  // 2^27 + 1
        const double scaled = kSplitter * value;
        const double high = scaled - (scaled - value);
        return ExactPair{high, value - high};
    };
    const double product = a * b;
    const ExactPair x = halves(a);
    const ExactPair y = halves(b);
    return {product,
            ((x.high * y.high - product) + x.high * y.low + x.low * y.high) + x.low * y.low};
}

/// high + low, where low is no more than half a unit in the last place of high. Results of sums and
/// products are off by some 2^-104 of the larger operand (T. J. Dekker, A floating-point technique
/// for extending the available precision, 1971).
/// @pre no operation overflows
class DoubleDouble {
public:
    constexpr DoubleDouble() = default;
    // Implicit: formulas are templates over their numbers and mix in doubles, which lose nothing.
    constexpr DoubleDouble(double value) : high_(value) {}  // NOLINT(google-explicit-constructor)

    constexpr explicit operator double() const { return high_ + low_; }

    friend constexpr DoubleDouble operator+(const DoubleDouble& a, const DoubleDouble& b) {
        const ExactPair sum = TwoSum(a.high_, b.high_);
        return Normal(sum.high, sum.low + (a.low_ + b.low_));
    }
    friend constexpr DoubleDouble operator-(const DoubleDouble& a) {
        return Normal(-a.high_, -a.low_);
    }
    friend constexpr DoubleDouble operator-(const DoubleDouble& a, const DoubleDouble& b) {
        return a + -b;
    }
    friend constexpr DoubleDouble operator*(const DoubleDouble& a, const DoubleDouble& b) {
        const ExactPair product = TwoProduct(a.high_, b.high_);
        return Normal(product.high, product.low + (a.high_ * b.low_ + a.low_ * b.high_));
    }
    friend constexpr DoubleDouble operator/(const DoubleDouble& a, const DoubleDouble& b) {
        const double first = a.high_ / b.high_;
        const DoubleDouble rest = a - b * DoubleDouble(first);
        return Normal(first, rest.high_ / b.high_);
    }
    DoubleDouble& operator+=(const DoubleDouble& other) { return *this = *this + other; }

private:
    static constexpr DoubleDouble Normal(double high, double low) {
        DoubleDouble result;
        result.high_ = high + low;
        result.low_ = low - (result.high_ - high);
        return result;
    }

    double high_ = 0.0;
    double low_ = 0.0;
};

}  // namespace halvorn::engine

#endif
