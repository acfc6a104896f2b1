#include "geometry/sine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace {

using halvorn::engine::SineAndCosine;
using halvorn::engine::SineAndCosineOf;

// How far a double is from a number of more digits, in units of its last place.
long double Ulps(double found, long double expected) {
    const double next = std::nextafter(std::fabs(found), std::numeric_limits<double>::infinity());
    const long double ulp = static_cast<long double>(next) - std::fabs(found);
    return std::fabs(static_cast<long double>(found) - expected) / ulp;
}

// The nearest doubles, beside the C library in more digits, all round and near the quarters.
TEST(SineAndCosineOf, AreTheNearestDoubles) {
    if (std::numeric_limits<long double>::digits <= 53) {
        GTEST_SKIP() << "long double has no more digits than double here";
    }
    constexpr long double kNearest = 0.502L;  // the longer numbers are rounded, too
    const auto check = [&](double angle) {
        const SineAndCosine found = SineAndCosineOf(angle);
        EXPECT_LE(Ulps(found.sine, std::sin(static_cast<long double>(angle))), kNearest) << angle;
        EXPECT_LE(Ulps(found.cosine, std::cos(static_cast<long double>(angle))), kNearest) << angle;
    };
    for (int i = -4000; i <= 4000; ++i) check(0.0031 * i);
    for (int quarter = -8; quarter <= 8; ++quarter) {
        const double angle = quarter * 0.5 * std::numbers::pi;
        for (const double off : {0.0, 1e-9, -1e-9, 1e-3, -1e-3}) {
            if (quarter != 0 || off != 0.0) check(angle + off);
        }
    }
    EXPECT_EQ(SineAndCosineOf(0.0).sine, 0.0);
    EXPECT_EQ(SineAndCosineOf(0.0).cosine, 1.0);
    EXPECT_EQ(SineAndCosineOf(1e6).sine, std::sin(1e6));
    EXPECT_TRUE(std::isnan(SineAndCosineOf(std::numeric_limits<double>::infinity()).sine));
}

}  // namespace
