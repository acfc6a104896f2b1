// Derived and net values against closed forms, and a scan of random sections in long double.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <numbers>
#include <random>
#include <span>

#include "base/numbers.h"
#include "catalogue/csv_table.h"
#include "model/outlines.h"
#include "read/json/section_file.h"
#include "region/region.h"
#include "ring_sections.h"
#include "values/evaluate.h"
#include "values/plastic_halves.h"
#include "write/csv.h"
#include "write/json.h"
#include "write/table.h"

namespace {

using namespace halvorn::engine;

using test_support::Rectangle;
using test_support::Rings;
using test_support::Section;

Region RegionOfRings(const Rings& rings) {
    return RegionOf(test_support::Weighted(rings));
}

bool IsSimple(const Points& ring) {
    const WeightedRing outline = {&ring, 1};
    const Region region = RegionOfArrangement(std::span(&outline, 1));
    return region.crossings.empty() && region.oddPlaces.empty();
}

Points Turned(Points ring, double degrees) {
    const double angle = degrees * std::numbers::pi / 180.0;
    for (auto& [x, y] : ring) {
        const double turned = x * std::cos(angle) - y * std::sin(angle);
        y = x * std::sin(angle) + y * std::cos(angle);
        x = turned;
    }
    return ring;
}

bool Finds(const Report& report, FindingKind kind, const std::string& words = "") {
    return std::any_of(report.findings.begin(), report.findings.end(), [&](const Finding& finding) {
        return finding.kind == kind && FindingText(finding).find(words) != std::string::npos;
    });
}

// Also when it was not computed.
Value Entry(const std::vector<Value>& values, const std::string& key) {
    for (const Value& value : values) {
        if (value.key == key) return value;
    }
    Value absent;
    absent.whyMissing = "absent";
    return absent;
}

Value Entry(const Report& report, const std::string& key) {
    return Entry(report.values, key);
}

struct Case {
    const char* name;
    Rings rings;
    std::map<std::string, double> expected;
};

const Points kSquare = Rectangle(0, 0, 100, 100);
const Points kTee = {{40, 0},    {60, 0},  {60, 80}, {100, 80},
                     {100, 100}, {0, 100}, {0, 80},  {40, 80}};
// Of the tee about the axis along its flange, and its elastic modulus for the end of the stem.
const double kTeeInertia = 20 * 512e3 / 12 + 1600 * std::pow(610 / 9.0 - 40, 2) + 100 * 8e3 / 12 +
                           2000 * std::pow(90 - 610 / 9.0, 2);
const double kTeeFactor = 83600 * (610 / 9.0) / kTeeInertia;
const Points kAngle = {{0, 0}, {100, 0}, {100, 10}, {10, 10}, {10, 100}, {0, 100}};
// Of an angle about its axis of symmetry and across it: the square less the square within.
const double kAngleArea = 1900;
const double kAngleAcross = (1e8 - 90 * 90 * 90 * 90.0) / 12 + 1e4 * 50 * 50 - 8100 * 55 * 55.0 -
                            std::pow((1e4 * 50 - 8100 * 55) / kAngleArea, 2) * kAngleArea;
const double kAngleProduct =
    1e4 * 2500 - 8100 * 3025.0 - std::pow((1e4 * 50 - 8100 * 55) / kAngleArea, 2) * kAngleArea;

const double kCos17 = std::cos(17 * std::numbers::pi / 180);
const double kSin17 = std::sin(17 * std::numbers::pi / 180);

const Case kCases[] = {
    {"rectangle",
     {{true, Rectangle(10, 20, 200, 400)}},
     {{"principal_inertia_1", 200 * 6.4e7 / 12},
      {"principal_inertia_2", 400 * 8e6 / 12},
      {"principal_angle", 0},
      {"width", 200},
      {"height", 400},
      {"fibre_distance_top", 200},
      {"fibre_distance_left", 100},
      {"perimeter", 1200},
      {"static_moment_x", 200 * 400 * 400 / 8},
      {"static_moment_y", 400 * 200 * 200 / 8},
      {"radius_of_gyration_x", 400 / std::sqrt(12)},
      {"radius_of_gyration_2", 200 / std::sqrt(12)},
      {"shape_factor_x", 1.5},
      {"shape_factor_y", 1.5},
      {"plastic_axis_y", 220},
      {"plastic_axis_x", 110}}},
    {"lying",
     {{true, Rectangle(0, 0, 400, 200)}},
     {{"principal_angle", 90},
      {"elastic_modulus_1", 200 * 1.6e5 / 6},
      {"plastic_modulus_2", 400 * 4e4 / 4}}},
    {"turned left",
     {{true, Turned(Rectangle(0, 0, 200, 400), 30)}},
     {{"principal_angle", 30},
      {"elastic_modulus_1", 200 * 1.6e5 / 6},
      {"elastic_modulus_2", 400 * 4e4 / 6},
      {"plastic_modulus_1", 200 * 1.6e5 / 4},
      {"plastic_modulus_2", 400 * 4e4 / 4}}},
    {"turned right",
     {{true, Turned(Rectangle(0, 0, 200, 400), 120)}},
     {{"principal_angle", -60},
      {"principal_inertia_1", 200 * 6.4e7 / 12},
      {"radius_of_gyration_1", 400 / std::sqrt(12)}}},
    {"turned square",
     {{true, Turned(kSquare, 17)}},
     {{"principal_angle", 0}, {"perimeter", 400}, {"height", 100 * (kCos17 + kSin17)}}},
    {"tube",
     {{true, kSquare}, {false, Rectangle(5, 5, 90, 90)}},
     {{"plastic_modulus_x", 67750},
      {"plastic_modulus_y", 67750},
      {"plastic_axis_x", 50},
      {"static_moment_y", 67750 / 2},
      {"perimeter", 400},  // not that of the hole
      {"shape_factor_y", 67750 * 50 / ((1e8 - 90 * 90 * 90 * 90.0) / 12)}}},
    {"filled tube",
     {{true, kSquare}, {false, Rectangle(5, 5, 90, 90)}, {true, Rectangle(5, 5, 90, 90)}},
     {{"plastic_modulus_x", 250000}}},
    {"bar in a tube",
     {{true, kSquare}, {false, Rectangle(5, 5, 90, 90)}, {true, Rectangle(5, 45, 20, 10)}},
     {{"plastic_modulus_x", 67750 + 500}, {"plastic_axis_y", 50}}},
    {"two slots in a plate",
     {{true, Rectangle(0, 0, 300, 20)},
      {false, Rectangle(50, 5, 22, 10)},
      {false, Rectangle(228, 5, 22, 10)}},
     {{"plastic_modulus_x", 30000 - 44 * 25}, {"plastic_modulus_y", 450000 - 440 * 89}}},
    {"hole off centre",  // 100 (y - 40) + 2800 = 4400
     {{true, kSquare}, {false, Rectangle(30, 10, 40, 30)}},
     {{"plastic_axis_y", 56},
      {"plastic_axis_x", 50},
      {"plastic_modulus_x", 50 * 44 * 44 + 50 * 56 * 56 - 1200 * 31}}},
    {"tee",
     {{true, kTee}},
     {{"plastic_axis_y", 82},
      {"plastic_axis_x", 50},
      {"plastic_modulus_x", 83600},
      // Of the stem below the axis through the centre of gravity, 610 / 9 above its end.
      {"static_moment_x", 20 * std::pow(610 / 9.0, 2) / 2},
      {"fibre_distance_bottom", 610 / 9.0},
      {"shape_factor_x", kTeeFactor}}},
    {"stem to the right", {{true, Turned(kTee, 90)}}, {{"shape_factor_y", kTeeFactor}}},
    {"stem upwards", {{true, Turned(kTee, 180)}}, {{"shape_factor_x", kTeeFactor}}},
    {"stem to the left", {{true, Turned(kTee, 270)}}, {{"shape_factor_y", kTeeFactor}}},
    {"two plates apart",
     {{true, Rectangle(0, 0, 10, 20)}, {true, Rectangle(50, 0, 10, 20)}},
     {{"plastic_axis_x", 30}, {"plastic_axis_y", 10}}},
    {"angle",
     {{true, kAngle}},
     {{"principal_angle", 45},
      {"principal_inertia_1", kAngleAcross - kAngleProduct},
      // About its axis of symmetry, to the ends of the legs.
      {"elastic_modulus_1", (kAngleAcross - kAngleProduct) / (100 / std::sqrt(2))},
      {"principal_inertia_2", kAngleAcross + kAngleProduct}}}};

constexpr double kExact = 1e-9;

TEST(RegionValues, FollowsClosedForms) {
    for (const Case& c : kCases) {
        const Report report = Evaluate(Section(c.rings), {});
        for (const auto& [key, expected] : c.expected) {
            SCOPED_TRACE(std::string(c.name) + ": " + key);
            const Value value = Entry(report, key);
            EXPECT_EQ(value.whyMissing, "");
            EXPECT_NEAR(value.number, expected, kExact * std::max(1.0, std::fabs(expected)));
            EXPECT_NE(value.method, "");
        }
    }
}

// Moved, in another unit, run through the other way and with the reference point elsewhere.
TEST(RegionValues, DoesNotDependOnHowTheSectionIsDrawn) {
    constexpr double kMetre = 1e-3, kX = 700, kY = -300;
    for (const Case& c : kCases) {
        SectionModel section = Section(c.rings);
        section.density = 7850;
        const Report plain = Evaluate(section, {});
        section.unit = "m";
        for (Element& element : section.elements) {
            std::reverse(element.ring.begin(), element.ring.end());
            for (auto& [x, y] : element.ring) {
                x = (x + kX) * kMetre;
                y = (y + kY) * kMetre;
            }
        }
        const Report other = Evaluate(section, {0.001, 0.002});
        ASSERT_EQ(plain.values.size(), other.values.size());
        for (std::size_t i = 0; i < plain.values.size(); ++i) {
            const Value &value = plain.values[i], &moved = other.values[i];
            if (value.key.starts_with("elastic_modulus")) continue;  // about another point
            SCOPED_TRACE(std::string(c.name) + ": " + value.key);
            const bool isX = value.key == "plastic_axis_x" || value.key == "centroid_x";
            const bool isY = value.key == "plastic_axis_y" || value.key == "centroid_y";
            const double expected =
                (value.number + (isX ? kX : 0) + (isY ? kY : 0)) * std::pow(kMetre, value.power);
            EXPECT_NEAR(moved.number, expected, 1e-9 * std::fabs(expected) + 1e-13);
            EXPECT_EQ(moved.whyMissing, value.whyMissing);
        }
        EXPECT_NEAR(plain.Find("mass_per_metre")->number, plain.Find("area")->number * 1e-6 * 7850,
                    1e-9);
    }
    SectionModel inch = Section({{true, Rectangle(0, 0, 1, 1)}});
    EXPECT_EQ(Evaluate(inch, {}).Find("mass_per_metre"), nullptr);
    inch.unit = "in";
    inch.density = 1e4;
    EXPECT_NEAR(Evaluate(inch, {}).Find("mass_per_metre")->number, 6.4516, 1e-12);
}

// Material counts once, whatever overlaps; a hole takes no more than there is.
TEST(RegionValues, CountsMaterialOnce) {
    const double area = 1e4;
    const std::pair<Rings, double> cases[] = {
        {{{true, kSquare}, {false, Rectangle(200, 0, 9, 9)}}, area},
        {{{true, kSquare}, {false, Rectangle(96, 10, 8, 9)}}, area - 36},
        {{{true, kSquare}, {false, Rectangle(10, 10, 9, 9)}, {false, Rectangle(15, 15, 9, 9)}},
         area - 2 * 81 + 16},
        {{{true, kSquare}, {true, Rectangle(90, 0, 50, 50)}, {false, Rectangle(9, 9, 9, 9)}},
         area + 2000 - 81},
        {{{true, kSquare}, {true, Rectangle(50, 50, 9, 9)}}, area},
        {{{true, {{0, 0}, {100, 100}, {100, 0}, {0, 90}}}}, 50 * (100 - 90 / 1.9)}};
    for (const auto& [rings, expected] : cases) {
        const Report report = Evaluate(Section(rings), {});
        EXPECT_NEAR(report.Find("area")->number, expected, 1e-8) << FindingsText(report.findings);
        EXPECT_FALSE(report.findings.empty());
    }
}

Element Published(const Points& outline) {
    Element element;
    element.label = "IPE1";
    element.ring = outline;
    GivenValues& given = element.given.emplace();
    given.area = 1000;
    given.inertia1 = given.inertia2 = 1e6;
    given.method = "published values";
    return element;
}

TEST(Values, OfTheClassAreMissingWhereTheyHaveNoSum) {
    SectionModel section = Section({{true, kSquare}});
    section.elements[0] = Published(kSquare);
    section.elements.push_back(Published(Rectangle(200, 0, 50, 20)));
    const auto entry = [&](const char* key) {
        return Entry(Evaluate(section, {}).classValues, key);
    };
    for (const char* const key : {"torsion_constant", "torsion_modulus", "shear_area_1"}) {
        EXPECT_NE(entry(key).whyMissing.find("IPE1"), std::string::npos);
    }
    EXPECT_EQ(entry("area").number, 2000);
    EXPECT_NEAR(Evaluate(section, {}).Find("area")->number, 11000, 1e-9) << "of the outlines";
    for (Element& element : section.elements) {
        GivenValues& given = *element.given;
        given.shearArea1 = 400;
        given.torsionConstant = 700;
        given.torsionModulus = 0.0;
    }
    EXPECT_EQ(entry("torsion_constant").number, 1400);
    EXPECT_TRUE(entry("torsion_modulus").IsComputed());
    EXPECT_FALSE(entry("shear_area_1").IsComputed() || entry("shear_area_2").IsComputed());
    for (Element& element : section.elements) element.given->shearArea2 = 0.0;
    section.elements[1].given->torsionMethod = "own";
    EXPECT_EQ(entry("shear_area_2").method, "published values, own");
    // Those of a drawn part are ellipses' and have no sum with given ones.
    section.elements[0].given.reset();
    for (const char* const key :
         {"torsion_constant", "torsion_modulus", "shear_area_1", "shear_area_2"}) {
        EXPECT_NE(entry(key).whyMissing.find("have no sum"), std::string::npos);
    }
    EXPECT_EQ(entry("area").number, 11000);
    EXPECT_EQ(entry("area").method, "exact integrals, published values");
}

TEST(Values, LoseTheirDigitsByDistanceInTheClassAlone) {
    const auto finds = [](double x, double y) {
        return Finds(Evaluate(Section({{true, Rectangle(x, y, 300, 100)}}), {}),
                     FindingKind::LostDigitsOfClass);
    };
    EXPECT_TRUE(finds(1e9, 2e9) && finds(-3e6, 0));
    EXPECT_FALSE(finds(0, 0) || finds(1e5, -1e5));
    const Report far = Evaluate(Section({{true, Rectangle(1e9, 1e9, 100, 100)}}), {});
    for (const char* key : {"inertia_x", "inertia_xy", "elastic_modulus_top"}) {
        EXPECT_FALSE(Entry(far.classValues, key).IsComputed()) << key;
    }
    EXPECT_EQ(Entry(far.classValues, "area").number, 1e4);
    EXPECT_EQ(Entry(far, "inertia_x").number, 1e8 / 12);
    EXPECT_EQ(Entry(far, "centroid_x").number, 1e9 + 50);
    // Four digits are left of 1e8 / 12, and four are shown.
    const Report near = Evaluate(Section({{true, Rectangle(0, 3e6, 100, 100)}}), {});
    EXPECT_EQ(Entry(near.classValues, "inertia_x").number, 8.333e6);
    // A coordinate of 1e14 has two digits behind the point, a plate of 0.5 none.
    const Report coarse = Evaluate(Section({{true, Rectangle(0, 1e14, 100, 0.5)}}), {});
    EXPECT_FALSE(Entry(coarse, "inertia_x").IsComputed());
    EXPECT_TRUE(Finds(coarse, FindingKind::LostDigits, "so far from the origin"));
}

// A triangle at 1e10 has coordinates to 2e-6: of its lengths of about 5 six digits are left, and
// no value shows more. Nothing is left of what the class has at 1e12.
TEST(Values, ShowNoDigitThatRoundingHasTaken) {
    Report report =
        Evaluate(Section({{true, {{1e10, 1e10}, {1e10 + 7, 1e10 + 2}, {1e10 + 3, 1e10 + 8}}}}), {});
    AddHalves(&report);
    std::vector<double> numbers;
    for (const Value& value : report.values) {
        const bool isPlace = value.key.starts_with("centroid") || value.key.find("axis") < 20;
        if (value.IsComputed() && !isPlace) numbers.push_back(value.number);
    }
    for (const PlasticHalf& half : report.halves[0].sides) {
        numbers.insert(numbers.end(), {half.area, half.leverArm});
    }
    EXPECT_GT(numbers.size(), 20U);
    for (const double number : numbers) {
        EXPECT_EQ(number, *NumberIn(ShortNumber(number, 6))) << EveryDigit(number);
    }
    const Report lost = Evaluate(Section({{true, Rectangle(1e12, 0, 10, 10)}}), {});
    for (const char* const key :
         {"inertia_y", "inertia_xy", "elastic_modulus_left", "elastic_modulus_right"}) {
        EXPECT_FALSE(Entry(lost.classValues, key).IsComputed()) << key;
    }
    EXPECT_TRUE(Entry(lost.classValues, "inertia_x").IsComputed());
}

TEST(Values, ComeWithAFindingWhereARingCrossesItself) {
    const auto findsLoop = [](const Points& ring) {
        return Finds(Evaluate(Section({{true, ring}}), {}), FindingKind::SelfCrossing,
                     "ring 0: it crosses itself at (8, 10)");
    };
    const Points hooked = {{0, 0}, {20, 0}, {20, 10}, {5, 10}, {5, 5}, {8, 5}, {8, 12}, {0, 12}};
    EXPECT_TRUE(findsLoop(hooked) && findsLoop(Turned(Turned(hooked, 180), 180)));
    // A loop of 1e-8 of the area, and a keyhole.
    EXPECT_FALSE(
        findsLoop({{0, 0}, {20, 0}, {20, 10}, {8, 10}, {8, 10 - 1e-6}, {8.1, 10.1}, {0, 10}}));
    EXPECT_FALSE(findsLoop(
        {{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 0}, {2, 2}, {2, 8}, {8, 8}, {8, 2}, {2, 2}}));
    const Report tiny = Evaluate(Section({{true, Rectangle(0, 0, 0.003, 0.003)}}), {});
    EXPECT_FALSE(Entry(tiny.classValues, "torsion_constant").IsComputed());
    EXPECT_TRUE(Entry(tiny.classValues, "inertia_x").IsComputed());
}

// The net section as strips between the heights of all points, in which its width is linear.
class Scan {
public:
    Scan(const Rings& rings, bool isAcross) {
        std::vector<long double> heights;
        for (const auto& [isSolid, ring] : rings) {
            for (const auto& [x, y] : ring) heights.push_back(isAcross ? x : y);
        }
        std::sort(heights.begin(), heights.end());
        for (std::size_t i = 0; i + 1 < heights.size(); ++i) {
            const long double low = heights[i], high = heights[i + 1], step = (high - low) / 4;
            if (step == 0) continue;
            const long double first = Width(rings, isAcross, low + step);
            const long double last = Width(rings, isAcross, high - step);
            strips_.push_back({low, high, first - (last - first) / 2, (last - first) / step / 2});
        }
    }

    long double HalvingHeight() const {
        long double low = strips_.front().low, high = strips_.back().high;
        for (int i = 0; i < 70; ++i) {
            const long double middle = (low + high) / 2;
            (Moment(middle, 0, -1) < Moment(middle, 0, 1) ? low : high) = middle;
        }
        return low;
    }

    // The integral of |y - height|^power over the part below (side -1) or above (side 1).
    long double Moment(long double height, int power, int side) const {
        long double sum = 0;
        for (const Strip& strip : strips_) {
            const long double low = side < 0 ? strip.low : std::max(strip.low, height);
            const long double high = side < 0 ? std::min(strip.high, height) : strip.high;
            if (!(low < high)) continue;
            for (const long double t : {-1 / std::sqrt(3.0L), 1 / std::sqrt(3.0L)}) {  // Gauss
                const long double y = (low + high + t * (high - low)) / 2;
                const long double width = strip.width + strip.slope * (y - strip.low);
                sum += width * (high - low) / 2 * (power == 0 ? 1 : std::fabs(y - height));
            }
        }
        return sum;
    }

private:
    // By even-odd parity the sum of the crossings with alternating signs.
    static long double Width(const Rings& rings, bool isAcross, long double y) {
        std::vector<long double> crossings;
        for (const auto& [isSolid, ring] : rings) {
            for (std::size_t i = 0; i < ring.size(); ++i) {
                auto from = ring[i], to = ring[(i + 1) % ring.size()];
                if (isAcross) std::swap(from.x, from.y), std::swap(to.x, to.y);
                const long double x0 = from.x, y0 = from.y;
                if ((y0 > y) == (to.y > y)) continue;
                crossings.push_back(x0 + (y - y0) / (to.y - y0) * (to.x - x0));
            }
        }
        std::sort(crossings.begin(), crossings.end());
        long double width = 0;
        for (std::size_t i = 0; i < crossings.size(); i += 2) {
            width += crossings.at(i + 1) - crossings[i];
        }
        return width;
    }

    struct Strip {
        long double low, high, width, slope;  // width at the lower end, and its increase
    };
    std::vector<Strip> strips_;
};

TEST(NetPlasticValues, AgreeWithAScanOfRandomSections) {
    constexpr unsigned kSeed = 20240817;
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const auto star = [&](double x, double y, double radius, int count) {
        Points ring;
        for (int i = 0; i < count; ++i) {
            const double angle = 2 * std::numbers::pi * (i + 0.9 * unit(random)) / count;
            const double r = radius * (0.3 + 0.7 * unit(random));
            ring.emplace_back(x + r * std::cos(angle), y + r * std::sin(angle));
        }
        if (unit(random) < 0.5) std::reverse(ring.begin(), ring.end());
        return ring;
    };
    std::size_t holes = 0;
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", round " + std::to_string(round));
        Rings rings = {{true, star(500, -200, 400, 3 + round)}};
        // Holes of one grid never meet; those that leave the solid are tried and left out.
        for (int k = 0; k < 2 * round; ++k) {
            const int column = k % 11 - 5, row = k / 11 - 5;
            const double x = 500 + 40 * column, y = -200 + 40 * row;
            rings.emplace_back(false, star(x, y, 19, 3 + k % 9));
            const Report report = Evaluate(Section({rings[0], rings.back()}), {});
            if (Finds(report, FindingKind::HoleOutside)) rings.pop_back();
        }
        rings.emplace_back(true, star(1500, -200, 90, 7));
        const Report report = Evaluate(Section(rings), {});
        if (rings.size() == 2) continue;
        // No integral tells where a bridge runs.
        const Region region = RegionOfRings(rings);
        for (const Part& part : region.parts) {
            EXPECT_TRUE(IsSimple(JoinedRing(part)));
        }
        holes += rings.size() - 2;
        for (const bool isAcross : {false, true}) {
            const Scan scan(rings, isAcross);
            const long double height = scan.HalvingHeight();
            const auto modulus =
                static_cast<double>(scan.Moment(height, 1, -1) + scan.Moment(height, 1, 1));
            const std::string axis = isAcross ? "x" : "y", about = isAcross ? "y" : "x";
            const Value line = Entry(report, "plastic_axis_" + axis),
                        net = Entry(report, "plastic_modulus_" + about);
            EXPECT_NEAR(line.number, static_cast<double>(height), 1e-7) << line.whyMissing;
            EXPECT_NEAR(net.number, modulus, 1e-10 * modulus) << net.whyMissing;
        }
    }
    EXPECT_GT(holes, 500U);
}

// A hole on the outline, holes that share an edge or a corner, an island in a hole, a hole that
// cuts the solid in two, and a plate that touches the solid along a hole's edge.
TEST(NetPlasticValues, OfHolesThatTouch) {
    const std::pair<const char*, Rings> cases[] = {
        {"outline", {{true, kSquare}, {false, Rectangle(0, 10, 9, 9)}}},
        {"edge",
         {{true, kSquare}, {false, Rectangle(10, 10, 9, 9)}, {false, Rectangle(19, 12, 9, 2)}}},
        {"corner",
         {{true, kSquare}, {false, Rectangle(10, 10, 9, 9)}, {false, Rectangle(19, 19, 30, 20)}}},
        {"island",
         {{true, kSquare}, {false, Rectangle(10, 10, 50, 60)}, {true, Rectangle(20, 10, 9, 30)}}},
        {"cut in two", {{true, kSquare}, {false, Rectangle(0, 60, 100, 7)}}},
        {"beside",
         {{true, kSquare}, {false, Rectangle(70, 20, 30, 40)}, {true, Rectangle(100, 5, 7, 70)}}}};
    for (const auto& [name, rings] : cases) {
        const Report report = Evaluate(Section(rings), {});
        for (const bool isAcross : {false, true}) {
            SCOPED_TRACE(std::string(name) + (isAcross ? ", about y" : ", about x"));
            const Scan scan(rings, isAcross);
            const long double height = scan.HalvingHeight();
            const auto modulus =
                static_cast<double>(scan.Moment(height, 1, -1) + scan.Moment(height, 1, 1));
            const Value line = Entry(report, isAcross ? "plastic_axis_x" : "plastic_axis_y");
            const Value net = Entry(report, isAcross ? "plastic_modulus_y" : "plastic_modulus_x");
            EXPECT_NEAR(line.number, static_cast<double>(height), 1e-7) << line.whyMissing;
            EXPECT_NEAR(net.number, modulus, 1e-10 * modulus) << net.whyMissing;
            const PlasticHalves halves =
                HalvesOf(RegionOfRings(rings),
                         isAcross ? AxisDirection::Vertical : AxisDirection::Horizontal);
            EXPECT_EQ(halves.whyMissing, "");
            double sum = 0.0;
            for (const PlasticHalf& half : halves.sides) sum += half.area * half.leverArm;
            EXPECT_NEAR(sum, modulus, 1e-9 * modulus);
        }
    }
}

TEST(NetPlasticValues, OfHolesInRowsAndColumns) {
    Rings rings = {{true, kSquare}};
    for (int i = 0; i < 100; ++i) {
        const int column = i % 10, row = i / 10;
        rings.emplace_back(false, Rectangle(10 * column + 3, 10 * row + 3, 4, 4));
    }
    EXPECT_TRUE(IsSimple(JoinedRing(RegionOfRings(rings).parts.at(0))));
    // 16 of each hole times the distances 5, 15 ... 45 of its centre from the axis.
    const Report report = Evaluate(Section(rings), {});
    for (const char* const key : {"plastic_modulus_x", "plastic_modulus_y"}) {
        EXPECT_NEAR(Entry(report, key).number, 250e3 - 16 * 20 * 125, 1e-5);
    }
}

// Of the tee about its axis at 82: 1800 above about 91, below 1600 about 40 and 200 about 81.
TEST(PlasticHalves, AreToldInJsonAndTheTable) {
    Report report = Evaluate(Section({{true, kTee}}), {});
    EXPECT_EQ(nlohmann::json::parse(JsonText(report))["plastic_halves"].size(), 0U);
    AddHalves(&report);
    const auto halves = nlohmann::json::parse(JsonText(report))["plastic_halves"];
    const auto near = [&](const char* side, const char* key, double expected) {
        EXPECT_NEAR(halves["x"][side][key].get<double>(), expected, 1e-9 * expected) << side << key;
    };
    EXPECT_NEAR(halves["x"]["axis"].get<double>(), 82, 1e-9);
    near("above", "area", 1800);
    near("above", "centroid_y", 91);
    near("above", "lever_arm", 9);
    near("below", "centroid_x", 50);
    near("below", "centroid_y", (1600 * 40 + 200 * 81) / 1800.0);
    // About x = 50 each half has 800 about 5 and 1000 about 25 from it.
    const double arm = (800 * 5 + 1000 * 25) / 1800.0;
    for (const auto& [side, sign] : {std::pair{"right", 1.0}, {"left", -1.0}}) {
        EXPECT_NEAR(halves["y"][side]["centroid_x"].get<double>(), 50 + sign * arm, 1e-9);
        EXPECT_NEAR(halves["y"][side]["centroid_y"].get<double>(), 610 / 9.0, 1e-9);
        for (const Points& piece : report.halves[1].sides[sign > 0 ? 0 : 1].pieces) {
            for (const Point& point : piece) EXPECT_GE(sign * (point.x - 50), -1e-9);
        }
    }
    EXPECT_NEAR(halves["y"]["right"]["lever_arm"].get<double>() +
                    halves["y"]["left"]["lever_arm"].get<double>(),
                report.Find("plastic_modulus_y")->number / 1800, 1e-9);
    EXPECT_NE(TableText(report).find("Half above, lever arm"), std::string::npos);
    Report empty = Evaluate(Section({{true, {{0, 0}, {1, 1}, {3, 3}}}}), {});
    AddHalves(&empty);
    EXPECT_EQ(nlohmann::json::parse(JsonText(empty))["plastic_halves"]["y"]["not_computed"],
              empty.whyNoRegion);
}

TEST(Csv, HasACellForEveryColumn) {
    SectionModel section = Section({{true, kSquare}, {false, Rectangle(30, 10, 40, 30)}});
    section.name = "a \"b\", c\nd";
    SectionModel polyline;
    polyline.unit = "m";
    polyline.polyline = Polyline{PolylineKind::Solid, TorsionFormulas::General, 0, kTee,
                                 std::vector<double>(kTee.size(), 0.0)};
    polyline.elements = ElementsOf(*polyline.polyline, shapes::ArcDivision::ChordError(1e-3));
    const auto cellsOf = [](std::string line) {
        EXPECT_EQ(line.back(), '\n');
        line.pop_back();
        return SplitCsvLine(line, ',');
    };
    const CsvOptions options = {true};
    const std::vector<std::string> columns = cellsOf(CsvHeader(options));
    for (const SectionModel& one : {section, polyline}) {
        const Report report = Evaluate(one, {});
        const std::vector<std::string> cells = cellsOf(CsvRow(report, options));
        ASSERT_EQ(cells.size(), columns.size());
        EXPECT_EQ(cells[1], one.name);
        std::size_t found = 0;
        for (std::size_t i = 3; i + 1 < columns.size(); ++i) {
            const bool isOfClass = columns[i].starts_with("class_");
            const Value* const value = isOfClass
                                           ? FindValue(report.classValues, columns[i].substr(6))
                                           : report.Find(columns[i]);
            ASSERT_EQ(cells[i].empty(), value == nullptr) << columns[i];
            if (value == nullptr) continue;
            ++found;
            EXPECT_EQ(std::stod(cells[i]), value->number) << columns[i];
        }
        EXPECT_GE(found, 23 + report.classValues.size());
    }
}

}  // namespace
