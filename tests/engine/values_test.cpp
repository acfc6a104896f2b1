// Of every value its unit, its method or the reason why it is missing; and one table as a whole.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <set>

#include "read/json/section_file.h"
#include "ring_sections.h"
#include "values/evaluate.h"
#include "write/table.h"

namespace {

using namespace halvorn::engine;

using test_support::Rectangle;
using test_support::Section;

SectionModel Read(const std::string& rest) {
    return ReadSectionText(R"({"version": 1, "unit": "mm", )" + rest + "}", "test", {});
}

const char* UnitOf(const std::string& key) {
    const std::pair<const char*, const char*> units[] = {{"area", "mm^2"},
                                                         {"centroid_", "mm"},
                                                         {"inertia_", "mm^4"},
                                                         {"elastic_", "mm^3"},
                                                         {"plastic_modulus", "mm^3"},
                                                         {"plastic_axis", "mm"},
                                                         {"torsion_con", "mm^4"},
                                                         {"warping", "mm^6"},
                                                         {"shear_centre", "mm"},
                                                         {"shear_stiff", "mm^2"},
                                                         {"monosym", "mm"},
                                                         {"torsion_mod", "mm^3"},
                                                         {"shear_area", "mm^2"},
                                                         {"radius_of", "mm"},
                                                         {"principal_in", "mm^4"},
                                                         {"principal_angle", "deg"},
                                                         {"mass_per_", "kg/m"},
                                                         {"shape_factor", ""},
                                                         {"extra_sum", ""},
                                                         {"width", "mm"},
                                                         {"height", "mm"},
                                                         {"fibre_distance", "mm"},
                                                         {"perimeter", "mm"},
                                                         {"polar_radius", "mm"},
                                                         {"static_moment", "mm^3"}};
    for (const auto& [start, unit] : units) {
        if (key.starts_with(start)) return unit;
    }
    return "no unit is known";
}

TEST(Polylines, SayHowEachValueIsFound) {
    const std::string faces = "exact integrals over both faces", tube = "tube formulas",
                      thin = "thin-wall formulas", half = "half of the area";
    const std::string ellipse = "equivalent ellipse, an estimate";
    const struct {
        const char* kind;
        std::string centroid, area, constant, modulus, shear;
    } cases[] = {
        {R"("solid")", "exact integrals over the outline", "exact integrals over the outline",
         ellipse, ellipse, ellipse},
        {R"("closed_wall", "thickness": 2, "torsion": "tube")",
         "exact integrals over all inside the outer face", faces, tube, tube, half},
        {R"("closed_wall", "thickness": 2, "torsion": "general")",
         "exact integrals over all inside the outer face", faces, thin, thin, half},
        {R"("open_wall", "thickness": 2, "torsion": "tube")", faces, faces, thin, tube, half},
        {R"("open_wall", "thickness": 2, "torsion": "general")", faces, faces, thin, thin, half},
    };
    for (const auto& c : cases) {
        const Report report = Evaluate(
            Read(std::string(R"("polyline": {"points": [[0, 0], [60, 0], [60, 80]], "kind": )") +
                 c.kind + "}"),
            {});
        ASSERT_EQ(report.classValues.size(), 10U);
        for (const Value& value : report.classValues) {
            SCOPED_TRACE(c.kind + value.key);
            EXPECT_EQ(value.method, value.key.starts_with("centroid")     ? c.centroid
                                    : value.key == "torsion_constant"     ? c.constant
                                    : value.key == "torsion_modulus"      ? c.modulus
                                    : value.key.starts_with("shear_area") ? c.shear
                                                                          : c.area);
            EXPECT_EQ(value.unit, UnitOf(value.key));
            EXPECT_EQ(value.whyMissing, "");
        }
    }
}

// An L-shaped box by its two faces: the values are of the wall, the class's centre of gravity is of
// all within the outer face.
TEST(Polylines, HaveTheValuesOfTheirFaces) {
    const std::string line = R"("points": [[0, 0], [60, 0], [60, 20], [20, 20], [20, 80], [0, 80]],
                                "thickness": 4)";
    const Report asked = Evaluate(
        Read(R"("polyline": {"kind": "closed_wall", "torsion": "general", )" + line + "}"), {});
    const Report wall =
        Evaluate(Read(R"("parts": [{"wall": {"kind": "closed", )" + line + "}}]"), {});
    const auto contours = [](bool hasInside) {
        test_support::Rings rings = {
            {true, {{-2, -2}, {62, -2}, {62, 22}, {22, 22}, {22, 82}, {-2, 82}}},
            {false, {{2, 2}, {58, 2}, {58, 18}, {18, 18}, {18, 78}, {2, 78}}}};
        if (!hasInside) rings.pop_back();
        return Evaluate(Section(rings), {});
    };
    const Report outside = contours(false), net = contours(true);
    for (const Value& value : net.values) {
        for (const Report* const report : {&asked, &wall}) {
            SCOPED_TRACE(value.key);
            ASSERT_EQ(report->Find(value.key) != nullptr, value.IsComputed());
            if (!value.IsComputed()) continue;
            EXPECT_NEAR(report->Find(value.key)->number, value.number,
                        1e-9 * std::fabs(value.number));
        }
    }
    const auto ofClass = [&](const char* key) { return FindValue(asked.classValues, key)->number; };
    for (const char* const key : {"centroid_x", "centroid_y"}) {
        EXPECT_NEAR(ofClass(key), outside.Find(key)->number, 1e-9 * ofClass(key));
        EXPECT_GT(net.Find(key)->number, outside.Find(key)->number + 1);
    }
    const double yG = net.Find("centroid_y")->number, area = net.Find("area")->number;
    EXPECT_NEAR(ofClass("inertia_x_origin"), net.Find("inertia_x")->number + area * yG * yG, 1e-3);
}

// A figure of eight, whose two crossing strips are 111.8 long: the union counts their diamond once.
TEST(Polylines, CountAWallThatCrossesItselfOnce) {
    const std::string line = R"("points": [[0, 0], [100, 50], [100, 0], [0, 50]], "thickness": 4)";
    const Report polyline = Evaluate(
        Read(R"("polyline": {"kind": "closed_wall", "torsion": "tube", )" + line + "}"), {});
    const Report part =
        Evaluate(Read(R"("parts": [{"wall": {"kind": "closed", )" + line + "}}]"), {});
    // Mitred at its corners a strip has 4 times its mid-line; at the crossing the diamond
    // 16 / sin 2a is taken once, with tan a = 1 / 2.
    const double once = 4 * (2 * std::hypot(100, 50) + 100) - 16 / 0.8;
    for (const Report* const report : {&polyline, &part}) {
        EXPECT_NEAR(report->Find("area")->number, once, 1e-9);
        EXPECT_NEAR(report->Find("centroid_x")->number, 50, 1e-9);
        ASSERT_EQ(report->findings.size(), 1U) << FindingsText(report->findings);
        EXPECT_EQ(report->findings[0].severity, Severity::Warning);
        EXPECT_NE(report->findings[0].problem.find("the wall crosses itself"), std::string::npos);
    }
}

// Bends of sheet: both faces about one centre. A half ring and a square with rounded corners.
TEST(Polylines, AreRoundedByTrueArcs) {
    const double pi = std::numbers::pi;
    const Report bend = Evaluate(Read(R"("polyline": {"kind": "open_wall", "thickness": 4,
        "torsion": "general", "points": [[0, 0], [50, 0], [50, 50]], "radii": [0, 20, 0]})"),
                                 {});
    EXPECT_NEAR(bend.Find("area")->number, 4 * (2 * (50 - 22) + 22 * pi / 2), 1e-9);
    const Report round = Evaluate(Read(R"("polyline": {"kind": "solid", "radii": [5, 5, 5, 5],
        "points": [[0, 0], [50, 0], [50, 50], [0, 50]]})"),
                                  {});
    EXPECT_NEAR(round.Find("area")->number, 2500 - 25 * (4 - pi), 1e-9);
}

GivenValues Given(double area) {
    GivenValues given;
    given.area = area;
    given.inertia1 = given.inertia2 = 1e6;
    given.method = "published values";
    return given;
}

TEST(Values, SayWhyTheyAreMissing) {
    const auto withGiven = [](void (*change)(GivenValues&)) {
        SectionModel section = Section({{true, Rectangle(0, 0, 100, 10)}});
        GivenValues& given = section.elements[0].given.emplace(Given(1000));
        given.centroidX = 50;
        given.centroidY = 5;
        given.shearArea1 = given.shearArea2 = given.torsionConstant = given.torsionModulus = 0.0;
        change(given);
        return section;
    };
    const auto wall = [](const char* points) {
        return Read(R"("polyline": {"kind": "closed_wall", "thickness": 5, "torsion": "general",
                        "points": )" +
                    std::string(points) + "}");
    };
    const std::set<std::string> allButArea = {"centroid_x",
                                              "centroid_y",
                                              "inertia_x",
                                              "inertia_y",
                                              "inertia_xy",
                                              "elastic_modulus_bottom",
                                              "elastic_modulus_top",
                                              "elastic_modulus_left",
                                              "elastic_modulus_right",
                                              "plastic_modulus_x",
                                              "plastic_modulus_y",
                                              "torsion_constant",
                                              "torsion_modulus",
                                              "shear_area_1",
                                              "shear_area_2",
                                              "extra_sum"};
    const std::set<std::string> elastic = {"elastic_modulus_bottom",
                                           "elastic_modulus_top",
                                           "elastic_modulus_left",
                                           "elastic_modulus_right",
                                           "plastic_modulus_x",
                                           "plastic_modulus_y",
                                           "extra_sum"};
    const std::set<std::string> polyline = {"area",
                                            "centroid_x",
                                            "centroid_y",
                                            "inertia_x_origin",
                                            "inertia_y_origin",
                                            "inertia_xy_origin",
                                            "torsion_constant",
                                            "torsion_modulus",
                                            "shear_area_x",
                                            "shear_area_y"};
    const struct {
        const char* name;
        SectionModel section;
        Shift shift;
        const char* reason;
        std::set<std::string> missing;  // of the class's values; all with this reason
    } cases[] = {
        {"no area",
         Section({{true, {{0, 0}, {1, 1}, {3, 3}}}}),
         {},
         "the section encloses no area: its points lie on one line or in one place, or holes take "
         "it",
         allButArea},
        {"hole as large as the solid",
         Section({{true, Rectangle(0, 0, 9, 9)}, {false, Rectangle(0, 0, 9, 9)}}),
         {},
         "the section encloses no area: its points lie on one line or in one place, or holes take "
         "it",
         allButArea},
        {"edge",
         Section({{true, Rectangle(0, 0, 200, 400)}}),
         {100, 0},
         "a fibre distance is 0: the reference point lies on the edge of the bounding box (change "
         "--dx or --dy) or the section has no extent",
         elastic},
        {"small",
         Section({{true, Rectangle(0, 0, 0.003, 0.003)}}),
         {},
         "the area is too small for the library's fixed tolerance; use a smaller unit, such as mm",
         {"torsion_constant"}},
        {"tiny",
         Section({{true, Rectangle(3e-8, 2e-8, 2e-8, 2e-8)}}),
         {},
         "the area is too small for the library's fixed tolerance; use a smaller unit, such as mm",
         allButArea},
        {"far in y",
         Section({{true, Rectangle(0, 1e9, 100, 100)}}),
         {},
         "no digit is left of it at this distance from the origin; move the origin to the section",
         {"inertia_x", "inertia_xy", "elastic_modulus_bottom", "elastic_modulus_top"}},
        {"far in x",
         Section({{true, Rectangle(1e9, 0, 100, 100)}}),
         {},
         "no digit is left of it at this distance from the origin; move the origin to the section",
         {"inertia_y", "inertia_xy", "elastic_modulus_left", "elastic_modulus_right"}},
        {"torsion constant",
         withGiven([](GivenValues& v) { v.torsionConstant.reset(); }),
         {},
         "the values of ring 0 have no torsion constant",
         {"torsion_constant"}},
        {"torsion modulus",
         withGiven([](GivenValues& v) { v.torsionModulus.reset(); }),
         {},
         "the values of ring 0 have no torsion modulus",
         {"torsion_modulus"}},
        {"shear area",
         withGiven([](GivenValues& v) { v.shearArea2.reset(); }),
         {},
         "the values of ring 0 have no shear areas",
         {"shear_area_1", "shear_area_2"}},
        {"zeros", withGiven([](GivenValues&) {}), {}, "", {}},
        {"crossing wall",
         wall("[[0, 0], [100, 100], [100, 0], [0, 90]]"),
         {},
         "the wall crosses itself, so that its formulas give impossible values; make it thinner or "
         "draw its line without crossings",
         polyline},
        {"huge",
         wall("[[0, 0], [1e200, 0], [1e200, 1e200], [0, 1e200]]"),
         {},
         "the result is not a finite number: the area is 0 or the coordinates are too large",
         polyline},
    };
    for (const auto& c : cases) {
        const Report report = Evaluate(c.section, c.shift);
        std::set<std::string> missing;
        for (const Value& value : report.classValues) {
            SCOPED_TRACE(std::string(c.name) + ": " + value.key);
            EXPECT_EQ(value.unit, UnitOf(value.key));
            EXPECT_NE(value.method, "");
            if (value.IsComputed()) continue;
            EXPECT_EQ(value.whyMissing, c.reason);
            missing.insert(value.key);
        }
        EXPECT_EQ(missing, c.missing) << c.name;
        for (const Value& value : report.values) {
            SCOPED_TRACE(std::string(c.name) + ": " + value.key);
            EXPECT_EQ(value.unit, UnitOf(value.key));
            EXPECT_TRUE(!value.IsComputed() || !value.method.empty());
        }
    }
}

// The values of the region: torsion and shear always, the others with one reason.
TEST(Values, OfTheRegionSayWhyTheyAreMissing) {
    const std::string noArea =
        "the section encloses no area: its points lie on one line or in one place, or holes take "
        "it";
    const struct {
        SectionModel section;
        Shift shift;
        std::string reason;
        std::set<std::string> computed;  // empty: all that a section has
        std::string missing;             // of one key, when all others are there
    } cases[] = {
        {Section({{true, {{0, 0}, {1, 1}, {3, 3}}}}), {}, noArea, {"area"}, ""},
        {Section({{true, Rectangle(0, 0, 9, 9)}, {false, Rectangle(0, 0, 9, 9)}}),
         {},
         noArea,
         {"area"},
         ""},
        {Section({{true, Rectangle(0, 0, 1e200, 1e200)}}), {}, "", {"none"}, ""},
        {Section({{true, Rectangle(0, 0, 200, 400)}}),
         {100, 0},
         "its fibre distance is 0: the reference point lies on the edge of the section (change "
         "--dx or --dy)",
         {},
         "elastic_modulus_right"},
        {Section({{true, Rectangle(3e-8, 2e-8, 2e-8, 2e-8)}}), {}, "", {}, ""},
        {Section({{true, Rectangle(1e9, -1e9, 100, 100)}}), {}, "", {}, ""},
    };
    for (const auto& c : cases) {
        const Report report = Evaluate(c.section, c.shift);
        EXPECT_EQ(report.values.size(), 46U);
        for (const Value& value : report.values) {
            SCOPED_TRACE(value.key);
            const bool isNext = value.key.starts_with("torsion") || value.key.starts_with("warp") ||
                                value.key.starts_with("shear") || value.key.starts_with("mono") ||
                                value.key == "polar_radius";
            const bool isExpected = c.computed.empty() ? !isNext && value.key != c.missing
                                                       : c.computed.count(value.key) > 0;
            EXPECT_EQ(value.IsComputed(), isExpected) << value.whyMissing;
            if (!isExpected && !c.reason.empty() && !isNext) {
                EXPECT_EQ(value.whyMissing, c.reason);
            }
        }
    }
}

// Angle, extra, reserved and name may be left out, and a torsion constant may be 0.
TEST(Values, OfAProfileWithoutItsOptionalKeys) {
    const std::string keys = R"("kind": "solid", "outline": [[0, 0], [50, 0], [50, 30], [0, 30]],
        "centroid": [25, 14], "area": 1200, "shear_area_1": 700, "shear_area_2": 400,
        "torsion_constant": 0, "inertia_1": 9e5, "inertia_2": 4e5, "torsion_modulus": 0,
        "plastic_modulus_x": 1, "plastic_modulus_y": 2)";
    const std::map<std::string, double> least = {
        {"area", 1200},         {"centroid_x", 25},    {"centroid_y", 14},
        {"inertia_x", 9e5},     {"inertia_y", 4e5},    {"inertia_xy", 0},
        {"shear_area_1", 700},  {"shear_area_2", 400}, {"torsion_constant", 0},
        {"torsion_modulus", 0}, {"extra_sum", 0},      {"plastic_modulus_x", 50 * 900 / 4.0}};
    std::map<std::string, double> turned = least;
    turned["inertia_x"] = 4e5, turned["inertia_y"] = 9e5, turned["extra_sum"] = -7;
    turned["shear_area_1"] = 400, turned["shear_area_2"] = 700;
    for (const auto& [more, expected] : {std::pair{std::string(), least},
                                         {R"(, "angle_radians": 1.5707963267948966, "extra": -7,
                                             "reserved": 99, "name": "a")",
                                          turned}}) {
        const Report report = Evaluate(Read("\"profiles\": [{" + keys + more + "}]"), {});
        for (const auto& [key, number] : expected) {
            const Value* const value = FindValue(report.classValues, key);
            ASSERT_NE(value, nullptr) << key;
            EXPECT_NEAR(value->number, number, 1e-9 * std::fabs(number)) << key;
        }
        EXPECT_EQ(report.Find("area")->number, 1500);  // of the outline, whatever is given
    }
}

TEST(Table, IsWrittenAsAWhole) {
    SectionModel section =
        Read(R"("name": "Beam", "description": "with a\tduct", "density": 2500, "contours": [
            {"kind": "solid", "points": [[0, 0], [200, 0], [200, 400], [0, 400]]},
            {"kind": "hole", "points": [[50, 150], [150, 150], [150, 250], [50, 250]]}])");
    section.remarks = {"1 text was\nleft out"};
    EXPECT_EQ(TableText(Evaluate(section, {-50, 200})), R"table(Beam
with a duct
Reference point of the elastic moduli: (xG - 50, yG + 200) mm

Geometry                    Symbol      Value             Unit  Method
Area                        A           70000             mm^2  exact
Overall width               b             200             mm    outline
Overall height              h             400             mm    outline
Centre of gravity, x        xG            100             mm    exact
Centre of gravity, y        yG            200             mm    exact
Distance to bottom fibre    e,bottom      200             mm    outline
Distance to top fibre       e,top         200             mm    outline
Distance to left fibre      e,left        100             mm    outline
Distance to right fibre     e,right       100             mm    outline
Perimeter, outer outlines   U            1200             mm    outline
Mass per metre              m             175             kg/m  formula

Bending, about axes through the centre of gravity: x horizontal, y vertical, 1 and 2 principal
Second moment about x       Ix          1058333333        mm^4  exact
Second moment about y       Iy           258333333        mm^4  exact
Product moment              Ixy                  0        mm^4  exact
Second moment, axis 1       I1          1058333333        mm^4  Mohr
Second moment, axis 2       I2           258333333        mm^4  Mohr
Angle from x to axis 1      alpha                0        deg   Mohr
Radius of gyration, x       ix                 122.9595   mm    formula
Radius of gyration, y       iy                  60.74929  mm    formula
Radius of gyration, axis 1  i1                 122.9595   mm    formula
Radius of gyration, axis 2  i2                  60.74929  mm    formula
Elastic modulus, bottom     Wel,bottom     2645833        mm^3  formula
Elastic modulus, top        Wel,top     not computed: its fibre distance is 0: the reference point
                                        lies on the edge of the section (change --dx or --dy)
Elastic modulus, left       Wel,left       5166667        mm^3  formula
Elastic modulus, right      Wel,right      1722222        mm^3  formula
Elastic modulus, axis 1     Wel,1          5291667        mm^3  formula
Elastic modulus, axis 2     Wel,2          2583333        mm^3  formula

Plastic, about the lines parallel to these axes that halve the area
Plastic modulus about x     Wpl,x       7750000           mm^3  halves
Plastic modulus about y     Wpl,y       3750000           mm^3  halves
Plastic modulus, axis 1     Wpl,1       7750000           mm^3  halves
Plastic modulus, axis 2     Wpl,2       3750000           mm^3  halves
Horizontal plastic axis     ypl             200           mm    halves
Vertical plastic axis       xpl             100           mm    halves
Shape factor about x        Wpl/Wel,x         1.464567          formula
Shape factor about y        Wpl/Wel,y         1.451613          formula

Torsion and warping; M is the shear centre
Torsion constant            It          not computed: it takes a solution over the whole section;
                                        --warping asks for it in a batch
Torsion modulus             Wt          not computed, as above
Warping constant            Iw          not computed, as above
Shear centre, x             xM          not computed, as above
Shear centre, y             yM          not computed, as above
Polar radius about M        iM          not computed, as above
Monosymmetry about x        bx          not computed, as above
Monosymmetry about y        by          not computed, as above

Shear: stiffness areas for a force along x and y; static moments of one side of the axis
Shear stiffness area, x     Asx         not computed: it takes a solution over the whole section;
                                        --warping asks for it in a batch
Shear stiffness area, y     Asy         not computed, as above
Static moment about x       Sx          3875000           mm^3  exact
Static moment about y       Sy          1875000           mm^3  exact

Outputs of the class: the outputs of CSectionTools as they stand: holes count as area in the plastic
moduli, and torsion and shear values of drawn contours are those of ellipses
Symbol      Value          Unit  What it is
A                70000     mm^2  Area: exact integrals
xG                 100     mm    Centre of gravity, x: exact integrals
yG                 200     mm    Centre of gravity, y: exact integrals
Ix          1058333333     mm^4  Second moment about x: exact integrals
Iy           258333333     mm^4  Second moment about y: exact integrals
Ixy                  0     mm^4  Product moment: exact integrals
Wel,bottom                 mm^3  Elastic modulus, bottom: not computed: a fibre distance is 0: the
                                 reference point lies on the edge of the bounding box (change --dx
                                 or --dy) or the section has no extent
Wel,top                    mm^3  Elastic modulus, top: not computed, as above
Wel,left                   mm^3  Elastic modulus, left: not computed, as above
Wel,right                  mm^3  Elastic modulus, right: not computed, as above
Wpl,x                      mm^3  Plastic modulus about x: not computed, as above
Wpl,y                      mm^3  Plastic modulus about y: not computed, as above
It           762948513     mm^4  Torsion constant: equivalent ellipse of each contour, an estimate
Wt             4349511     mm^3  Torsion modulus: equivalent ellipse of each contour, an estimate
Av1              55839.48  mm^2  Shear area, first: equivalent ellipse of each contour, an estimate
Av2              55839.48  mm^2  Shear area, second: equivalent ellipse of each contour, an estimate
extra                            Sum of the profiles' extra values: not computed: a fibre distance
                                 is 0: the reference point lies on the edge of the bounding box
                                 (change --dx or --dy) or the section has no extent

Remark: test: 1 text was left out.
)table");
}

}  // namespace
