#include "contour/contour_integrals.h"
#include "contour/equivalent_ellipse.h"
#include "contour/fillets.h"
#include "contour/offset_polyline.h"
#include "numeric/process_wide.h"
#include "unit/support.h"

namespace halvorn {
namespace {

using namespace test_support;

std::vector<point2D> Points(const Ring& ring) {
    std::vector<point2D> points;
    for (const auto& [x, y] : ring) points.push_back({x, y});
    return points;
}

double Distance(const point2D& p, const point2D& q) {
    return std::hypot(p.x - q.x, p.y - q.y);
}

TEST(RingIntegrals, CarryTheSignOfTheOrientation) {
    for (std::uint32_t seed = 1; seed <= 30; ++seed) {
        const int size = 1 + static_cast<int>(seed % 5);
        for (const Ring& base :
             {RandomStar(seed, size), RandomSkyline(seed, size), Rectangle(0, 0, 100, 200)}) {
            for (const Affine& place : Placements()) {
                if (place.e > 1e6) continue;  // about the origin, distance costs digits
                for (const double sign : {1.0, -1.0}) {
                    SCOPED_TRACE(testing::Message() << "seed " << seed << " " << place.name);
                    const auto ring = Points(sign > 0 ? place * base : Reversed(place * base));
                    const int n = static_cast<int>(ring.size());
                    const auto [first, second] = ContourFirstMoments(n, ring.data());
                    double ixx, iyy, ixy;
                    ContourSecondMoments(n, ring.data(), &ixx, &iyy, &ixy);
                    ExpectMoments({sign * ContourSignedArea(n, ring.data()), -sign * first,
                                   sign * second, -sign * ixx, -sign * iyy, -sign * ixy},
                                  ExactMoments(place * base), 1e-13);
                }
            }
        }
    }
}

TEST(RingIntegrals, PerimeterIncludesTheClosingEdge) {
    const auto ring = Points({{0, 0}, {3, 0}, {3, 4}});
    EXPECT_EQ(ContourPerimeter(3, ring.data()), 12.0);
    EXPECT_EQ(ContourPerimeter(0, ring.data()), 0.0);
}

TEST(EquivalentEllipse, RecoversAnEllipseAndItsTorsionAndShear) {
    struct {
        double a, b, relative;  // near a circle the root halves the digits
    } const cases[] = {{3, 2, 1e-14}, {1000, 10, 1e-14},  {0.05, 0.03, 1e-12},
                       {1, 1, 1e-7},  {0.01, 0.01, 1e-7}, {1e4, 1e-3, 1e-6}};
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
        {"rounding below a circle", 1e4 * kPi, 1 - 1e-11, true},
        {"too small a polar moment", 1e4 * kPi, 1 - 1e-9, false},
        {"too small, within the absolute limit", 1e-6 * kPi, 0.5, true},
        {"no area", 0.9e-10, 1, false},
        {"hardly an area", 1.1e-9, 1, true},
        {"too short an axis", 3e-10, 1, false},
        {"no polar moment", 2, 0, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const double polar = c.fraction * c.area * c.area / (2 * kPi);
        double a = -1, b = -1;
        EquivalentEllipse(c.area, polar, &a, &b);
        ExpectNear(a, c.defined ? std::sqrt(2 * polar / c.area) : 0, 1e-6, "a");
        ExpectNear(b, c.defined ? c.area / (kPi * a) : 0, 1e-14, "b");
        EXPECT_EQ(EllipseShearCoefficientX(c.area, polar) > 0, c.defined);
        EXPECT_EQ(EllipseTorsionModulus(c.area, polar) > 0, c.defined);
    }
    EXPECT_EQ(EllipseTorsionConstant(1, 0.99e-10), 0.0);
    EXPECT_DOUBLE_EQ(EllipseTorsionConstant(1, 1.01e-10), 1 / (4 * kPi * kPi * 1.01e-10));
}

TEST(Fillets, ArcTouchesBothEdgesAtTheMidLineRadius) {
    for (const double angle : {0.2, kPi / 2, 2.5, -0.2, -kPi / 2, -2.5}) {
        SCOPED_TRACE(angle);
        const double c = std::cos(0.7 + angle), s = std::sin(0.7 + angle);
        const point2D vertex{3, -2}, e{std::cos(0.7), std::sin(0.7)};
        point2D centre, t1, t2;
        double turn;
        EXPECT_TRUE(CornerFillet(0.2, 0.25, {3 + 4 * e.x, -2 + 4 * e.y}, vertex,
                                 {3 + 5 * c, -2 + 5 * s}, &centre, &t1, &t2, &turn));
        const double length = 0.35 / std::tan(std::abs(angle) / 2);
        EXPECT_EQ(turn, angle < 0 ? -1.0 : 1.0);
        EXPECT_LT(Distance(t1, {3 + length * e.x, -2 + length * e.y}), 1e-13);
        EXPECT_LT(Distance(t2, {3 + length * c, -2 + length * s}), 1e-13);
        EXPECT_NEAR(Distance(centre, t1), 0.35, 1e-13);
        EXPECT_NEAR(Distance(centre, t2), 0.35, 1e-13);
        EXPECT_NEAR(Distance(centre, vertex), std::hypot(0.35, length), 1e-13);
    }
}

TEST(Fillets, ReportARadiusThatOverrunsItsEdgesAndKeepDegenerateCorners) {
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
        {"neighbour within 1e-6", 0.5, {1, 0}, {0, 0.9e-6}, false, true},
    };
    for (const auto& c : cases) {
        point2D p[3];
        double turn = 0;
        const bool fits =
            CornerFillet(0, c.radius, c.prev, {0, 0}, c.next, &p[0], &p[1], &p[2], &turn);
        EXPECT_TRUE(fits == c.fits && turn == 1.0) << c.name;
        for (const auto& [x, y] : p) EXPECT_EQ(x == 0 && y == 0, c.kept) << c.name;
    }
}

TEST(Fillets, ARoundedVertexBecomesSixPointsOfItsArc) {
    const auto square = Points(Rectangle(0, 0, 10, 10));
    const double radii[] = {0.9e-15, 2, 0, 0};
    std::vector<point2D> out(24);
    int m = 0;
    RoundContour(4, false, 1, radii, square.data(), &m, out.data());
    ASSERT_EQ(m, 9);
    for (std::size_t k = 1; k <= 6; ++k) {  // radius 2 + 1/2 about (7.5, 2.5), equal steps
        const double angle = -kPi / 2 + double(k - 1) * kPi / 10;
        EXPECT_LT(Distance(out[k], {7.5 + 2.5 * std::cos(angle), 2.5 + 2.5 * std::sin(angle)}),
                  1e-14)
            << k;
    }
}

TEST(Fillets, StraightAndDoubledVerticesWithARadiusBecomeSixCopies) {
    for (const Affine& place : Placements()) {
        SCOPED_TRACE(place.name);
        const auto points = Points(place * Ring{{0, 0}, {7, 3}, {14, 6}, {14, 6}, {0, 20}});
        const double radii[] = {0, 1, 1, 1, 0};
        std::vector<point2D> out(30);
        int m = 0;
        RoundContour(5, false, 0, radii, points.data(), &m, out.data());
        ASSERT_EQ(m, 20);
        for (std::size_t k = 0; k < 18; ++k) {
            EXPECT_LT(Distance(out[1 + k], points[1 + k / 6]), 1e-7) << k;  // fails for a NaN, too
        }
    }
}

TEST(Offset, CornerPointsLieHalfAThicknessFromBothSegments) {
    for (double angle = -3.0; angle <= 3.0; angle += 0.5) {
        SCOPED_TRACE(angle);
        const point2D d{std::cos(angle), std::sin(angle)};
        point2D a, b;
        OffsetVertex(0.3, {2, 1}, {5, 1}, {5 + 2 * d.x, 1 + 2 * d.y}, &a, &b);
        for (const auto& [side, distance] : {std::pair{a, 0.15}, {b, -0.15}}) {
            EXPECT_NEAR(side.y - 1, distance, 1e-12);
            EXPECT_NEAR(d.x * (side.y - 1) - d.y * (side.x - 5), distance, 1e-12);
        }
    }
}

TEST(Offset, EndsReversalsShortSegmentsAndTheProcessTolerance) {
    const double e = 1e-7;  // a segment too short for an angle still has a direction
    struct {
        const char* name;
        double tolerance;
        point2D prev, next, offset;  // about the origin
    } const cases[] = {
        {"start", 1e-8, {0, 0}, {3, 4}, {-0.8, 0.6}},
        {"end", 1e-8, {-3, -4}, {0, 0}, {-0.8, 0.6}},
        {"start of a short segment", 1e-8, {0, 0}, {e, 0}, {0, 1}},
        {"between short segments", 1e-8, {-e, 0}, {e, 0}, {0, 1}},
        {"lone point", 1e-8, {0, 0}, {0, 0}, {0, 0}},
        {"reversal", 1e-8, {-1, 0}, {-2, 0}, {0, 0}},
        {"reversal, negative tolerance", -1, {-1, 0}, {-2, 0}, {0, 0}},
        // The normals of a right angle sum to a length of sqrt(2), unscaled below the tolerance.
        {"sum above the tolerance", 1.41, {-1, 0}, {0, 1}, {-1, 1}},
        {"sum below the tolerance", 1.42, {-1, 0}, {0, 1}, {-std::sqrt(2), std::sqrt(2)}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        point2D a, b;
        Tol3D = c.tolerance;
        OffsetVertex(2, c.prev, {0, 0}, c.next, &a, &b);
        Tol3D = 1e-8;
        EXPECT_LT(Distance(a, c.offset), 1e-12) << a.x << "," << a.y;
        EXPECT_LT(Distance(b, {-c.offset.x, -c.offset.y}), 1e-12) << b.x << "," << b.y;
    }
}

TEST(Offset, OuterFaceOfAClosedRingIsBForEitherOrientation) {
    const Ring square = Rectangle(10, 10, 14, 14);
    for (const Ring& ring : {square, Reversed(square)}) {
        const auto points = Points(ring);
        std::vector<point2D> a(4), b(4);
        OffsetPolyline(4, false, 1, points.data(), a.data(), b.data());
        EXPECT_NEAR(std::abs(ContourSignedArea(4, a.data())), 9, 1e-12);
        EXPECT_NEAR(std::abs(ContourSignedArea(4, b.data())), 25, 1e-12);
    }
}

}  // namespace
}  // namespace halvorn
