#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <stdexcept>
#include <string>

#include "shapes/profiles.h"

namespace {

using namespace halvorn::shapes;
using std::numbers::pi;

const ArcDivision fine = ArcDivision::StepsPerQuarter(512);

double SignedArea(const std::vector<double>& ring) {
    double twice = 0.0;
    for (std::size_t i = 0, n = ring.size(); i < n; i += 2) {
        const std::size_t j = (i + 2) % n;
        twice += ring[i] * ring[j + 1] - ring[j] * ring[i + 1];
    }
    return 0.5 * twice;
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
        EXPECT_NEAR(SignedArea(outline.solid) - hole, area, 2e-6 * area);
        EXPECT_NEAR(SignedArea(KeyholeRing(outline)), SignedArea(outline.solid) - hole,
                    1e-12 * area);
        EXPECT_GE(*std::min_element(outline.solid.begin(), outline.solid.end()), 0.0);
    }
}

TEST(ArcDivision, KeepsTheChordErrorWithoutWastingPoints) {
    for (const double error : {3.0, 1e-1, 1e-4}) {
        const Outline tube = DrawCircularHollow({200.0, 10.0}, ArcDivision::ChordError(error));
        const auto& ring = tube.solid;
        double sagitta = 0.0;
        for (std::size_t i = 0, n = ring.size(); i < n; i += 2) {
            const std::size_t j = (i + 2) % n;
            EXPECT_NEAR(std::hypot(ring[i] - 100.0, ring[i + 1] - 100.0), 100.0, 1e-12 * 100.0);
            sagitta =
                std::max(sagitta, 100.0 - std::hypot((ring[i] + ring[j]) / 2.0 - 100.0,
                                                     (ring[i + 1] + ring[j + 1]) / 2.0 - 100.0));
        }
        EXPECT_LE(sagitta, error * (1.0 + 1e-9));
        EXPECT_GE(sagitta, error / 4.0);
    }
    EXPECT_EQ(DrawCircularHollow({200.0, 10.0}, ArcDivision::StepsPerQuarter(5)).solid.size(), 40u);
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
