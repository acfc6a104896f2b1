// Sections out of DXF texts that are made here, held against closed forms; damaged ones against
// the line that the message must name.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <numbers>
#include <random>

#include "base/text.h"
#include "dxf_text.h"

namespace {

using namespace halvorn::engine;

constexpr double kPi = std::numbers::pi;

InputOptions Fine(double chordTolerance) {
    InputOptions options;
    options.chordTolerance = chordTolerance;
    return options;
}

struct Moments {
    double area = 0.0, x = 0.0, y = 0.0, length = 0.0;
};

// Area and centre of gravity of solids without holes.
Moments MomentsOf(const SectionModel& section) {
    Moments sum;
    for (const Element& element : section.elements) {
        const Points& ring = element.ring;
        Moments one;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const auto [x, y] = ring[i];
            const auto [u, v] = ring[(i + 1) % ring.size()];
            const double cross = x * v - u * y;
            one.area += 0.5 * cross;
            one.x += cross * (x + u) / 6.0;
            one.y += cross * (y + v) / 6.0;
            one.length += std::hypot(u - x, v - y);
        }
        const double sign = (one.area < 0.0 ? -1.0 : 1.0) * (element.isSolid ? 1.0 : -1.0);
        sum.area += sign * one.area;
        sum.x += sign * one.x;
        sum.y += sign * one.y;
        sum.length += one.length;
    }
    sum.x /= sum.area;
    sum.y /= sum.area;
    return sum;
}

struct Shape {
    const char* name;
    std::string entities;
    double area, x, y;
    std::string blocks = "";
};

std::vector<Shape> Shapes() {
    const double root = std::sqrt(0.5);
    const std::string base = Line(0, 0, 10, 0), legs = Line(0, 0, 10, 0) + Line(0, 0, 0, 10);
    const std::string disc = " 0 CIRCLE 10 5 20 1 40 2 ", down = " 210 0 220 0 230 -1 ";
    const std::string block = "0 SECTION 2 BLOCKS 0 BLOCK 2 Disc 10 5 20 1 " + disc +
                              " 0 ENDBLK 0 BLOCK 2 Twice 10 0 20 0 0 INSERT 2 DISC 10 3 20 0 "
                              "41 .5 42 .5 0 ENDBLK 0 ENDSEC";
    return {
        {"circle", disc, 4 * kPi, 5, 1},
        {"circle from below", disc + down, 4 * kPi, -5, 1},
        {"ellipse", "0 ELLIPSE 10 1 20 2 11 12 21 16 40 .4 41 0 42 6.283185307", 160 * kPi, 1, 2},
        {"half ellipse", "0 ELLIPSE 10 5 20 0 11 5 21 0 40 .4 41 0 42 3.14159265358979" + base,
         5 * kPi, 5, 8 / (3 * kPi)},
        {"half ellipse from below",
         "0 ELLIPSE 10 5 20 0 11 5 21 0 40 .4 41 0 42 3.14159265358979" + down + base, 5 * kPi, 5,
         -8 / (3 * kPi)},
        {"half disc", "0 ARC 10 5 20 0 40 5 50 0 51 180" + base, 12.5 * kPi, 5, 20 / (3 * kPi)},
        {"half disc from below", "0 ARC 10 -5 20 0 40 5 50 -180 51 0" + down + base, 12.5 * kPi, 5,
         -20 / (3 * kPi)},
        {"arc over the 0", "0 ARC 10 0 20 0 40 5 50 270 51 90" + Line(0, -5, 0, 5), 12.5 * kPi,
         20 / (3 * kPi), 0},
        {"full arc", "0 ARC 10 3 20 4 40 5 50 0 51 360", 25 * kPi, 3, 4},
        {"two bulges", "0 LWPOLYLINE 90 2 70 1 10 0 20 0 42 1 10 10 20 0 42 1", 25 * kPi, 5, 0},
        {"bulge from below", "0 LWPOLYLINE 90 2 70 1 10 0 20 0 42 1 10 10 20 0" + down, 12.5 * kPi,
         -5, -20 / (3 * kPi)},
        {"height, width and flags at every point",
         "0 LWPOLYLINE 39 2 30 7 70 1 90 3 40 0 10 0 20 0 30 7 43 0 91 1 10 6 20 0 30 7.0 43 0 70 "
         "1 "
         "10 0 20 6 30 7 38 7 39 3 38 7 210 0 220 0 230 1 230 1",
         18, 2, 2},
        {"clockwise bulge", "0 LWPOLYLINE 70 1 10 0 20 0 42 -1 10 10 20 0 10 10 20 10 10 0 20 10",
         100 - 12.5 * kPi, 5, (500 - 250 / 3.0) / (100 - 12.5 * kPi)},
        {"more than half a circle", "0 LWPOLYLINE 70 1 10 0 20 0 42 2.414213562373095 10 10 20 0",
         25 * (1.5 * kPi + 1), 5, -5 - 10 / (4.5 * kPi + 3)},
        // A flat one lies c^2 b / 3 outside its chord c, here far within the tolerance.
        {"flat bulge", "0 LWPOLYLINE 70 1 10 0 20 0 42 1e-5 10 2 20 0 10 2 20 1 10 0 20 1",
         2 + 4e-5 / 3, 1, (1 - 1.6e-10 / 15) / (2 + 4e-5 / 3)},
        // As editors leave them where an arc was made straight: of a radius of 5e11.
        {"bulge of rounding", "0 LWPOLYLINE 70 1 10 0 20 0 42 1e-12 10 2 20 0 10 2 20 1 10 0 20 1",
         2, 1, 0.5},
        {"old polyline",
         "0 POLYLINE 66 1 70 0 0 VERTEX 10 0 20 0 0 VERTEX 10 10 20 0 42 1 0 VERTEX 10 10 20 10 "
         "0 VERTEX 10 0 20 10 0 VERTEX 10 0 20 0 0 SEQEND",
         100 + 12.5 * kPi, (500 + 12.5 * kPi * (10 + 20 / (3 * kPi))) / (100 + 12.5 * kPi), 5},
        {"spatial polyline",
         "0 POLYLINE 70 9 0 VERTEX 10 0 20 0 30 7 0 VERTEX 10 6 20 0 30 7 0 VERTEX 10 0 20 6 30 7 "
         "0 SEQEND",
         18, 2, 2},
        {"fitted polyline without its frame",
         "0 POLYLINE 70 5 0 VERTEX 70 16 10 0 20 99 0 VERTEX 70 8 10 0 20 0 0 VERTEX 70 8 10 6 20 "
         "0 "
         "0 VERTEX 70 8 10 0 20 6 0 SEQEND",
         18, 2, 2},
        // Two thirds of the triangle of the control points, at two fifths of the parabola's height.
        {"parabola",
         "0 SPLINE 71 2 72 6 73 3 40 0 40 0 40 0 40 1 40 1 40 1 10 0 20 0 10 5 20 10 10 10 20 0" +
             base,
         100 / 3.0, 5, 2},
        {"parabola with a knot",
         "0 SPLINE 71 2 40 3 40 3 40 3 40 4 40 5 40 5 40 5 10 0 20 0 10 2.5 20 5 10 7.5 20 5 10 10 "
         "20 0" +
             base,
         100 / 3.0, 5, 2},
        {"parabola of degree 5",
         "0 SPLINE 71 5 40 0 40 0 40 0 40 0 40 0 40 0 40 1 40 1 40 1 40 1 40 1 40 1 "
         "10 0 20 0 10 2 20 4 10 4 20 6 10 6 20 6 10 8 20 4 10 10 20 0" +
             base,
         100 / 3.0, 5, 2},
        {"polygon as a spline",
         "0 SPLINE 71 1 40 0 40 0 40 1 40 2 40 2 10 0 20 0 10 5 20 9 10 10 20 0" + base, 45, 5, 3},
        {"quarter disc of weights",
         "0 SPLINE 70 4 71 2 40 0 40 0 40 0 40 1 40 1 40 1 41 1 41 .70710678118654752 41 1 "
         "10 10 20 0 10 10 20 10 10 0 20 10" +
             legs,
         25 * kPi, 40 / (3 * kPi), 40 / (3 * kPi)},
        // The square of the middles of the control polygon and four parabolas.
        {"closed uniform spline",
         "0 SPLINE 70 3 71 2 40 0 40 1 40 2 40 3 40 4 40 5 40 6 40 7 40 8 "
         "10 0 20 0 10 10 20 0 10 10 20 10 10 0 20 10 10 0 20 0 10 10 20 0",
         50 + 100 / 3.0, 5, 5},
        // By symmetry the derivatives at the four points are 3/2 of the radius per piece.
        {"closed through four points",
         "0 SPLINE 70 1 71 3 74 4 11 4 21 1 11 1 21 4 11 -2 21 1 11 1 21 -2", 9 * 3.05, 1, 1},
        // With pieces of equal length x grows evenly and y = 7.5 t - 2.5 t^3 up to the middle
        // point.
        {"through three points, ends without curvature",
         "0 SPLINE 71 3 74 3 11 0 21 0 11 5 21 5 11 10 21 0" + base, 31.25, 5, 17 / 8.75},
        {"through two points with tangents",
         "0 SPLINE 71 3 74 2 12 1 22 1 13 2 23 -2 11 0 21 0 11 10 21 0" + base,
         100 * (root / 5 - 1 / 60.0), 5,
         2.5 * (root / 30 + 3 * (1 - root) / 70) / (root / 5 - 1 / 60.0)},
        {"block turned and stretched", "0 INSERT 2 disc 10 7 20 8 41 3 42 2 50 30", 24 * kPi, 7, 8,
         block},
        {"block from below", "0 INSERT 2 disc 10 7 20 8" + down, 4 * kPi, -7, 8, block},
        {"block in a block", "0 INSERT 2 TWICE 10 1 20 1 41 2 42 2 50 90", 4 * kPi, 1, 7, block},
    };
}

TEST(DxfDrawing, AgreesWithClosedFormsHoweverCoarseTheChordTolerance) {
    for (const Shape& shape : Shapes()) {
        const bool isSpline = shape.entities.find("SPLINE") != std::string::npos;
        for (const double tolerance : {50.0, 1e-5}) {
            SCOPED_TRACE(std::string(shape.name) + " within " + std::to_string(tolerance));
            const SectionModel section = Read(File(shape.entities, shape.blocks), Fine(tolerance));
            ASSERT_EQ(section.elements.size(), 1U);
            const Moments moments = MomentsOf(section);
            EXPECT_NEAR(moments.area, shape.area, (isSpline ? 2e-5 : 1e-12) * shape.area);
            EXPECT_NEAR(moments.x, shape.x, 1e-6 * moments.length);
            EXPECT_NEAR(moments.y, shape.y, 1e-6 * moments.length);
        }
    }
}

// Blocks turn, stretch and mirror arcs after they were read: a circle of radius 1 becomes an
// ellipse whose half width and height are the lengths of the rows of the map.
TEST(DxfDrawing, KeepsTheExtentOfArcsHoweverTheyArePlaced) {
    const double c = std::cos(kPi / 6), s = std::sin(kPi / 6);
    for (const char* const entity :
         {"0 CIRCLE 10 0 20 0 40 1", "0 CIRCLE 10 0 20 0 40 1 210 0 220 0 230 -1",
          "0 LWPOLYLINE 70 1 10 -.6 20 -.8 42 1 10 .6 20 .8 42 1",
          "0 LWPOLYLINE 70 1 10 -.6 20 -.8 42 1 10 .6 20 .8 42 1 210 0 220 0 230 -1",
          "0 POLYLINE 70 1 0 VERTEX 10 -.6 20 -.8 42 1 0 VERTEX 10 .6 20 .8 42 1 0 SEQEND",
          "0 ELLIPSE 10 0 20 0 11 .8 21 .6 40 1 41 0 42 6.283185307179586"}) {
        SCOPED_TRACE(entity);
        const SectionModel section = Read(
            File("0 INSERT 2 B 10 5 20 7 41 3 42 -2 50 30",
                 "0 SECTION 2 BLOCKS 0 BLOCK 2 B " + std::string(entity) + " 0 ENDBLK 0 ENDSEC"));
        double width = 0.0, height = 0.0;
        for (const auto& [x, y] : section.elements.at(0).ring) {
            width = std::max(width, x - 5);
            height = std::max(height, y - 7);
        }
        EXPECT_NEAR(width, std::hypot(3 * c, 2 * s), 1e-11);
        EXPECT_NEAR(height, std::hypot(3 * s, 2 * c), 1e-11);
    }
}

TEST(DxfDrawing, PutsPointsOnSplinesAndSpendsFewOnCusps) {
    // Stretched by a block, the ellipse 3 x 2 is held against its equation.
    const std::string block =
        "0 SECTION 2 BLOCKS 0 BLOCK 2 B 0 SPLINE 71 2 40 0 40 0 40 0 40 1 "
        "40 1 40 1 41 1 41 .70710678118654752 41 1 10 1 20 0 10 1 20 1 10 0 "
        "20 1 0 LINE 10 0 20 0 11 1 21 0 0 LINE 10 0 20 0 11 0 21 1 0 ENDBLK "
        "0 ENDSEC";
    const SectionModel piece = Read(File("0 INSERT 2 B 10 0 20 0 41 30 42 20", block), Fine(1e-3));
    std::size_t onCurve = 0;
    for (const auto& [x, y] : piece.elements.at(0).ring) {
        onCurve += std::abs(std::hypot(x / 30, y / 20) - 1) < 1e-12 ? 1 : 0;
    }
    EXPECT_EQ(onCurve, piece.elements[0].ring.size() - 1);  // all but the centre
    EXPECT_NEAR(MomentsOf(piece).area, 150 * kPi, 0.005);
    // (1e9 + 15 t^2 - 10 t, 30 t^3 - 15 t^2) turns back at t = 1/3, which no bisection meets; so
    // far away its coordinates have seven decimals, and shorter pieces turn at random.
    const SectionModel cusp =
        Read(File("0 SPLINE 71 3 40 0 40 0 40 0 40 0 40 1 40 1 40 1 40 1 10 1000000000 20 0 "
                  "10 999999996.666666667 20 0 10 999999998.333333333 20 -5 10 1000000005 20 15" +
                  Line(1e9, 0, 1e9 + 5, 15)));
    EXPECT_LT(cusp.elements.at(0).ring.size(), 1000U);
}

// A slot of two lines, an arc, half an ellipse and an open polyline, each piece in either
// direction.
std::vector<std::vector<std::string>> SlotPieces() {
    return {{Line(0, 0, 20, 0), Line(20, 0, 0, 0)},
            {" 0 ARC 10 20 20 5 40 5 50 270 51 90",
             " 0 ARC 10 -20 20 5 40 5 50 90 51 270 210 0 220 0 230 -1"},
            {Line(20, 10, 10, 10), Line(10, 10, 20, 10)},
            {" 0 LWPOLYLINE 90 3 10 10 20 10 10 5 20 12 10 0 20 10",
             " 0 LWPOLYLINE 90 3 10 0 20 10 10 5 20 12 10 10 20 10"},
            {" 0 ELLIPSE 10 0 20 5 11 0 21 5 40 .5 41 0 42 3.141592653589793",
             " 0 ELLIPSE 10 0 20 5 11 0 21 -5 40 .5 41 3.141592653589793 42 6.283185307179586"}};
}

TEST(DxfDrawing, JoinsPiecesInAnyOrderAndDirectionToTheSameRing) {
    std::mt19937 random(7);
    Points first;
    for (int run = 0; run < 50; ++run) {
        auto pieces = SlotPieces();
        std::shuffle(pieces.begin(), pieces.end(), random);
        std::string entities;
        for (const auto& piece : pieces) entities += piece[random() % 2];
        const SectionModel section = Read(File(entities));
        ASSERT_EQ(section.elements.size(), 1U) << "run " << run;
        EXPECT_EQ(Joined(section.remarks), "");
        EXPECT_NEAR(MomentsOf(section).area, 200 + 10 + 12.5 * kPi + 6.25 * kPi, 1e-9);
        Points points = section.elements[0].ring;
        for (auto& [x, y] : points) x = std::round(x * 1e9) + 0.0, y = std::round(y * 1e9) + 0.0;
        std::sort(points.begin(), points.end());
        if (run == 0) first = points;
        EXPECT_EQ(points, first) << "run " << run;
    }
}

TEST(DxfDrawing, ClosesGapsUpToTheJoinTolerance) {
    const auto triangle = [](double gap) {
        return File(Line(gap, 0, 10, 0) + Line(0, 10, 10, 0) + Line(0, 10, 0, 0));
    };
    EXPECT_EQ(Joined(Read(triangle(1e-9)).remarks), "");
    const SectionModel closed = Read(triangle(0.0099));
    EXPECT_NE(Joined(closed.remarks).find("the widest of 0.0099"), std::string::npos);
    EXPECT_EQ(closed.elements.at(0).ring.size(), 3U);
    EXPECT_NE(ErrorOf(triangle(0.0101)).find("a gap of 0.0101"), std::string::npos);
    InputOptions wide;
    wide.joinTolerance = 0.02;
    EXPECT_EQ(Read(triangle(0.0101), wide).elements.size(), 1U);
    // The tolerance is in millimetres whatever the unit of the drawing.
    wide.unit = "cm";
    EXPECT_NE(ErrorOf(triangle(0.0101), wide).find("gap"), std::string::npos);
}

// A plate 100 x 50 whose lower edge, given here, and the start of its right edge leave gaps.
TEST(DxfDrawing, KeepsTheEdgesBesideWideGaps) {
    struct Case {
        const char* name;
        std::vector<std::array<double, 4>> edges;
        double right;  // where the right edge begins, y
        double area, length;
        const char* remark;
    };
    const Case cases[] = {
        {"gap at a corner", {{2, 0, 100, 0}}, 0, 5000, 300, "bridged by straight edges: 1, the"},
        {"gap in an edge", {{0, 0, 40, 0}, {43, 0, 100, 0}}, 0, 5000, 300, "straight edges: 1, "},
        {"a corner cut off", {{0, 0, 97, 0}}, 1, 4998.5, 296 + std::sqrt(10), "straight edges: 1"},
        {"two gaps", {{2, 0, 98.5, 0}}, 0, 5000, 300, "edges: 2, the widest of 2 at line 16"},
        {"past each other", {{0, 0, 102, 0}}, -2.5, 5000, 300, "cut where they meet: 1, the"},
        {"past the corner", {{102, 0, 0, 0}}, 0, 5000, 300, "they meet: 1, the widest of 2 at"},
        {"before the corner", {{0, 0, 100, 0}}, -2, 5000, 300, "cut where they meet: 1, the"},
        {"one over the other", {{0, 0, 51, 0}, {49, 0, 100, 0}}, 0, 5000, 300, "they meet: 1"},
    };
    for (const Case& each : cases) {
        for (const double scale : {1.0, 1e-3}) {
            SCOPED_TRACE(std::string(each.name) + " times " + std::to_string(scale));
            const auto line = [&](double a, double b, double c, double d) {
                return Line(scale * a, scale * b, scale * c, scale * d);
            };
            std::string entities = line(0, 50, 0, 0) + line(0, 50, 100, 50);
            for (const auto& [a, b, c, d] : each.edges) entities += line(a, b, c, d);
            InputOptions options;
            options.joinTolerance = 3.5;
            options.unit = scale == 1.0 ? "mm" : "m";
            const SectionModel section =
                Read(File(entities + line(100, 50, 100, each.right)), options);
            ASSERT_EQ(section.elements.size(), 1U);
            const Moments moments = MomentsOf(section);
            EXPECT_NEAR(std::abs(moments.area), each.area * scale * scale, 1e-9 * scale * scale);
            EXPECT_NEAR(moments.length, each.length * scale, 1e-9 * scale);
            const std::string remarks = Joined(section.remarks);
            EXPECT_TRUE(scale != 1.0 || remarks.find(each.remark) != std::string::npos) << remarks;
        }
    }
    // Edges that cross farther from their ends than the tolerance keep all that was drawn.
    InputOptions options;
    options.joinTolerance = 2;
    const SectionModel crossed =
        Read(File(Line(0, 0, 100, 0) + Line(0, 10, 100, -10 / 9.0) + Line(0, 0, 0, 10)), options);
    EXPECT_NEAR(std::abs(MomentsOf(crossed).area), 450 - 50 / 9.0, 1e-9);
}

TEST(DxfDrawing, TakesTheUnitFromTheFileOrTheCommandLine) {
    struct Case {
        const char *code, *option, *unit, *remark;
    };
    const Case cases[] = {{"4", "", "mm", ""},
                          {"5", "", "cm", ""},
                          {"6", "", "m", ""},
                          {"1", "", "in", ""},
                          {"0", "", "mm", "states no unit"},
                          {"0", "cm", "cm", ""},
                          {"4", "mm", "mm", ""},
                          {"4", "in", "in", "its unit as mm; its numbers are read as in"},
                          {"2", "in", "in", "$INSUNITS 2"},
                          {"2", "", "", "$INSUNITS 2"},
                          {"4", "ft", "", "the unit is ft"}};
    for (const Case& each : cases) {
        std::string text = File("0 CIRCLE 10 0 20 0 40 2");
        text.replace(text.find("70\n4"), 4, std::string("70\n") + each.code);
        InputOptions options;
        if (*each.option != 0) options.unit = each.option;
        if (*each.unit == 0) {
            EXPECT_NE(ErrorOf(text, options).find(each.remark), std::string::npos) << each.remark;
            continue;
        }
        const SectionModel section = Read(text, options);
        EXPECT_EQ(section.unit, each.unit);
        const std::string remarks = Joined(section.remarks);
        EXPECT_EQ(remarks.empty(), *each.remark == 0) << remarks;
        EXPECT_NE(remarks.find(each.remark), std::string::npos) << remarks;
        // 0.001 mm off the arc whatever the unit, and at least 48 chords per quarter.
        const double radius = 2e3 * MetresPer(each.unit);
        EXPECT_EQ(section.elements[0].ring.size(),
                  4 * std::max(48.0, std::ceil(kPi / 4 / std::acos(1 - 0.001 / radius))));
    }
}

TEST(DxfDrawing, TellsSolidsFromHolesByNesting) {
    const SectionModel section = Read(File(
        "0 CIRCLE 10 0 20 0 40 10 0 CIRCLE 10 0 20 0 40 30 0 CIRCLE 10 0 20 0 40 20 "
        "0 CIRCLE 10 99 20 0 40 5 0 LWPOLYLINE 70 1 10 -3 20 -3 10 3 20 -3 10 3 20 3 10 -3 20 3 "
        "0 LWPOLYLINE 70 1 10 -3 20 -3 10 1 20 -3 10 1 20 1 10 -3 20 1"));
    std::string kinds;
    for (const Element& element : section.elements) kinds += element.isSolid ? 's' : 'h';
    EXPECT_EQ(kinds, "sshshs");  // the last one touches the hole around it
    EXPECT_EQ(section.elements[0].label, "line 16");
}

TEST(DxfDrawing, NamesWhateverIsLeftOut) {
    const std::string square = Line(0, 0, 9, 0) + Line(9, 0, 9, 9) + Line(9, 9, 0, 9);
    const std::string all =
        square + Line(0, 0, 0, 9) + Line(0, 9, 0, 0) +  // the last side twice
        " 0 CIRCLE 10 5 20 5 40 2 0 CIRCLE 10 5 20 5 40 2" + Line(3, 3, 3, 3) + Line(50, 0, 60, 0) +
        Line(60, 0, 60, 7) + Line(-50, 0, -50.002, 0) +
        " 0 TEXT 1 a 0 TEXT 1 b 0 DIMENSION 2 *D1 0 HATCH 2 SOLID 0 INSERT 2 NONE 10 0 20 0"
        " 0 INSERT 2 B 10 0 20 0 210 1 230 0 0 INSERT 2 B 10 0 20 0 41 0 0 LINE 8 Axes 10 0 0 "
        "CIRCLE 8 ice"
        " 0 LINE 67 1 0 LINE 60 1 0 LINE 10 0 20 0 30 0 11 9 21 9 31 9"
        " 0 CIRCLE 10 0 20 0 40 1 210 1 220 0 230 0 0 POLYLINE 70 16 0 VERTEX 0 SEQEND"
        " 0 LWPOLYLINE 70 1 43 .5 38 2 10 70 20 0 10 79 20 0 10 79 20 9"
        " 0 LWPOLYLINE 70 1 10 0 20 40 10 9 20 40 10 5 20 40";
    const SectionModel section = Read(File(
        all,
        "0 SECTION 2 TABLES 0 LAYER 2 AXES 70 0 62 -7 0 LAYER 2 Ice 70 1 62 7 0 LAYER 2 0 70 0 "
        "62 7 0 ENDSEC 0 SECTION 2 BLOCKS 0 BLOCK 2 B 0 ENDBLK 0 ENDSEC"));
    EXPECT_EQ(section.elements.size(), 3U);
    const std::string remarks = Joined(section.remarks);
    for (const char* expected : {"open chain of 2 curves left out: from (50, 0)",
                                 "to (60, 7)",
                                 "a gap of 12.2",
                                 "curves drawn twice, taken once: 1,",
                                 "outlines drawn twice, taken once: 1,",
                                 "LINE without length left out: 1,",
                                 "TEXT left out: 2, the first at line ",
                                 "DIMENSION left out: 1,",
                                 "HATCH left out: 1,",
                                 "NONE, which the file does not hold",
                                 "block B aslant to the x-y plane",
                                 "with a scale of 0",
                                 "layer Axes, which is off or frozen",
                                 "layer ice, which is off or frozen",
                                 "in paper space left out: 1,",
                                 "invisible entities left out: 1,",
                                 "LINE not parallel to the x-y plane",
                                 "CIRCLE not parallel to the x-y plane",
                                 "POLYLINE that is a mesh",
                                 "with a width",
                                 "closed curves that enclose nothing left out: 1,",
                                 "heights, z from 0 to 2",
                                 "no longer than the join tolerance left out: 1,"}) {
        EXPECT_NE(remarks.find(expected), std::string::npos) << expected << "\n" << remarks;
    }
    EXPECT_EQ(section.remarks.size(), 21U) << remarks;
}

TEST(DxfDrawing, NamesTheLineOfWhatIsWrong) {
    struct Case {
        const char* name;
        std::string text;
        const char* expected;
    };
    // The entities of `File` begin at line 15.
    std::string bomb, row = "0 SECTION 2 BLOCKS 0 BLOCK 2 B0 0 LINE 10 0 20 0 11 1 21 0 0 ENDBLK";
    for (int i = 1; i < 15; ++i) {
        row += " 0 BLOCK 2 B" + std::to_string(i);
        for (int k = 0; k < 9; ++k) row += " 0 INSERT 10 0 20 0 2 B" + std::to_string(i - 1);
        row += " 0 ENDBLK";
    }
    row += " 0 BLOCK 2 SELF 0 INSERT 2 SELF 10 0 20 0 0 ENDBLK 0 ENDSEC";
    std::string many = "0 SPLINE 71 3 ", dense,
                tiny = Line(0, 0, 5, 0) + Line(5.03, 0, 5, 5) + Line(5, 5, 0, 0);
    for (int i = 0; i < 20000; ++i) many += " 10 " + std::to_string(i % 7) + " 20 0 40 0 40 1";
    for (int i = 0; i < 20000; ++i) dense += Line(0, 0, 9, i) + Line(1e-4 + i * 1e-9, 0, i, 8);
    for (int i = 0; i < 6; ++i) tiny += Line(5 + i * .005, 0, 5.005 + i * .005, 0);
    const Case cases[] = {
        {"empty", "", "no section ENTITIES"},
        {"binary", std::string("AutoCAD Binary DXF\r\n\x1a\0", 22),
         "save the drawing as ASCII DXF"},
        {"no drawing", "hello\nworld\n", "line 1: expected a group code, found 'hello'"},
        {"no section", Lines("0 LINE"), "line 2: expected a section"},
        {"half a pair", Lines("0 SECTION 2 ENTITIES 0"), "line 5: the text ends after"},
        {"cut off", Lines("0 SECTION 2 ENTITIES 0 LINE 10 0"), "ends within the section ENTITIES"},
        {"open block", Lines("0 SECTION 2 BLOCKS 0 BLOCK 2 B 0 ENDSEC"), "line 10: the block B"},
        {"code", File("0 LINE 1x 0"), "line 17: expected a group code, found '1x'"},
        {"word", File("0 CIRCLE 10 0 20 0 40 five"), "line 22: 'five' (group 40)"},
        {"comma", File("0 CIRCLE 10 0,5 20 0 40 5"), "line 18: '0,5'"},
        {"not a number", File("0 CIRCLE 10 nan 20 0 40 5"), "line 18: 'nan'"},
        {"too large", File("0 CIRCLE 10 0 20 0 40 1e999"), "line 22: '1e999'"},
        {"missing", File("0 CIRCLE 10 0 20 0"), "line 16: CIRCLE: its group 40 is missing"},
        {"twice", File("0 CIRCLE 10 0 10 1 20 0 40 1"), "line 20: the group 10 comes twice"},
        {"negative", File("0 CIRCLE 10 0 20 0 40 -1"), "line 16: CIRCLE: its radius is negative"},
        {"endless", File("0 CIRCLE 10 0 20 0 40 1e300"), "line 16: CIRCLE: the chord error"},
        {"far away", File("0 CIRCLE 10 1e13 20 0 40 1"), "line 16: CIRCLE: it reaches beyond"},
        {"far bulge", File("0 LWPOLYLINE 10 0 20 0 42 1e200 10 9 20 0"), "line 16: LWPOLYLINE"},
        {"flat ellipse", File("0 ELLIPSE 10 0 20 0 11 1 21 0 40 0"), "the ratio of its axes is 0"},
        {"count", File("0 LWPOLYLINE 90 3 10 0 20 0 10 1 20 0"),
         "line 16: LWPOLYLINE: it states 3"},
        {"huge count", File("0 SPLINE 73 2000000000 10 0 20 0"),
         "states 2000000000 control points"},
        {"no y", File("0 LWPOLYLINE 10 0 10 1 20 0"), "line 16: LWPOLYLINE: a point lacks its y"},
        {"last y", File("0 SPLINE 71 1 40 0 40 0 40 1 40 1 10 0 20 0 10 9"), "lacks its x or y"},
        {"last y of fit points", File("0 SPLINE 71 3 11 0 21 0 11 9"), "lacks its x or y"},
        {"heights", File("0 LWPOLYLINE 38 2 10 0 20 0 38 3"),
         "line 24: the group 38 comes twice in this LWPOLYLINE, as 2 and as 3"},
        {"height beside z", File("0 LWPOLYLINE 38 2 10 0 20 0 30 3 10 9 20 0 30 3"),
         "at z = 3 (group 30) and at z = 2 (group 38)"},
        {"closed or not", File("0 LWPOLYLINE 70 1 10 0 20 0 70 0"), "as 1 and as 0"},
        {"sloping points", File("0 LWPOLYLINE 70 1 10 0 20 0 30 0 10 9 20 0 30 1 10 0 20 9 30 0"),
         "(LWPOLYLINE not parallel to the x-y plane left out: 1"},
        {"knots", File("0 SPLINE 71 1 40 0 40 1 10 0 20 0 10 1 20 0"), "2 knots where its degree"},
        {"falling", File("0 SPLINE 71 1 40 0 40 0 40 -1 40 1 10 0 20 0 10 1 20 0"), "do not rise"},
        {"weight", File("0 SPLINE 71 1 40 0 40 0 40 1 40 1 41 0 41 1 10 0 20 0 10 1 20 0"),
         "line 16: SPLINE: it has a weight"},
        {"degree", File("0 SPLINE 71 99 40 0 10 0 20 0"), "its degree is 99"},
        {"many", File(many), "line 16: SPLINE: it has 40000 knots"},
        {"no end", File("0 POLYLINE 70 1 0 VERTEX 10 0 20 0"), "line 16: POLYLINE: its vertices"},
        {"stray part", File("0 SECTION 8 A 0 EOF"), "no closed outline in the drawing (SECTION"},
        {"three ends", File(Line(0, 0, 9, 0) + Line(0, 0, 5, 5) + Line(-3, 1, 0, .005)),
         "line 16: 3 curve ends meet at (0, 0) (of the curves at the lines 16, 26, 36)"},
        {"a bundle", File(dense), "line 16: 39999 curve ends meet at (0, 0)"},
        {"a row of short ones", File(tiny), "shorter than the join tolerance"},
        {"blocks of blocks", File("0 INSERT 2 B14 10 0 20 0", row), "more than 500000 entities"},
        {"block in itself", File("0 INSERT 2 SELF 10 0 20 0", row), "more than 16 deep"},
    };
    for (const Case& each : cases) {
        EXPECT_NE(ErrorOf(each.text).find(each.expected), std::string::npos)
            << each.name << ": " << ErrorOf(each.text);
    }
    for (const double tolerance : {1e-300, 0.0, -1.0, std::nan("")}) {
        for (const Shape& shape : Shapes()) {
            if (tolerance > 0.0 && shape.area == std::round(shape.area)) continue;  // no curve
            EXPECT_NE(ErrorOf(File(shape.entities, shape.blocks), Fine(tolerance)), "no error")
                << shape.name;
        }
    }
}

TEST(DxfDrawing, ReadsWhatOtherProgramsWrite) {
    const std::string plain = File("0 CIRCLE 10 1 20 2 40 5");
    std::string padded = "\xEF\xBB\xBF  999\r\nby hand\r\n";
    for (const char letter : plain) padded += letter == '\n' ? "  \r\n" : std::string(1, letter);
    const std::size_t start = padded.find("CIRCLE");
    padded.replace(start, 6, "CIRCLE\r\n 62\r\n256\r\n1001\r\nAPP\r\n1040\r\nx\r\n999\r\ninside");
    EXPECT_EQ(Read(padded).elements[0].ring, Read(plain).elements[0].ring);
    EXPECT_EQ(Read(padded).elements[0].label, "line 18");
    const SectionModel cut = Read(plain.substr(0, plain.size() - 6));
    EXPECT_NE(Joined(cut.remarks).find("without EOF"), std::string::npos);
}

TEST(DxfDrawing, SurvivesEveryPrefixAndEveryChangedByte) {
    std::string text = File(
        "0 LWPOLYLINE 90 3 70 1 10 0 20 0 42 .3 10 9 20 0 10 9 20 9 0 ARC 10 20 20 0 40 5 50 0 51 "
        "180"
        " 0 SPLINE 71 2 72 6 73 3 40 0 40 0 40 0 40 1 40 1 40 1 10 15 20 0 10 20 20 -8 10 25 20 0 "
        "0 INSERT 2 B 10 40 20 0 41 2 50 30 0 SPLINE 70 1 74 3 11 0 21 20 11 9 21 20 11 5 21 30 "
        "0 ELLIPSE 10 50 20 0 11 3 21 0 40 .5 0 POLYLINE 70 1 0 VERTEX 10 0 20 50 42 1 0 VERTEX "
        "10 9 20 50 0 SEQEND 0 LINE 10 1 20 1 11 3 21 3",
        "0 SECTION 2 TABLES 0 LAYER 2 0 70 0 62 7 0 ENDSEC 0 SECTION 2 BLOCKS 0 BLOCK 2 B 0 CIRCLE "
        "10 0 20 0 40 1 0 ENDBLK 0 ENDSEC");
    ASSERT_EQ(Read(text).elements.size(), 6U);
    std::size_t sections = 0, errors = 0;
    const auto check = [&](const std::string& damaged) {
        try {
            const SectionModel section = Read(damaged);
            ASSERT_FALSE(section.elements.empty());
            for (const Element& element : section.elements) {
                ASSERT_GE(element.ring.size(), 3U);
                for (const auto& [x, y] : element.ring) ASSERT_TRUE(std::isfinite(x + y));
            }
            ++sections;
        } catch (const InputError& error) {
            ASSERT_EQ(std::string(error.what()).find('\n'), std::string::npos);
            ++errors;
        }
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        check(text.substr(0, i));
        for (const char letter : {'7', '-', 'e', '\n', '\0', '\xff'}) {
            const char before = std::exchange(text[i], letter);
            check(text);
            text[i] = before;
        }
    }
    EXPECT_GT(sections, text.size());
    EXPECT_GT(errors, text.size());
}

TEST(DxfDrawing, ReadsTheExamples) {
    const auto area = [](const char* file, std::size_t outlines) {
        const SectionModel section = Read(ReadInput(file), Fine(1e-4));
        EXPECT_EQ(section.elements.size(), outlines);
        EXPECT_EQ(section.remarks.size(), 1U) << Joined(section.remarks);
        return MomentsOf(section).area;
    };
    EXPECT_NEAR(area("examples/ipe-300-lines.dxf", 1),
                (2 * 150 * 10.7 + 7.1 * 278.6) + 225 * (4 - kPi), 1e-9);
    EXPECT_NEAR(area("examples/extrusion-cm.dxf", 4), 40 - (4 - kPi) - 3 * kPi - 0.75 * kPi, 1e-9);
}

// Drawings by other hands, beside the source tree where they are at hand. The expected areas come
// from a script that shares nothing with this reader: it samples the raw entities (4000 points an
// arc, 1000 a spline by the Cox-de Boor recursion), chains them greedily and sums the trapezoids.
TEST(DxfDrawing, AgreesWithIndependentAreasOfForeignDrawings) {
    const std::filesystem::path folder = "../shared/data/dxf";
    if (!std::filesystem::is_directory(folder))
        GTEST_SKIP() << "the drawings are others' and not committed: no " << folder;
    struct Case {
        const char* file;
        std::vector<double> areas;
    };
    const Case cases[] = {
        {"200ub22_R12dxf_linesandarcs.dxf", {2869.994350711}},
        {"200x100x6.dxf", {19896.132856508, 16522.539846386}},
        {"section_holes_complex.dxf", {253.341501564, 46.948484386, 46.948484386}},
        {"tophat_autocadlite.dxf", {789.552271534}}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.file);
        const SectionModel section = Read(ReadInput((folder / each.file).string()), Fine(1e-6));
        ASSERT_EQ(section.elements.size(), each.areas.size());
        for (std::size_t i = 0; i < each.areas.size(); ++i) {
            SectionModel one;
            one.elements = {section.elements[i]};
            EXPECT_NEAR(std::abs(MomentsOf(one).area), each.areas[i], 1e-6 * each.areas[i]);
            EXPECT_EQ(section.elements[i].isSolid, i == 0);
        }
    }
}

}  // namespace
