#include "numeric/tolerance.h"

#include <gtest/gtest.h>

namespace halvorn {
namespace {

constexpr double kInfinity = UNDEFINED_VALUE;
constexpr double kNegativeNaN = std::bit_cast<double>(std::uint64_t{0xFFF8000000000000});
constexpr double kPayloadNaN = std::bit_cast<double>(std::uint64_t{0x7FF8000000000001});

TEST(Tolerance, ComparesThreeWayWithStrictBoundsAndSentinels) {
    struct {
        double a, b, tol;
        int order;
        bool equal;
    } const cases[] = {
        {1, 1 + 5e-9, 1e-8, 0, true},
        {1, 1 + 2e-8, 1e-8, -1, false},
        {1 + 2e-8, 1, 1e-8, 1, false},
        {1, 1.25, 0.25, -1, false},  // a difference of exactly the tolerance
        {1.25, 1, 0.25, 1, false},
        {-1, -0x1p-55, 1, 0, false},  // so rounded, but the sum passes the larger operand
        {-0x1p-55, -1, 1, 0, false},
        {1, 1 + 0x1p-52, 0, -1, false},
        {0.0, -0.0, 0, 0, true},
        {kInfinity, kInfinity, 1e-8, 0, true},
        {kInfinity, 5, 1e-8, 1, false},
        {5, kInfinity, 1e-8, -1, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.a << " against " << c.b << " within " << c.tol);
        EXPECT_EQ(CompareTol(c.a, c.b, c.tol), c.order);
        EXPECT_EQ(IsEqualTol(c.a, c.b, c.tol), c.equal);
    }
    for (const double nan : {INVALID_VALUE, kNegativeNaN, kPayloadNaN}) {
        for (const double other : {5.0, -kInfinity, kInfinity, nan}) {
            for (const double tol : {0.0, 1e-8}) {
                EXPECT_EQ(CompareTol(nan, other, tol), 1) << nan << " against " << other;
                EXPECT_EQ(CompareTol(other, nan, tol), 1) << other << " against " << nan;
                EXPECT_FALSE(IsEqualTol(nan, other, tol) || IsEqualTol(other, nan, tol));
            }
        }
    }
}

TEST(Tolerance, ZeroAndSignAreStrictAndKnowTheSentinels) {
    struct {
        double a, tol;
        int sign;
    } const cases[] = {{1e-9, 1e-8, 0},   {1e-8, 1e-8, 1},        {-1e-8, 1e-8, -1},
                       {-5e-9, 1e-8, 0},  {-0.0, 0, 0},           {5e-324, 0, 1},
                       {kInfinity, 1, 1}, {INVALID_VALUE, 1, -1}, {kNegativeNaN, 0, -1}};
    for (const auto& c : cases) {
        EXPECT_EQ(SignTol(c.a, c.tol), c.sign) << c.a << " within " << c.tol;
        EXPECT_EQ(IsZeroTol(c.a, c.tol), c.sign == 0) << c.a << " within " << c.tol;
    }
}

TEST(Tolerance, HelpersKeepSignsAndSentinelsToTheBit) {
    const auto bits = [](double a) { return std::bit_cast<std::uint64_t>(a); };
    EXPECT_FALSE(IsInvalidValue(kNegativeNaN) || IsInvalidValue(kPayloadNaN));
    for (const double bad : {-1e-300, -kInfinity, kNegativeNaN, kPayloadNaN}) {
        EXPECT_EQ(bits(SqrtSafe(bad)), 0x7FF8000000000000u) << bad;
    }
    EXPECT_EQ(bits(SqrtSafe(-0.0)), bits(-0.0));
    EXPECT_EQ(bits(AbsValue(-0.0)), 0u);
    for (const auto& pick : {MaxValue, MinValue}) {  // the second on a tie or a NaN
        EXPECT_TRUE(std::signbit(pick(0.0, -0.0)) && !std::signbit(pick(-0.0, 0.0)));
        EXPECT_EQ(pick(INVALID_VALUE, 3.0), 3.0);
        EXPECT_TRUE(std::isnan(pick(3.0, INVALID_VALUE)));
    }
    EXPECT_TRUE(MaxValue(1, 2) == 2 && MaxValue(2, 1) == 2 && MinValue(1, 2) == 1);
}

}  // namespace
}  // namespace halvorn
