#include "numeric/tolerance.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

namespace halvorn {
namespace {

constexpr double kNegativeNaN = std::bit_cast<double>(std::uint64_t{0xFFF8000000000000});
constexpr double kPayloadNaN = std::bit_cast<double>(std::uint64_t{0x7FF8000000000001});
constexpr double kNextAfterOne = 1.0000000000000002;

TEST(Tolerance, ComparesThreeWayWithStrictBoundsAndSentinels) {
    struct {
        double a, b, tol;
        int order;
        bool equal;
    } const cases[] = {
        {1.0, 1.0 + 5e-9, 1e-8, 0, true},
        {1.0, 1.0 + 2e-8, 1e-8, -1, false},
        {1.0 + 2e-8, 1.0, 1e-8, 1, false},
        {1.0, 1.25, 0.25, -1, false},  // a difference of exactly the tolerance
        {1.25, 1.0, 0.25, 1, false},
        // The difference rounds to the tolerance, and the sum still passes the larger operand.
        {-1.0, -0x1p-55, 1.0, 0, false},
        {-0x1p-55, -1.0, 1.0, 0, false},
        {1.0, kNextAfterOne, 0.0, -1, false},
        {kNextAfterOne, kNextAfterOne, 0.0, 0, true},
        {0.0, -0.0, 0.0, 0, true},
        {UNDEFINED_VALUE, UNDEFINED_VALUE, 1e-8, 0, true},
        {UNDEFINED_VALUE, UNDEFINED_VALUE, 0.0, 0, true},
        {UNDEFINED_VALUE, 5.0, 1e-8, 1, false},
        {5.0, UNDEFINED_VALUE, 1e-8, -1, false},
        {-UNDEFINED_VALUE, 5.0, 1e-8, -1, false},
        {UNDEFINED_VALUE, INVALID_VALUE, 1e-8, 1, false},
        {INVALID_VALUE, UNDEFINED_VALUE, 1e-8, 1, false},
        {INVALID_VALUE, INVALID_VALUE, 1e-8, 1, false},
        {INVALID_VALUE, INVALID_VALUE, 0.0, 1, false},
        {5.0, INVALID_VALUE, 1e-8, 1, false},
        {INVALID_VALUE, 5.0, 1e-8, 1, false},
        {kNegativeNaN, kNegativeNaN, 0.0, 1, false},
        {5.0, kNegativeNaN, 1e-8, 1, false},
        {kPayloadNaN, 5.0, 0.0, 1, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.a << " against " << c.b << " within " << c.tol);
        EXPECT_EQ(CompareTol(c.a, c.b, c.tol), c.order);
        EXPECT_EQ(IsEqualTol(c.a, c.b, c.tol), c.equal);
    }
}

TEST(Tolerance, ZeroAndSignAreStrictAndKnowTheSentinels) {
    struct {
        double a, tol;
        bool zero;
        int sign;
    } const cases[] = {
        {1e-9, 1e-8, true, 0},
        {1e-8, 1e-8, false, 1},
        {-1e-8, 1e-8, false, -1},
        {-5e-9, 1e-8, true, 0},
        {-2e-8, 1e-8, false, -1},
        {-0.0, 0.0, true, 0},
        {5e-324, 0.0, false, 1},
        {UNDEFINED_VALUE, 1e-8, false, 1},
        {-UNDEFINED_VALUE, 0.0, false, -1},
        {INVALID_VALUE, 1e-8, false, -1},
        {INVALID_VALUE, 0.0, false, -1},
        {kNegativeNaN, 0.0, false, -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.a << " within " << c.tol);
        EXPECT_EQ(IsZeroTol(c.a, c.tol), c.zero);
        EXPECT_EQ(SignTol(c.a, c.tol), c.sign);
    }
}

TEST(Tolerance, RecognisesTheSentinelByItsBitsAlone) {
    const auto bits = [](double a) { return std::bit_cast<std::uint64_t>(a); };
    EXPECT_FALSE(IsInvalidValue(kNegativeNaN));
    EXPECT_FALSE(IsInvalidValue(kPayloadNaN));
    for (const double bad : {-1e-300, -UNDEFINED_VALUE, kNegativeNaN, kPayloadNaN}) {
        EXPECT_EQ(bits(SqrtSafe(bad)), 0x7FF8000000000000u) << bad;
    }
    EXPECT_EQ(bits(SqrtSafe(-0.0)), bits(-0.0));
    EXPECT_EQ(SqrtSafe(UNDEFINED_VALUE), UNDEFINED_VALUE);
    EXPECT_EQ(bits(AbsValue(-0.0)), 0u);
    EXPECT_EQ(bits(AbsValue(kNegativeNaN)), 0x7FF8000000000000u);
}

TEST(Tolerance, MaximumAndMinimumGiveTheSecondOperandOnATieOrANaN) {
    for (const auto& pick : {MaxValue, MinValue}) {
        EXPECT_TRUE(std::signbit(pick(0.0, -0.0)));
        EXPECT_FALSE(std::signbit(pick(-0.0, 0.0)));
        EXPECT_EQ(pick(INVALID_VALUE, 3.0), 3.0);
        EXPECT_TRUE(std::isnan(pick(3.0, INVALID_VALUE)));
    }
}

}  // namespace
}  // namespace halvorn
