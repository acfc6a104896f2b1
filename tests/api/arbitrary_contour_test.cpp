#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>

#include "CSectionTools.h"
#include "unit/support.h"

namespace {

using namespace test_support;

constexpr double kUnwritten = -77.0;

struct Polyline {
    int isThinWalled, isOpen, torsionMode;
    double thickness;
    Ring points;
    std::vector<double> radii = {};
};

enum Output { kArea, kX, kY, kTorsion, kModulus, kShearX, kShearY, kIxx, kIyy, kIxy };
using Result = std::array<double, 10>;

/// First moments from the centre of gravity.
Moments MomentsOf(const Result& r) {
    return {r[kArea], r[kArea] * r[kX], r[kArea] * r[kY], r[kIxx], r[kIyy], r[kIxy]};
}

Result Calculate(const Polyline& p, int count, CSectionTools& section) {
    Result r;
    r.fill(kUnwritten);
    std::pair<double, double> cdg{kUnwritten, kUnwritten};
    section.CalculContourQuelconqueTOOL(p.isThinWalled, p.isOpen, p.torsionMode, count, p.thickness,
                                        p.points, p.radii, r[kArea], cdg, r[kTorsion], r[kModulus],
                                        r[kShearX], r[kShearY], r[kIxx], r[kIyy], r[kIxy]);
    std::tie(r[kX], r[kY]) = cdg;
    return r;
}

Result Calculate(const Polyline& p, int count) {
    CSectionTools section;
    return Calculate(p, count, section);
}

/// With sharp corners where no radii are given.
Result Calculate(Polyline p) {
    p.radii.resize(p.points.size());
    return Calculate(p, static_cast<int>(p.points.size()));
}

double TubeConstant(double area, double t) {
    const double r = area / (2 * kPi * t);
    return kPi / 2 * (std::pow(r + t / 2, 4) - std::pow(r - t / 2, 4));
}

double TubeModulus(double area, double t) {
    return TubeConstant(area, t) / (area / (2 * kPi * t) + t / 2);
}

/// What a right-angled corner of radius 1, drawn with five chords, takes from area and perimeter.
const double kCornerArea = 1 - 2.5 * std::sin(kPi / 10);
const double kCornerLength = 2 - 10 * std::sin(kPi / 20);

TEST(SolidOutline, MatchesExactIntegralsAndThePushedContour) {
    for (std::uint32_t seed = 1; seed <= 10; ++seed) {
        for (const Ring& base : {RandomStar(seed, 4), RandomSkyline(seed, 6)}) {
            for (const Affine& place : Placements()) {
                for (const Ring& ring : {place * base, Reversed(place * base)}) {
                    SCOPED_TRACE(testing::Message() << "seed " << seed << " " << place.name);
                    CSectionTools section;
                    const int n = static_cast<int>(ring.size());
                    std::vector<double> coords = Coords(ring), radii(ring.size());
                    section.PushContour(n, coords.data(), 1);
                    const Result r = Calculate({0, 0, 0, 0, ring, radii}, n, section);
                    ExpectMoments(MomentsOf(r), ExactMoments(place * base), 2e-13);
                    double x = 0, y = 0;  // a calculation uses a section and leaves it alone
                    section.GetCDG(&x, &y);
                    ExpectNear(x, r[kX], 1e-13, "x", std::hypot(x, y));
                    ExpectNear(y, r[kY], 1e-13, "y", std::hypot(x, y));
                    ExpectNear(section.GetIxx(), r[kTorsion], 1e-10, "J");
                    EXPECT_EQ(r[kShearX], r[kShearY]);
                }
            }
        }
    }
}

TEST(SolidOutline, IsWhatNoWallOrNoThicknessMeans) {
    // Semi-axes of the ellipse of the unit square: a^2 + c^2 = 2/3, a c = 1/pi.
    const double a2 = 1.0 / 3 + std::sqrt(1.0 / 9 - 1 / (kPi * kPi)), c2 = 2.0 / 3 - a2;
    for (const double size : {0.01, 1.0, 10.0}) {  // a bar in metres and in millimetres
        const Result r = Calculate({0, 0, 0, 0, Rectangle(0, 0, size, size)});
        ExpectNear(r[kTorsion], std::pow(size, 4) * 1.5 / (kPi * kPi), 1e-12, "J");
        ExpectNear(r[kModulus], std::pow(size, 3) * kPi / 2 * std::sqrt(a2) * c2, 1e-12, "Wt");
        const double shear = 12 * (3 * c2 + a2) / (40 * c2 + 16 * a2);
        ExpectNear(r[kShearX], size * size * shear, 1e-12, "shear");
    }
    const Ring square = Rectangle(0, 0, 1, 1);
    const Result solid = Calculate({0, 0, 0, 0, square});
    EXPECT_EQ(Calculate({0, 0, 0, 0.1, square}), solid);
    EXPECT_EQ(Calculate({1, 1, 1, 0, square}), solid);
    // Not exactly 0 is a wall, of no area here.
    EXPECT_LT(Calculate({1, 0, 0, 1e-16, square})[kArea], 1e-14);
}

TEST(SolidOutline, RoundsEveryCornerAndLeavesTheEndsOfAnOpenOneSharp) {
    const Ring square = Rectangle(-5, -5, 5, 5);
    const Result closed = Calculate({0, 0, 0, 0, square, {1, 1, 1, 1}});
    EXPECT_NEAR(closed[kArea], 100 - 4 * kCornerArea, 1e-12);
    EXPECT_NEAR(closed[kX], 0, 1e-14);
    EXPECT_NEAR(closed[kIxx], closed[kIyy], 1e-10);
    EXPECT_NEAR(Calculate({0, 1, 0, 0, square, {1, 1, 1, 1}})[kArea], 100 - 2 * kCornerArea, 1e-12);
}

TEST(OpenWall, MatchesItsBoxesInEveryPlacement) {
    const double t = 0.5, e = t / 2, w = 6, h = 10;
    const Ring angle = {{-e, -e}, {w, -e}, {w, e}, {e, e}, {e, h}, {-e, h}};
    const Ring channel = {{w, -e},    {w, e},     {e, e},      {e, h - e},
                          {w, h - e}, {w, h + e}, {-e, h + e}, {-e, -e}};
    const Ring zed = {{-e, -e},   {w, -e},     {w, e},      {e, e},
                      {e, h + e}, {-w, h + e}, {-w, h - e}, {-e, h - e}};
    const struct {
        const char* name;
        Ring line;
        double length;
        int corners;
        Ring outline;
    } cases[] = {
        {"plate", {{0, 0}, {w, 0}}, w, 0, Rectangle(0, -e, w, e)},
        {"collinear points", {{0, 0}, {1, 0}, {4, 0}, {w, 0}}, w, 0, Rectangle(0, -e, w, e)},
        {"angle", {{w, 0}, {0, 0}, {0, h}}, w + h, 1, angle},
        {"channel", {{w, 0}, {0, 0}, {0, h}, {w, h}}, 2 * w + h, 2, channel},
        {"zed", {{-w, h}, {0, h}, {0, 0}, {w, 0}}, 2 * w + h, 2, zed}};
    for (const auto& c : cases) {
        // Both faces together are twice the mid-line: one gains at a corner what the other loses.
        const double torsion = (2 * c.length + 2 * t) * t * t * t / 3, area = c.length * t;
        for (const Affine& place : Placements()) {
            const double k = place.Scale();
            for (const Ring& line : {place * c.line, Reversed(place * c.line)}) {
                SCOPED_TRACE(std::string(c.name) + " " + place.name);
                const Result general = Calculate({1, 1, 1, k * t, line});
                ExpectMoments(MomentsOf(general), ExactMoments(place * c.outline), 2e-13);
                ExpectNear(general[kArea], k * k * area, 1e-12, "area");
                ExpectNear(general[kTorsion], std::pow(k, 4) * torsion, 1e-12, "J");
                ExpectNear(general[kModulus], std::pow(k, 3) * 2 * t * area, 1e-12, "Wt");
                ExpectNear(general[kShearX], k * k * area / 2, 1e-12, "shear");
                EXPECT_EQ(general[kShearX], general[kShearY]);
                const Result tube = Calculate({1, 1, 0, k * t, line});
                ExpectNear(tube[kModulus], std::pow(k, 3) * TubeModulus(area, t), 1e-12, "tube Wt");
                EXPECT_EQ(tube[kTorsion], general[kTorsion]);
            }
        }
        // Every vertex with a radius, the ends too: 12 n points. The mid-line radius becomes 1.
        SCOPED_TRACE(c.name);
        const std::vector<double> radii(c.line.size(), 1 - e);
        const Result rounded = Calculate({1, 1, 1, t, c.line, radii});
        EXPECT_NEAR(rounded[kArea], area, 1e-12);
        const double cut = 2 * c.corners * kCornerLength * t * t * t / 3;
        EXPECT_NEAR(rounded[kTorsion], torsion - cut, 1e-12);
    }
}

TEST(OpenWall, WallsOfASegmentShorterThanAMicrometreKeepTheirThickness) {
    const Result r = Calculate({1, 1, 0, 1e-7, {{0, 0}, {3e-7, 4e-7}}});
    ExpectNear(r[kArea], 5e-14, 1e-12, "area");
    ExpectNear(r[kX], 1.5e-7, 1e-12, "x");
}

TEST(ClosedWall, RectangularTubeMatchesHandCalculation) {
    const double t = 0.5, e = t / 2, w = 6, h = 10;
    const double mean = w * h + t * t, area = 2 * t * (w + h);
    Ring keyhole = Rectangle(-e, -e, w + e, h + e);  // the outer face, then the inner one backwards
    for (const auto& p : {keyhole[0], {e, e}, {e, h - e}, {w - e, h - e}, {w - e, e}, {e, e}}) {
        keyhole.push_back(p);
    }
    for (const Affine& place : Placements()) {
        const double k = place.Scale();
        const Ring line = place * Rectangle(0, 0, w, h);
        for (const Ring& ring : {line, Reversed(line), StartingAt(line, 3)}) {
            SCOPED_TRACE(place.name);
            const Result general = Calculate({1, 0, 1, k * t, ring});
            ExpectMoments(MomentsOf(general), ExactMoments(place * keyhole), 1e-12);
            const double bredt = 4 * mean * mean * t / (2 * (w + h + 2 * t));  // outer perimeter
            ExpectNear(general[kTorsion], std::pow(k, 4) * bredt, 1e-12, "J");
            ExpectNear(general[kModulus], std::pow(k, 3) * 2 * t * mean, 1e-12, "Wt");
            ExpectNear(general[kShearX], k * k * area / 2, 1e-12, "shear");
            EXPECT_EQ(general[kShearX], general[kShearY]);
            const Result tube = Calculate({1, 0, 0, k * t, ring});
            ExpectNear(tube[kTorsion], std::pow(k, 4) * TubeConstant(area, t), 1e-12, "tube J");
            ExpectNear(tube[kModulus], std::pow(k, 3) * TubeModulus(area, t), 1e-12, "tube Wt");
            const Result negative = Calculate({1, 0, 1, -k * t, ring});
            ExpectMoments(MomentsOf(negative), ExactMoments(place * keyhole), 1e-12);
        }
    }
}

TEST(ClosedWall, RoundedTubeUsesTheMidLineRadiusOnBothFaces) {
    const double t = 0.5, side = 10, area = 4 * side * t;
    const double mean = side * side + t * t - 4 * kCornerArea;
    const Ring square = Rectangle(0, 0, side, side);
    for (const Ring& ring : {square, Reversed(square)}) {
        const Result r = Calculate({1, 0, 1, t, ring, {0.75, 0.75, 0.75, 0.75}});
        EXPECT_NEAR(r[kArea], area, 1e-12);
        const double perimeter = 4 * (side + t) - 4 * kCornerLength;
        ExpectNear(r[kTorsion], 4 * mean * mean * t / perimeter, 1e-13, "J");
        ExpectNear(r[kModulus], 2 * t * mean, 1e-13, "Wt");
    }
}

TEST(ClosedWall, CentreOfGravityIsThatOfAllTheOuterFaceEncloses) {
    // The faces of a 3-4-5 triangle are the triangle scaled about its incentre (1, 1), inradius 1.
    const Ring triangle = {{0, 0}, {4, 0}, {0, 3}};
    for (const Ring& ring : {triangle, Reversed(triangle), StartingAt(triangle, 1)}) {
        const Result r = Calculate({1, 0, 1, 0.5, ring});
        EXPECT_NEAR(r[kArea], 6 * (1.25 * 1.25 - 0.75 * 0.75), 1e-13);
        EXPECT_NEAR(r[kX], 1 + 1.25 / 3, 1e-13);
        EXPECT_NEAR(r[kY], 1, 1e-13);
        ExpectNear(r[kTorsion], 4 * std::pow(6 * (1.5625 + 0.5625) / 2, 2) * 0.5 / 15, 1e-13, "J");
    }
}

// A wall too thick for its cell turns its inner face over: no wall, but every value stays the
// formula's, which takes the inner face's orientation for both. All points in one place enclose
// nothing.
TEST(ClosedWall, DegenerateWallsHaveDefinedValues) {
    const Result thick = Calculate({1, 0, 1, 12, Rectangle(100, 100, 110, 120)});
    EXPECT_DOUBLE_EQ(thick[kX], -105);
    EXPECT_DOUBLE_EQ(thick[kY], -110);
    for (const double value : Calculate({1, 0, 1, 0.1, Ring(3, {2, 2})})) EXPECT_EQ(value, 0);
}

TEST(ArbitraryContour, TooFewPointsWriteZerosIntoEveryOutput) {
    const struct {
        const char* name;
        int isThinWalled, count, stored;
        double thickness;
        bool computed;
    } cases[] = {{"solid of two", 0, 2, 4, 0.1, false},
                 {"solid of three", 0, 3, 4, 0.1, true},
                 {"wall of one", 1, 1, 4, 0.1, false},
                 {"wall of two", 1, 2, 4, 0.1, true},
                 {"no thickness, two", 1, 2, 4, 0, false},
                 {"tiny thickness, two", 1, 2, 4, 9e-16, false},
                 {"none", 1, 0, 4, 0.1, false},
                 {"negative count", 1, -3, 4, 0.1, false},
                 {"no points", 1, 4, 0, 0.1, false},
                 {"two points", 0, 1000000, 2, 0, false}};
    for (const auto& c : cases) {
        Polyline p{c.isThinWalled, 1, 0, c.thickness, Rectangle(1, 1, 2, 2), {0, 0, 0, 0}};
        p.points.resize(static_cast<std::size_t>(c.stored));
        const Result r = Calculate(p, c.count);
        EXPECT_EQ(r == Result{}, !c.computed) << c.name;
        for (const double value : r) EXPECT_NE(value, kUnwritten) << c.name;
    }
}

TEST(ArbitraryContour, ReadsCountedPointsAndTakesMissingRadiiForZero) {
    const Ring square = Rectangle(0, 0, 10, 10);
    const std::vector<double> sharp(4);
    EXPECT_DOUBLE_EQ(Calculate({0, 0, 0, 0, square, sharp}, 9)[kArea], 100);
    EXPECT_DOUBLE_EQ(Calculate({0, 0, 0, 0, square, sharp}, 3)[kArea], 50);
    for (const int isThin : {0, 1}) {
        for (const int isOpen : {0, 1}) {
            for (const std::vector<double>& given :
                 {std::vector<double>{}, {2}, {0, 2}, {1, 2, 1}, {1, 2, 1, 2, 9}}) {
                std::vector<double> padded = given;
                padded.resize(4);
                const Polyline whole{isThin, isOpen, 1, 0.5, square, padded};
                EXPECT_EQ(Calculate({isThin, isOpen, 1, 0.5, square, given}, 4),
                          Calculate(whole, 4))
                    << given.size() << " radii";
            }
        }
    }
    EXPECT_NEAR(Calculate({0, 0, 0, 0, square, {1, 0, 1}}, 4)[kArea], 100 - 2 * kCornerArea, 1e-12);
}

TEST(ProcessTolerance, IsSharedAndChangesInteriorOffsets) {
    const Polyline channel{1, 1, 1, 0.5, {{6, 0}, {0, 0}, {0, 10}, {6, 10}}};
    const Result before = Calculate(channel);
    CSectionTools one, other;
    EXPECT_EQ(one.GetTol3D(), 1e-8);
    for (const double tolerance : {-1.0, 0.0, 1e-6, 10.0}) {
        one.SetTol3D(tolerance);
        EXPECT_EQ(other.GetTol3D(), tolerance);
        EXPECT_EQ(Calculate(channel) == before, tolerance < 1) << tolerance;
    }
    one.SetTol3D(1e-8);
    EXPECT_EQ(Calculate(channel), before);
}

}  // namespace
