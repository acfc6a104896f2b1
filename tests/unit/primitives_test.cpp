#include "kernel/primitives.h"

#include <gtest/gtest.h>

#include "unit/support.h"

namespace halvorn {
namespace {

using namespace test_support;

TEST(KernelPrimitives, AnglesAreSignedAndZeroForShortVectors) {
    struct {
        KPoint a, b;
        double angle;
    } const cases[] = {
        {{1, 0}, {0, 1}, kPi / 2},       {{0, 1}, {1, 0}, -kPi / 2},
        {{2, 0}, {-3, 0}, kPi},          {{1, 1}, {5, 5}, 0.0},
        {{0, 0}, {1, 0}, 0.0},           {{1, 0}, {0, 0}, 0.0},
        {{1.1e-6, 0}, {0, 1}, kPi / 2},  {{0.9e-6, 0}, {0, 1}, 0.0},
        {{0, 1}, {-1.1e-6, 0}, kPi / 2}, {{0, 1}, {-0.9e-6, 0}, 0.0},
        {{3, 0}, {2, -2}, -kPi / 4},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(KVectorAngle(&c.a, &c.b), c.angle, 1e-15)
            << c.a.x << "," << c.a.y << " to " << c.b.x << "," << c.b.y;
    }
}

TEST(KernelPrimitives, LengthsVanishBelowTheirLimits) {
    const KPoint origin{0, 0}, at51{6e-51, -7e-51}, at49{3e-50, 4e-50}, far{3, -4};
    EXPECT_EQ(KDistance(&origin, &at51), 0.0);
    EXPECT_DOUBLE_EQ(KDistance(&origin, &at49), 5e-50);
    EXPECT_EQ(KDistance(&far, &origin), 5.0);
    const KPoint shorter{0.6e-6, 0.7e-6}, longer{0.8e-6, 0.7e-6};
    EXPECT_EQ(KVectorNorm(&shorter), 0.0);
    EXPECT_DOUBLE_EQ(KVectorNorm(&longer), std::sqrt(1.13) * 1e-6);
    EXPECT_TRUE(KPointsEqualTol({0, 0}, {1, -1}, 1.0));  // per axis, inclusive
    EXPECT_FALSE(KPointsEqualTol({0, 0}, {0, 1.0000001}, 1.0));
}

TEST(KernelPrimitives, SmallVectorArithmetic) {
    const KPoint a{1, 2}, b{4, -6};
    KPoint out;
    EXPECT_EQ(KVectorDiff(&out, &a, &b), &out);
    EXPECT_TRUE(out.x == 3 && out.y == -8);
    KMidpoint(&out, &a, &b);
    EXPECT_TRUE(out.x == 2.5 && out.y == -2);
    EXPECT_EQ(KCross(&a, &b), -14.0);
    const KPoint turned = KRotateVector({2, 1}, kPi / 2);
    EXPECT_NEAR(turned.x, -1.0, 1e-15);
    EXPECT_NEAR(turned.y, 2.0, 1e-15);
    const KPoint3 p{1, 2, 3}, q{5, 1, -1};
    KPoint3 d;
    KVectorDiff3(&d, &p, &q);
    EXPECT_TRUE(d.x == 4 && d.y == -1 && d.z == -4);
    KSegment segment;
    EXPECT_EQ(KMakeSegment(&segment, &a, &b), &segment);
    EXPECT_TRUE(segment.start.x == 1 && segment.start.y == 2 && segment.end.x == 4);
}

TEST(KernelPrimitives, PolygonAreaIsPositiveForClockwiseRings) {
    const std::vector<double> clockwise = {0, 0, 0, 1, 1, 1, 1, 0};
    EXPECT_EQ(KPolygonSignedArea(clockwise.data(), 4), 1.0);
    for (int n = -1; n < 3; ++n) EXPECT_EQ(KPolygonSignedArea(clockwise.data(), n), 0.0) << n;
    // Every remainder of an unrolled loop.
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        Ring ring = RandomStar(seed, 3);
        ring.resize(3 + seed % 8);
        const double exact = ExactMoments(ring).area;
        const std::vector<double> coords = Coords(ring);
        const int n = static_cast<int>(ring.size());
        EXPECT_EQ(KPolygonSignedArea(coords.data(), n), -exact) << "seed " << seed;
        EXPECT_EQ(KPolygonArea(coords.data(), n), std::abs(exact)) << "seed " << seed;
    }
}

TEST(KernelPrimitives, LinesMeetUnlessParallelOrOutOfRange) {
    struct {
        const char* name;
        KPoint a, b, c, d;
        int status;
        KPoint out;
    } const cases[] = {
        {"diagonals", {0, 0}, {1, 1}, {0, 1}, {1, 0}, 1, {0.5, 0.5}},
        {"beyond both segments", {0, 0}, {1, 0}, {5, 3}, {5, 4}, 1, {5, 0}},
        {"parallel", {0, 0}, {1, 1}, {0, 1}, {1, 2}, 0, {}},
        {"same line", {0, 0}, {1, 1}, {2, 2}, {3, 3}, 0, {}},
        {"no line", {1, 1}, {1, 1}, {0, 1}, {1, 0}, 0, {}},
        {"nearly parallel is no failure",
         {0, 0},
         {1, 0},
         {0, -1},
         {1, -1 + 0x1p-40},
         1,
         {0x1p40, 0}},
        {"in range", {-1e49, 0}, {1e49, 0}, {0, -1e49}, {0, 1e49}, 1, {0, 0}},
        {"out of range", {-1e101, 0}, {1e101, 0}, {0, -1}, {0, 1}, 0, {}},
        {"not a number", {UNDEFINED_VALUE, 0}, {1, 0}, {0, -1}, {0, 1}, 0, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        KPoint out{7, 7};
        ASSERT_EQ(KLineIntersection(&c.a, &c.b, &c.c, &c.d, &out), c.status);
        if (c.status == 0) {
            EXPECT_TRUE(std::isnan(out.x) && std::isnan(out.y));
        } else {
            EXPECT_DOUBLE_EQ(out.x, c.out.x);
            EXPECT_DOUBLE_EQ(out.y, c.out.y);
        }
    }
}

TEST(KernelPrimitives, QuotientAndProductLimitsAreInclusive) {
    EXPECT_EQ(KIsSafeQuotient(-1e100, -1e-100), 1);
    EXPECT_EQ(KIsSafeQuotient(1.1e100, 1.0), 0);
    EXPECT_EQ(KIsSafeQuotient(1.0, 0.9e-100), 0);
    EXPECT_EQ(KIsSafeQuotient(1.0, INVALID_VALUE), 0);
    EXPECT_EQ(KAreBounded(1e100, -1e100), 1);
    EXPECT_EQ(KAreBounded(1.0, 1.1e100), 0);
    EXPECT_EQ(KAreBounded(-1.1e100, 1.0), 0);
}

}  // namespace
}  // namespace halvorn
