// The largest stresses, and stresses all over a section, against closed forms.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "warping/stresses.h"
#include "warping_checks.h"

namespace {

using namespace halvorn::engine;
using namespace test_support;
using std::numbers::pi;

constexpr double kAny = std::numeric_limits<double>::quiet_NaN();
// A disc or tube of so many chords, of the true area, about differs by this from the circle.
constexpr int kChords = 192;
constexpr double kPolygonError = 1e-3;
constexpr double kHole = 0.95;  // radius within the tube of radius 1

Rings Round(double hole = 0.0) {
    const double r = std::sqrt((2.0 * pi / kChords) / std::sin(2.0 * pi / kChords));
    Rings rings = {{true, RegularPolygon(kChords, r)}};
    if (hole > 0.0) rings.emplace_back(false, RegularPolygon(kChords, hole * r));
    return rings;
}

Rings Block(double width, double height) {
    return {{true, Rectangle(-0.5 * width, -0.5 * height, width, height)}};
}

WarpingSolution SolutionOf(const Rings& rings, double poisson = 0.0) {
    return SolveWarping(RegionOf(Weighted(rings)), Within(1e-4, poisson));
}

// Under a force of 1, on the inner side of the tube at the neutral axis: the solution of the disc
// (S. P. Timoshenko and J. N. Goodier, Theory of Elasticity, 1970), with a square of the radius
// replaced by 1 + m^2 + m^2 / r^2.
double ShearOfTube(double poisson) {
    const double inertia = pi / 4.0 * (1.0 - std::pow(kHole, 4)), m = kHole * kHole;
    const double k = (3.0 + 2.0 * poisson) / (8.0 * (1.0 + poisson) * inertia);
    return k * (2.0 + m - (1.0 - 2.0 * poisson) / (3.0 + 2.0 * poisson) * m);
}

struct StressCase {
    const char* name;
    Rings rings;
    double poisson;
    SectionForces forces;  // N, Mx, My, Vx, Vy, T
    double shear;          // the largest, in truth
    Point place;           // of it; kAny: anywhere
    double slack;          // relative: what the truth is off
};

TEST(WarpingStress, LargestShearIsThatOfClosedForms) {
    const double polar = 0.5 * pi * (1.0 - std::pow(kHole, 4));
    const double modulus = 8.0 * 0.45736335424 / 0.930060269797;  // of a rectangle of 2 by 4
    ClaimedErrors claimed;
    for (const StressCase& c : {
             StressCase{"Vy", Block(2, 5), 0, {0, 0, 0, 0, 7, 0}, 1.05, {kAny, 0}, 0},
             StressCase{"Vx", Block(2, 5), 0, {0, 0, 0, -7, 0, 0}, 1.05, {0, kAny}, 0},
             // Both turn round the right side in the same sense, or round the left.
             StressCase{
                 "Vy, T", Block(2, 4), 0, {0, 0, 0, 0, 8, 3}, 1.5 + 3 / modulus, {1, 0}, 1e-9},
             StressCase{
                 "Vy, -T", Block(2, 4), 0, {0, 0, 0, 0, 8, -3}, 1.5 + 3 / modulus, {-1, 0}, 1e-9},
             StressCase{
                 "Vx, T", Block(4, 2), 0, {0, 0, 0, 8, 0, 3}, 1.5 + 3 / modulus, {0, -1}, 1e-9},
             StressCase{"disc", Round(), 0, {0, 0, 0, 0, 1, 0}, 1.5 / pi, {0, 0}, kPolygonError},
             StressCase{"disc, nu = 0.3",
                        Round(),
                        0.3,
                        {0, 0, 0, 1, 0, 0},
                        3.6 / 2.6 / pi,
                        {0, 0},
                        kPolygonError},
             StressCase{"tube",
                        Round(kHole),
                        0,
                        {0, 0, 0, 0, 1, 0},
                        ShearOfTube(0),
                        {kAny, 0},
                        kPolygonError},
             StressCase{"tube, nu = 0.3",
                        Round(kHole),
                        0.3,
                        {0, 0, 0, 1, 0, 0},
                        ShearOfTube(0.3),
                        {0, kAny},
                        kPolygonError},
             StressCase{"tube, T",
                        Round(kHole),
                        0,
                        {0, 0, 0, 0, 0, -3},
                        3 / polar,
                        {kAny, kAny},
                        kPolygonError},
         }) {
        SCOPED_TRACE(c.name);
        const Stresses s = LargestStresses(SolutionOf(c.rings, c.poisson), c.forces);
        claimed.Check("shear", c.name, s.shear.stress, c.shear, c.slack * c.shear);
        EXPECT_LT(s.shear.stress.error, 0.015 * c.shear);
        claimed.Check("von Mises", c.name, s.vonMises.stress, std::sqrt(3.0) * c.shear,
                      2.0 * c.slack * c.shear);
        for (const auto& [at, expected] :
             {std::pair(s.shear.place.x, c.place.x), std::pair(s.shear.place.y, c.place.y)}) {
            if (!std::isnan(expected)) {
                EXPECT_NEAR(at, expected, 0.05);
            }
        }
    }
}

TEST(WarpingStress, LargestNormalStressIsAtACorner) {
    const WarpingSolution solution = SolutionOf(Block(2, 4));
    for (const double sign : {1.0, -1.0}) {
        const SectionForces forces = {8 * sign, 16 * sign, -8 * sign, 0, 0, 0};
        const Stresses s = LargestStresses(solution, forces);
        EXPECT_NEAR(s.normal.stress.value, sign * (1 + 16 / (2 * 16 / 6.0) + 8 / (4 * 4 / 6.0)),
                    1e-12);
        EXPECT_NEAR(s.vonMises.stress.value, std::fabs(s.normal.stress.value), 1e-12);
        EXPECT_NEAR(s.normal.place.x, -1, 1e-12);
        EXPECT_NEAR(s.normal.place.y, 2, 1e-12);
    }
    // A place on an axis is 0, not what rounding leaves of it.
    EXPECT_EQ(LargestStresses(SolutionOf(Round()), {0, 1, 0, 0, 0, 0}).normal.place.x, 0.0);
}

// Narrow brackets alone leave the stress of a long rectangle 4 % off.
TEST(WarpingStress, TorsionModulusIsAboutAsGoodAsTheBrackets) {
    ClaimedErrors claimed;
    for (const auto& [width, modulus] :
         {std::pair(200.0, 66.4565837079), std::pair(10.0, 3.12325037457 / 0.999999755692)}) {
        const Estimate estimate = SolutionOf(Block(width, 1)).values.torsionModulus;
        EXPECT_LT(estimate.error, 1.5e-3 * modulus) << width;
        claimed.Check("Wt", std::to_string(width), estimate, modulus, 1e-9 * modulus);
    }
}

Rings Plated(const Points& ring) {
    return {{true, ring}};
}

// The modulus and the stress search the same: outline, arcs of what is left out, mean of chords.
TEST(WarpingStress, TorsionModulusIsTheTorqueOverTheLargestShear) {
    constexpr double kTorque = 1e5;
    ClaimedErrors claimed;
    for (const auto& [name, rings, modulus] : {
             // The largest is on the arc within the material; solved by spectral elements.
             std::tuple("tube, wall 6", Hollow(100, 100, 6), 92369.0),
             std::tuple("tube, wall 4", Hollow(100, 100, 4), 62056.0),
             std::tuple("angle", Plated({{0, 0}, {9, 0}, {9, 1}, {1, 1}, {1, 9}, {0, 9}}), kAny),
             std::tuple("Z", Plated({{0, 0}, {1, 0}, {1, 9}, {7, 9}, {7, 10}, {0, 10}}), kAny),
             std::tuple("acute", Plated({{0, 0}, {5, 8}, {10, 0}, {6, 0}, {5, 2}, {4, 0}}), kAny),
             std::tuple("disc of 20 chords", Plated(RegularPolygon(20, 5)), kAny),
         }) {
        const WarpingSolution solution = SolutionOf(rings);
        const Estimate& found = solution.values.torsionModulus;
        const Estimate shear = LargestStresses(solution, {0, 0, 0, 0, 0, kTorque}).shear.stress;
        EXPECT_NEAR(kTorque / shear.value / found.value, 1.0, 1e-4) << name;
        EXPECT_LT(found.error, 0.01 * found.value) << name;
        if (!std::isnan(modulus)) claimed.Check("Wt", name, found, modulus, 3e-5 * modulus);
    }
}

// A plate with a fin: the largest shear is on the arc about the corner between them.
TEST(WarpingStress, ArcsAboutSharpCornersAreSearched) {
    ClaimedErrors claimed;
    for (const double far : {0.0, 1e5}) {
        Rings rings = {{true, Rectangle(far, 0, 44.5, 166.3)},
                       {true, Rectangle(far + 44.5, 92.7, 20.1, 5.5)}};
        const SectionForces forces = {0, 0, 0, -9137, 705, -4281};
        const PeakStress shear = LargestStresses(SolutionOf(rings), forces).shear;
        claimed.Check("shear", "fin", shear.stress, 3.0208, 1.5e-4);
        EXPECT_NEAR(shear.place.x - far, 52.15, 0.1);
        EXPECT_NEAR(shear.place.y, 95.45, 0.01);
    }
}

// Round a hole of few sides the stress of the drawn outline has no bound, that of the hole has.
TEST(WarpingStress, IsSteadyRoundHolesOfFewSides) {
    for (const int sides : {15, 16, 20, 24}) {
        const Rings rings = {{true, Rectangle(-50, -50, 100, 100)},
                             {false, RegularPolygon(sides, 25)}};
        const auto largest = [&](double tolerance) {
            const Region region = RegionOf(Weighted(rings));
            return LargestStresses(SolveWarping(region, Within(tolerance)), {0, 0, 0, 0, 1e3, 1e5})
                .shear.stress;
        };
        const Estimate finest = largest(1e-7);
        for (const double tolerance : {1e-3, 1e-4, 1e-6}) {
            const Estimate coarse = largest(tolerance);
            EXPECT_NEAR(coarse.value, finest.value, coarse.error + finest.error) << sides;
            EXPECT_LT(coarse.error, (tolerance < 1e-3 ? 0.005 : 0.06) * coarse.value) << sides;
        }
    }
}

// Large triangles of high order: between the points of a lattice the stress is larger by percents.
TEST(WarpingStress, ErrorCoversWhatLiesBetweenThePointsOfTheSearch) {
    std::vector<std::pair<Points, SectionForces>> cases = {
        {{{70.1, 74.9}, {-90.2, -27.7}, {-97.3, 36.8}},
         {-2034, -70045, -90390, 2979, -8634, -67218}},
        {{{-16.6464, -86.6321}, {-82.7701, 79.1001}, {97.7274, 29.6164}}, {0, 0, 0, 0, 0, 1e6}},
        {{{63.0, -85.3}, {98.2, -42.2}, {60.1, 53.7}}, {0, 0, 0, 677, -6157, 0}},
    };
    std::mt19937 random(20);
    const auto unit = [&] { return static_cast<double>(random() % 2001U) / 1e3 - 1.0; };
    while (cases.size() < 20) {
        const Points ring = {{unit(), unit()}, {unit(), unit()}, {unit(), unit()}};
        if (Cross(ring[1] - ring[0], ring[2] - ring[0]) < 0.3) continue;
        cases.push_back({ring, {unit(), unit(), unit(), 3 * unit(), 3 * unit(), unit()}});
    }
    ClaimedErrors claimed;
    for (const auto& [ring, forces] : cases) {
        const Rings rings = Plated(ring);
        const WarpingSolution fine = SolveWarping(RegionOf(Weighted(rings)), Within(1e-7));
        const WarpingSolution solution = SolutionOf(rings);
        const Stresses truth = LargestStresses(fine, forces), s = LargestStresses(solution, forces);
        const std::string name = "corner at " + std::to_string(ring[0].x);
        const auto check = [&](const char* what, const Estimate& found, const Estimate& exact) {
            EXPECT_LT(found.error, 0.05 * found.value) << what;
            claimed.Check(what, name, found, exact.value, exact.error + 1e-5 * exact.value);
        };
        check("shear", s.shear.stress, truth.shear.stress);
        check("von Mises", s.vonMises.stress, truth.vonMises.stress);
        check("Wt", solution.values.torsionModulus, fine.values.torsionModulus);
    }
}

TEST(WarpingStress, EvenStressIsAtACornerOfTheOutline) {
    const WarpingSolution solution =
        SolutionOf({{true, Rectangle(-8, -2, 16, 4)}, {true, Rectangle(-5, -10, 10, 20)}});
    for (const double sign : {1.0, -1.0}) {
        // Along the upper or the lower edge, whichever is in tension.
        const PeakStress bent = LargestStresses(solution, {0, sign, 0, 0, 0, 0}).normal;
        EXPECT_GT(bent.stress.value, 0.0);
        const Stresses even = LargestStresses(solution, {sign, 0, 0, 0, 0, 0});
        EXPECT_EQ(even.shear.stress.value, 0.0);
        for (const auto& [at, y] :
             {std::pair(bent.place, sign * 10), std::pair(even.normal.place, -10.0),
              std::pair(even.vonMises.place, -10.0)}) {
            EXPECT_NEAR(at.x, -5, 1e-9);
            EXPECT_NEAR(at.y, y, 1e-9);
        }
    }
}

// At the ridge of a slab, a soft corner, about which no shear counts.
TEST(WarpingStress, VonMisesIsNoLessThanTheNormalStress) {
    const WarpingSolution slab = SolutionOf({{true, {{0, 0}, {20, 0}, {20, 2}, {10, 3}, {0, 2}}}});
    const Stresses bent = LargestStresses(slab, {0, 1, 0, 0, 0, 0});
    EXPECT_EQ(bent.vonMises.stress.value, std::fabs(bent.normal.stress.value));
    EXPECT_EQ(bent.vonMises.place.x, 10.0);
}

// A positive torque runs up the inner face of the web, a negative one up the outer.
TEST(WarpingStress, TorqueAddsOnOneFaceOfAWeb) {
    constexpr double kWall = 0.05;
    const WarpingSolution channel = SolutionOf({{true,
                                                 {{0, 0},
                                                  {0.6, 0},
                                                  {0.6, kWall},
                                                  {kWall, kWall},
                                                  {kWall, 1 - kWall},
                                                  {0.6, 1 - kWall},
                                                  {0.6, 1},
                                                  {0, 1}}}});
    const PeakStress plain = LargestStresses(channel, {0, 0, 0, 0, 1, 0}).shear;
    const double torque =
        0.05 * plain.stress.value * channel.values.torsionConstant.Middle() / kWall;
    for (const double sign : {1.0, -1.0}) {
        const PeakStress both = LargestStresses(channel, {0, 0, 0, 0, 1, sign * torque}).shear;
        EXPECT_NEAR(both.stress.value, 1.05 * plain.stress.value, 0.01 * plain.stress.value);
        EXPECT_NEAR(both.place.x, sign > 0 ? kWall : 0.0, 1e-9);
        EXPECT_NEAR(both.place.y, 0.5, 0.1);
    }
}

// Its lattice meets the middle of each wall, and shear sums to the force.
TEST(WarpingStress, FieldHasThePeakAndSumsToTheForce) {
    for (const double width : {3.0, 0.02}) {
        const Rings rings = Block(width, 3);
        const StressField field = StressFieldOf(SolutionOf(rings), {0, 4, 0, 6, 0, 0});
        EXPECT_LE(field.points.size(), 300000U);
        double force = 0.0, area = 0.0;
        for (const auto& [a, b, c] : field.triangles) {
            const Point &p = field.points[Slot(a)], &q = field.points[Slot(b)],
                        &r = field.points[Slot(c)];
            const double part = 0.5 * Cross(q - p, r - p);
            EXPECT_GT(part, 0.0);
            area += part;
            force +=
                part * (field.shear[Slot(a)] + field.shear[Slot(b)] + field.shear[Slot(c)]) / 3.0;
        }
        EXPECT_NEAR(area, 3 * width, 1e-9 * width);
        EXPECT_NEAR(force, 6.0, 0.1);  // chords below a parabola
        EXPECT_NEAR(*std::max_element(field.shear.begin(), field.shear.end()), 3 / width,
                    1e-6 / width);
        for (std::size_t i = 0; i < field.points.size(); ++i) {
            ASSERT_NEAR(field.normal[i], 4 * field.points[i].y / (width * 27 / 12), 1e-9 / width);
        }
    }
}

// Of forces at once: the parts add up, and what is asked of a node is what the field has there.
TEST(WarpingStress, PointsHaveTheStressesOfClosedForms) {
    const SectionForces forces = {48, 80, -24, 0, 36, 0};
    const Points within = {{0, 0}, {0.5, 1}, {-1, 2}, {1, -1.5}, {0.3, 2}, {1 + 3.9e-4, 0}};
    for (const Point by : {Point(0, 0), Point(3, -1), Point(7e3, -9e3)}) {
        const Rings block = {{true, Rectangle(by.x - 1, by.y - 2, 2, 4)}};
        const WarpingSolution solution = SolutionOf(block);
        Points at;
        for (const Point& p : within) at.push_back(p + by);
        const std::vector<PointStress> stresses = StressesAt(solution, forces, at);
        for (std::size_t i = 0; i < within.size(); ++i) {
            const auto& [x, y] = within[i];
            // The last is beside the outline, but no farther than it may be.
            const double normal = 48 / 8.0 + 80 * y / (32 / 3.0) - 24 * x / (8 / 3.0);
            const double parabola = 1.5 * 36 / 8.0 * (1 - y * y / 4);
            EXPECT_NEAR(stresses[i].normal, normal, 1e-7) << i;
            EXPECT_NEAR(stresses[i].shearX, 0, 0.02) << i;  // no Poisson's ratio, a parabola
            EXPECT_NEAR(stresses[i].shearY, parabola, 0.02) << i;
            EXPECT_NEAR(stresses[i].vonMises, std::hypot(normal, std::sqrt(3) * stresses[i].shearY),
                        1e-3);
        }
        const Point away[] = {by + Point(1 + 4.1e-4, 0), by + Point(0, -2.001), by + Point(9, 9)};
        for (const PointStress& s : StressesAt(solution, forces, {away[0], away[1], away[2]})) {
            EXPECT_TRUE(std::isnan(s.normal) && std::isnan(s.shearX) && std::isnan(s.vonMises));
        }
    }
    // A torque turns counter-clockwise: T r / J across the radius, nothing in a hole.
    const WarpingSolution tube = SolutionOf(Round(0.5));
    const double polar = 0.5 * pi * (1 - 0.0625);
    for (const double angle : {0.1, 2.0, 4.0}) {
        for (const double r : {0.55, 0.75, 0.9}) {  // off the corners of chords
            const Point p = r * Point(std::cos(angle), std::sin(angle));
            const PointStress s = StressesAt(tube, {0, 0, 0, 0, 0, 3}, {p})[0];
            EXPECT_NEAR(s.shearX, -3 * p.y / polar, 0.01);
            EXPECT_NEAR(s.shearY, 3 * p.x / polar, 0.01);
            EXPECT_TRUE(std::isnan(StressesAt(tube, forces, {(0.4 / r) * p})[0].normal));
        }
    }
    const SectionForces all = {5, 1, 2, 3, 4, 6};
    const StressField field = StressFieldOf(tube, all);
    const std::vector<PointStress> again = StressesAt(tube, all, field.points);
    for (std::size_t i = 0; i < again.size(); ++i) {
        ASSERT_NEAR(again[i].normal, field.normal[i], 1e-9);
        ASSERT_NEAR(again[i].shearX, field.shears[i].x, 1e-9) << i;
        ASSERT_NEAR(again[i].shearY, field.shears[i].y, 1e-9) << i;
        ASSERT_NEAR(again[i].vonMises, field.vonMises[i], 1e-9);
    }
}

}  // namespace
