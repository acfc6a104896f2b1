#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <regex>
#include <string>
#include <tuple>

#include "model/placement.h"
#include "part_sections.h"

namespace {

using namespace halvorn::engine;
using std::numbers::pi;
using test_support::Evaluate, test_support::ExpectNear, test_support::Read, test_support::Sum;
using test_support::Values;

TEST(Parts, HaveTheClosedFormsOfTheirRectanglesAndCirclesWhereTheyArePlaced) {
    const double disc = pi * 2500.0;
    const double tube = pi * (2500.0 - 1600.0);
    const double tubeInertia = pi * (6.25e6 - 2.56e6) / 4.0;
    const std::string l = R"("shape": "angle", "height": 100, "width": 60, "thickness": 10)";
    const struct {
        std::string parts;
        Values expected;
        double tolerance = 1e-12;
    } cases[] = {
        {R"({"shape": "plate", "width": 10, "height": 30, "rotate": 90, "move": [50, 7]})",
         Sum({{30, 10, 35, 12}})},
        {R"({"shape": "plate", "width": 100, "height": 400, "at": "centroid", "rotate": 30})",
         {4e4, 0, 0, 4e4 * (0.75 * 1.6e5 + 0.25 * 1e4) / 12.0,
          4e4 * (0.25 * 1.6e5 + 0.75 * 1e4) / 12.0, -4e4 * (1.5e5 * std::sqrt(3.0) / 4.0) / 12.0}},
        {R"({"shape": "i_mono", "height": 100, "web": 6, "top_width": 40, "top_flange": 8,
             "bottom_width": 80, "bottom_flange": 12})",
         Sum({{80, 12, 40, 6}, {6, 80, 40, 52}, {40, 8, 40, 96}})},
        {R"({"shape": "tee", "height": 100, "width": 60, "web": 6, "flange": 10, "mirror": "x"})",
         Sum({{60, 10, 30, -95}, {6, 90, 30, -45}})},
        {R"({"shape": "channel", "height": 100, "width": 60, "web": 6, "flange": 10,
             "mirror": "y", "move": [-5, 0]})",
         Sum({{60, 10, -35, 5}, {60, 10, -35, 95}, {6, 80, -8, 50}})},
        {"{" + l + "}", Sum({{60, 10, 30, 5}, {10, 90, 5, 55}})},
        {"{" + l + R"(, "mirror": "x", "rotate": 180})", Sum({{60, 10, -30, 5}, {10, 90, -5, 55}})},
        {R"({"shape": "rhs", "height": 100, "width": 60, "thickness": 5, "outer_radius": 0},
            {"points": [[0, 0], [0, 10], [10, 10], [10, 0]], "kind": "hole", "move": [55, 0]},
            {"points": [[60, 0], [65, 0], [65, 10], [60, 10]]})",
         Sum({{60, 100, 30, 50}, {-50, 90, 30, 50}, {-10, 10, 60, 5}, {5, 10, 62.5, 5}})},
        {R"({"shape": "plate", "width": 200, "height": 200, "at": "centroid"},
            {"shape": "rhs", "height": 100, "width": 60, "thickness": 5, "outer_radius": 0,
             "at": "centroid", "kind": "hole", "rotate": -90})",
         Sum({{200, 200, 0, 0}, {-100, 60, 0, 0}, {90, 50, 0, 0}})},
        {R"({"points": [[5, 7], [15, 7], [15, 27], [5, 27]], "at": "corner", "rotate": 90})",
         Sum({{20, 10, -10, 5}})},
        {R"({"shape": "round", "diameter": 100, "move": [1, 2]})",
         {disc, 51, 52, disc * 625, disc * 625, 0},
         1e-8},
        {R"({"shape": "chs", "diameter": 100, "thickness": 10, "at": "centroid", "rotate": 17})",
         {tube, 0, 0, tubeInertia, tubeInertia, 0},
         1e-8},
    };
    for (const auto& [parts, expected, tolerance] : cases) {
        SCOPED_TRACE(parts);
        ExpectNear(Evaluate(Read(parts)), expected, tolerance);
    }
}

constexpr const char* kRounded = R"("shape": "angle", "height": 101.3, "width": 60.7,
    "thickness": 9.1, "root_radius": 11.7, "toe_radius": 4.3)";

TEST(Placement, TurnsByQuartersExactly) {
    const Points points = Read(std::string("{") + kRounded + "}").elements[0].ring;
    for (const int degrees : {90, 180, 270, 360, -90, -450, 1170}) {
        SCOPED_TRACE(degrees);
        const Points turned =
            Read(std::string("{") + kRounded + ", \"rotate\": " + std::to_string(degrees) + "}")
                .elements[0]
                .ring;
        Points expected = points;
        for (int k = 0; k < ((degrees / 90) % 4 + 4) % 4; ++k) {
            for (auto& [x, y] : expected) std::tie(x, y) = std::make_pair(-y, x);
        }
        EXPECT_EQ(turned, expected);
    }
}

TEST(Placement, UndoesAMirrorByMirroringAgainBitForBit) {
    const std::string wall = R"({"wall": {"kind": "open", "thickness": 3, "radii": [0, 4, 0, 0],
        "points": [[1.1, 2.3], [40.7, 2.3], [40.7, 31.9], [70.3, 40.1]]}})";
    for (const Mirror mirror : {Mirror::AboutX, Mirror::AboutY}) {
        const SectionModel section = Read(std::string("{") + kRounded + "}, " + wall);
        std::vector<Element> elements = section.elements;
        Placement placement;
        placement.mirror = mirror;
        Place(placement, elements);
        EXPECT_NE(elements[0].ring, section.elements[0].ring);
        EXPECT_EQ(elements[1].given->angle, -section.elements[1].given->angle);
        Place(placement, elements);
        for (std::size_t i = 0; i < 2; ++i) EXPECT_EQ(elements[i].ring, section.elements[i].ring);
        EXPECT_EQ(elements[1].given->angle, section.elements[1].given->angle);
        EXPECT_EQ(elements[1].given->centroidX, section.elements[1].given->centroidX);
    }
}

TEST(Walls, AreTheSameSectionsDrawnAsContours) {
    const struct {
        std::string wall;
        std::string contours;
    } cases[] = {
        {R"("kind": "open", "thickness": 4, "points": [[-2, 0], [50, 0], [50, 80], [90, 80]])",
         R"({"points": [[-2, -2], [52, -2], [52, 78], [90, 78], [90, 82], [48, 82], [48, 2], [-2, 2]],
             PLACE})"},
        {R"("kind": "open", "thickness": 10, "points": [[5, 100], [5, 5], [60, 5]])",
         R"({"shape": "angle", "height": 100, "width": 60, "thickness": 10, PLACE})"},
        {R"("kind": "closed", "thickness": 5, "radii": [5, 5, 5, 5],
            "points": [[2.5, 2.5], [2.5, 97.5], [57.5, 97.5], [57.5, 2.5]])",
         R"({"shape": "rhs", "height": 100, "width": 60, "thickness": 5, "outer_radius": 10, PLACE})"},
        {R"("kind": "closed", "thickness": 10, "radii": [40, 40, 40, 40],
            "points": [[5, 5], [95, 5], [95, 95], [5, 95]])",
         R"({"shape": "chs", "diameter": 100, "thickness": 10, PLACE})"},
        // An L-shaped box, whose inner corner bends the other way.
        {R"("kind": "closed", "thickness": 2,
            "points": [[0, 0], [60, 0], [60, 20], [20, 20], [20, 80], [0, 80]])",
         R"({"points": [[-1, -1], [61, -1], [61, 21], [21, 21], [21, 81], [-1, 81]], PLACE},
            {"points": [[1, 1], [59, 1], [59, 19], [19, 19], [19, 79], [1, 79]], "kind": "hole",
             PLACE})"},
    };
    for (const char* place : {R"("rotate": 0)", R"("mirror": "y", "rotate": 25, "move": [30, -7])",
                              R"("mirror": "x", "rotate": -90)"}) {
        for (const auto& [wall, contours] : cases) {
            SCOPED_TRACE(wall + place);
            std::string drawn = contours;
            for (std::size_t at = 0; (at = drawn.find("PLACE")) != std::string::npos;) {
                drawn.replace(at, 5, place);
            }
            const SectionModel section = Read("{\"wall\": {" + wall + "}, " + place + "}");
            ExpectNear(Evaluate(section), Evaluate(Read(drawn)), 1e-12);
        }
    }
}

// A box with round corners is as wide and high as the box of their centres, turned, and the corner
// radius on either side.
TEST(Parts, KeepTheExtentOfTheirArcsHoweverTurned) {
    const struct {
        const char* part;
        double width, height, radius;
    } cases[] = {
        {R"("shape": "round", "diameter": 0.7)", 0, 0, 0.35},
        {R"("profile": "CHS 114.3x5")", 0, 0, 57.15},
        {R"("shape": "rhs", "height": 60, "width": 100, "thickness": 5, "outer_radius": 10)", 80,
         40, 10},
        {R"("wall": {"kind": "closed", "thickness": 4, "radii": [8, 8, 8, 8],
            "points": [[2, 2], [98, 2], [98, 58], [2, 58]]})",
         76, 36, 12},
    };
    for (const auto& [part, width, height, radius] : cases) {
        for (const char* mirror : {"", R"(, "mirror": "x")", R"(, "mirror": "y")"}) {
            SCOPED_TRACE(std::string(part) + mirror);
            const SectionModel section = Read(std::string("{") + part +
                                              R"(, "at": "centroid", "rotate": 37)" + mirror + "}");
            double right = 0.0, top = 0.0;
            for (const auto& [x, y] : section.elements[0].ring) {
                right = std::max(right, x);
                top = std::max(top, y);
            }
            const double c = std::cos(37.0 * pi / 180.0), s = std::sin(37.0 * pi / 180.0);
            EXPECT_NEAR(right, radius + 0.5 * (c * width + s * height), 1e-11);
            EXPECT_NEAR(top, radius + 0.5 * (s * width + c * height), 1e-11);
        }
    }
}

TEST(Walls, CutOpenEndsOffSquareWhateverTheirRadius) {
    const auto read = [](const std::string& place, const std::string& radii) {
        return Read(place + R"("thickness": 3, "points": [[0, 0], [30, 0], [50, 60]], "radii": )" +
                    radii + "}}");
    };
    const std::string wall = R"({"wall": {"kind": "open", )";
    const SectionModel square = read(wall, "[0, 4, 0]"), rounded = read(wall, "[70, 4, 90]");
    EXPECT_EQ(square.elements[0].ring, rounded.elements[0].ring);
    EXPECT_EQ(square.elements[0].given->torsionConstant,
              rounded.elements[0].given->torsionConstant);
    const double turn = std::atan2(60, 20);
    const double middle = 30.0 + std::hypot(20, 60) - 5.5 * (2.0 * std::tan(turn / 2.0) - turn);
    EXPECT_NEAR(square.elements[0].given->area, 3.0 * middle, 1e-9);
}

TEST(Walls, HaveTheTorsionOfTheirBentMidLine) {
    // A quarter bend of mid-line radius 20 between straights of 30, and a tube of radius 45.
    const double length = 60.0 + 10.0 * pi;
    const SectionModel bent = Read(R"({"wall": {"kind": "open", "thickness": 4,
        "points": [[0, 0], [50, 0], [50, 50]], "radii": [0, 18, 0]}})");
    const SectionModel tube = Read(R"({"wall": {"kind": "closed", "thickness": 10,
        "points": [[5, 5], [95, 5], [95, 95], [5, 95]], "radii": [40, 40, 40, 40]}})");
    const Element& open = bent.elements[0];
    const Element& closed = tube.elements[0];
    const double mean = pi * (2500.0 + 1600.0) / 2.0;
    const struct {
        const char* name;
        double found, expected;
    } cases[] = {
        {"open", *open.given->torsionConstant, (2.0 * length + 8.0) * 64.0 / 3.0},
        {"open modulus", *open.given->torsionModulus, 8.0 * length * 4.0},
        {"open shear", *open.given->shearArea1, 2.0 * length},
        {"closed", *closed.given->torsionConstant, 4.0 * mean * mean * 10.0 / (100.0 * pi)},
        {"closed modulus", *closed.given->torsionModulus, 20.0 * mean},
    };
    for (const auto& [name, found, expected] : cases) {
        EXPECT_NEAR(found, expected, 1e-4 * expected) << name;
    }
}

// The default chord tolerance is a length of the world, not of the file's unit; the file's own is
// in its unit, also for what comes from the catalogue.
TEST(Parts, AreTheSameInMetresAndMillimetres) {
    const std::string parts =
        R"({"shape": "i", "height": 300e, "width": 150e, "web": 7.1e, "flange": 10.7e,
            "root_radius": 15e, "rotate": 30, "move": [12e, -7e]},
           {"wall": {"kind": "open", "thickness": 3e, "radii": [0, 4e, 0],
                     "points": [[0, 0], [30e, 0], [50e, 60e]]}},
           {"profile": "IPE300", "rotate": 30})";
    const auto read = [&](const char* unit, const std::string& tolerance) {
        const std::string exponent = *unit == 'm' && unit[1] == 0 ? "e-3" : "e0";
        const auto with = [&](const std::string& text) {
            return std::regex_replace(text, std::regex("([0-9])e"), "$1" + exponent);
        };
        return Read(with(parts), unit, with(tolerance));
    };
    std::size_t points = 0;
    for (const std::string tolerance :
         {R"(, "chord_tolerance": 1e)", "", R"(, "chord_tolerance": 0.0001e, "density": 7850)"}) {
        SCOPED_TRACE(tolerance);
        const SectionModel inMillimetres = read("mm", tolerance), inMetres = read("m", tolerance);
        EXPECT_EQ(inMetres.density.value_or(0.0), tolerance.size() > 30 ? 7850.0 : 0.0);
        ASSERT_EQ(inMetres.elements.size(), 3U);
        for (std::size_t i = 0; i < 3; ++i) {
            const Points& small = inMetres.elements[i].ring;
            const Points& large = inMillimetres.elements[i].ring;
            ASSERT_EQ(small.size(), large.size());
            for (std::size_t k = 0; k < small.size(); ++k) {
                EXPECT_NEAR(1e3 * small[k].x, large[k].x, 1e-9);
                EXPECT_NEAR(1e3 * small[k].y, large[k].y, 1e-9);
            }
        }
        const GivenValues& small = *inMetres.elements[1].given;
        const GivenValues& large = *inMillimetres.elements[1].given;
        EXPECT_NEAR(small.inertia1 * 1e12 / large.inertia1, 1.0, 1e-9);
        EXPECT_NEAR(*small.torsionConstant * 1e12 / *large.torsionConstant, 1.0, 1e-9);
        EXPECT_NEAR(small.angle, large.angle, 1e-9);
        // Finer from case to case, in the file's own shape and in the profile alike.
        EXPECT_GT(inMetres.elements[0].ring.size(), points);
        EXPECT_EQ(inMetres.elements[0].ring.size(), inMetres.elements[2].ring.size());
        points = inMetres.elements[0].ring.size();
    }
}

}  // namespace
