// Plastic moduli against exact ones, on rings of every kind, in every position and unit.
#include <limits>

#include "CSectionTools.h"
#include "property/random_rings.h"

namespace {

using namespace test_support;

struct Moduli {
    double x, y;
};

Moduli PlasticModuli(const std::vector<std::pair<Ring, unsigned char>>& contours) {
    CSectionTools section;
    for (const auto& [ring, flag] : contours) {
        std::vector<double> coords = Coords(ring);
        section.PushContour(static_cast<int>(ring.size()), coords.data(), flag);
    }
    Moduli moduli{-1, -1};
    section.ComputeWplasticValues(moduli.x, moduli.y);
    return moduli;
}

void ExpectExact(const Ring& ring, double relative) {
    const Moduli moduli = PlasticModuli({{ring, 1}});
    ExpectNear(moduli.x, static_cast<double>(ExactPlasticModulus(ring, 0, 1)), relative, "Wplx");
    ExpectNear(moduli.y, static_cast<double>(ExactPlasticModulus(ring, 1, 0)), relative, "Wply");
}

std::vector<std::pair<std::string, Ring>> Rings() {
    // An equal-area tee in millimetres, whose axis runs along the flange, and a plate with vertices
    // in the middle of its sides, are rings whose pieces have straight vertices.
    std::vector<std::pair<std::string, Ring>> rings = {
        {"equal-area tee",
         {{0, 100}, {45, 100}, {45, 0}, {55, 0}, {55, 100}, {100, 100}, {100, 110}, {0, 110}}},
        {"plate", {{0, 0}, {30, 0}, {60, 0}, {60, 7}, {60, 20}, {10, 20}, {0, 20}, {0, 11}}},
        {"channel", {{0, 0}, {80, 0}, {80, 11}, {6, 11}, {6, 189}, {80, 189}, {80, 200}, {0, 200}}},
        {"angle", {{0, 0}, {100, 0}, {100, 10}, {10, 10}, {10, 100}, {0, 100}}}};
    for (std::uint32_t seed = 1; seed <= 15; ++seed) {
        const int size = static_cast<int>(seed);
        const Affine tens{"", 10, 0, 0, 10, 0, 0};
        rings.emplace_back("star " + std::to_string(seed), tens * RandomStar(seed, 1 + size));
        rings.emplace_back("grid " + std::to_string(seed), tens * RandomGridRing(seed, 3 * size));
        rings.emplace_back("comb " + std::to_string(seed), tens * RandomComb(seed, 1 + size % 8));
    }
    return rings;
}

// Millimetres: the areas balance to 1e-7 of about 1e4, so the modulus has all its digits. Metres:
// the balance leaves 1e-7 of about 1e-2, and the modulus 1e-10 of itself, more on thin rings.
TEST(PlasticModuli, AreExactInEveryPositionAndUnit) {
    for (const auto& [name, ring] : Rings()) {
        const double size = 1000;
        for (const Affine& place :
             {Affine{"as given", 1, 0, 0, 1, 0, 0}, Affine{"mirrored in x", -1, 0, 0, 1, 0, 0},
              Affine{"mirrored in y", 1, 0, 0, -1, 0, 0}, Affine{"both", -1, 0, 0, -1, 3, 4},
              Turn("turned", 1.0), Turn("turned by a half", test_support::kPi),
              Affine{"shifted", 1, 0, 0, 1, 1000 * size, -1000 * size}}) {
            SCOPED_TRACE(name + ", " + place.name);
            const Ring placed = place * ring;
            ExpectExact(placed, 1e-9);
            ExpectExact(Reversed(placed), 1e-9);
            const Affine metres{"metres", 1e-3, 0, 0, 1e-3, 0, 0};
            ExpectExact(metres * placed, 1e-7);
            if (HasFailure()) return;
        }
    }
}

// A hollow section given as one contour has the net modulus wherever the bridge lies, also when the
// cut runs along it. As a solid with a hole it has that of the filled section.
TEST(PlasticModuli, KeyholeRingGivesTheNetValueSolidAndHoleTheGrossOne) {
    for (int side = 0; side < 4; ++side) {
        for (const double outer : {0.0, 0.3, 0.5, 0.97}) {
            for (const double inner : {0.0, 0.21, 0.5}) {
                const Ring tube = KeyholeTube(100, 100, 5, side, outer, inner);
                for (const Affine& place :
                     {Affine{"", 1, 0, 0, 1, 0, 0}, Affine{"", -1, 0, 0, 1, 7e4, -9e4}}) {
                    SCOPED_TRACE("side " + std::to_string(side) + ", bridge from " +
                                 std::to_string(outer) + " to " + std::to_string(inner));
                    for (const Ring& ring : {place * tube, Reversed(place * tube)}) {
                        const Moduli net = PlasticModuli({{ring, 1}});
                        ExpectNear(net.x, 67750, 1e-9, "Wplx");
                        ExpectNear(net.y, 67750, 1e-9, "Wply");
                    }
                }
                ExpectExact(Turn("", 0.7) * tube, 1e-9);
            }
        }
    }
    const Moduli gross =
        PlasticModuli({{Rectangle(0, 0, 100, 100), 1}, {Rectangle(5, 5, 95, 95), 0}});
    ExpectNear(gross.x, 250000, 1e-9, "Wplx");
    ExpectNear(gross.y, 250000, 1e-9, "Wply");
}

// Flags are weights, and holes have area in the search for the axis only.
TEST(PlasticModuli, AddUpOverContoursWithTheirFlagsAsWeights) {
    const Ring left = Rectangle(0, 0, 10, 40), right = Rectangle(30, 0, 40, 40);
    const Moduli gap = PlasticModuli({{left, 1}, {right, 1}});  // vertical axis in the gap, at 20
    ExpectNear(gap.x, 2 * 10 * 40 * 40 / 4.0, 1e-12, "Wplx");
    ExpectNear(gap.y, 2 * 400 * 15.0, 1e-12, "Wply");
    const Moduli weighted = PlasticModuli({{left, 1}, {right, 255}});
    ExpectNear(weighted.y, 400 * 15.0 * 256, 1e-12, "Wply");
    // The hole moves the horizontal axis of the plate from 20 to 15: 10 (15^2 + 25^2) / 2.
    const Moduli moved = PlasticModuli({{left, 1}, {Rectangle(0, -10, 10, 0), 0}});
    ExpectNear(moved.x, 10 * (15 * 15 + 25 * 25) / 2.0, 1e-9, "Wplx");
}

// None of these is a section; every call returns, and nothing is written outside its arrays.
TEST(PlasticModuli, ReturnOnRingsThatAreNone) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    std::vector<Ring> rings = {{},
                               {{1, 2}},
                               {{1, 2}, {3, 4}},
                               Ring(50, {1, 1}),
                               {{0, 0}, {1, 1}, {2, 2}, {3, 3}},
                               {{0, 0}, {4, 4}, {4, 0}, {0, 4}},
                               {{0, 0}, {4, 0}, {4, 4}, {2, 4}, {2, 9}, {2, 4}, {0, 4}},
                               {{0, 0}, {1, kNaN}, {1, 1}},
                               {{0, 0}, {kInfinity, 0}, {1, 1}, {0, 3}},
                               {{0, 0}, {1e300, 0}, {1e308, 1e308}, {-1e308, 1e308}},
                               {{0, 0}, {1e-320, 0}, {1e-320, 1e-320}}};
    std::mt19937 random(7);
    Ring cloud, spiral;
    for (int i = 0; i < 1000; ++i) cloud.emplace_back(Draw(random, 30), Draw(random, 30));
    for (int i = 0; i < 100000; ++i)
        spiral.emplace_back(i * std::cos(0.01 * i), i * std::sin(0.01 * i));
    rings.push_back(cloud);
    rings.push_back(spiral);
    for (const Ring& ring : rings) {
        const Moduli moduli = PlasticModuli({{ring, 1}});
        EXPECT_FALSE(moduli.x == -1 || moduli.y == -1) << "not written";
    }
    const Moduli pinched =
        PlasticModuli({{{{0, 0}, {1, 0}, {1, 1}, {2, 1}, {2, 2}, {1, 2}, {1, 1}, {0, 1}}, 1}});
    ExpectNear(pinched.x, 1, 1e-12, "two squares that meet at a corner");
}

TEST(PlasticModuli, OfAFineOutlineAreThoseOfItsCircle) {
    Ring circle;
    for (int i = 0; i < 100000; ++i) {
        const double angle = 2 * test_support::kPi * i / 100000;
        circle.emplace_back(5e3 + 100 * std::cos(angle), 100 * std::sin(angle));
    }
    const Moduli moduli = PlasticModuli({{circle, 1}});
    ExpectNear(moduli.x, 4e6 / 3, 1e-8, "Wplx");  // 4 r^3 / 3, less the chords
    ExpectNear(moduli.y, 4e6 / 3, 1e-8, "Wply");
}

}  // namespace
