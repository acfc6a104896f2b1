// Parts placed by points of their box, set on each other, repeated.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "model/outlines.h"
#include "model/setting.h"
#include "part_sections.h"
#include "values/evaluate.h"

namespace {

using namespace halvorn::engine;
using test_support::Evaluate, test_support::ExpectNear, test_support::Read, test_support::Sum;
using test_support::Values;

// Curved, slanting, hollow, with given values, and far from the origin.
const char* const kParts[] = {
    R"("shape": "angle", "height": 101.3, "width": 60.7, "thickness": 9.1, "root_radius": 11.7)",
    R"("profile": "SHS100x5", "rotate": 33)",
    R"("shape": "channel", "height": 98.7, "width": 41.3, "web": 5, "flange": 7, "mirror": "y",
       "rotate": -90)",
    R"("points": [[1e6, 2e6], [1000030.7, 2000004.1], [1000005.3, 2000060.9]], "mirror": "x",
       "rotate": 45)",
    R"("wall": {"kind": "open", "thickness": 3, "radii": [0, 4, 0],
       "points": [[1, 2], [30, 0], [50, 61]]}, "rotate": 10)",
};

Box BoxOfPart(const SectionModel& section, std::size_t first, std::size_t count = 1) {
    return BoxOf(std::span(section.elements).subspan(first, count));
}

std::size_t SizeOf(const std::string& part) {
    return Read("{" + part + "}").elements.size();
}

TEST(Parts, LieWithTheNamedPointOfTheirBoxWhereTheyAreMoved) {
    constexpr double kX = -217.3, kY = 55.1;
    for (const std::string part : kParts) {
        for (const char* y : {"bottom", "middle", "top"}) {
            for (const char* x : {"left", "centre", "right"}) {
                const bool isMiddle = y == std::string("middle") && x == std::string("centre");
                const std::string name = isMiddle ? "centre" : std::string(y) + "_" + x;
                SCOPED_TRACE(part + name);
                const SectionModel section =
                    Read("{" + part + R"(, "move": [-217.3, 55.1], "at": ")" + name + "\"}");
                const Box box = BoxOf(section.elements);
                const double foundX = *x == 'l' ? box.left : *x == 'r' ? box.right : box.Middle().x;
                const double foundY = *y == 'b' ? box.bottom : *y == 't' ? box.top : box.Middle().y;
                // The sides to the last bit, the middle within rounding.
                EXPECT_NEAR(foundX, kX, *x == 'c' ? 1e-12 : 0.0);
                EXPECT_NEAR(foundY, kY, *y == 'm' ? 1e-12 : 0.0);
                // Nothing but the place differs from that by its corner.
                const SectionModel other = Read("{" + part + R"(, "at": "corner"})");
                const Values found = Evaluate(section), expected = Evaluate(other);
                EXPECT_NEAR(found.inertiaX, expected.inertiaX, 1e-9 * expected.inertiaX);
                EXPECT_NEAR(found.inertiaXY, expected.inertiaXY, 1e-9 * expected.inertiaX);
            }
        }
    }
    // The corner is that of the part before it is turned.
    const std::string plate =
        R"({"shape": "plate", "width": 10, "height": 30, "rotate": 90, "at": )";
    ExpectNear(Evaluate(Read(plate + "\"corner\"}")), Sum({{30, 10, -15, 5}}), 1e-14);
    ExpectNear(Evaluate(Read(plate + "\"bottom_left\"}")), Sum({{30, 10, 15, 5}}), 1e-14);
}

struct Sides {
    double touching, others, low, high, lowOfOthers, highOfOthers;  // the last four along the side
};

Sides SidesOf(const std::string& side, const Box& box, const Box& others) {
    if (side == "top") {
        return {box.bottom, others.top, box.left, box.right, others.left, others.right};
    }
    if (side == "bottom") {
        return {box.top, others.bottom, box.left, box.right, others.left, others.right};
    }
    if (side == "right") {
        return {box.left, others.right, box.bottom, box.top, others.bottom, others.top};
    }
    return {box.right, others.left, box.bottom, box.top, others.bottom, others.top};
}

TEST(Parts, TouchTheSideOfThePartTheyAreSetOn) {
    for (const std::string part : kParts) {
        const std::size_t size = SizeOf(part);
        for (const std::string side : {"top", "bottom", "left", "right"}) {
            SCOPED_TRACE(part + side);
            const bool isUpright = side == "left" || side == "right";
            const std::string low = isUpright ? "bottom" : "left";
            const std::string high = isUpright ? "top" : "right";
            const auto sides = [&](const std::string& more) {
                const SectionModel section = Read(
                    "{" + part +
                    R"(, "name": "base", "move": [1234.5, -77.7]}, {"name": "on",)"
                    R"("shape": "plate", "width": 31.7, "height": 17.3, "on": "base", "side": ")" +
                    side + "\"" + more + "}");
                return SidesOf(side, BoxOfPart(section, size), BoxOfPart(section, 0, size));
            };
            const Sides centred = sides("");
            EXPECT_EQ(centred.touching, centred.others);
            EXPECT_NEAR(centred.low + centred.high, centred.lowOfOthers + centred.highOfOthers,
                        1e-9);
            const Sides atLow = sides(", \"align\": \"" + low + "\"");
            EXPECT_EQ(atLow.touching, atLow.others);
            EXPECT_EQ(atLow.low, atLow.lowOfOthers);
            const Sides atHigh = sides(", \"align\": \"" + high + R"(", "gap": 12.5)");
            EXPECT_NEAR(std::abs(atHigh.touching - atHigh.others), 12.5, 1e-9);
            EXPECT_EQ(atHigh.touching > atHigh.others, side == "top" || side == "right");
            EXPECT_EQ(atHigh.high, atHigh.highOfOthers);
            const Sides moved = sides(R"(, "move": [7, 11])");
            const double along = isUpright ? 11 : 7, across = isUpright ? 7 : 11;
            EXPECT_NEAR(moved.low, centred.low + along, 1e-9);
            EXPECT_NEAR(moved.touching, centred.touching + across, 1e-9);
        }
    }
}

// Plates on each other are one piece, whatever their dimensions, place and unit: no digit is lost
// where they touch.
TEST(Parts, JoinThePartTheyAreSetOn) {
    for (const std::string place : {"[0, 0]", "[1e6, -3e6]", "[0.1, 0.7]"}) {
        for (const std::string turn : {"", R"("rotate": 90, )", R"("mirror": "x", )"}) {
            for (const char* unit : {"mm", "m"}) {
                SCOPED_TRACE(place + turn + unit);
                const Report report = Evaluate(
                    Read(R"({"name": "foot", "shape": "plate", "width": 0.3, "height": 0.017, )" +
                             turn + R"("at": "bottom_centre", "move": )" + place + R"(},
                         {"name": "web", "shape": "plate", "width": 0.0093, "height": 0.4101,
                          "on": "foot", "side": "top"},
                         {"shape": "tee", "width": 0.21, "height": 0.1, "web": 0.0093,
                          "flange": 0.013, "on": "web", "side": "top"},
                         {"shape": "plate", "width": 0.05, "height": 0.01, "on": "web",
                          "side": "left"})",
                         unit),
                    {});
                for (const Finding& finding : report.findings) {
                    EXPECT_NE(finding.kind, FindingKind::PartsApart) << FindingText(finding);
                    EXPECT_NE(finding.kind, FindingKind::NearMiss) << FindingText(finding);
                    EXPECT_NE(finding.kind, FindingKind::SetOnto) << FindingText(finding);
                }
            }
        }
    }
}

// The whole scene is turned by quarters, so that every side is the one that touches.
TEST(Parts, SlideOnUntilTheirOutlinesTouch) {
    const struct {
        const char* base;
        const char* part;
        double bottom;  // of the part over the highest point of its base
    } cases[] = {
        // A channel astride a plate, and with its flanges flush with the plate's sides.
        {R"("shape": "plate", "width": 100, "height": 20)",
         R"("shape": "channel", "height": 120, "width": 50, "web": 6, "flange": 10, "rotate": -90)",
         6 - 50},
        {R"("shape": "plate", "width": 0.3, "height": 0.02)",
         R"("shape": "channel", "height": 0.5, "width": 0.2, "web": 0.01, "flange": 0.1,
            "rotate": -90)",
         0.01 - 0.2},
        // A plate within a channel.
        {R"("shape": "channel", "height": 100, "width": 60, "web": 8, "flange": 10, "rotate": 90)",
         R"("shape": "plate", "width": 20, "height": 30)", 8 - 60},
        // A plate on a slope, which meets it at one end.
        {R"("points": [[0, 0], [100, 0], [100, 50]])",
         R"("shape": "plate", "width": 20, "height": 5)", 30 - 50},
        {R"("points": [[0, 0], [100, 0], [0, 50]])",
         R"("shape": "plate", "width": 20, "height": 5)", 30 - 50},
        // A ball in a groove, which touches both of its faces, and a tip on a flat.
        {R"("points": [[0, -9], [100, -9], [100, 50], [50, 0.5], [0, 50]])",
         R"("shape": "round", "diameter": 20)", 0.5 + 10 * std::hypot(1.0, 0.99) - 10 - 50},
        {R"("shape": "plate", "width": 100, "height": 20)",
         R"("points": [[0, 0], [4, 3], [-4, 3]])", 0},
    };
    const auto elementsOf = [](const char* part) {
        return Read(std::string("{") + part + "}", "mm", R"(, "chord_tolerance": 1e-6)").elements;
    };
    for (const auto& [base, part, bottom] : cases) {
        const std::pair<Side, double> sides[] = {
            {Side::Top, 0.0}, {Side::Left, 90.0}, {Side::Bottom, 180.0}, {Side::Right, 270.0}};
        for (const auto& [side, degrees] : sides) {
            SCOPED_TRACE(part + std::to_string(degrees));
            std::vector<Element> others = elementsOf(base), elements = elementsOf(part);
            Placement turn, back;
            turn.rotation = degrees;
            back.rotation = -degrees;
            turn.move = back.origin = {31.7, -12.3};
            Place(turn, others);
            Place(turn, elements);
            Setting setting;
            setting.side = side;
            setting.touch = Touch::Outlines;
            ASSERT_EQ(SetOnSide(setting, others, elements), SettingResult::Set);
            Place(back, others);
            Place(back, elements);
            EXPECT_NEAR(BoxOf(elements).bottom - BoxOf(others).top, bottom, 1.5e-6);
        }
    }
    // What "move" has along the side comes before the touch, the rest after it.
    const SectionModel steps = Read(
        R"({"points": [[0, 0], [100, 0], [100, 10], [50, 10], [50, 30], [0, 30]], "name": "steps"},
           {"shape": "plate", "width": 20, "height": 5, "on": "steps", "side": "top",
            "touch": "outline"},
           {"shape": "plate", "width": 20, "height": 5, "on": "steps", "side": "top",
            "touch": "outline", "gap": 2, "move": [30, 3]})");
    EXPECT_EQ(BoxOfPart(steps, 1).bottom, 30.0);
    EXPECT_EQ(BoxOfPart(steps, 2).bottom, 15.0);
    EXPECT_EQ(BoxOfPart(steps, 2).left, 70.0);
}

TEST(Parts, RepeatInARowUnderNumberedNames) {
    const SectionModel section = Read(
        R"({"shape": "chs", "name": "pipe", "diameter": 20, "thickness": 2, "move": [0.1, 0.2],
            "repeat": {"count": 3, "step": [0.3, 40.1]}},
           {"shape": "plate", "width": 2, "height": 2, "on": "pipe 2", "side": "right"},
           {"shape": "plate", "width": 2, "height": 2, "on": "pipe", "side": "top"},
           {"shape": "plate", "name": "rib", "width": 2, "height": 5, "on": "pipe", "side": "bottom",
            "repeat": {"count": 4, "step": [10, 0]}},
           {"shape": "round", "kind": "hole", "diameter": 4, "at": "centre", "move": [1, 2],
            "repeat": {"count": 2, "step": [-5, 0]}})");
    const auto& elements = section.elements;
    ASSERT_EQ(elements.size(), 6U + 2 + 4 + 2);
    const char* const labels[] = {"pipe 1",     "pipe 1, inside", "pipe 2",   "pipe 2, inside",
                                  "pipe 3",     "pipe 3, inside", "/parts/1", "/parts/2",
                                  "rib 1",      "rib 2",          "rib 3",    "rib 4",
                                  "/parts/4 1", "/parts/4 2"};
    for (std::size_t i = 0; i < elements.size(); ++i) {
        EXPECT_EQ(elements[i].label, labels[i]);
        EXPECT_EQ(elements[i].isSolid, i >= 6 ? i < 12 : i % 2 == 0) << labels[i];
    }
    for (std::size_t copy = 0; copy < 3; ++copy) {
        for (std::size_t i = 0; i < elements[0].ring.size(); ++i) {
            const Point step = {0.3, 40.1};
            EXPECT_EQ(elements[2 * copy].ring[i],
                      elements[0].ring[i] + static_cast<double>(copy) * step);
        }
    }
    const Box row = BoxOfPart(section, 0, 6), second = BoxOfPart(section, 2);
    EXPECT_EQ(BoxOfPart(section, 6).left, second.right);
    EXPECT_NEAR(BoxOfPart(section, 6).Middle().y, second.Middle().y, 1e-12);
    EXPECT_EQ(BoxOfPart(section, 7).bottom, row.top);
    // The row is set on the other as a whole, in the middle of it.
    const Box ribs = BoxOfPart(section, 8, 4);
    EXPECT_EQ(ribs.top, row.bottom);
    EXPECT_NEAR(ribs.Width(), 32.0, 1e-12);
    EXPECT_NEAR(ribs.Middle().x, row.Middle().x, 1e-12);
    // A hole's first copy has its point where it is moved.
    EXPECT_NEAR(BoxOfPart(section, 12).Middle().x, 1.0, 1e-12);
    EXPECT_NEAR(BoxOfPart(section, 13).Middle().x, -4.0, 1e-12);
}

TEST(Parts, SayWhatIsWrongWithTheirPlace) {
    const std::string plate = R"("shape": "plate", "width": 2, "height": 1)";
    const std::string two = R"({"name": "a", )" + plate + R"(}, {"name": "b", )" + plate +
                            R"(, "kind": "hole"}, {)" + plate + ", ";
    const std::string row = "{" + plate + R"(, "repeat": )";
    const std::string on = R"("on": "a", "side": "top")";
    const std::string round = R"("shape": "round", "diameter": 1e6)";
    const std::size_t pointCount = 1000 * Read("{" + round + "}").elements[0].ring.size();
    const struct {
        std::string parts;
        std::string message;
    } cases[] = {
        {"{" + plate + "}, " + two + R"("on": "c", "side": "top"})",
         R"(/parts/3/on: no part before this one has the name "c"; write a name such as "a", "b")"},
        {"{" + plate + "}, {" + plate + R"(, "on": "c", "side": "top"})",
         R"(/parts/1/on: no part before this one has the name "c"; write a name such as "/parts/0")"},
        {"{" + plate + ", " + on + "}",
         R"(/parts/0/on: no part before this one has the name "a"; put that part before this one)"},
        {"{" + plate + ", " + on + R"(}, {"name": "a", )" + plate + "}",
         R"(/parts/0/on: "a" comes after this part; put /parts/1 before it)"},
        {R"({"name": "b", )" + plate + ", " + on + R"(}, {"name": "a", "on": "b"})",
         R"(/parts/0/on: the parts stand on each other in a circle, "b" on "a" on "b"; )"
         R"(place one of them without "on")"},
        {R"({"name": "a", )" + plate + ", " + on + "}",
         R"(/parts/0/on: "a" is this part itself; name a part before it)"},
        {R"({"name": "a", )" + plate + "}, " + two + on + "}",
         R"(/parts/3/on: 2 parts before this one have the name "a"; give each a "name" of its own)"},
        {two + R"("on": "b", "side": "top"})",
         R"(/parts/2/on: "b" is a hole, which has no sides to set a part on; name a solid part)"},
        {two + on + R"(, "kind": "hole"})",
         R"(/parts/2/on: a hole is in a part, not on it; place it with "at" and "move")"},
        {two + on + R"(, "at": "centroid"})",
         R"(/parts/2/at: the side of the other part gives this one its place; remove "at" and use )"
         R"("align" or "move", or remove "on")"},
        {two + R"("on": "a"})", R"(/parts/2: missing key "side"; add it)"},
        {two + R"("gap": 1})",
         R"(/parts/2/gap: stands without "on"; add "on" with the name of the part that this one is )"
         R"(set on)"},
        {two + on + R"(, "gap": -1})",
         "/parts/2/gap: must not be negative, found -1; write 0 or a positive number"},
        {two + on + R"(, "align": "top"})",
         R"(/parts/2/align: unknown value "top"; write one of "left", "centre", "right")"},
        {two + on + R"(, "touch": "outline", "move": [2, 0]})",
         R"(/parts/2: it slides past "a": nothing of the one is opposite the other; change "align" )"
         R"(or "move", or leave out "touch")"},
        {row + R"({"count": 2.5, "step": [1, 0]}})",
         "/parts/0/repeat/count: must be a whole number from 1 to 1000, found 2.5; write how many "
         "there are, the first included"},
        {row + R"({"count": 1001, "step": [1, 0]}})",
         "/parts/0/repeat/count: must be a whole number from 1 to 1000, found 1001; write how many "
         "there are, the first included"},
        {row + R"({"count": 2, "step": [0, 0]}})",
         "/parts/0/repeat/step: all copies would lie in one place; write how far each is from the "
         "one before, [x, y]"},
        {row + R"({"count": 2}})", R"(/parts/0/repeat: missing key "step"; add it)"},
        {"{" + round + R"(, "repeat": {"count": 1000, "step": [1, 0]}})",
         "/parts/0/repeat/count: the copies have " + std::to_string(pointCount) +
             " points together, more than 1000000; make \"chord_tolerance\" larger, or the row "
             "shorter"},
    };
    for (const auto& [parts, message] : cases) {
        SCOPED_TRACE(parts);
        try {
            Read(parts);
            ADD_FAILURE() << "not refused";
        } catch (const InputError& error) {
            EXPECT_EQ(error.what(), "test: " + message);
        }
    }
    // The bounds themselves.
    EXPECT_EQ(Read(row + R"({"count": 1000, "step": [0, 2]}})").elements.size(), 1000U);
    EXPECT_EQ(Read(row + R"({"count": 1, "step": [0, 0]}})").elements.size(), 1U);
}

SectionModel Example(const std::string& name) {
    std::ifstream file("examples/" + name + ".json");
    std::ostringstream text;
    text << file.rdbuf();
    return ReadSectionText(text.str(), name, InputOptions{});
}

// A piece about its own axes: from a catalogue's print, or a rectangle.
struct Piece {
    double area, x, y, inertiaX, inertiaY;
};

Piece Rectangle(double width, double height, double x, double y) {
    const double area = width * height;
    return {area, x, y, area * height * height / 12.0, area * width * width / 12.0};
}

TEST(Examples, HaveTheSumOfTheirPartsByTheParallelAxisTheorem) {
    // As published; the area of the HEB is that of its plates and fillets.
    const double heb = 2 * 300 * 19 + 262 * 11 + (4 - std::acos(-1.0)) * 27 * 27;
    const double upe200 = 2900, upe200X = 19.09e6, upe200Y = 1.873e6;
    const struct {
        const char* name;
        std::vector<Piece> pieces;
        double tolerance;
    } cases[] = {
        {"crane-girder",
         {{heb, 0, 150, 1677e3 * 150, 570.8e3 * 150},
          {9190, 0, 300 + 13.5 - 29.8, 10.45e6, 209.8e6}},
         1e-3},
        {"battened-channels",
         {{upe200, 25.6, 100, upe200X, upe200Y}, {upe200, 260 - 25.6, 100, upe200X, upe200Y}},
         1e-3},
        {"stiffened-box",
         {Rectangle(1000, 20, 0, 10), Rectangle(1000, 20, 0, 790), Rectangle(12, 760, -394, 400),
          Rectangle(12, 760, 394, 400), Rectangle(10, 100, -200, 70), Rectangle(10, 100, 0, 70),
          Rectangle(10, 100, 200, 70), Rectangle(10, 100, -200, 730), Rectangle(10, 100, 0, 730),
          Rectangle(10, 100, 200, 730), Rectangle(100, 10, -338, 400),
          Rectangle(100, 10, 338, 400)},
         1e-12},
    };
    for (const auto& [name, pieces, tolerance] : cases) {
        SCOPED_TRACE(name);
        Values sum{};
        for (const Piece& piece : pieces) {
            sum.area += piece.area;
            sum.x += piece.area * piece.x;
            sum.y += piece.area * piece.y;
        }
        sum.x /= sum.area;
        sum.y /= sum.area;
        for (const Piece& piece : pieces) {
            sum.inertiaX += piece.inertiaX + piece.area * std::pow(piece.y - sum.y, 2);
            sum.inertiaY += piece.inertiaY + piece.area * std::pow(piece.x - sum.x, 2);
        }
        const Report report = Evaluate(Example(name), {});
        const auto number = [&](const char* key) { return FindValue(report.values, key)->number; };
        EXPECT_NEAR(number("area"), sum.area, tolerance * sum.area);
        EXPECT_NEAR(number("centroid_x"), sum.x, tolerance * 100.0);
        EXPECT_NEAR(number("centroid_y"), sum.y, tolerance * 100.0);
        EXPECT_NEAR(number("inertia_x"), sum.inertiaX, tolerance * sum.inertiaX);
        EXPECT_NEAR(number("inertia_y"), sum.inertiaY, tolerance * sum.inertiaY);
    }
}

}  // namespace
