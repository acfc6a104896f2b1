#include <gtest/gtest.h>

#include <array>

#include "contour/equivalent_ellipse.h"
#include "contour/fillets.h"
#include "contour/offset.h"
#include "contour/ring_integrals.h"
#include "numeric/process_state.h"
#include "unit/support.h"

namespace halvorn {
namespace {

using namespace test_support;

std::vector<point2D> Points(const Ring& ring) {
    std::vector<point2D> points;
    for (const auto& [x, y] : ring) points.push_back({x, y});
    return points;
}

int Count(const std::vector<point2D>& points) {
    return static_cast<int>(points.size());
}

double Distance(const point2D& p, const point2D& q) {
    return std::hypot(p.x - q.x, p.y - q.y);
}

TEST(RingIntegrals, AreExactOnIntegerRingsWithTheSignOfTheOrientation) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        const int size = 1 + static_cast<int>(seed % 5);
        for (const Ring& base : {RandomStar(seed, size), RandomSkyline(seed, size)}) {
            const Moments exact = ExactMoments(base);
            for (const double sign : {1.0, -1.0}) {
                SCOPED_TRACE(testing::Message() << "seed " << seed << " orientation " << sign);
                const auto ring = Points(sign > 0 ? base : Reversed(base));
                const int n = Count(ring);
                EXPECT_EQ(ContourSignedArea(n, ring.data()), sign * exact.area);
                const auto [first, second] = ContourFirstMoments(n, ring.data());
                EXPECT_DOUBLE_EQ(first, -sign * exact.x);
                EXPECT_DOUBLE_EQ(second, sign * exact.y);
                double ixx, iyy, ixy;
                ContourSecondMoments(n, ring.data(), &ixx, &iyy, &ixy);
                EXPECT_DOUBLE_EQ(ixx, -sign * exact.yy);
                EXPECT_DOUBLE_EQ(iyy, -sign * exact.xx);
                EXPECT_DOUBLE_EQ(ixy, -sign * exact.xy);
            }
        }
    }
}

TEST(RingIntegrals, ProductMomentOfAlmostVerticalEdgesKeepsItsDigits) {
    // Turned by pi in floating point, two edges are vertical but for 1e-14.
    const Ring box = Rectangle(0, 0, 100, 200);
    for (const double angle : {kPi, kPi / 2, 1e-15, 1e-9, 3 * kPi / 2}) {
        const Affine turn = Turn("", angle);
        const auto ring = Points(turn * box);
        double ixx, iyy, ixy;
        ContourSecondMoments(4, ring.data(), &ixx, &iyy, &ixy);
        EXPECT_NEAR(ixy, -(turn * BoxMoments(0, 0, 100, 200)).xy, 1e-6) << angle;  // of 1e8
    }
}

TEST(RingIntegrals, PerimeterIncludesTheClosingEdge) {
    const auto ring = Points({{0, 0}, {3, 0}, {3, 4}});
    EXPECT_EQ(ContourPerimeter(3, ring.data()), 12.0);
    EXPECT_EQ(ContourPerimeter(2, ring.data()), 6.0);
    EXPECT_EQ(ContourPerimeter(0, ring.data()), 0.0);
}

TEST(EquivalentEllipse, RecoversAnEllipseAndItsTorsionAndShear) {
    struct {
        double a, b, relative;
    } const cases[] = {{3, 2, 1e-14},      {1000, 10, 1e-14}, {0.05, 0.03, 1e-12}, {1, 1, 1e-7},
                       {0.01, 0.01, 1e-7}, {50, 50, 1e-7},    {1e4, 1e-3, 1e-6}};
    for (const auto& [a, b, relative] : cases) {
        SCOPED_TRACE(testing::Message() << a << " x " << b);
        const double area = kPi * a * b, polar = area * (a * a + b * b) / 4;
        double major = 0, minor = 0;
        EquivalentEllipse(area, polar, &major, &minor);
        ExpectNear(major, a, relative, "a");
        ExpectNear(minor, b, relative, "b");
        ExpectNear(EllipseTorsionConstant(area, polar), kPi * std::pow(a * b, 3) / (a * a + b * b),
                   1e-14, "J");
        ExpectNear(EllipseTorsionModulus(area, polar), kPi / 2 * a * b * b, relative, "Wt");
        const double shear = 12 * (3 * b * b + a * a) / (40 * b * b + 16 * a * a);
        ExpectNear(EllipseShearCoefficientX(area, polar), shear, relative, "shear");
        EXPECT_EQ(EllipseShearCoefficientX(area, polar), EllipseShearCoefficientY(area, polar));
    }
}

TEST(EquivalentEllipse, TellsARoundedCircleFromNoEllipseAtAll) {
    struct {
        const char* name;
        double area, fraction;  // of the circle's polar moment
        bool defined;
    } const cases[] = {
        {"rounding below a circle, large", 1e4 * kPi, 1 - 1e-11, true},
        {"too small a polar moment, large", 1e4 * kPi, 1 - 1e-9, false},
        {"too small, but within the absolute limit", 1e-8 * kPi, 0.5, true},
        {"too small, unit", kPi, 1 - 1e-6, false},
        {"no area", 0.9e-10, 1, false},
        {"hardly an area", 1.1e-9, 1, true},
        {"no polar moment", 2, 0, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const double polar = c.fraction * c.area * c.area / (2 * kPi);
        double a = -1, b = -1;
        EquivalentEllipse(c.area, polar, &a, &b);
        if (c.defined) {
            ExpectNear(a, std::sqrt(2 * polar / c.area), 1e-6, "a");
            ExpectNear(b, c.area / (kPi * a), 1e-14, "b");
        } else {
            EXPECT_TRUE(a == 0 && b == 0) << a << " " << b;
            EXPECT_EQ(EllipseShearCoefficientX(c.area, polar), 0.0);
            EXPECT_EQ(EllipseTorsionModulus(c.area, polar), 0.0);
        }
    }
    EXPECT_EQ(EllipseTorsionConstant(1, 0.99e-10), 0.0);
    EXPECT_DOUBLE_EQ(EllipseTorsionConstant(1, 1.01e-10), 1 / (4 * kPi * kPi * 1.01e-10));
}

TEST(EquivalentEllipse, TubeModulusIsThePolarMomentOverTheOuterRadius) {
    for (const auto& [r, t] : {std::pair{10.0, 1.0}, {1.0, 1.9}, {0.05, 0.004}, {1.0, 2.0}}) {
        const double outer = r + t / 2, inner = r - t / 2;
        const double polar = kPi / 2 * (std::pow(outer, 4) - std::pow(inner, 4));
        ExpectNear(TubeTorsionModulus(2 * kPi * r * t, t), polar / outer, 1e-13, "Wt");
    }
}

TEST(Fillets, TangentPointsLieWhereTheArcTouchesTheEdges) {
    for (const double angle : {0.2, 1.0, kPi / 2, 2.5, -0.2, -1.0, -kPi / 2, -2.5}) {
        for (const double start : {0.0, 0.7, 2.0, 4.0}) {
            SCOPED_TRACE(testing::Message() << "angle " << angle << " from " << start);
            const point2D vertex{3, -2}, e{std::cos(start), std::sin(start)},
                f{std::cos(start + angle), std::sin(start + angle)};
            const point2D prev{vertex.x + 4 * e.x, vertex.y + 4 * e.y};
            const point2D next{vertex.x + 5 * f.x, vertex.y + 5 * f.y};
            const double arcRadius = 0.35, tangent = arcRadius / std::tan(std::abs(angle) / 2);
            point2D centre, t1, t2;
            double turn;
            const bool fits = CornerFillet(0.2, 0.25, prev, vertex, next, &centre, &t1, &t2, &turn);
            EXPECT_TRUE(fits);
            EXPECT_EQ(turn, angle < 0 ? -1.0 : 1.0);
            EXPECT_LT(Distance(t1, {vertex.x + tangent * e.x, vertex.y + tangent * e.y}), 1e-13);
            EXPECT_LT(Distance(t2, {vertex.x + tangent * f.x, vertex.y + tangent * f.y}), 1e-13);
            EXPECT_NEAR(Distance(centre, t1), arcRadius, 1e-13);
            EXPECT_NEAR(Distance(centre, t2), arcRadius, 1e-13);
            EXPECT_NEAR(Distance(centre, vertex), std::hypot(arcRadius, tangent), 1e-13);
        }
    }
}

TEST(Fillets, ReportsARadiusThatOverrunsItsEdgesAndKeepsDegenerateCorners) {
    struct {
        const char* name;
        double radius;
        point2D prev, next;
        bool fits, kept;
    } const cases[] = {
        {"fits", 0.99, {1, 0}, {0, 1}, true, false},
        {"first edge too short", 0.99, {0.9, 0}, {0, 1}, false, false},
        {"second edge too short", 0.99, {1, 0}, {0, 0.9}, false, false},
        {"sharp", 1e-15, {1, 0}, {0, 1}, false, true},
        {"negative", -1, {1, 0}, {0, 1}, false, true},
        {"spike", 0.5, {1, 0}, {2, 0}, false, true},
        {"double point before", 0.5, {0, 0}, {0, 1}, false, true},
        {"neighbour within 1e-6", 0.5, {1, 0}, {0, 0.9e-6}, false, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        point2D centre, t1, t2;
        double turn = 0;
        EXPECT_EQ(CornerFillet(0, c.radius, c.prev, {0, 0}, c.next, &centre, &t1, &t2, &turn),
                  c.fits);
        EXPECT_EQ(turn, 1.0);
        for (const point2D& p : {centre, t1, t2}) EXPECT_EQ(p.x == 0 && p.y == 0, c.kept);
    }
}

TEST(Fillets, RoundContourWritesSixPointsForEveryVertexWithARadius) {
    const auto square = Points(Rectangle(0, 0, 10, 10));
    // A right-angled corner of radius R loses R^2 - 5/2 R^2 sin(pi/10).
    const double loss = 1 - 2.5 * std::sin(kPi / 10);
    const struct {
        const char* name;
        bool isOpen;
        std::array<double, 4> radii;
        int m;
        double area;
    } cases[] = {
        {"sharp", false, {0, 0, 0, 0}, 4, 100},
        {"one round", false, {0, 2, 0, 0}, 9, 100 - 4 * loss},
        {"all round", false, {1, 1, 1, 1}, 24, 100 - 4 * loss},
        {"open keeps its ends sharp", true, {1, 1, 1, 1}, 24, 100 - 2 * loss},
        {"within 1e-15 is sharp", false, {0.9e-15, 0, 0, 0}, 4, 100},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<point2D> out(24);
        int m = -1;
        RoundContour(4, c.isOpen, 0, c.radii.data(), square.data(), &m, out.data());
        ASSERT_EQ(m, c.m);
        EXPECT_NEAR(ContourSignedArea(m, out.data()), c.area, 1e-12);
    }
    std::vector<point2D> arc(9);
    int m = 0;
    RoundContour(4, false, 1, cases[1].radii.data(), square.data(), &m, arc.data());
    for (std::size_t k = 1; k <= 6; ++k) {  // radius 2 + 1/2 about (7.5, 2.5), equal steps
        const double angle = -kPi / 2 + double(k - 1) * kPi / 10;
        const point2D expected{7.5 + 2.5 * std::cos(angle), 2.5 + 2.5 * std::sin(angle)};
        EXPECT_LT(Distance(arc[k], expected), 1e-14) << k;
    }
}

TEST(Fillets, StraightAndDoubledVerticesWithARadiusBecomeSixCopies) {
    for (const Affine& place : Placements()) {
        SCOPED_TRACE(place.name);
        const auto points = Points(place * Ring{{0, 0}, {7, 3}, {14, 6}, {14, 6}, {0, 20}});
        const double size = Distance(points[0], points[4]);
        const double radii[] = {0, size / 9, size / 9, size / 9, 0};
        std::vector<point2D> out(30);
        int m = 0;
        RoundContour(5, false, 0, radii, points.data(), &m, out.data());
        ASSERT_EQ(m, 20);
        for (std::size_t k = 0; k < 18; ++k) {
            EXPECT_LT(Distance(out[1 + k], points[1 + k / 6]), 3e-8 * size) << k;  // false for NaN
        }
    }
}

TEST(Offset, CornerPointsLieHalfAThicknessFromBothSegments) {
    for (double angle = -3.0; angle <= 3.0; angle += 0.5) {
        SCOPED_TRACE(angle);
        const point2D vertex{5, 1}, d{std::cos(angle), std::sin(angle)};
        point2D a, b;
        OffsetVertex(0.3, {2, 1}, vertex, {5 + 2 * d.x, 1 + 2 * d.y}, &a, &b);
        for (const auto& [side, distance] : {std::pair{a, 0.15}, {b, -0.15}}) {
            EXPECT_NEAR(side.y - 1, distance, 1e-12);
            EXPECT_NEAR(d.x * (side.y - 1) - d.y * (side.x - 5), distance, 1e-12);
        }
    }
}

TEST(Offset, EndsDoublesReversalsAndShortSegments) {
    const double e = 1e-7;  // a segment that has no angle still has a direction
    struct {
        const char* name;
        point2D prev, vertex, next, offset;
    } const cases[] = {
        {"start", {0, 0}, {0, 0}, {3, 4}, {-0.8, 0.6}},
        {"end", {-3, -4}, {0, 0}, {0, 0}, {-0.8, 0.6}},
        {"start of a short segment", {0, 0}, {0, 0}, {e, 0}, {0, 1}},
        {"between short segments", {-e, 0}, {0, 0}, {e, 0}, {0, 1}},
        {"lone point", {0, 0}, {0, 0}, {0, 0}, {0, 0}},
        {"reversal", {-1, 0}, {0, 0}, {-2, 0}, {0, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        point2D a, b;
        OffsetVertex(2, c.prev, c.vertex, c.next, &a, &b);
        EXPECT_LT(Distance(a, c.offset), 1e-12) << a.x << "," << a.y;
        EXPECT_LT(Distance(b, {-c.offset.x, -c.offset.y}), 1e-12) << b.x << "," << b.y;
    }
}

TEST(Offset, NormalsShorterThanTheToleranceAreNotScaled) {
    for (const auto& [tolerance, corner] : {std::pair{1.41, 0.5}, {1.42, std::sqrt(0.5)}}) {
        Tol3D = tolerance;  // the normals of a right angle sum to a length of sqrt(2)
        point2D a, b;
        OffsetVertex(1, {-1, 0}, {0, 0}, {0, 1}, &a, &b);
        Tol3D = 1e-8;
        EXPECT_LT(Distance(a, {-corner, corner}), 1e-12) << tolerance << ": " << a.x << "," << a.y;
    }
}

TEST(Offset, OuterFaceOfAClosedRingIsBForEitherOrientation) {
    const Ring square = Rectangle(10, 10, 14, 14);
    for (const Ring& ring : {square, Reversed(square), StartingAt(square, 2)}) {
        const auto points = Points(ring);
        std::vector<point2D> a(4), b(4);
        OffsetPolyline(4, false, 1, points.data(), a.data(), b.data());
        EXPECT_NEAR(std::abs(ContourSignedArea(4, a.data())), 9, 1e-12);
        EXPECT_NEAR(std::abs(ContourSignedArea(4, b.data())), 25, 1e-12);
    }
}

}  // namespace
}  // namespace halvorn
