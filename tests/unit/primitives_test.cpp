#include "kernel/intersections.h"
#include "kernel/polygon_area.h"
#include "kernel/vectors.h"
#include "unit/support.h"

namespace halvorn {
namespace {

using namespace test_support;

TEST(KernelPrimitives, AnglesAreSignedAndZeroForShortVectors) {
    struct {
        KPoint a, b;
        double angle;
    } const cases[] = {
        {{1, 0}, {0, 1}, kPi / 2},      {{0, 1}, {1, 0}, -kPi / 2}, {{2, 0}, {-3, 0}, kPi},
        {{3, 0}, {2, -2}, -kPi / 4},    {{0, 0}, {1, 0}, 0.0},      {{1, 0}, {0, 0}, 0.0},
        {{1.1e-6, 0}, {0, 1}, kPi / 2}, {{0.9e-6, 0}, {0, 1}, 0.0}, {{0, 1}, {-0.9e-6, 0}, 0.0},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(KVectorAngle(&c.a, &c.b), c.angle, 1e-15)
            << c.a.x << "," << c.a.y << " to " << c.b.x << "," << c.b.y;
    }
}

TEST(KernelPrimitives, LengthsVanishBelowTheirLimits) {
    const KPoint origin{0, 0}, at51{6e-51, -7e-51}, at49{3e-50, 4e-50};
    EXPECT_EQ(KDistance(&origin, &at51), 0.0);
    EXPECT_DOUBLE_EQ(KDistance(&origin, &at49), 5e-50);
    const KPoint shorter{0.6e-6, 0.7e-6}, longer{0.8e-6, 0.7e-6};
    EXPECT_EQ(KVectorNorm(&shorter), 0.0);
    EXPECT_DOUBLE_EQ(KVectorNorm(&longer), std::sqrt(1.13) * 1e-6);
    EXPECT_TRUE(KPointsEqualTol({0, 0}, {1, -1}, 1.0));  // per axis, inclusive
    EXPECT_FALSE(KPointsEqualTol({0, 0}, {0, 1.0000001}, 1.0));
}

TEST(KernelPrimitives, PolygonAreaIsPositiveForClockwiseRings) {
    const std::vector<double> clockwise = {0, 0, 0, 1, 1, 1, 1, 0};
    EXPECT_EQ(KPolygonSignedArea(clockwise.data(), 4), 1.0);
    for (int n = -1; n < 3; ++n) EXPECT_EQ(KPolygonSignedArea(clockwise.data(), n), 0.0) << n;
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {  // sizes 3 to 10
        Ring ring = RandomStar(seed, 3);
        ring.resize(3 + seed % 8);
        const std::vector<double> coords = Coords(ring);
        EXPECT_EQ(KPolygonSignedArea(coords.data(), static_cast<int>(ring.size())),
                  -ExactMoments(ring).area)
            << "seed " << seed;
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
        {"nearly parallel", {0, 0}, {1, 0}, {0, -1}, {1, -1 + 0x1p-40}, 1, {0x1p40, 0}},
        {"parallel", {0, 0}, {1, 1}, {0, 1}, {1, 2}, 0, {}},
        {"no line", {1, 1}, {1, 1}, {0, 1}, {1, 0}, 0, {}},
        {"out of range", {-1e101, 0}, {1e101, 0}, {0, -1}, {0, 1}, 0, {}},
        {"not a number", {INVALID_VALUE, 0}, {1, 0}, {0, -1}, {0, 1}, 0, {}},
    };
    for (const auto& c : cases) {
        KPoint out{7, 7};
        ASSERT_EQ(KLineIntersection(&c.a, &c.b, &c.c, &c.d, &out), c.status) << c.name;
        EXPECT_TRUE(c.status == 0 ? std::isnan(out.x) && std::isnan(out.y)
                                  : out.x == c.out.x && out.y == c.out.y)
            << c.name;
    }
    EXPECT_TRUE(KIsSafeQuotient(-1e100, -1e-100) && KAreBounded(1e100, -1e100));
    EXPECT_FALSE(KIsSafeQuotient(1.1e100, 1.0) || KIsSafeQuotient(1.0, 0.9e-100));
    EXPECT_FALSE(KAreBounded(1.0, 1.1e100) || KAreBounded(-1.1e100, 1.0));
}

}  // namespace
}  // namespace halvorn
