#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <stdexcept>
#include <string>

#include "geometry/wall_outline.h"
#include "shapes/profiles.h"

namespace {

using namespace halvorn::engine::shapes;
using halvorn::engine::Point;
using halvorn::engine::Points;
using std::numbers::pi;

const ArcDivision fine = ArcDivision::ChordError(1e-3);

// Area, its first and its second moments about the origin.
struct Moments {
    double area = 0.0, x = 0.0, y = 0.0, xx = 0.0, yy = 0.0, xy = 0.0;
};

Moments MomentsOf(const Points& ring) {
    Moments sum;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const auto& [x, y] = ring[i];
        const auto& [u, v] = ring[(i + 1) % ring.size()];
        const double cross = x * v - u * y;
        sum.area += cross / 2.0;
        sum.x += cross * (x + u) / 6.0;
        sum.y += cross * (y + v) / 6.0;
        sum.xx += cross * (x * x + x * u + u * u) / 12.0;
        sum.yy += cross * (y * y + y * v + v * v) / 12.0;
        sum.xy += cross * (2.0 * x * y + x * v + u * y + 2.0 * u * v) / 24.0;
    }
    return sum;
}

double SignedArea(const Points& ring) {
    return MomentsOf(ring).area;
}

// Area between two tangents that meet at a turn and the arc that rounds them.
double Spandrel(double radius, double turn) {
    return radius * radius * (std::tan(turn / 2.0) - turn / 2.0);
}

// A flange of width w from the web's face: sharp area, root and toe spandrels.
double TaperedOverhang(double w, double flange, double root, const FlangeTaper& taper) {
    const double middle = flange + taper.slope * (w / 2.0 - taper.flangeAtFromToe);
    const double tilt = std::atan(taper.slope);
    return w * middle + Spandrel(root, pi / 2.0 - tilt) -
           Spandrel(taper.toeRadius, pi / 2.0 - tilt);
}

TEST(Profiles, HaveTheAreaOfTheirRectanglesAndSpandrels) {
    const FlangeTaper taper = {0.14, 22.5, 4.5};
    const FlangedProfile tapered = {200.0, 90.0, 7.5, 11.3, 7.5, taper};
    const FlangedProfile parallel = {200.0, 90.0, 7.5, 11.3, 12.0};
    const double quarter = pi / 2.0;
    const struct {
        const char* name;
        Outline outline;
        double area;
    } cases[] = {
        {"parallel I", DrawISection(parallel, fine),
         200.0 * 7.5 + 4.0 * (41.25 * 11.3 + Spandrel(12.0, quarter))},
        {"tapered I", DrawISection(tapered, fine),
         200.0 * 7.5 + 4.0 * TaperedOverhang(41.25, 11.3, 7.5, taper)},
        {"tapered channel", DrawChannel(tapered, fine),
         200.0 * 7.5 + 2.0 * TaperedOverhang(82.5, 11.3, 7.5, taper)},
        {"tapered tee", DrawTee(tapered, fine),
         200.0 * 7.5 + 2.0 * TaperedOverhang(41.25, 11.3, 7.5, taper)},
        {"angle", DrawAngle({100.0, 75.0, 8.0, 10.0, 5.0}, fine),
         8.0 * 167.0 + Spandrel(10.0, quarter) - 2.0 * Spandrel(5.0, quarter)},
        {"rectangular hollow", DrawRectangularHollow({100.0, 60.0, 5.0, 7.5, 5.0}, fine),
         6000.0 - 90.0 * 50.0 - 4.0 * (Spandrel(7.5, quarter) - Spandrel(5.0, quarter))},
        {"circular hollow", DrawCircularHollow({114.3, 5.0}, fine), pi * 5.0 * 109.3},
    };
    for (const auto& [name, outline, area] : cases) {
        SCOPED_TRACE(name);
        const double hole = outline.hole.empty() ? 0.0 : SignedArea(outline.hole);
        EXPECT_NEAR(SignedArea(outline.solid) - hole, area, 1e-12 * area);
        EXPECT_NEAR(SignedArea(KeyholeRing(outline)), SignedArea(outline.solid) - hole,
                    1e-12 * area);
        for (const auto& [x, y] : outline.solid) EXPECT_GE(std::min(x, y), 0.0);
    }
}

const std::vector<Corner> disc = {{1, -1, 1}, {1, 1, 1}, {-1, 1, 1}, {-1, -1, 1}};

Points Turned(std::vector<Corner> corners, double angle, double scale,
              const ArcDivision& division) {
    for (Corner& at : corners) {
        at = {scale * (std::cos(angle) * at.x - std::sin(angle) * at.y),
              scale * (std::sin(angle) * at.x + std::cos(angle) * at.y), scale * at.radius};
    }
    return RoundedPolygon(corners, division);
}

// Turned by 0.054, the disc has pieces of two chords, whose inner point lies farthest out.
TEST(ArcDivision, KeepsBothSidesWithinTheChordErrorWithoutWastingPoints) {
    for (const double angle : {0.0, 0.054}) {
        for (const double error : {3.0, 1e-2, 1e-4}) {
            const auto ring = Turned(disc, angle, 100.0, ArcDivision::ChordError(error));
            double farthest = 0.0, turn = 0.0;
            for (std::size_t i = 0; i < ring.size(); ++i) {
                const auto& [x, y] = ring[i];
                const auto& [u, v] = ring[(i + 1) % ring.size()];
                const double chord = std::abs(x * v - u * y) / std::hypot(u - x, v - y);
                farthest = std::max({farthest, std::hypot(x, y) - 100.0, 100.0 - chord});
                turn = std::max(turn, std::atan2(x * v - u * y, x * u + y * v));
            }
            EXPECT_LE(farthest, error * (1.0 + 1e-9));
            EXPECT_LE(turn, 2.0 * pi / 192.0 * (1.0 + 1e-9));
            EXPECT_TRUE(farthest >= error / 3.0 || turn >= 2.0 * pi / 196.0) << error;
        }
    }
    EXPECT_EQ(DrawRound(200.0, ArcDivision::StepsPerQuarter(5)).solid.size(), 20u);
}

// Pieces of a disc of radius 1 about the origin; a quarter has the product moment 1/8 between its
// sides, and with it other second moments when it is turned.
TEST(ArcDivision, KeepsAreaExtentAndMomentsWhateverSizeAndDirection) {
    const struct {
        std::vector<Corner> corners;
        double part, lever, product;
    } cases[] = {{disc, 1.0, 0.0, 0.0},
                 {{{1, 0, 0}, {1, 1, 1}, {-1, 1, 1}, {-1, 0, 0}}, 0.5, 2.0 / 3.0, 0.0},
                 {{{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}}, 0.25, std::sqrt(2.0) / 3.0, 0.125}};
    for (const double r : {0.5e-3, 0.5, 37.0, 5e5}) {
        for (const double angle : {0.0, 0.02, 0.3, pi / 4.0, 2.0, 5.1}) {
            for (const auto& [corners, part, lever, product] : cases) {
                SCOPED_TRACE(testing::Message() << part << " of radius " << r << " at " << angle);
                const double area = part * pi * r * r, inertia = 0.25 * area * r * r;
                const double sine = product * std::sin(2.0 * angle) * std::pow(r, 4);
                const double cosine = product * std::cos(2.0 * angle) * std::pow(r, 4);
                const Moments moments =
                    MomentsOf(Turned(corners, angle, r, ArcDivision::ChordError(1e-3)));
                EXPECT_NEAR(moments.area, area, 1e-12 * area);
                EXPECT_NEAR(std::hypot(moments.x, moments.y), lever * r * r * r, 1e-6 * area * r);
                EXPECT_NEAR(moments.xx, inertia - sine, 6e-6 * inertia);
                EXPECT_NEAR(moments.yy, inertia + sine, 6e-6 * inertia);
                EXPECT_NEAR(moments.xy, cosine, 6e-6 * inertia);
                const auto few = Turned(corners, angle, r, ArcDivision::StepsPerQuarter(1));
                EXPECT_NEAR(SignedArea(few), area, 1e-12 * area);
            }
            for (const int steps : {1, 48}) {
                const auto ring = Turned(disc, angle, r, ArcDivision::StepsPerQuarter(steps));
                for (const auto axis : {&Point::x, &Point::y}) {
                    double least = 0.0, most = 0.0;
                    for (const Point& point : ring) {
                        least = std::min(least, point.*axis);
                        most = std::max(most, point.*axis);
                    }
                    EXPECT_NEAR(least, -r, 1e-12 * r);
                    EXPECT_NEAR(most, r, 1e-12 * r);
                }
            }
        }
    }
}

// Divided each by its own radius, the faces of a thin wall could cross between their points.
TEST(ArcDivision, MakesConcentricFacesSimilar) {
    const Outline box = DrawWall(
        {{{-95, -95}, {95, -95}, {95, 95}, {-95, 95}}, std::vector<double>(4, 90.0), 10.0, true},
        fine);
    for (const auto& [outline, middle] :
         {std::pair{DrawCircularHollow({200.0, 10.0}, fine), 100.0}, {box, 0.0}}) {
        ASSERT_EQ(outline.solid.size(), outline.hole.size());
        for (std::size_t i = 0; i < outline.solid.size(); ++i) {
            EXPECT_NEAR(0.9 * (outline.solid[i].x - middle), outline.hole[i].x - middle, 1e-11);
            EXPECT_NEAR(0.9 * (outline.solid[i].y - middle), outline.hole[i].y - middle, 1e-11);
        }
    }
}

TEST(Profiles, RefuseDimensionsThatDoNotFitAndSayWhich) {
    const double nan = std::nan("");
    const struct {
        const char* says;
        std::function<void()> draw;
    } cases[] = {
        {"web thickness (120) must be smaller than the width (100)",
         [] {
             DrawISection({200.0, 100.0, 120.0, 10.0, 5.0}, fine);
         }},
        {"thickness of both flanges at the web (200)",
         [] {
             DrawChannel({200.0, 100.0, 6.0, 100.0, 5.0}, fine);
         }},
        {"height (nan) must be a positive number",
         [&] {
             DrawTee({nan, 100.0, 6.0, 10.0, 5.0}, fine);
         }},
        {"flange thickness at the toe (-4)",
         [] {
             DrawISection({200.0, 100.0, 6.0, 10.0, 5.0, {0.14, 100.0, 0.0}}, fine);
         }},
        {"do not fit",
         [] {
             DrawISection({200.0, 100.0, 6.0, 10.0, 48.0}, fine);
         }},
        {"do not fit",
         [] {
             DrawAngle({100.0, 100.0, 8.0, 10.0, 8.1}, fine);
         }},
        {"root radius (-1)",
         [] {
             DrawAngle({100.0, 100.0, 8.0, -1.0, 4.0}, fine);
         }},
        {"outer corner arc",
         [] {
             DrawRectangularHollow({100.0, 100.0, 5.0, 20.0, 0.0}, fine);
         }},
        {"thickness of both walls (100)",
         [] {
             DrawCircularHollow({100.0, 50.0}, fine);
         }},
        {"steps per quarter", [] { ArcDivision::StepsPerQuarter(0); }},
        {"too small for the radius",
         [] {
             DrawCircularHollow({100.0, 5.0}, ArcDivision::ChordError(1e-15));
         }},
        {"coincide", [] { RoundedPolygon(std::vector<Corner>(3), fine); }},
        {"turns straight back",
         [] {
             RoundedPolygon(std::vector<Corner>{{0, 0, 1}, {9, 0, 1}, {4, 0, 1}}, fine);
         }},
    };
    for (const auto& [says, draw] : cases) {
        SCOPED_TRACE(says);
        try {
            draw();
            ADD_FAILURE() << "was drawn";
        } catch (const std::invalid_argument& error) {
            EXPECT_NE(std::string(error.what()).find(says), std::string::npos) << error.what();
        }
    }
}

}  // namespace
