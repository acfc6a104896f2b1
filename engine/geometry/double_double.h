/// @file double_double.h
/// Numbers of twice the digits of a double, as the sum of two.
#ifndef HALVORN_ENGINE_GEOMETRY_DOUBLE_DOUBLE_H
#define HALVORN_ENGINE_GEOMETRY_DOUBLE_DOUBLE_H

namespace halvorn::engine {

/// high + low, where low is no more than half a unit in the last place of high. Results of sums and
/// products are off by some 2^-104 of the larger operand (T. J. Dekker, A floating-point technique
/// for extending the available precision, 1971).
/// @pre no operation overflows
class DoubleDouble {
public:
    constexpr DoubleDouble() = default;
    constexpr DoubleDouble(double value) : high_(value) {}  // NOLINT(google-explicit-constructor)

    constexpr explicit operator double() const { return high_ + low_; }

    friend constexpr DoubleDouble operator+(const DoubleDouble& a, const DoubleDouble& b) {
        const double sum = a.high_ + b.high_;
        const double ofB = sum - a.high_;
        const double error = (a.high_ - (sum - ofB)) + (b.high_ - ofB);
        return Normal(sum, error + (a.low_ + b.low_));
    }
    friend constexpr DoubleDouble operator-(const DoubleDouble& a) {
        return Normal(-a.high_, -a.low_);
    }
    friend constexpr DoubleDouble operator-(const DoubleDouble& a, const DoubleDouble& b) {
        return a + -b;
    }
    friend constexpr DoubleDouble operator*(const DoubleDouble& a, const DoubleDouble& b) {
        const double product = a.high_ * b.high_;
        const auto [aHigh, aLow] = Halves(a.high_);
        const auto [bHigh, bLow] = Halves(b.high_);
        const double error =
            ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow;
        return Normal(product, error + (a.high_ * b.low_ + a.low_ * b.high_));
    }
    friend constexpr DoubleDouble operator/(const DoubleDouble& a, const DoubleDouble& b) {
        const double first = a.high_ / b.high_;
        const DoubleDouble rest = a - b * DoubleDouble(first);
        return Normal(first, rest.high_ / b.high_);
    }
    DoubleDouble& operator+=(const DoubleDouble& other) { return *this = *this + other; }

private:
    struct Pair {
        double high;
        double low;
    };

    // The leading and the trailing 26 bits.
    static constexpr Pair Halves(double value) {
        constexpr double kSplitter = 134217729.0;  // 2^27 + 1
        const double scaled = kSplitter * value;
        const double high = scaled - (scaled - value);
        return {high, value - high};
    }
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
