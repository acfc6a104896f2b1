#include <gtest/gtest.h>

#include <array>
#include <string>

#include "CSectionTools.h"
#include "unit/support.h"

namespace {

using namespace test_support;

constexpr double kUnwritten = -77.0;

struct Polyline {
    int isThinWalled = 0, isOpen = 0, torsionMode = 0;
    double thickness = 0;
    Ring points = {};
    std::vector<double> radii = {};
};

struct Result {
    double area = kUnwritten;
    std::pair<double, double> cdg{kUnwritten, kUnwritten};
    double torsion = kUnwritten, modulus = kUnwritten, shearX = kUnwritten, shearY = kUnwritten,
           ixx = kUnwritten, iyy = kUnwritten, ixy = kUnwritten;

    /// First moments from the centre of gravity.
    Moments AsMoments() const { return {area, area * cdg.first, area * cdg.second, ixx, iyy, ixy}; }
    std::array<double, 10> All() const {
        return {area, cdg.first, cdg.second, torsion, modulus, shearX, shearY, ixx, iyy, ixy};
    }
};

Result Calculate(const Polyline& p, int count) {
    CSectionTools section;
    Result r;
    section.CalculContourQuelconqueTOOL(p.isThinWalled, p.isOpen, p.torsionMode, count, p.thickness,
                                        p.points, p.radii, r.area, r.cdg, r.torsion, r.modulus,
                                        r.shearX, r.shearY, r.ixx, r.iyy, r.ixy);
    return r;
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
                    const Result r = Calculate({0, 0, 0, 0, ring});
                    ExpectMoments(r.AsMoments(), place * ExactMoments(base), 2e-13);
                    CSectionTools section;
                    std::vector<double> coords = Coords(ring);
                    section.PushContour(static_cast<int>(ring.size()), coords.data(), 1);
                    ExpectNear(r.torsion, section.GetIxx(), 1e-10, "J");
                    EXPECT_EQ(r.shearX, r.shearY);
                }
            }
        }
    }
}

TEST(SolidOutline, IsWhatNoWallOrNoThicknessMeans) {
    const Ring square = Rectangle(0, 0, 1, 1);
    const Result solid = Calculate({0, 0, 0, 0, square});
    // Semi-axes of the ellipse of the unit square: a^2 + c^2 = 2/3, a c = 1/pi.
    const double a2 = 1.0 / 3 + std::sqrt(1.0 / 9 - 1 / (kPi * kPi)), c2 = 2.0 / 3 - a2;
    ExpectMoments(solid.AsMoments(), BoxMoments(0, 0, 1, 1), 1e-15);
    ExpectNear(solid.torsion, 1.5 / (kPi * kPi), 1e-14, "J");
    ExpectNear(solid.modulus, kPi / 2 * std::sqrt(a2) * c2, 1e-13, "Wt");
    ExpectNear(solid.shearX, 12 * (3 * c2 + a2) / (40 * c2 + 16 * a2), 1e-13, "shear");
    EXPECT_EQ(Calculate({0, 0, 0, 0.1, square}).All(), solid.All());
    EXPECT_EQ(Calculate({1, 1, 1, 0, square}).All(), solid.All());
    // Not exactly 0 is a wall, of no area here.
    EXPECT_LT(Calculate({1, 0, 0, 1e-16, square}).area, 1e-14);
}

TEST(SolidOutline, RoundsEveryCornerAndLeavesTheEndsOfAnOpenOneSharp) {
    const Ring square = Rectangle(-5, -5, 5, 5);
    const Result closed = Calculate({0, 0, 0, 0, square, {1, 1, 1, 1}});
    EXPECT_NEAR(closed.area, 100 - 4 * kCornerArea, 1e-12);
    EXPECT_NEAR(closed.cdg.first, 0, 1e-14);
    EXPECT_NEAR(closed.ixx, closed.iyy, 1e-10);
    EXPECT_NEAR(Calculate({0, 1, 0, 0, square, {1, 1, 1, 1}}).area, 100 - 2 * kCornerArea, 1e-12);
}

TEST(OpenWall, MatchesItsBoxesInEveryPlacement) {
    const double t = 0.5, e = t / 2, w = 6, h = 10;
    const struct {
        const char* name;
        Ring line;
        double length;
        int corners;
        Moments boxes;
    } cases[] = {
        {"plate", {{0, 0}, {w, 0}}, w, 0, BoxMoments(0, -e, w, e)},
        {"plate of collinear points",
         {{0, 0}, {1, 0}, {4, 0}, {w, 0}},
         w,
         0,
         BoxMoments(0, -e, w, e)},
        {"angle",
         {{w, 0}, {0, 0}, {0, h}},
         w + h,
         1,
         BoxMoments(-e, -e, w, e) + BoxMoments(-e, e, e, h)},
        {"channel",
         {{w, 0}, {0, 0}, {0, h}, {w, h}},
         2 * w + h,
         2,
         BoxMoments(-e, -e, e, h + e) + BoxMoments(e, -e, w, e) + BoxMoments(e, h - e, w, h + e)},
        {"zed",
         {{-w, h}, {0, h}, {0, 0}, {w, 0}},
         2 * w + h,
         2,
         BoxMoments(-e, -e, e, h + e) + BoxMoments(-w, h - e, -e, h + e) + BoxMoments(e, -e, w, e)},
    };
    for (const auto& c : cases) {
        // Both faces together are twice the mid-line: what one side gains at a corner the other
        // loses.
        const double torsion = (2 * c.length + 2 * t) * t * t * t / 3, area = c.length * t;
        for (const Affine& place : Placements()) {
            const double k = std::sqrt(place.Determinant());
            for (const Ring& line : {place * c.line, Reversed(place * c.line)}) {
                SCOPED_TRACE(std::string(c.name) + " " + place.name);
                const Result general = Calculate({1, 1, 1, k * t, line});
                ExpectMoments(general.AsMoments(), place * c.boxes, 2e-13);
                ExpectNear(general.area, k * k * area, 1e-12, "area");
                ExpectNear(general.torsion, std::pow(k, 4) * torsion, 1e-12, "J");
                ExpectNear(general.modulus, std::pow(k, 3) * 2 * t * area, 1e-12, "Wt");
                ExpectNear(general.shearX, k * k * area / 2, 1e-12, "shear");
                EXPECT_EQ(general.shearX, general.shearY);
                const Result tube = Calculate({1, 1, 0, k * t, line});
                ExpectNear(tube.modulus, std::pow(k, 3) * TubeModulus(area, t), 1e-12, "tube Wt");
                EXPECT_EQ(tube.torsion, general.torsion);
            }
        }
        // Every vertex with a radius, the ends too: 12 n points. The mid-line radius becomes 1.
        SCOPED_TRACE(c.name);
        const std::vector<double> radii(c.line.size(), 1 - e);
        const Result rounded = Calculate({1, 1, 1, t, c.line, radii});
        EXPECT_NEAR(rounded.area, area, 1e-12);
        const double cut = 2 * c.corners * kCornerLength * t * t * t / 3;
        EXPECT_NEAR(rounded.torsion, torsion - cut, 1e-12);
        EXPECT_NEAR(rounded.cdg.second, c.boxes.y / c.boxes.area, 0.1);
        EXPECT_EQ(rounded.ixx<c.boxes.yy * 0.9999, c.corners> 1);
    }
}

TEST(OpenWall, WallsOfASegmentShorterThanAMicrometreKeepTheirThickness) {
    const Result r = Calculate({1, 1, 0, 1e-7, {{0, 0}, {3e-7, 4e-7}}});
    ExpectNear(r.area, 5e-14, 1e-12, "area");
    ExpectNear(r.cdg.first, 1.5e-7, 1e-12, "x");
}

TEST(ClosedWall, RectangularTubeMatchesHandCalculation) {
    const double t = 0.5, w = 6, h = 10;
    const Moments outer = BoxMoments(-0.25, -0.25, w + 0.25, h + 0.25);
    const Moments inner = BoxMoments(0.25, 0.25, w - 0.25, h - 0.25);
    const double area = outer.area - inner.area, mean = (outer.area + inner.area) / 2;
    const Moments wall{area,
                       area * w / 2,
                       area * h / 2,
                       outer.yy - inner.yy,
                       outer.xx - inner.xx,
                       outer.xy - inner.xy};
    for (const Affine& place : Placements()) {
        const double k = std::sqrt(place.Determinant());
        const Ring line = place * Rectangle(0, 0, w, h);
        for (const Ring& ring : {line, Reversed(line), StartingAt(line, 3)}) {
            SCOPED_TRACE(place.name);
            const Result general = Calculate({1, 0, 1, k * t, ring});
            ExpectMoments(general.AsMoments(), place * wall, 1e-12);
            const double bredt = 4 * mean * mean * t / (2 * (w + h + 2 * t));  // outer perimeter
            ExpectNear(general.torsion, std::pow(k, 4) * bredt, 1e-12, "J");
            ExpectNear(general.modulus, std::pow(k, 3) * 2 * t * mean, 1e-12, "Wt");
            ExpectNear(general.shearX, k * k * area / 2, 1e-12, "shear");
            EXPECT_EQ(general.shearX, general.shearY);
            const Result tube = Calculate({1, 0, 0, k * t, ring});
            ExpectNear(tube.torsion, std::pow(k, 4) * TubeConstant(area, t), 1e-12, "tube J");
            ExpectNear(tube.modulus, std::pow(k, 3) * TubeModulus(area, t), 1e-12, "tube Wt");
            const Result negative = Calculate({1, 0, 1, -k * t, ring});
            ExpectMoments(negative.AsMoments(), place * wall, 1e-12);
        }
    }
}

TEST(ClosedWall, RoundedTubeUsesTheMidLineRadiusOnBothFaces) {
    const double t = 0.5, side = 10, area = 4 * side * t;
    const double mean = side * side + t * t - 4 * kCornerArea;
    const Ring square = Rectangle(0, 0, side, side);
    for (const Ring& ring : {square, Reversed(square)}) {
        const Result r = Calculate({1, 0, 1, t, ring, {0.75, 0.75, 0.75, 0.75}});
        EXPECT_NEAR(r.area, area, 1e-12);
        const double perimeter = 4 * (side + t) - 4 * kCornerLength;
        ExpectNear(r.torsion, 4 * mean * mean * t / perimeter, 1e-13, "J");
        ExpectNear(r.modulus, 2 * t * mean, 1e-13, "Wt");
    }
}

TEST(ClosedWall, CentreOfGravityIsThatOfAllTheOuterFaceEncloses) {
    // The faces of a 3-4-5 triangle are the triangle scaled about its incentre (1, 1), inradius 1.
    const Ring triangle = {{0, 0}, {4, 0}, {0, 3}};
    for (const Ring& ring : {triangle, Reversed(triangle), StartingAt(triangle, 1)}) {
        const Result r = Calculate({1, 0, 1, 0.5, ring});
        EXPECT_NEAR(r.area, 6 * (1.25 * 1.25 - 0.75 * 0.75), 1e-13);
        EXPECT_NEAR(r.cdg.first, 1 + 1.25 / 3, 1e-13);
        EXPECT_NEAR(r.cdg.second, 1, 1e-13);
        ExpectNear(r.torsion, 4 * std::pow(6 * (1.5625 + 0.5625) / 2, 2) * 0.5 / 15, 1e-13, "J");
    }
}

TEST(ArbitraryContour, TooFewPointsWriteZerosIntoEveryOutput) {
    const struct {
        const char* name;
        int isThinWalled, count, stored;
        double thickness;
        bool computed;
    } cases[] = {
        {"solid of two", 0, 2, 4, 0.1, false},
        {"solid of three", 0, 3, 4, 0.1, true},
        {"wall of one", 1, 1, 4, 0.1, false},
        {"wall of two", 1, 2, 4, 0.1, true},
        {"no thickness, two", 1, 2, 4, 0, false},
        {"tiny thickness, two", 1, 2, 4, 9e-16, false},
        {"none", 1, 0, 4, 0.1, false},
        {"negative count", 1, -3, 4, 0.1, false},
        {"empty vectors", 1, 4, 0, 0.1, false},
        {"vectors of two", 0, 1000000, 2, 0, false},
    };
    for (const auto& c : cases) {
        Polyline p{c.isThinWalled, 1, 0, c.thickness, Rectangle(1, 1, 2, 2), {0, 0, 0, 0}};
        p.points.resize(static_cast<std::size_t>(c.stored));
        p.radii.resize(static_cast<std::size_t>(c.stored));
        const Result r = Calculate(p, c.count);
        const std::array<double, 10> zeros{};
        EXPECT_EQ(r.All() == zeros, !c.computed) << c.name;
        for (const double value : r.All()) EXPECT_NE(value, kUnwritten) << c.name;
    }
}

TEST(ArbitraryContour, ReadsNoFurtherThanTheShorterVector) {
    const Ring square = Rectangle(0, 0, 2, 2);
    EXPECT_DOUBLE_EQ(Calculate({0, 0, 0, 0, square, {0, 0, 0, 0}}, 9).area, 4);
    EXPECT_DOUBLE_EQ(Calculate({0, 0, 0, 0, square, {0, 0, 0}}, 4).area, 2);
    EXPECT_DOUBLE_EQ(Calculate({0, 0, 0, 0, square, {0, 0, 0, 0, 0, 0}}, 6).area, 4);
    EXPECT_DOUBLE_EQ(Calculate({0, 0, 0, 0, square, {0, 0, 0, 0}}, 3).area, 2);
}

TEST(ArbitraryContour, StraightAndDoubledVerticesWithARadiusChangeNothing) {
    const Ring base = {{0, 0}, {3, 1}, {6, 2}, {6, 2}, {2, 9}};
    for (const Affine& place : Placements()) {
        SCOPED_TRACE(place.name);
        const double k = std::sqrt(place.Determinant());
        const Result sharp = Calculate({0, 0, 0, 0, place * base});
        const Result r = Calculate({0, 0, 0, 0, place * base, {0, k, k, k, 0}});
        ExpectMoments(r.AsMoments(), sharp.AsMoments(), 1e-8);
        for (const double value : r.All()) EXPECT_TRUE(std::isfinite(value));
    }
}

TEST(ProcessTolerance, IsSharedAndChangesOnlyInteriorOffsets) {
    const Polyline channel{1, 1, 1, 0.5, {{6, 0}, {0, 0}, {0, 10}, {6, 10}}};
    const Polyline plate{1, 1, 1, 0.5, {{6, 0}, {0, 0}}};
    const auto before = Calculate(channel).All(), plateBefore = Calculate(plate).All();
    CSectionTools one, other;
    EXPECT_EQ(one.GetTol3D(), 1e-8);
    for (const double tolerance : {-1.0, 0.0, 1e-6, 10.0}) {
        one.SetTol3D(tolerance);
        EXPECT_EQ(other.GetTol3D(), tolerance);
        EXPECT_EQ(Calculate(channel).All() == before, tolerance < 1) << tolerance;
        EXPECT_EQ(Calculate(plate).All(), plateBefore) << tolerance;
    }
    one.SetTol3D(1e-8);
    EXPECT_EQ(Calculate(channel).All(), before);
}

TEST(ProcessTolerance, CalculationsLeaveTheSectionAlone) {
    CSectionTools section;
    std::vector<double> coords = {0, 0, 3, 0, 0, 3};
    section.PushContour(3, coords.data(), 1);
    const double torsion = section.GetIxx();
    Result r;
    section.CalculContourQuelconqueTOOL(1, 1, 0, 2, 0.1, {{0, 0}, {5, 0}}, {0, 0}, r.area, r.cdg,
                                        r.torsion, r.modulus, r.shearX, r.shearY, r.ixx, r.iyy,
                                        r.ixy);
    double x = 0, y = 0;
    section.GetCDG(&x, &y);
    EXPECT_DOUBLE_EQ(x, 1);
    EXPECT_DOUBLE_EQ(y, 1);
    EXPECT_EQ(section.GetIxx(), torsion);
}

}  // namespace
