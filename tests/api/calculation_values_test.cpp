// The seventeen values: formulas, order of writing, the early return.
#include <CSectionTools.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

namespace {

constexpr double kUntouched = -123.5;

// Outputs 1 to 17 at their own numbers.
std::array<double, 18> Values(CSectionTools& section, double dx = 0, double dy = 0) {
    std::array<double, 18> v;
    v.fill(kUntouched);
    section.GetCalculValues(dx, dy, &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8], &v[9],
                            &v[10], &v[11], &v[12], &v[13], &v[14], &v[15], &v[16], &v[17]);
    return v;
}

constexpr double b = 0.2, h = 0.4;

CSectionTools Plate(double x, double y) {
    CSectionTools section;
    std::vector<double> coords = {x, y, x + b, y, x + b, y + h, x, y + h};
    section.PushContour(4, coords.data(), 1);
    return section;
}

TEST(CalculationValues, OfARectangleAreTheTextbooks) {
    for (const double origin : {0.0, -3.0, 50.0}) {
        CSectionTools section = Plate(origin, 2 * origin);
        const auto v = Values(section);
        const double expected[] = {0,
                                   section.GetIxx(),
                                   origin + b / 2,
                                   2 * origin + h / 2,
                                   b * h,
                                   v[6],
                                   v[5],
                                   h * b * b * b / 12,
                                   b * h * h * h / 12,
                                   0,
                                   v[10],
                                   b * h * h / 6,
                                   b * h * h / 6,
                                   h * b * b / 6,
                                   h * b * b / 6,
                                   b * h * h / 4,
                                   h * b * b / 4,
                                   0};
        for (std::size_t i = 1; i <= 17; ++i) {
            EXPECT_NEAR(v[i], expected[i], 1e-9 * (1 + std::abs(expected[i]))) << "output " << i;
        }
        EXPECT_GT(v[10], 0);
    }
}

TEST(CalculationValues, MeasureFibresFromTheShiftedReferenceAndInertiasFromTheCentroid) {
    CSectionTools section = Plate(0, 0);
    const double dx = b / 8, dy = h / 4;
    const auto v = Values(section, dx, dy), centred = Values(section);
    const double ix = b * h * h * h / 12, iy = h * b * b * b / 12;
    EXPECT_NEAR(v[11], ix / (h / 2 + dy), 1e-14);
    EXPECT_NEAR(v[12], ix / (h / 2 - dy), 1e-14);
    EXPECT_NEAR(v[13], iy / (b / 2 + dx), 1e-14);
    EXPECT_NEAR(v[14], iy / (b / 2 - dx), 1e-14);
    for (const std::size_t i : {7U, 8U, 9U, 15U, 16U})
        EXPECT_EQ(v[i], centred[i]) << "output " << i;
}

TEST(CalculationValues, ReturnEarlyWhenAFibreDistanceIsZero) {
    CSectionTools section = Plate(0, 0);
    const std::pair<double, double> shifts[] = {{0, -h / 2}, {0, h / 2}, {-b / 2, 0}, {b / 2, 0}};
    for (const auto& [dx, dy] : shifts) {
        const auto v = Values(section, dx, dy);
        for (std::size_t i = 11; i <= 14; ++i) EXPECT_EQ(v[i], 0) << "output " << i;
        for (std::size_t i = 15; i <= 17; ++i) EXPECT_EQ(v[i], kUntouched) << "output " << i;
        EXPECT_NEAR(v[8], b * h * h * h / 12, 1e-14);
    }
    EXPECT_GT(Values(section, 0, h / 2 - 1e-9)[12], 1e6);  // near, but not 0
}

TEST(CalculationValues, OfAnEmptySectionAreNaNButNotThePlasticModuli) {
    CSectionTools section;
    const auto v = Values(section);
    for (const std::size_t i : {2U, 3U, 7U, 8U, 9U, 11U, 12U, 13U, 14U}) {
        EXPECT_TRUE(std::isnan(v[i])) << "output " << i;
    }
    for (const std::size_t i : {1U, 4U, 5U, 6U, 10U, 15U, 16U, 17U})
        EXPECT_EQ(v[i], 0) << "output " << i;
}

// Sums about the host's origin leave 16 eps A D^2 of each inertia at a distance D, and nothing of
// torsion and plastic moduli but the rounding of the coordinates.
TEST(CalculationValues, KeepTheStatedDigitsFarFromTheOrigin) {
    CSectionTools near = Plate(0, 0);
    const auto exact = Values(near);
    for (double distance = 1; distance < 2e6; distance *= 4) {
        CSectionTools section = Plate(distance, -distance);
        const auto v = Values(section);
        const double d = 2 * distance + b + h, eps = std::ldexp(1.0, -53);
        for (const std::size_t i : {7U, 8U, 9U}) {
            EXPECT_NEAR(v[i], exact[i], 16 * eps * b * h * d * d) << "output " << i;
        }
        for (const std::size_t i : {1U, 5U, 10U, 15U, 16U}) {
            EXPECT_NEAR(v[i], exact[i], 64 * eps * distance * exact[i] / b) << "output " << i;
        }
    }
}

// The profile's own plastic moduli are overwritten by those of its outline; its extra value comes
// back.
TEST(CalculationValues, OfAStandardProfileTakePlasticModuliFromTheOutline) {
    CSectionTools section;
    std::vector<double> outline = {0, 0, b, 0, b, h, 0, h};
    section.PushContourStandard(4, outline.data(), 0, b / 2, h / 2, 1, 2, 3, 4, 5, 6, NAN, 7, 8, 9,
                                10, 1);
    const auto v = Values(section);
    const double expected[] = {0, 4, b / 2, h / 2, 1, 3, 2, 5, 6, 0, 7};
    for (std::size_t i = 1; i <= 10; ++i) EXPECT_NEAR(v[i], expected[i], 1e-14) << "output " << i;
    EXPECT_NEAR(v[15], b * h * h / 4, 1e-15);
    EXPECT_NEAR(v[16], h * b * b / 4, 1e-15);
    EXPECT_EQ(v[17], 10);
}

// What the host receives in outputs 2 and 3 is what outputs 7 to 9 are computed from.
TEST(CalculationValues, AreReadBackFromTheOutputs) {
    CSectionTools section = Plate(1, 2);
    const auto v = Values(section);
    std::array<double, 18> w;
    // Outputs 2 and 3 share one place, which holds yG at the end.
    section.GetCalculValues(0, 0, &w[1], &w[3], &w[3], &w[4], &w[5], &w[6], &w[7], &w[8], &w[9],
                            &w[10], &w[11], &w[12], &w[13], &w[14], &w[15], &w[16], &w[17]);
    EXPECT_NEAR(w[7], v[7] + (v[2] * v[2] - v[3] * v[3]) * v[4], 1e-12);
    EXPECT_EQ(w[8], v[8]);
}

}  // namespace
