// What torsion and shear do not depend on, and that their bounds stay honest whatever stops the
// solution.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "random_sections.h"
#include "shapes/profiles.h"
#include "warping/part_solution.h"
#include "warping_checks.h"

namespace {

using namespace halvorn::engine;
using namespace test_support;

struct Similarity {
    double scale = 1.0;
    double angle = 0.0;
    Point shift;  // after the rest

    Point operator()(const Point& p) const {
        const double c = std::cos(angle), s = std::sin(angle);
        return scale * Point(c * p.x - s * p.y, s * p.x + c * p.y) + shift;
    }
    Rings operator()(Rings rings) const {
        for (auto& [isSolid, ring] : rings) {
            std::transform(ring.begin(), ring.end(), ring.begin(), *this);
        }
        return rings;
    }
    // The values that the similar section has. Intervals turn to intervals that contain them.
    WarpingValues operator()(WarpingValues v) const {
        const double c = std::cos(angle), s = std::sin(angle), power = std::pow(scale, 4);
        v.torsionConstant = {power * v.torsionConstant.lower, power * v.torsionConstant.upper};
        const Bracket x = Inverse(v.shearAreaX), y = Inverse(v.shearAreaY), xy = v.shearCoupling;
        const auto turned = [&](double fx, double fy, double fxy) {
            const double middle = fx * x.Middle() + fy * y.Middle() + fxy * xy.Middle();
            const double half = std::fabs(fx) * x.HalfWidth() + std::fabs(fy) * y.HalfWidth() +
                                std::fabs(fxy) * xy.HalfWidth();
            const double square = scale * scale;
            return Bracket{(middle - half) / square, (middle + half) / square};
        };
        v.shearAreaX = Inverse(turned(c * c, s * s, -2 * c * s));
        v.shearAreaY = Inverse(turned(s * s, c * c, 2 * c * s));
        v.shearCoupling = turned(c * s, -c * s, c * c - s * s);
        const Point centre = (*this)({v.shearCentreX.value, v.shearCentreY.value});
        const double ex = scale * v.shearCentreX.error, ey = scale * v.shearCentreY.error;
        v.shearCentreX = {centre.x, std::fabs(c) * ex + std::fabs(s) * ey};
        v.shearCentreY = {centre.y, std::fabs(s) * ex + std::fabs(c) * ey};
        v.warpingConstant.value *= std::pow(scale, 6);
        v.warpingConstant.error *= std::pow(scale, 6);
        return v;
    }
};

Bracket Span(const Estimate& estimate) {
    return {estimate.value - estimate.error, estimate.value + estimate.error};
}

// With `slack` on either side, absolute.
void ExpectOverlap(const char* what, const Bracket& a, const Bracket& b, double slack) {
    EXPECT_LE(a.lower, a.upper) << what;
    EXPECT_LE(b.lower, b.upper) << what;
    EXPECT_LE(std::max(a.lower, b.lower), std::min(a.upper, b.upper) + slack)
        << what << ": " << a.lower << " to " << a.upper << " and " << b.lower << " to " << b.upper;
}

// That both can be true of one section, whose coordinates are rounded by `rounding` of its values.
void ExpectOneSection(const WarpingValues& a, const WarpingValues& b, double rounding) {
    EXPECT_EQ(a.parts, b.parts);
    EXPECT_EQ(a.voids, b.voids);
    EXPECT_EQ(a.pinches, b.pinches);
    ASSERT_EQ(a.isOnePart, b.isOnePart);
    const double torsion = a.torsionConstant.Middle();
    ExpectOverlap("J", a.torsionConstant, b.torsionConstant, rounding * torsion);
    if (!a.isOnePart) return;
    const double area = std::max(a.shearAreaX.Middle(), a.shearAreaY.Middle());
    const double weakest = std::min(a.shearAreaX.lower, a.shearAreaY.lower);
    ExpectOverlap("Asx", a.shearAreaX, b.shearAreaX, rounding * area);
    ExpectOverlap("Asy", a.shearAreaY, b.shearAreaY, rounding * area);
    ExpectOverlap("1/Asxy", a.shearCoupling, b.shearCoupling, rounding / weakest);
    const double length = std::sqrt(area);
    ExpectOverlap("xs", Span(a.shearCentreX), Span(b.shearCentreX), 10 * rounding * length);
    ExpectOverlap("ys", Span(a.shearCentreY), Span(b.shearCentreY), 10 * rounding * length);
    ExpectOverlap("Cw", Span(a.warpingConstant), Span(b.warpingConstant),
                  10 * rounding * area * area * area);
}

struct NamedRings {
    const char* name;
    Rings rings;
};

std::vector<NamedRings> Sections() {
    const auto steps = shapes::ArcDivision::StepsPerQuarter(6);
    const Rings box = Hollow(60, 100, 3);
    Points keyhole = box[0].second;
    keyhole.push_back(keyhole[0]);
    const Points& hole = box[1].second;
    for (const std::size_t i : {0U, 3U, 2U, 1U, 0U}) keyhole.push_back(hole[i]);
    return {
        {"rolled I", {{true, shapes::DrawISection({100, 55, 4.1, 5.7, 7}, steps).solid}}},
        {"angle", {{true, shapes::DrawAngle({90, 60, 6, 7, 3.5}, steps).solid}}},
        {"box", box},
        {"keyhole", {{true, keyhole}}},
        {"lipped channel",
         {{true,
           {{0, 0},
            {50, 0},
            {50, 15},
            {49, 15},
            {49, 1},
            {1, 1},
            {1, 99},
            {49, 99},
            {49, 85},
            {50, 85},
            {50, 100},
            {0, 100}}}}},
        {"island",
         {{true, Rectangle(0, 0, 50, 40)},
          {false, Rectangle(5, 5, 40, 30)},
          {true, Rectangle(15, 10, 20, 20)}}},
    };
}

TEST(WarpingInvariance, ScaleTurnAndPlaceChangeNothing) {
    for (const auto& [name, rings] : Sections()) {
        SCOPED_TRACE(name);
        const WarpingValues values = Solve(rings, Within(1e-5));
        const double size = 100.0;
        for (const Similarity& similarity :
             {Similarity{1e-9, 0.0, {}}, Similarity{1e12, 0.0, {}}, Similarity{1.0, 0.3, {}},
              Similarity{0.001, 2.0, {5, 7}}, Similarity{1.0, 0.0, {1e6 * size, -1e6 * size}}}) {
            SCOPED_TRACE(std::to_string(similarity.scale) + ", " +
                         std::to_string(similarity.angle));
            // Far away coordinates keep ten digits of the size, and so eight of a wall's cube.
            ExpectOneSection(similarity(values), Solve(similarity(rings), Within(1e-5)), 2e-8);
        }
        const Similarity twofold{0x1p40, 0.0, {}};
        const WarpingValues same = Solve(twofold(rings), Within(1e-5));
        EXPECT_DOUBLE_EQ(same.torsionConstant.lower, std::ldexp(values.torsionConstant.lower, 160));
        EXPECT_DOUBLE_EQ(same.torsionConstant.upper, std::ldexp(values.torsionConstant.upper, 160));
        EXPECT_DOUBLE_EQ(same.shearAreaX.lower, std::ldexp(values.shearAreaX.lower, 80));
    }
}

TEST(WarpingInvariance, AMirrorTurnsTheSigns) {
    for (const auto& [name, rings] : Sections()) {
        SCOPED_TRACE(name);
        Rings mirrored = rings;
        for (auto& [isSolid, ring] : mirrored) {
            for (Point& p : ring) p.x = -p.x;
        }
        WarpingValues values = Solve(rings);
        values.shearCoupling = {-values.shearCoupling.upper, -values.shearCoupling.lower};
        values.shearCentreX.value = -values.shearCentreX.value;
        const WarpingValues image = Solve(mirrored);
        ExpectOneSection(values, image, 1e-10);
        if (!values.arePrincipalAxes || !values.isOnePart) continue;
        EXPECT_NEAR(values.monosymmetryX.value, image.monosymmetryX.value,
                    values.monosymmetryX.error + image.monosymmetryX.error + 1e-8);
        EXPECT_NEAR(values.monosymmetryY.value, -image.monosymmetryY.value,
                    values.monosymmetryY.error + image.monosymmetryY.error + 1e-8);
    }
}

TEST(WarpingInvariance, OneSectionIsWhatItIsHoweverItIsDrawn) {
    const auto sections = Sections();
    ExpectOneSection(Solve(sections[2].rings), Solve(sections[3].rings), 1e-10);
    // The lipped channel in touching and in overlapping pieces.
    Rings pieces = {{true, Rectangle(0, 0, 1, 100)}};
    for (const double y : {0.0, 99.0}) pieces.emplace_back(true, Rectangle(1, y, 49, 1));
    for (const double y : {0.0, 85.0}) pieces.emplace_back(true, Rectangle(49, y, 1, 15));
    ExpectOneSection(Solve(sections[4].rings), Solve(pieces), 1e-10);
    // Parts that keep apart, and that touch in a point only.
    const Rings two = {{true, Rectangle(0, 0, 2, 1)}, {true, Rectangle(3, 0, 2, 1)}};
    const Rings pinched = {{true, Rectangle(0, 0, 2, 1)}, {true, Rectangle(2, 1, 2, 1)}};
    const Bracket one = Solve({two[0]}).torsionConstant;
    for (const Rings& rings : {two, pinched}) {
        const WarpingValues values = Solve(rings);
        EXPECT_EQ(values.parts, 2U);
        EXPECT_FALSE(values.isOnePart);
        ExpectOverlap("J", values.torsionConstant, {2 * one.lower, 2 * one.upper}, 0.0);
    }
    EXPECT_EQ(Solve(pinched).pinches, 1U);
}

TEST(WarpingBounds, OfAPoorSolutionContainABetterOne) {
    for (const auto& [name, rings] : Sections()) {
        SCOPED_TRACE(name);
        const WarpingValues fine = Solve(rings, Within(1e-7));
        EXPECT_EQ(fine.status, WarpingStatus::Reached);
        EXPECT_LE(fine.torsionConstant.HalfWidth(), 1e-7 * fine.torsionConstant.Middle());
        int asked = 0;
        WarpingOptions few = Within(1e-9), stopped = Within(1e-9), halfway = Within(1e-9);
        few.mostUnknowns = 50;
        stopped.isInterrupted = [] { return true; };
        halfway.isInterrupted = [&] { return ++asked > 2; };
        const std::pair<WarpingOptions, WarpingStatus> runs[] = {
            {Within(1e-2), WarpingStatus::Reached},
            {few, WarpingStatus::TooMany},
            {stopped, WarpingStatus::Interrupted},
            {halfway, WarpingStatus::Interrupted}};
        for (const auto& [options, status] : runs) {
            const WarpingValues values = Solve(rings, options);
            EXPECT_EQ(values.status, status);
            ExpectOneSection(fine, values, 0.0);
            EXPECT_LE(values.torsionConstant.lower, fine.torsionConstant.lower * (1 + 1e-10));
            EXPECT_GE(values.torsionConstant.upper, fine.torsionConstant.upper * (1 - 1e-10));
        }
    }
}

TEST(WarpingBounds, OfPoissonsRatioFollowItsQuadraticLaw) {
    const Rings angle = Sections()[1].rings;
    std::array<WarpingValues, 3> at;
    const std::array<double, 3> poisson = {0.0, 0.2, 0.5};  // k is 0, 1/6, 1/3
    for (std::size_t i = 0; i < 3; ++i) at[i] = Solve(angle, Within(1e-5, poisson[i]));
    const auto compliances = [](const WarpingValues& v) {
        return std::array{1 / v.shearAreaX.Middle(), 1 / v.shearAreaY.Middle(),
                          v.shearCoupling.Middle()};
    };
    const auto c0 = compliances(at[0]), c1 = compliances(at[1]), c2 = compliances(at[2]);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(4 * (c1[i] - c0[i]), c2[i] - c0[i], 2e-4 * c0[0]);
        EXPECT_TRUE(i == 2 || c2[i] > c0[i]);
    }
    EXPECT_DOUBLE_EQ(at[0].shearCentreX.value, at[2].shearCentreX.value);
}

TEST(WarpingInput, IsRefusedWhereItHasNoSolution) {
    const Rings square = {{true, Rectangle(0, 0, 1, 1)}};
    EXPECT_THROW(Solve({{true, Rectangle(0, 0, 1, 1)}, {false, Rectangle(0, 0, 1, 1)}}),
                 WarpingError);
    // The warping constant, a length to the power of 6, must be a number.
    for (const double scale : {1e-52, 1e52}) {
        EXPECT_THROW(Solve(Similarity{scale, 0.0, {}}(square)), WarpingError) << scale;
        const WarpingValues values = Solve(Similarity{std::sqrt(scale), 0.0, {}}(square));
        EXPECT_GT(values.warpingConstant.value, 0.0);
    }
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double wrong : {nan, -1.0, 0.0, 0.11, 0.9e-9}) {
        EXPECT_THROW(Solve(square, Within(wrong)), std::invalid_argument) << wrong;
    }
    for (const double wrong : {nan, -0.01, 0.51}) {
        EXPECT_THROW(Solve(square, Within(1e-4, wrong)), std::invalid_argument) << wrong;
    }
}

// Of stresses that differ from the true one by a gradient and by a balanced field: only then is the
// distance of the bounds the energy of their difference.
void ExpectHypercircle(const Energies& energies) {
    const double bounds[] = {energies.torsionUpper - energies.torsionLower,
                             energies.shearUpper[0][0] - energies.shearLower[0][0],
                             energies.shearUpper[1][1] - energies.shearLower[1][1]};
    const double scale[] = {energies.torsionUpper, energies.shearUpper[0][0],
                            energies.shearUpper[1][1]};
    for (std::size_t i = 0; i < 3; ++i) {
        double difference = 0.0;
        for (const auto& gaps : energies.gaps) difference += gaps[i];
        EXPECT_NEAR(bounds[i], difference, 1e-10 * scale[i]) << i;
        EXPECT_GE(difference, 0.0);
    }
}

TEST(WarpingBounds, AreAsFarApartAsTheTwoStresses) {
    for (const auto& [name, rings] : Sections()) {
        SCOPED_TRACE(name);
        for (const double angle : {0.0, 0.5}) {
            const Region region = RegionOf(Weighted(Similarity{1.0, angle, {}}(rings)));
            for (const Part& part : region.parts) {
                for (const double tolerance : {0.1, 1e-4}) {
                    ExpectHypercircle(SolvePart(part, Within(tolerance)).energies);
                }
            }
        }
    }
}

constexpr unsigned kSeed = 20262;
constexpr int kRounds = 40;

bool IsFinite(const WarpingValues& v) {
    const double sum = v.torsionConstant.upper - v.torsionConstant.lower + v.torsionModulus.value +
                       v.torsionModulus.error + v.shearAreaX.upper + v.shearAreaY.upper +
                       v.shearCoupling.lower + v.shearCoupling.upper + v.shearCentreX.error +
                       v.shearCentreY.error + v.warpingConstant.value + v.warpingConstant.error;
    return std::isfinite(sum) && v.torsionConstant.lower > 0.0;
}

TEST(WarpingBounds, OfRandomSectionsOverlapAcrossTurnScaleAndEffort) {
    RandomSections sections(kSeed);
    int solved = 0, capped = 0;
    for (int round = 0; round < kRounds * kFamilies; ++round) {
        const auto family = static_cast<Family>(round % kFamilies);
        const Rings rings = sections.Make(family);
        if (rings.empty() || RegionOf(Weighted(rings)).IsEmpty()) continue;
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", round " + std::to_string(round));
        WarpingOptions options = Within(1e-3);
        options.mostUnknowns = 20000;
        const WarpingValues values = Solve(rings, options);
        EXPECT_TRUE(IsFinite(values));
        ++solved;
        capped += values.status == WarpingStatus::TooMany ? 1 : 0;
        options.mostUnknowns = 200;
        const WarpingValues few = Solve(rings, options);
        EXPECT_TRUE(IsFinite(few));
        // What slivers mean hangs on roundings.
        if (family == kSlivers || family == kTouching) continue;
        ExpectOneSection(values, few, 1e-9);
        const Similarity similarity{round % 2 == 0 ? 1e-3 : 1.0, 0.1 + round, {}};
        ExpectOneSection(similarity(values), Solve(similarity(rings), options), 1e-7);
    }
    EXPECT_GT(solved, kRounds * kFamilies / 2);
    EXPECT_LT(capped, solved / 2);
}

}  // namespace
