// How torsion, warping and shear are reported: numbers with their bounds, reasons, findings.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "figure/stress_picture.h"
#include "ring_sections.h"
#include "values/evaluate.h"
#include "values/stress_values.h"
#include "values/values.h"
#include "values/warping_values.h"
#include "write/csv.h"
#include "write/json.h"
#include "write/table.h"

namespace {

using namespace halvorn::engine;

using test_support::Rectangle;

// Nothing of these agrees with the rectangle that they are put on, so that each must come through.
WarpingValues HandMade() {
    WarpingValues w;
    w.parts = 1;
    w.isOnePart = true;
    w.arePrincipalAxes = true;
    w.torsionConstant = {197520.0, 197550.0};
    w.torsionModulus = {17864.0, 120.0};
    w.shearAreaX = {2500.1, 2500.3};
    w.shearAreaY = {2075.9, 2076.2};
    w.shearCentreX = {20.0 + 1e-9, 0.0004};
    w.shearCentreY = {-2e-4, 0.0017};
    w.warpingConstant = {1.259123e11, 3.7e7};
    w.monosymmetryX = {1e-12, 0.003};
    w.monosymmetryY = {-12.5, 1e-9};
    return w;
}

Report ReportOf(const WarpingValues& w, const Points& ring = Rectangle(0, 0, 40, 300),
                std::optional<SectionForces> forces = {}) {
    Report report = Evaluate(test_support::Section({{true, ring}}), {});
    report.warping = std::make_shared<const WarpingSolution>(WarpingSolution{w, nullptr});
    report.tolerance = 1e-4;
    report.forces = forces;
    AddWarpingValues(&report);
    return report;
}

nlohmann::json Values(const Report& report) {
    return nlohmann::json::parse(JsonText(report))["values"];
}

TEST(WarpingValues, AreTheMiddlesOfTheirBounds) {
    const Report report = ReportOf(HandMade());
    const auto values = Values(report);
    struct Case {
        const char* key;
        double value, lower, upper, error;  // NaN: not there
    };
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    for (const Case& c : {
             Case{"torsion_constant", 197535.0, 197520.0, 197550.0, kNone},
             Case{"shear_stiffness_area_x", 2500.2, 2500.1, 2500.3, kNone},
             Case{"shear_stiffness_area_y", 2076.05, 2075.9, 2076.2, kNone},
             Case{"torsion_modulus", 17864.0, kNone, kNone, 120.0},
             Case{"warping_constant", 1.259123e11, kNone, kNone, 3.7e7},
             Case{"shear_centre_x", 20.0, kNone, kNone, 0.0004},  // that of the rectangle
             Case{"shear_centre_y", -2e-4, kNone, kNone, 0.0017},
             // From (20, 150), whose own radius is (40^2 + 300^2) / 12 squared.
             Case{"polar_radius", std::sqrt(91600 / 12.0 + 150.0002 * 150.0002), kNone, kNone,
                  0.001468998},
             Case{"monosymmetry_x", 0.0, kNone, kNone, 0.003},
             Case{"monosymmetry_y", -12.5, kNone, kNone, 1e-9},
         }) {
        SCOPED_TRACE(c.key);
        const auto& entry = values[c.key];
        const auto expect = [&](const char* name, double expected) {
            ASSERT_EQ(entry.contains(name), !std::isnan(expected)) << name;
            if (std::isnan(expected)) return;
            EXPECT_NEAR(entry[name].get<double>(), expected, 2e-9 + 1e-10 * std::fabs(expected))
                << name;
        };
        expect("value", c.value);
        expect("lower", c.lower);
        expect("upper", c.upper);
        expect("error", c.error);
        EXPECT_NE(entry["method"], "");
    }
    EXPECT_EQ(values["shear_centre_x"]["value"], 20.0);
    EXPECT_TRUE(report.findings.empty()) << FindingsText(report.findings);
    const std::string table = TableText(report);
    for (const char* const row : {
             "It          197540 ± 20           mm^4  bounds\n",
             "Wt           17900 ± 200          mm^3  estimate\n",
             "Iw          1.2591e+11 ± 4e+07    mm^6  estimate\n",
             "xM              20.0000 ± 0.0005  mm    bounded\n",
             "by             -12.5              mm    bounded\n",
         }) {
        EXPECT_NE(table.find(row), std::string::npos) << row << table;
    }
    EXPECT_NE(CsvRow(report).find(",197535,"), std::string::npos);
}

// What the coordinates have lost widens every bound, and takes the value when no digit is left.
TEST(WarpingValues, KnowWhatRoundingOfTheCoordinatesTakes) {
    double last = 0.0;
    for (const double away : {0.0, 1e6, 1e10}) {
        const auto values = Values(ReportOf(HandMade(), Rectangle(away, away, 40, 300)));
        const auto& constant = values["torsion_constant"];
        EXPECT_EQ(constant["value"], 197535.0);
        const double width = constant["upper"].get<double>() - constant["lower"].get<double>();
        EXPECT_GT(width, last);
        EXPECT_GE(width, 30.0);
        last = width;
        EXPECT_GE(values["shear_centre_y"]["error"].get<double>(), 0.0017 + 2e-16 * away);
    }
    EXPECT_GT(last, 30.5);
    const auto lost = Values(ReportOf(HandMade(), Rectangle(1e17, 0, 40, 300)));
    EXPECT_TRUE(lost["torsion_constant"]["value"].is_null());
    WarpingValues huge = HandMade();
    huge.warpingConstant.value = std::numeric_limits<double>::infinity();
    const auto beyond = Values(ReportOf(huge));
    EXPECT_EQ(beyond["warping_constant"]["not_computed"], kBeyondDoubles);
    EXPECT_FALSE(beyond["warping_constant"].contains("error"));
}

TEST(WarpingValues, SayWhyTheyAreMissing) {
    const Report asked = Evaluate(test_support::Section({{true, Rectangle(0, 0, 40, 300)}}), {});
    Report failed = asked;
    failed.whyNoWarping = "it is what it is";
    AddWarpingValues(&failed);
    WarpingValues apart = HandMade(), turned = HandMade(), real = HandMade();
    apart.isOnePart = false;
    turned.arePrincipalAxes = false;
    real.areShearAreasBounds = false;
    struct Case {
        Report report;
        const char* reason;
        std::size_t missing;
    };
    for (const Case& c : {
             Case{asked, "--warping", 10},
             Case{failed, "it is what it is", 10},
             Case{ReportOf(apart), "share no edge", 8},
             Case{ReportOf(turned), "no principal axes", 2},
             Case{ReportOf(real), "", 0},
         }) {
        std::size_t missing = 0;
        for (const Value& value : c.report.values) {
            if (!IsOfWarping(value.key) || value.IsComputed()) continue;
            ++missing;
            EXPECT_NE(value.whyMissing.find(c.reason), std::string::npos) << value.whyMissing;
            EXPECT_FALSE(value.lower || value.upper || value.error) << value.key;
        }
        EXPECT_EQ(missing, c.missing) << c.reason;
    }
    const auto values = Values(ReportOf(real));  // of a Poisson's ratio above 0
    EXPECT_FALSE(values["shear_stiffness_area_y"].contains("lower"));
    EXPECT_NEAR(values["shear_stiffness_area_y"]["error"].get<double>(), 0.15, 1e-9);
    EXPECT_TRUE(values["torsion_constant"].contains("lower"));
}

TEST(WarpingValues, AreDoubtedWhereTheyShouldBe) {
    WarpingValues w = HandMade();
    w.status = WarpingStatus::TooMany;
    w.sharpCorners = {{1, 2}, {3, 4}, {5, 6}, {7, 8.25}, {9, 10}, {11, 12}};
    w.leftOutRadius = 2.34567;
    const std::vector<Finding> findings =
        ReportOf(w, Rectangle(0, 0, 40, 300), SectionForces{}).findings;
    const Finding* const wide = FindFinding(findings, FindingKind::WideBounds);
    ASSERT_NE(wide, nullptr);
    EXPECT_EQ(wide->severity, Severity::Warning);
    EXPECT_EQ(
        wide->problem,
        "the solution takes too many unknowns: the torsion constant is known within 0.0076 %, "
        "the shear stiffness areas within 0.004 % and 0.0072 %; 0.01 % was asked for");
    const Finding* const sharp = FindFinding(findings, FindingKind::SharpCorners);
    ASSERT_NE(sharp, nullptr);
    EXPECT_EQ(sharp->severity, Severity::Remark);
    EXPECT_EQ(
        sharp->problem,
        "the outline turns sharply into the material at (1, 2), (3, 4), (5, 6), (7, 8.25) and "
        "2 more, where the stress has no bound: the torsion modulus and the largest stresses "
        "leave out what lies within 2.35 mm of them");
    w.status = WarpingStatus::Interrupted;
    w.sharpCorners.resize(1);
    const Report stopped = ReportOf(w);
    EXPECT_NE(FindFinding(stopped.findings, FindingKind::WideBounds)->problem.find("was stopped"),
              std::string::npos);
    EXPECT_NE(
        FindFinding(stopped.findings, FindingKind::SharpCorners)
            ->problem.find("at (1, 2), where the stress has no bound: the torsion modulus leaves"),
        std::string::npos);
}

TEST(StressValues, ComeWithPlaceAndForces) {
    const SectionForces forces = {-1e5, 2.0, 3.0, 4.0, 5.0, 2.5e6};
    Report report = ReportOf(HandMade(), Rectangle(0, 0, 40, 300), forces);
    report.warping = nullptr;
    report.whyNoWarping = "no solution";
    AddStresses(&report);
    const auto missing = nlohmann::json::parse(JsonText(report))["stresses"];
    EXPECT_NEAR(missing["normal"]["value"], -1e5 / 12e3 - 2.0 / 6e5 - 3.0 / 8e4, 1e-12);
    EXPECT_EQ(missing["normal"]["place"], nlohmann::json::parse("[0.0, 0.0]"));
    for (const char* const key : {"shear", "von_mises"}) {
        EXPECT_EQ(missing[key]["not_computed"], "no solution");
        EXPECT_TRUE(missing[key]["place"].is_null());
    }
    EXPECT_NE(TableText(report).find("sigma,v  not computed, as above\n"), std::string::npos);
    EXPECT_NE(TableText(report).find("not computed: no solution\n"), std::string::npos);
    for (LargestStress& stress : report.stresses) stress.value.whyMissing.clear();
    SetStresses({{{-18.583, 0.0011}, {40, 0}}, {{35.2, 0.4}, {20, 150}}, {{70.0, 1.2}, {0, 300}}},
                &report);
    Report unloaded = report;
    SetStresses({}, &unloaded);
    EXPECT_TRUE(nlohmann::json::parse(JsonText(unloaded))["stresses"]["normal"]["place"].is_null());
    EXPECT_EQ(TableText(unloaded).find(" at ("), std::string::npos);
    const auto told = nlohmann::json::parse(JsonText(report))["stresses"];
    EXPECT_EQ(told["forces"],
              nlohmann::json::parse(
                  R"({"N": -1e5, "Mx": 2.0, "My": 3.0, "Vx": 4.0, "Vy": 5.0, "T": 2.5e6})"));
    EXPECT_EQ(told["normal"]["value"], -18.583);
    EXPECT_EQ(told["shear"]["error"], 0.4);
    EXPECT_EQ(told["von_mises"]["unit"], "F/mm^2");
    EXPECT_EQ(told["von_mises"]["place"], nlohmann::json::parse("[0.0, 300.0]"));
    const std::string table = TableText(report);
    for (const char* const line : {
             "\nForces: N = -100000 F, Mx = 2 F mm, My = 3 F mm, Vx = 4 F, Vy = 5 F, T = 2500000 F "
             "mm\n",
             "Largest normal stress     sigma    -18.583 ± 0.002  F/mm^2  at (40, 0)\n",
             "Largest shear stress      tau       35.2 ± 0.4      F/mm^2  at (20, 150)\n",
         }) {
        EXPECT_NE(table.find(line), std::string::npos) << line << table;
    }
}

// Two plates of 10 x 100, 100 apart: A = 2000, Iy = 2 (100 10^3 / 12 + 1000 55^2).
TEST(StressValues, OfPartsApartAreNormalAlone) {
    const double atRight = 1.0 + 1e6 * 60.0 / (100e3 / 6.0 + 6.05e6);
    for (const double shear : {0.0, 5.0}) {
        EvaluateOptions options;
        options.forces = SectionForces{2000, 0, 1e6, 0, shear, 0};
        Report report = Evaluate(test_support::Section({{true, Rectangle(0, 0, 10, 100)},
                                                        {true, Rectangle(110, 0, 10, 100)}}),
                                 {});
        AddWarping(options, &report);
        ASSERT_EQ(report.stresses.size(), 3U);
        EXPECT_NEAR(report.stresses[0].value.number, atRight, 1e-12);
        EXPECT_EQ(report.stresses[0].place->x, 120.0);
        EXPECT_EQ(report.stresses[1].value.IsComputed(), shear == 0.0);
        if (shear == 0.0) {
            EXPECT_EQ(report.stresses[1].value.number, 0.0);
            EXPECT_NEAR(report.stresses[2].value.number, atRight, 1e-12);
        } else {
            EXPECT_EQ(report.stresses[2].value.whyMissing, kPartsApart);
        }
        EXPECT_THROW(figure::StressPictureOf(report, StressKind::Normal), InputError);
    }
}

}  // namespace
