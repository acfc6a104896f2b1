// What a drawing says besides its curves: copies of blocks, clipping, layers, frames, and outlines
// that it does not quite close.
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "dxf_text.h"
#include "read/open_section.h"

namespace {

using namespace halvorn::engine;

std::string Rectangle(double x, double y, double width, double height) {
    std::ostringstream text;
    text << " 0 LWPOLYLINE 70 1 10 " << x << " 20 " << y << " 10 " << x + width << " 20 " << y
         << " 10 " << x + width << " 20 " << y + height << " 10 " << x << " 20 " << y + height;
    return text.str();
}

std::string Circle(double x, double y, double radius) {
    std::ostringstream text;
    text << " 0 CIRCLE 10 " << x << " 20 " << y << " 40 " << radius;
    return text.str();
}

std::string Block(const std::string& entities) {
    return "0 SECTION 2 BLOCKS 0 BLOCK 2 B 10 1 20 2" + entities + " 0 ENDBLK 0 ENDSEC";
}

std::string Kinds(const SectionModel& section) {
    std::string kinds;
    for (const Element& element : section.elements) kinds += element.isSolid ? 's' : 'h';
    return kinds;
}

// The middles of the outlines, in tenths.
std::set<std::pair<long, long>> Middles(const SectionModel& section) {
    std::set<std::pair<long, long>> middles;
    for (const Element& element : section.elements) {
        double x = 0.0, y = 0.0;
        for (const auto& point : element.ring) x += point.x, y += point.y;
        const auto count = static_cast<double>(element.ring.size());
        middles.emplace(std::lround(10 * x / count), std::lround(10 * y / count));
    }
    return middles;
}

TEST(Drawing, RepeatsBlocksInRowsAndColumnsThatTurnWithThemAndDoNotStretch) {
    const std::string block = Block(Circle(1, 2, 1)), turned = "0 INSERT 2 B 10 50 20 60 50 90";
    struct Case {
        std::string insert;
        std::set<std::pair<long, long>> middles;
    };
    const Case cases[] = {
        {turned + " 41 3 42 3 70 3 71 2 44 10 45 20",
         {{500, 600}, {500, 700}, {500, 800}, {300, 600}, {300, 700}, {300, 800}}},
        {turned + " 71 2 44 10 45 20", {{500, 600}, {300, 600}}},
        {turned + " 70 2 44 10 45 20", {{500, 600}, {500, 700}}},
        {turned + " 70 0 71 -1 44 10 45 20", {{500, 600}}},
        {turned + " 70 2 71 2 44 10 45 20 230 -1",
         {{-500, 600}, {-500, 700}, {-300, 600}, {-300, 700}}}};
    for (const Case& each : cases) {
        EXPECT_EQ(Middles(Read(File(each.insert, block))), each.middles) << each.insert;
    }
    EXPECT_NE(ErrorOf(File("0 INSERT 2 B 10 0 20 0 70 2000000000 71 2000000000", block))
                  .find("its 2000000000 columns and 2000000000 rows are more than 10000 copies"),
              std::string::npos);
    const std::string grid = " 0 INSERT 10 0 20 0 70 100 71 100 2 ", two = " 0 ENDBLK 0 BLOCK 2 C";
    // However large the chord tolerance is: 192 points a circle.
    InputOptions coarse;
    coarse.chordTolerance = 50;
    EXPECT_NE(ErrorOf(File(grid + "B", block), coarse).find("only the section in the drawing, or"),
              std::string::npos);
    EXPECT_NE(ErrorOf(File(grid + "B", Block(grid + "C" + two))).find("more than 500000"),
              std::string::npos);
}

// Three sides of a rectangle 100 x 60 and the fourth from the top down to `end`.
std::string OpenRectangle(double end, const std::string& z = "") {
    return Line(0, 0, 100, 0) + Line(100, 0, 100, 60) + z + Line(100, 60, 0, 60) +
           Line(0, 60, 0, end);
}

TEST(Drawing, RefusesWhatWouldHoldAnOutlineOrLieInOneIfItWereClosed) {
    const std::string holes = Circle(30, 30, 10) + Circle(70, 30, 10);
    const std::string tilted = " 210 0 220 .01 230 1", square = Rectangle(200, 0, 50, 50);
    const auto arc = [](double x, double from, double to) {
        std::ostringstream text;
        text << " 0 ARC 10 " << x << " 20 30 40 10 50 " << from << " 51 " << to;
        return text.str();
    };
    const std::string plate = Rectangle(0, 0, 100, 60), hole = arc(50, 0, 355);
    std::ostringstream tangle;  // nearly closed, and crosses itself more than 100000 times
    tangle << " 0 LWPOLYLINE";
    for (int i = 0; i < 700; ++i) {
        tangle << " 10 " << 1000 * std::cos(2.4 * i) - 903 << " 20 " << 1000 * std::sin(2.4 * i);
    }
    struct Case {
        const char* name;
        std::string entities;
        const char* error;       // nothing: `kinds` are read
        const char* kinds = "";  // of the outlines
        std::string block = "";
    };
    const Case cases[] = {
        {"gap", OpenRectangle(0.5) + holes,
         "line 46: an open chain goes round the outline at line 56, with a gap of 0.5 from "
         "(0, 0.5) to (0, 0) at line 16; close it in the drawing or give --join-tolerance 0.51; "},
        {"just below 5 %", OpenRectangle(15.23) + holes,
         "a gap of 15.23 from (0, 15.23) to (0, 0)"},
        {"just above 5 %", OpenRectangle(15.25) + holes, "", "ss"},
        {"nothing within", OpenRectangle(0.5) + Circle(200, 30, 10), "", "s"},
        {"closed besides", OpenRectangle(0.5) + Rectangle(0, 0, 100, 60) + holes, "", "shh"},
        {"nearer end of another", OpenRectangle(0.5) + Line(0, 0.3, -9, 0.3) + holes,
         "a gap of 0.5 from (0, 0.5) to (0, 0)"},
        {"two gaps",
         Line(1, 0, 100, 0) + Line(100, 0, 100, 60) + Line(98, 60, 0, 60) + Line(0, 60, 0, 0) +
             holes,
         "a ring of open chains goes round the outline at line 56, with a gap of 2 from (100, 60) "
         "to (98, 60) at line 36; close it in the drawing or give --join-tolerance 2.1; "},
        {"a sloping line", OpenRectangle(0, " 31 5") + holes,
         "line 26: a curve that is not parallel to the x-y plane goes round the outline at line 58 "
         "with the chains that it joins; give all its points the same z"},
        {"a sloping circle", Circle(50, 30, 40) + tilted + holes, "line 16: a curve that is not"},
        // Seen from so far aslant, the circle's own x axis runs against the drawing's.
        {"a circle farther aslant", Circle(-50, -30, 40) + " 210 0 220 .1 230 1" + holes,
         "line 16: a curve that is not"},
        {"an upright circle", Circle(0, 30, 40) + " 210 1 220 0 230 0" + holes, "", "ss"},
        {"a sloping block", "0 INSERT 2 B 10 0 20 0" + tilted + holes,
         "line 24: a curve that is not", "", Block(plate)},
        {"a hole", plate + hole,
         "line 36: an open chain lies within the outline at line 16, with a gap of 0.872387747 "
         "from "
         "(59.961947, 29.1284426) to (60, 30) at line 36; close it in the drawing or give "
         "--join-tolerance 0.88; "},
        {"a hole in two", plate + arc(50, 0, 175) + arc(50, 180, 355),
         "a ring of open chains lies within the outline at line 16, with a gap of 0.872387"},
        {"in a hole", plate + Circle(50, 30, 20) + hole, "lies within the outline at line 16"},
        {"closed besides, within", plate + Circle(50, 30, 10) + arc(50, 0, 359.9), "", "sh"},
        {"far open within", plate + arc(50, 0, 270), "", "s"},
        {"across the edge", plate + arc(100, 0, 355), "", "s"},
        {"outside", plate + arc(150, 0, 355), "", "s"},
        {"lines near each other", plate + Line(9, 30, 90, 30) + Line(90, 32, 9, 32), "", "s"},
        {"forth and back", plate + " 0 LWPOLYLINE 10 9 20 9 10 30 20 9 10 9.1 20 9", "", "s"},
        {"a piece in its gap", OpenRectangle(0.5) + Line(-.1, .48, -.1, .02) + square, "", "s"},
        {"open in open", OpenRectangle(0.5) + hole,
         "line 46: an open chain goes round the open chain at line 56, with a gap of 0.5 from "},
        {"open in open beside a square", OpenRectangle(0.5) + hole + square,
         "line 46: an open chain goes round the open chain at line 56, with a gap of 0.5 from "},
        {"a tangle", plate + holes + tangle.str(),
         "line 52: an open chain is nearly closed, and together the outlines cross in more than "
         "100000 places; if it is no outline, hide its layer or name the section's with --layer"},
        {"open in two open ones",
         Line(0.5, 0, 100, 0) + Line(100, 0, 100, 60) + Line(99.5, 60, 0, 60) + Line(0, 60, 0, 0) +
             hole + square,
         "a ring of open chains goes round the open chain at line 56, with a gap of 0.5"}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const std::string text = File(each.entities, each.block);
        if (*each.error != 0) {
            EXPECT_NE(ErrorOf(text).find(each.error), std::string::npos) << ErrorOf(text);
        } else {
            EXPECT_EQ(Kinds(Read(text)), each.kinds);
        }
    }
    InputOptions options;
    options.joinTolerance = 0.51;
    EXPECT_EQ(Kinds(Read(File(OpenRectangle(0.5) + holes), options)), "shh");
    // The join tolerance is in millimetres whatever the unit of the drawing.
    options.unit = "cm";
    EXPECT_NE(ErrorOf(File(OpenRectangle(0.5) + holes), options).find("--join-tolerance 5.1"),
              std::string::npos);
}

TEST(Drawing, RefusesClippedBlocksThatItWouldRead) {
    const auto drawing = [](const std::string& filter, const std::string& entry) {
        const std::string objects = "0 ENDSEC 0 SECTION 2 OBJECTS 0 DICTIONARY 5 2A 3 " + entry +
                                    " 360 2B 0 DICTIONARY 5 2B 102 {ACAD_REACTORS 330 9 102 } 3 "
                                    "SPATIAL 360 2C 0 SPATIAL_FILTER 5 2c 70 2 " +
                                    filter;
        return File(Circle(0, 0, 9) +
                        " 0 INSERT 5 7 102 {ACAD_XDICTIONARY 360 02a 102 } 8 Pipes 2 B "
                        "10 30 20 0 " +
                        objects,
                    Block(Circle(1, 2, 3)));
    };
    EXPECT_EQ(ErrorOf(drawing("71 1", "ACAD_FILTER")).substr(0, 41),
              "test: line 48: INSERT: it is clipped (XCL");
    EXPECT_EQ(Read(drawing("71 0", "ACAD_FILTER")).elements.size(), 2U);  // switched off
    EXPECT_EQ(Read(drawing("71 1", "ACAD_OTHER")).elements.size(), 2U);
    InputOptions options;
    options.layers = {"0"};
    EXPECT_EQ(Read(drawing("71 1", "ACAD_FILTER"), options).elements.size(), 1U);
}

TEST(Drawing, ReadsTheNamedLayersAloneAndListsAll) {
    const std::string text =
        File(Circle(0, 0, 1) + " 8 Steel" + Circle(9, 0, 1) + " 0 TEXT 8 Notes 1 a" +
                 " 0 INSERT 8 steel 2 B 10 20 20 0 70 2 44 10 0 LINE 67 1 0 LINE 8 Axes 10 0 20 0 "
                 "11 9 21 0",
             "0 SECTION 2 TABLES 0 LAYER 2 STEEL 70 0 62 7 0 LAYER 2 AXES 70 1 62 7 0 LAYER 2 "
             "Empty 70 0 "
             "62 7 0 ENDSEC " +
                 Block(Circle(1, 2, 1) + Circle(5, 2, 1) + " 8 Bolts"));
    EXPECT_EQ(LayersText(LayersOfDrawing(text, "test")),
              "0: 1 CIRCLE\nAXES (off or frozen): 1 LINE\nBolts: 2 CIRCLE\nEmpty: nothing\n"
              "Notes: 1 TEXT\nSTEEL: 3 CIRCLE, 1 INSERT\n");
    struct Case {
        std::vector<std::string> layers;
        std::set<std::pair<long, long>> middles;
    };
    const Case cases[] = {{{}, {{0, 0}, {90, 0}, {200, 0}, {240, 0}, {300, 0}, {340, 0}}},
                          {{"Steel"}, {{0, 0}, {200, 0}, {300, 0}}},
                          {{"bOLTS ", "0"}, {{90, 0}, {240, 0}, {340, 0}}}};
    for (const Case& each : cases) {
        InputOptions options;
        options.layers = each.layers;
        const SectionModel section = Read(text, options);
        EXPECT_EQ(Middles(section), each.middles);
        EXPECT_EQ(Joined(section.remarks).find("that --layer does not name left out: ") ==
                      std::string::npos,
                  each.layers.empty());
    }
    InputOptions options;
    options.layers = {"Steel", "Stele"};
    EXPECT_EQ(ErrorOf(text, options),
              "test: it has no layer \"Stele\"; its layers: 0, AXES, Bolts, Empty, Notes, STEEL");
    options.layers = {"axes"};
    EXPECT_NE(ErrorOf(text, options).find("Axes, which is off or frozen"), std::string::npos)
        << ErrorOf(text, options);
}

TEST(Drawing, RemarksThatARectangleHoldsAllTheRest) {
    const std::string angle =
        " 0 LWPOLYLINE 70 1 10 30 20 30 10 80 20 30 10 80 20 40 10 40 20 40 10 40 "
        "20 80 10 30 20 80";
    const std::string turned =
        " 0 LWPOLYLINE 70 1 10 40 20 -30 10 120 20 30 10 200 20 90 10 140 20 170 10 "
        "-20 20 50";
    struct Case {
        const char* name;
        std::string entities;
        const char* rectangle;  // nothing: no remark
    };
    const Case cases[] = {
        {"frame", Rectangle(0, 0, 420, 297) + angle, "420 x 297"},
        {"turned frame with a point more", turned + angle, "200 x 100"},
        {"double frame", Rectangle(0, 0, 420, 297) + Rectangle(9, 9, 402, 279) + angle,
         "420 x 297"},
        {"plate with two openings", Rectangle(0, 0, 90, 50) + Circle(20, 25, 9) + Circle(70, 25, 9),
         "90 x 50"},
        {"bored bar", Rectangle(0, 0, 50, 50) + Circle(25, 25, 9), "50 x 50"},
        {"tube", Rectangle(0, 0, 100, 50) + Rectangle(5, 5, 90, 40), ""},
        {"bar off the middle", Rectangle(0, 0, 420, 297) + Rectangle(30, 30, 300, 200),
         "420 x 297"},
        {"bar in the middle", Rectangle(0, 0, 420, 297) + Rectangle(160, 99, 100, 99), "420 x 297"},
        {"slit from side to side", Rectangle(0, 0, 90, 50) + Rectangle(40, 0, 5, 50), "90 x 50"},
        {"beside", Rectangle(0, 0, 100, 50) + Rectangle(100, 0, 20, 50) + Circle(20, 25, 9), ""},
        {"no rectangle", Circle(50, 50, 90) + angle, ""},
        {"alone", Rectangle(0, 0, 100, 50), ""}};
    for (const Case& each : cases) {
        const std::string remarks = Joined(Read(File(each.entities)).remarks);
        const bool isNamed = *each.rectangle != 0;
        const std::string named =
            isNamed ? std::string("the rectangle ") + each.rectangle + " at line 16 " : "";
        EXPECT_EQ(remarks.find(named + "holds all other outlines") != std::string::npos, isNamed)
            << each.name << ": " << remarks;
    }
}

}  // namespace
