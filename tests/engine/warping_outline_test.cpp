// The largest stress of torsion and shear where the outline turns softly: vertices that hardly turn
// change nothing, chords stand for their arc.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "warping/stresses.h"
#include "warping_checks.h"

namespace {

using namespace halvorn::engine;
using namespace test_support;
using std::numbers::pi;

WarpingSolution SolutionOf(const Rings& rings, double tolerance) {
    return SolveWarping(RegionOf(Weighted(rings)), Within(tolerance));
}

// A convex polygon with more vertices on its first side and every other one, at parts of it; they
// lie on a parabola that bulges by so much.
Points WithVertices(const Points& corners, const std::vector<double>& parts, double bulge) {
    Points ring;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Point side = corners[(i + 1) % corners.size()] - corners[i];
        ring.push_back(corners[i]);
        if (i % 2 != 0) continue;
        const Point out = 1.0 / std::hypot(side.x, side.y) * Point(side.y, -side.x);
        for (const double s : parts) {
            ring.push_back(corners[i] + s * side + 4.0 * s * (1.0 - s) * bulge * out);
        }
    }
    return ring;
}

// A wall of a thickness over the middle line y = rise * (1 - |x|), x from -1 to 1.
Points Bent(double thickness, double rise) {
    return {{-1, 0}, {0, rise}, {1, 0}, {1, thickness}, {0, thickness + rise}, {-1, thickness}};
}

struct Flat {
    const char* name;
    Points corners;
    double modulus;  // of torsion
    double alongX;   // the largest shear stress of a force of 1 along x
    double thickness;
};

// On straight sides, too, an estimate may fall short of the error by this, relative.
constexpr double kEstimate = 5e-4;

// A change of the outline by a part of the thickness changes the values by five times that part at
// most.
TEST(SoftCorners, HardlyChangeTheLargestStress) {
    const double ofBlock = 8.0 * 0.45736335424 / 0.930060269797;
    for (const Flat& flat : {
             Flat{"block", Rectangle(-2, -1, 4, 2), ofBlock, 1.5 / 8.0, 2.0},
             Flat{"triangle", {{0, 0}, {2, 0}, {1, std::sqrt(3.0)}}, 0.4, 0.0, 1.0},
         }) {
        for (const std::vector<double>& parts : std::vector<std::vector<double>>{
                 {0.5}, {0.45, 0.65}, {0.2, 0.6}, {0.25, 0.5, 0.75}, {0.1, 0.2, 0.5, 0.7, 0.8}}) {
            for (const double bulge : {0.0, 2e-6, -2e-6, 2e-5, 2e-4, -2e-4, 2e-3, -2e-3}) {
                const double slack = 5.0 * std::fabs(bulge) / flat.thickness + kEstimate;
                // In other units, far away, and the other way round.
                const double unit = bulge < 0.0 ? 1000.0 : 1.0;
                Points ring = WithVertices(flat.corners, parts, bulge);
                for (Point& p : ring) p = unit * (p + Point(3.0, -7.0));
                if (bulge < 0.0) std::reverse(ring.begin(), ring.end());
                SCOPED_TRACE(std::string(flat.name) + ", " + std::to_string(parts.size()) +
                             " vertices off by " + std::to_string(bulge));
                const WarpingSolution solution = SolutionOf({{true, ring}}, 1e-4);
                const Estimate modulus = solution.values.torsionModulus;
                const double truth = flat.modulus * std::pow(unit, 3);
                EXPECT_NEAR(modulus.value, truth, modulus.error + slack * truth);
                EXPECT_LT(modulus.error, 5e-3 * truth);
                if (flat.alongX == 0.0) continue;
                const Estimate shear =
                    LargestStresses(solution, {0, 0, 0, unit * unit, 0, 0}).shear.stress;
                EXPECT_NEAR(shear.value, flat.alongX, shear.error + slack * flat.alongX);
                EXPECT_LT(shear.error, 5e-3 * flat.alongX);
            }
        }
    }
}

// The corner that turns into the material raises the stress without bound, but slowly: what is
// stated for it does not follow the mesh.
TEST(SoftCorners, AreSteadyAsTheToleranceFalls) {
    struct Case {
        const char* name;
        Rings rings;
    };
    const Rings squareWithHole = {{true, Rectangle(-50, -50, 100, 100)},
                                  {false, RegularPolygon(16, 40)}};
    for (const Case& c : {
             Case{"bent slab", {{true, Bent(0.06, 0.025)}}},
             Case{"bent wall", {{true, Bent(0.1, 0.15)}}},
             Case{"waist", {{true, WithVertices(Rectangle(0, 0, 100, 50), {0.5}, -1)}}},
             Case{"hole", squareWithHole},
         }) {
        const Estimate best = SolutionOf(c.rings, 1e-7).values.torsionModulus;
        for (const double tolerance : {1e-3, 1e-4, 1e-5}) {
            const Estimate modulus = SolutionOf(c.rings, tolerance).values.torsionModulus;
            EXPECT_NEAR(modulus.value, best.value, modulus.error + best.error)
                << c.name << " " << tolerance;
            EXPECT_LT(modulus.error, 0.015 * best.value) << c.name << " " << tolerance;
        }
    }
}

// Bent by some degrees in its middle, a thin wall twists as a flat one does.
TEST(SoftCorners, HardlyChangeABentWall) {
    const double flat =
        SolutionOf({{true, Rectangle(-1, 0, 2, 0.06)}}, 1e-5).values.torsionModulus.value;
    for (const double rise : {1e-5, 1e-4, 1e-3, 5e-3, 0.025}) {
        const Estimate modulus = SolutionOf({{true, Bent(0.06, rise)}}, 1e-4).values.torsionModulus;
        EXPECT_NEAR(modulus.value, flat, (1e-3 + 0.4 * 2.0 * rise) * flat) << rise;
    }
}

// A block 100 by 50, 33 thick as a wall, whose long sides turn in their middles, into the material
// or out of it, all along or within so much of the middle: as with the corner rounded by a parabola
// over 10 on each side, in many chords.
TEST(SoftCorners, CountAsThoughTheyWereRounded) {
    for (const double within : {50.0, 25.0}) {
        for (const double depth : {-4.0, -1.0, 0.3, 1.0, 2.0, 4.0}) {
            Points sharp, rounded;
            for (const double side : {1.0, -1.0}) {  // bottom, top
                const auto at = [&](double x, double y) { return side * Point(x, y - 25.0); };
                const Point start = at(-within, 0), corner = at(0, depth), end = at(within, 0);
                sharp.insert(sharp.end(), {at(-50, 0), start, corner, end, at(50, 0)});
                rounded.insert(rounded.end(), {at(-50, 0), start});
                for (double s = 0.0; s <= 1.0; s += 0.03125) {
                    const double part = 10.0 / within;
                    rounded.push_back(corner + part * (1.0 - s) * (1.0 - s) * (start - corner) +
                                      part * s * s * (end - corner));
                }
                rounded.insert(rounded.end(), {end, at(50, 0)});
            }
            const double truth = SolutionOf({{true, rounded}}, 1e-5).values.torsionModulus.value;
            const Estimate modulus = SolutionOf({{true, sharp}}, 1e-4).values.torsionModulus;
            const double turn = 2.0 * std::fabs(depth) / within;
            EXPECT_NEAR(modulus.value, truth, (0.005 + 0.1 * turn) * truth)
                << depth << " within " << within;
            EXPECT_LT(modulus.error, 0.015 * truth) << depth << " within " << within;
        }
    }
}

// As many chords as an arc has, its values differ by the square of their angle. The stress in the
// middle of a chord differs by a fifth of the angle itself.
TEST(SoftCorners, OfChordsStandForTheirArc) {
    for (const int n : {16, 24, 48}) {
        const double angle = 2.0 * pi / n;
        const double radius = std::sqrt(angle / std::sin(angle));  // of the same area
        const Rings tube = {{true, RegularPolygon(n, radius)},
                            {false, RegularPolygon(n, 0.8 * radius)}};
        const double truth = 0.5 * pi * (1.0 - std::pow(0.8, 4));
        for (const double tolerance : {1e-4, 1e-6}) {
            const Estimate modulus = SolutionOf(tube, tolerance).values.torsionModulus;
            EXPECT_NEAR(modulus.value, truth, modulus.error + 0.01 * angle * angle * truth) << n;
            EXPECT_LT(modulus.error, 0.05 * angle * truth) << n;
        }
    }
}

}  // namespace
