// Points in CSV as people and spreadsheets write them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "HalvornEngine.h"
#include "read/csv/points_csv.h"
#include "read/nesting.h"
#include "values/evaluate.h"

namespace {

using namespace halvorn::engine;

double Number(const Report& report, const char* key) {
    return report.Find(key)->number;
}

SectionModel Csv(const std::string& text) {
    return ReadPointsCsv(text, "points.csv", {});
}

// A square of 10 with a hole of 2 x 3, written in several ways.
TEST(PointsCsv, ReadsRingsSeparatorsUnitsAndKinds) {
    const char* const texts[] = {
        "0,0\n10,0\n10,10\n0,10\n\n1,1\n3,1\n3,4\n1,4\n",
        "# drawn by hand\nx,y\n0,0\n10,0\n10,10\n0,10\n0,0\n\n\n1,1\n1,4\n3,4\n3,1\n1,1\n",
        "x;y;contour\n0;0;a\n10;0;a\n10;10;a\n0,0;1e1;a\n1,0;1;b\n3;1;b\n3;4;b\n1;4;b\n",
        // As spreadsheets write it: marked, decimal commas, an empty row.
        "\xEF\xBB\xBF# one, two; three\r\nX;Y\r\n0,0;0\r\n10;0\r\n10;10,0\r\n0;10\r\n;\r\n"
        "1;1\r\n3;1\r\n3;4\r\n1;4\r\n",
        // With point numbers, zeros for z, separators behind and before, and in other orders.
        "\xEF\xBB\xBF\"Nr.\";\"X\";\"Y\";\"Z\";;\r\n1;0,0;0,0;0,000;;\r\n2;10;0;0;;\r\n3;\"10,0\";"
        "10;0;;\r\n"
        "4;0;10;-0,0;;\r\n;;;;;\r\n1;1;1;0;;\r\n2;3;1;0;;\r\n3;3;4;0;;\r\n4;1;4;0;;\r\n",
        ",x,y,contour\n0,0,0,a\n1,10,0,a\n2,10,10,a\n3,0,10,a\n4,1,1,b\n5,3,1,b\n6,3,4,b\n7,1,4,"
        "b\n",
        "#;x;y\n1;0;0\n2;10;0\n3;10;10\n4;0;10\n\n5;1;1\n6;3;1\n7;3;4\n8;1;4\n",
        "1,0,0\n2,10,0\n3,10,10\n4,0,10\n\n1,1,1\n2,3,1\n3,3,4\n4,1,4\n",
        "1;0;0;0\n2;10;0;0\n3;10;10;0\n4;0;10;0\n\n1;1;1;0\n2;3;1;0\n3;3;4;0\n4;1;4;0\n",
        "0,0,0\n10,0,0\n10,10,0.0\n0,10,0\n\n1,1,0\n3,1,0\n3,4,0\n1,4,0\n",
        "sep=;\n;;\n;0;0;;;;;\n;10;0;\n;10;10;\n;0;10;\n;;\n;1;1;\n;3;1;\n;3;4;;;;;\n;1;4;\n",
        "# X, Y\n0,0\n10,0\n10,10\n0,10\n, ,\" \",\n1,1\n3,1\n3,4\n1,4\n",
        "\t#"
        "\tnext\r\tKind\ty\tx\t\r\tSolid\t0\t0\t\r\tSOLID\t0\t10\r\tsolid\t10\t10\r\tsolid\t10\t0\r"
        "\t\t\r"
        "\thole\t1\t1\r\thole\t1\t3\r\thole\t4\t3\r\thole\t4\t1\r",
        "0\t0\n10\t0\n10\t10\n0\t+10\r\n\r\n1\t1\n3\t1\n3\t4\n1\t4",
        "x,y,contour,kind\n1,1,b,hole\n3,1,b,hole\n3,4,b,hole\n1,4,b,hole\n0,0,a,solid\n"
        "10,0,a,solid\n10,10,a,solid\n0,10,a,solid\n"};
    for (const char* text : texts) {
        SCOPED_TRACE(text);
        const SectionModel section = Csv(text);
        ASSERT_EQ(section.elements.size(), 2U);
        EXPECT_EQ(section.elements[0].ring.size(), 4U);
        EXPECT_NE(section.elements[0].isSolid, section.elements[1].isSolid);
        EXPECT_DOUBLE_EQ(Number(Evaluate(section, {}), "area"), 94.0);
        EXPECT_EQ(section.remarks.size(), 1U) << "that mm are assumed";
    }
}

Points Rectangle(double x, double y, double width, double height) {
    return {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
}

// Every `step`th corner of a regular polygon.
Points Star(std::size_t corners, std::size_t step, double radius) {
    Points ring;
    for (std::size_t i = 0; i < corners; ++i) {
        const double angle = 6.283185307179586 * static_cast<double>(i * step % corners) /
                             static_cast<double>(corners);
        ring.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
    }
    return ring;
}

// Returns "s" or "h" of each ring, or the message.
std::string KindsByNesting(const std::vector<Points>& rings) {
    std::vector<Element> elements(rings.size());
    for (std::size_t i = 0; i < rings.size(); ++i) {
        elements[i].label = std::string(1, static_cast<char>('a' + i));
        elements[i].ring = rings[i];
    }
    try {
        ClassifyByNesting(&elements, "test");
    } catch (const InputError& error) {
        return error.what();
    }
    std::string kinds;
    for (const Element& element : elements) kinds += element.isSolid ? 's' : 'h';
    return kinds;
}

struct NestingCase {
    const char* name;
    std::vector<Points> rings;
    const char* outcome;
};

std::vector<NestingCase> NestingCases() {
    const auto box = Rectangle;
    const Points plate = box(0, 0, 100, 60), tie = {{0, 0}, {60, 60}, {60, 0}, {0, 60}};
    const Points keyhole = {{0, 0}, {99, 0}, {99, 99}, {0, 99}, {0, 0},
                            {5, 5}, {5, 94}, {94, 94}, {94, 5}, {5, 5}};
    const Points fin = {{0, 0},        {100, 0},      {100, 30}, {150, 30},
                        {150, 30.008}, {100, 30.008}, {100, 60}, {0, 60}};
    const double slot = 1e-4 * std::hypot(6, 20), tube = 1e-4 * std::hypot(100, 60);
    const auto poking = [&](double by) { return std::vector{plate, box(9, 40 + by, 6, 20)}; };
    const auto inset = [&](double by) {
        return std::vector{plate, box(by, by, 100 - 2 * by, 60 - 2 * by)};
    };
    return {
        {"islands", {plate, box(10, 10, 80, 40), box(20, 20, 9, 9), box(40, 20, 9, 9)}, "shss"},
        {"bricks, rounded",
         {box(0, 0, 10, 10), box(10.001, 0, 10, 10), box(4, 9.999, 10, 10)},
         "sss"},
        {"one ring filled by others", {plate, box(0, 0, 50, 60), box(50, 0, 50, 60)}, "shh"},
        {"a slot that begins on the edge", poking(0), "sh"},
        {"one that begins just outside", poking(0.9 * slot), "sh"},
        {"one that begins farther outside", poking(1.1 * slot), "crosses"},
        {"a bar set into the edge just", {plate, box(9, 60 - 0.9 * slot, 6, 20)}, "ss"},
        {"a bar set into the edge", {plate, box(9, 60 - 1.1 * slot, 6, 20)}, "crosses"},
        {"twice", inset(0), "lies on"},
        {"twice, inexact", inset(0.9 * tube), "lies on"},
        {"a thin wall", inset(1.1 * tube), "sh"},
        {"twice but for a fin", {plate, fin}, "lies on"},
        {"touched in the middles of its sides",
         {plate, {{0, 0}, {100, 0}, {99.995, 30}, {50, 59.995}, {0.005, 30}}},
         "sh"},
        {"around a keyhole's void", {keyhole, box(20, 20, 30, 30), box(1, 20, 3, 30)}, "ssh"},
        {"a keyhole's void filled", {keyhole, box(5, 5, 89, 89)}, "lies on"},
        {"across a keyhole's wall", {keyhole, box(2, 20, 9, 9)}, "crosses"},
        {"in the lobes of a bow tie",
         {tie, box(2, 28, 9, 4), box(49, 28, 9, 4), box(28, 5, 4, 4)},
         "shhs"},
        {"in a tip and the middle of a star",
         {Star(5, 2, 50), box(35, -1, 3, 2), box(-5, -5, 9, 9)},
         "shs"},
        {"a tube in a frame of a million sizes",
         {box(-1e8, -1e8, 3e8, 3e8), plate, box(5, 5, 90, 50)},
         "shs"},
        {"one in a frame of 1e12 sizes", {box(-1e13, -1e13, 3e13, 3e13), box(0, 0, 9, 9)}, "sh"},
        {"a tube beside one 1e7 sizes away",
         {plate, box(5, 5, 90, 50), box(1e9, 1e9, 9, 9)},
         "shs"}};
}

TEST(Nesting, TellsSolidsFromHolesHoweverTheyArePlaced) {
    const std::pair<const char*, std::function<Point(const Point&)>> placements[] = {
        {"as drawn", [](const Point& p) { return p; }},
        {"in metres", [](const Point& p) { return 1e-3 * p; }},
        {"mirrored", [](const Point& p) { return Point(-p.x, p.y); }},
        {"turned", [](const Point& p) { return Point(-p.y, p.x); }},
        {"far away", [](const Point& p) { return p + Point(1e5, -2e5); }}};
    for (const NestingCase& each : NestingCases()) {
        for (const auto& [placement, place] : placements) {
            SCOPED_TRACE(std::string(each.name) + ", " + placement);
            std::vector<Points> rings = each.rings;
            for (Points& ring : rings)
                std::transform(ring.begin(), ring.end(), ring.begin(), place);
            std::string expected = each.outcome;
            const bool isRefused = expected.size() > rings.size();
            if (isRefused)
                expected.insert(0, "test: b: ").append(" the outline of a, so nothing tells");
            EXPECT_EQ(KindsByNesting(rings).substr(0, expected.size()), expected);
            std::reverse(rings.begin(), rings.end());
            for (Points& ring : rings) std::reverse(ring.begin(), ring.end());
            if (!isRefused) std::reverse(expected.begin(), expected.end());
            EXPECT_EQ(KindsByNesting(rings).substr(0, expected.size()), expected);
        }
    }
}

TEST(Nesting, RefusesMoreCrossingsThanCanBeArranged) {
    const Points tangle = Star(701, 268, 1000);
    Points comb = {{999, 2000}, {0, 2000}}, rake;
    for (int i = 0; i < 500; ++i) comb.emplace_back(2 * i, 1000 * (i % 2));
    for (const Point& point : comb) rake.emplace_back(point.y, point.x);
    EXPECT_EQ(KindsByNesting({tangle, Rectangle(5000, 0, 9, 9)}), "ss") << "nothing depends on it";
    EXPECT_EQ(
        KindsByNesting({tangle, Rectangle(900, 0, 9, 9)}),
        "test: a: crosses itself, and together the outlines cross in more than 100000 places; "
        "draw it without crossings");
    EXPECT_EQ(KindsByNesting({Rectangle(5000, 0, 9, 9), comb, rake}),
              "test: c: crosses the outline of b, and together the outlines cross in more than "
              "100000 places; draw outlines apart or one within the other");
    EXPECT_EQ(KindsByNesting({Rectangle(0, 0, 1e200, 1e200), Rectangle(0, 0, 1, 1)}),
              "test: the coordinates are too large; check the coordinates of the outlines");
}

TEST(PointsCsv, ReadsTheUnitThatItStates) {
    const std::pair<const char*, const char*> cases[] = {
        {"# unit: m\n", "m"},
        {"# units: cm\n", "cm"},
        {"# Unit: CM\n", "cm"},
        {"#unit:cm\n", "cm"},
        {"## UNITS = In.\n", "in"},
        {"\"# unit: m\",,\n", "m"},
        {"# unit:,cm,\n", "cm"},
        {"# unit [m]\n", "m"},
        {"# unit of length: cm; forces in kN\n", "cm"},
        {"# unity, community: m\n# units\tcm\n", "cm"},
        {"x [cm],y [cm]\n", "cm"},
        {"X (CM) , Y\n", "cm"},
        {"x,y\n[m],(M)\n", "m"},
        {"x/in,y / in,z in\n", "in"},
        {"# x [m], y [m]\n", "m"},
        {"# Unit: m\nx [m],y [m]\n", "m"},
        {"# x, y of units in mm\n", ""},
        {"# the communities: m\n", ""},
        {"# units in mm\n", ""}};
    for (const auto& [head, unit] : cases) {
        const SectionModel section = Csv(std::string(head) + "0,0\n1,0\n0,1\n");
        EXPECT_EQ(section.unit, *unit == '\0' ? "mm" : unit) << head;
        EXPECT_EQ(section.remarks.size(), *unit == '\0' ? 1U : 0U) << head;
    }
}

TEST(PointsCsv, RefusesWhatItCannotReadAndSaysWhere) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "there are no points"},
        {"0,0\n1,0\n", "line 1: a contour needs at least 3 points, found 2"},
        {"0,0\n1,0\n1,nan\n", "line 3: \"nan\" is not a finite number"},
        {"0,0\n1,0\n1,1e999\n", "line 3: \"1e999\" is not a finite number"},
        {"0,0\n1\n", "line 2: expected x and y, found 1 cell"},
        {"0;0\n1;0\n1,5;0,5,5\n", "line 3: \"0,5,5\" is not a finite number"},
        {"\xFF\xFE,1,2\n", "UTF-16 text or no text at all; save it as UTF-8"},
        {"\xFE\xFF,1,2\n", "save it as UTF-8"},
        {std::string("1\0,\0002\0", 6), "save it as UTF-8"},
        {"x;y\n0;0\n1,000;2.5\n", "line 3: \"2.5\" has a decimal point, numbers above have"},
        {"0,0\n+-1,0\n", "line 2: \"+-1\" is not a finite number"},
        {"0,0,a,solid\n1,0,a\n", "line 2: the contour is a solid above and nothing here"},
        {"0,0\n9,0\n0,9\n\n1,1\n9,1\n1,9\n", "line 5: crosses the outline of line 1"},
        {"0,0\n9,0\n0,9\n\n9,0\n0,9\n0,0\n", "line 5: lies on the outline of line 1"},
        {"width,height\n0,0\n", "line 1: neither a point nor a header"},
        {"# unit: feet\n0,0\n", "line 1: unknown unit \"feet\""},
        {"# unit:\n0,0\n", "line 1: unknown unit \"\""},
        {"# unit: in mm\n0,0\n", "line 1: unknown unit \"in mm\""},
        {"x [ft],y\n0,0\n", "line 1: unknown unit \"ft\""},
        {"# unit: mm\n0,0\n# Units: CM\n1,0\n", "line 3: the unit is cm here and mm in line 1"},
        {"# unit: mm\nx (m),y (m)\n", "line 2: the unit is m here and mm in line 1"},
        {"x [mm],y [cm]\n", "line 1: the unit is cm here and mm in line 1"},
        {"x,y,z\n0,0,0\n1,0,2.5\n", "line 3: z is 2.5, a section lies in the plane z = 0"},
        {"1,0,7\n2,5,7\n3,0,7\n4,9,8\n5,7,8\n6,9,8\n",
         "line 1: the first column may be point numbers"},
        {"1,0,0,0,0\n", "line 1: nothing says which of 5 columns are x and y"},
        {"x,y,radius\n0,0,1\n", "line 1: the header names an unknown column: \"radius\""},
        {"x,y,x\n0,0,1\n", "line 1: the header names a column twice"},
        {",x,y\n5,0,0\n9,1,0\n7,1,1\n", "line 1: column 1 has no name"},
        {"x,y\n0,0,solid\n", "line 2: found 3 cells under a header of 2"},
        {"x,y,contour\n0,0,a\n1,0,b\n0,1,a\n", "line 4: contour a is continued"},
        {"0,0,a,wood\n", "line 1: unknown kind \"wood\""},
        {"0,0,a,solid\n1,0,a,hole\n", "line 2: the contour is a solid above and a hole here"},
        {"0,0,a,solid\n1,0,a,solid\n0,1,a,solid\n5,5,b\n6,5,b\n5,6,b\n",
         "line 4: this contour has no kind"}};
    for (const auto& [text, expected] : cases) {
        SCOPED_TRACE(text);
        try {
            Csv(text);
            ADD_FAILURE() << "was read";
        } catch (const InputError& error) {
            EXPECT_NE(std::string(error.what()).find(expected), std::string::npos) << error.what();
        }
    }
}

}  // namespace
