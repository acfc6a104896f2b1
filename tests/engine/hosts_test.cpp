// What a C++ host sees of the engine: its public header alone.
#include <HalvornEngine.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <thread>

namespace {

using namespace halvorn::engine;

// A bar 30 x 20, its lower left corner at (5, 7).
constexpr const char* kJson =
    R"({"version": 1, "unit": "mm", "name": "bar", "density": 8000,
        "contours": [{"kind": "solid", "points": [[5, 7], [35, 7], [35, 27], [5, 27]]}]})";
constexpr const char* kCsv = "# unit: mm\n5,7\n35,7\n35,27\n5,27\n";
constexpr const char* kDxf =
    "0\nSECTION\n2\nHEADER\n9\n$INSUNITS\n70\n4\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n"
    "0\nLWPOLYLINE\n90\n4\n70\n1\n10\n5\n20\n7\n10\n35\n20\n7\n10\n35\n20\n27\n10\n5\n20\n27\n"
    "0\nENDSEC\n0\nEOF\n";

double NumberOf(const SectionReport& report, const char* key) {
    const Value* const value = report.Find(key);
    return value == nullptr ? std::numeric_limits<double>::quiet_NaN() : value->number;
}

TEST(EngineForHosts, ReadsEachFormatToTheSameValues) {
    const std::pair<TextFormat, const char*> texts[] = {
        {TextFormat::Json, kJson}, {TextFormat::Csv, kCsv}, {TextFormat::Dxf, kDxf}};
    for (const auto& [format, text] : texts) {
        const Section section = Section::Parse(text, format, "a bar");
        EXPECT_EQ(section.Source(), "a bar");
        EXPECT_EQ(section.LengthUnit(), "mm");
        const SectionReport report =
            section.Evaluate({.shift = {1.0, 2.0}, .wantsClassValues = true});
        EXPECT_DOUBLE_EQ(NumberOf(report, "area"), 600.0);
        EXPECT_DOUBLE_EQ(NumberOf(report, "centroid_x"), 20.0);
        EXPECT_DOUBLE_EQ(NumberOf(report, "inertia_x"), 20000.0);  // 30 20^3 / 12
        EXPECT_DOUBLE_EQ(NumberOf(report, "plastic_modulus_x"), 3000.0);
        // The reference point lies 12 above the bottom and 14 from the right.
        EXPECT_DOUBLE_EQ(NumberOf(report, "elastic_modulus_bottom"), 20000.0 / 12.0);
        EXPECT_DOUBLE_EQ(NumberOf(report, "elastic_modulus_right"), 45000.0 / 14.0);
        EXPECT_DOUBLE_EQ(FindValue(report.ClassValues(), "plastic_modulus_x")->number, 3000.0);
        EXPECT_TRUE(report.Published().empty());
        EXPECT_TRUE(section.Evaluate().ClassValues().empty());
        EXPECT_TRUE(report.Findings().empty()) << FindingsText(report.Findings());
        EXPECT_TRUE(section.Diagnose().empty());
    }
}

TEST(EngineForHosts, ACallersDensityGoesBeforeThatOfTheFile) {
    const Section bar = Section::Parse(kJson, TextFormat::Json, "bar");
    EXPECT_EQ(bar.Name(), "bar");
    EXPECT_EQ(bar.Density(), 8000.0);
    EXPECT_DOUBLE_EQ(NumberOf(bar.Evaluate(), "mass_per_metre"), 4.8);
    EXPECT_DOUBLE_EQ(NumberOf(bar.Evaluate({.density = 7850.0}), "mass_per_metre"), 4.71);
}

TEST(EngineForHosts, TheHalvesOfABarAreBars) {
    const SectionReport report = Section::Parse(kJson, TextFormat::Json, "bar").Evaluate();
    const PlasticHalves levels = report.Halves(AxisDirection::Horizontal);
    const PlasticHalves sides = report.Halves(AxisDirection::Vertical);
    EXPECT_DOUBLE_EQ(levels.axis, 17.0);
    EXPECT_DOUBLE_EQ(levels.sides[0].centroid.y, 22.0);  // above
    EXPECT_DOUBLE_EQ(levels.sides[1].leverArm, 5.0);
    EXPECT_DOUBLE_EQ(sides.axis, 20.0);
    EXPECT_DOUBLE_EQ(sides.sides[0].centroid.x, 27.5);  // to the right
    EXPECT_DOUBLE_EQ(sides.sides[1].area, 300.0);
    TableOptions options;
    EXPECT_EQ(report.Table(options).find("Half above, area"), std::string::npos);
    options.wantsHalves = true;
    EXPECT_NE(report.Table(options).find("Half above, area"), std::string::npos);
    EXPECT_NE(report.Json().find("\"lever_arm\": 7.5"), std::string::npos);
}

double AreaWithin(const Points& ring) {
    double twice = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Point &p = ring[i], &q = ring[(i + 1) % ring.size()];
        twice += (p.x - ring[0].x) * (q.y - ring[0].y) - (q.x - ring[0].x) * (p.y - ring[0].y);
    }
    return 0.5 * twice;
}

// Rings of a polygon after its outline are its holes. What meets in a point only is no single ring.
TEST(EngineForHosts, MaterialIsPolygonsOfSimpleRings) {
    struct Case {
        const char* contours;
        std::vector<std::vector<double>> areas;  // of each polygon: outline, holes as negative ones
    };
    const Case cases[] = {
        {"+[[0,0],[30,0],[30,30],[0,30]] -[[5,5],[5,25],[25,25],[25,5]] "
         "+[[9,9],[9,19],[19,19],[19,9]]",
         {{900, -400}, {100}}},
        {"+[[0,0],[10,0],[10,10],[0,10]] +[[10,0],[30,0],[30,10],[10,10]]", {{300}}},
        {"+[[0,0],[10,0],[10,10],[0,10]] +[[5,0],[30,0],[30,10],[5,10]]", {{300}}},
        {"+[[0,0],[10,0],[10,10],[0,10]] +[[10,10],[20,10],[20,20],[10,20]]", {{100}, {100}}},
        // A hole meets the outline in a point, two or three holes meet in one, the ends of a hook
        // do.
        {"+[[0,0],[30,0],[30,30],[0,30]] -[[15,0],[20,10],[10,10]]", {{900, -50}}},
        {"+[[0,0],[30,0],[30,30],[0,30]] -[[15,15],[20,25],[10,25]] -[[15,15],[10,5],[20,5]]",
         {{900, -50, -50}}},
        {"+[[0,0],[30,0],[30,30],[0,30]] -[[15,15],[20,25],[10,25]] -[[15,15],[10,5],[20,5]] "
         "-[[15,15],[25,10],[25,20]]",
         {{900, -50, -50, -50}}},
        {"+[[0,0],[30,0],[30,30],[15,30],[20,20],[10,20],[15,30],[0,30]]", {{900, -50}}},
        {"+[[0,0],[9,0],[0,9]] -[[-1,-1],[10,-1],[10,10],[-1,10]]", {}},
    };
    for (const Case& c : cases) {
        for (const Point by : {Point(0, 0), Point(-4e6, 3e6)}) {
            std::string text = R"({"version": 1, "unit": "mm", "contours": [)";
            std::istringstream rings(c.contours);
            for (std::string ring; rings >> ring;) {
                text += text.back() == '[' ? "" : ",";
                text += std::string(R"({"kind": )") +
                        (ring[0] == '+' ? R"("solid")" : R"("hole")") + R"(, "points": )" +
                        ring.substr(1) + "}";
            }
            const Section section = Section::Parse(text + "]}", TextFormat::Json, "rings");
            std::vector<std::vector<double>> areas;
            for (const Polygon& polygon : section.Moved(by).Material()) {
                areas.push_back({AreaWithin(polygon.outline)});
                for (const Points& hole : polygon.holes) areas.back().push_back(AreaWithin(hole));
            }
            EXPECT_EQ(areas, c.areas) << c.contours;
        }
    }
    // Coordinates are those that were given, bit for bit.
    const Section bar =
        Section::Parse("# unit: m\n0.1,0.2\n0.7,0.2\n0.7,0.9\n0.1,0.9\n", TextFormat::Csv, "bar");
    const Points outline = bar.Material().at(0).outline;
    EXPECT_TRUE(outline[0].x == 0.1 && outline[0].y == 0.2 && outline[2].x == 0.7);
}

TEST(EngineForHosts, OpensProfilesInAUnitAndDrawsThem) {
    InputOptions options;
    options.unit = "cm";
    const SectionReport report = Section::Open("ipe 300", options).Evaluate();
    EXPECT_EQ(report.Source(), "IPE300");
    const Value* const published = FindValue(report.Published(), "elastic_modulus_x_min");
    ASSERT_NE(published, nullptr);
    EXPECT_NEAR(published->number, 557.0, 1e-9);
    EXPECT_NEAR(NumberOf(report, "elastic_modulus_bottom"), 557.0, 0.3);
    EXPECT_NEAR(NumberOf(report, "area"), 53.81, 0.01);
    EXPECT_EQ(report.Table().rfind("IPE300\n", 0), 0U);
    EXPECT_NE(report.Json().find("\"length_unit\": \"cm\""), std::string::npos);
    EXPECT_EQ(report.JsonLine().find('\n'), report.JsonLine().size() - 1);
    EXPECT_EQ(report.CsvRow().rfind("IPE300,IPE300,cm,", 0), 0U);
    EXPECT_EQ(CsvHeader().rfind("source,name,unit,area,", 0), 0U);
    EXPECT_EQ(CatalogueNames().size(), 896U);
    const std::string path = testing::TempDir() + "hosts_test.svg";
    const auto drawn = [&](const FigureOptions& asked) {
        report.WriteFigure(path, asked);
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    };
    FigureOptions tinted;
    tinted.blocks = AxisDirection::Vertical;
    const std::string plain = drawn({}), blocks = drawn(tinted);
    EXPECT_NE(plain.find("<svg"), std::string::npos);
    EXPECT_GT(blocks.size(), plain.size());
    std::filesystem::remove(path);
}

TEST(EngineForHosts, FindingsComeByKindAndWorstFirst) {
    // Two overlapping squares and one apart.
    const Section section = Section::Parse(
        R"({"version": 1, "unit": "mm", "contours": [
            {"kind": "solid", "points": [[0, 0], [10, 0], [10, 10], [0, 10]]},
            {"kind": "solid", "points": [[5, 5], [15, 5], [15, 15], [5, 15]]},
            {"kind": "solid", "points": [[50, 0], [60, 0], [60, 10], [50, 10]]}]})",
        TextFormat::Json, "squares");
    const SectionReport report = section.Evaluate();
    const Finding* const overlap = FindFinding(report.Findings(), FindingKind::Overlap);
    ASSERT_NE(overlap, nullptr);
    EXPECT_EQ(overlap, &report.Findings().front());
    EXPECT_STREQ(SeverityName(overlap->severity), "warning");
    EXPECT_STREQ(KindName(overlap->kind), "overlap");
    ASSERT_TRUE(overlap->place.has_value());
    EXPECT_TRUE(overlap->place->x > 5 && overlap->place->x < 10) << overlap->place->x;
    EXPECT_NE(FindFinding(report.Findings(), FindingKind::PartsApart), nullptr);
    EXPECT_EQ(FindFinding(report.Findings(), FindingKind::Pinch), nullptr);
    EXPECT_DOUBLE_EQ(NumberOf(report, "area"), 275.0);  // what overlaps counts once
}

TEST(EngineForHosts, ErrorsNameSourcePlaceAndMend) {
    const double infinite = std::numeric_limits<double>::infinity();
    InputOptions furlong, coarse, layered;
    furlong.unit = "furlong";
    coarse.chordTolerance = 0.0;
    layered.layers = {"0"};
    const auto parse = [](const char* text, TextFormat format, const InputOptions& options = {}) {
        return Section::Parse(text, format, "host", options);
    };
    const char* const wall = R"({"version": 1, "unit": "mm", "polyline": {"kind": "solid", 
        "points": [[0, 0], [4, 0], [4, 3]]}})";
    struct Case {
        std::function<void()> call;
        const char *source, *place, *problem, *mend;  // how each begins
    };
    const Case cases[] = {
        {[&] { parse("{\"version\": 1,\n oops", TextFormat::Json); }, "host", "line 2",
         "not valid JSON", "correct it"},
        {[&] { parse(R"({"version": 1, "unit": "mm", "parts": [7]})", TextFormat::Json); }, "host",
         "/parts/0", "expected", ""},
        {[&] { parse("0,0\n1\n", TextFormat::Csv); }, "host", "line 2", "expected", ""},
        {[&] { parse("0,0\n4,4\n4,0\n0,4\n", TextFormat::Csv).Evaluate(); }, "host", "line 1",
         "crosses itself", "bring"},
        {[&] { Section::Open("IPE301"); }, "IPE301", "", "neither a file", "similar profiles"},
        {[&] { Section::Open("absent.json"); }, "absent.json", "", "cannot be opened", "check"},
        {[&] { Section::Open("IPE300", furlong); }, "options", "", "the unit is furlong", "give"},
        {[&] { parse(kJson, TextFormat::Json, furlong); }, "options", "", "the unit is", "give"},
        {[&] { parse(kCsv, TextFormat::Csv, furlong); }, "options", "", "the unit is", "give"},
        {[&] { parse(kDxf, TextFormat::Dxf, coarse); }, "options", "", "the chord tol", "give"},
        {[&] { parse(kJson, TextFormat::Json, layered); }, "command line", "", "--layer", "leave"},
        {[&] {
             parse(kDxf, TextFormat::Dxf, layered).Evaluate({.shift = {0.0, infinite}});
         },
         "options", "", "the shift", "give"},
        {[&] { parse(kCsv, TextFormat::Csv).Evaluate({.density = -1.0}); }, "options", "",
         "the density", "give kg/m^3"},
        {[&] { parse(kCsv, TextFormat::Csv).Evaluate({.tolerance = 1e-10}); }, "options", "",
         "the tolerance", "give"},
        {[&] { parse(kCsv, TextFormat::Csv).Evaluate({.poisson = -infinite}); }, "options", "",
         "Poisson's ratio", "give"},
        {[&] {
             parse(kCsv, TextFormat::Csv).Evaluate({.forces = SectionForces{0, 0, infinite}});
         },
         "options", "", "a force is not finite", "give"},
        {[&] {
             parse(kCsv, TextFormat::Csv)
                 .Evaluate({.wantsWarping = false, .forces = SectionForces{}});
         },
         "options", "", "stresses take", "ask"},
        {[&] {
             parse(wall, TextFormat::Json).Evaluate({.shift = {1.0, 0.0}});
         },
         "host", "/polyline", "a polyline has no", "leave out"},
        {[&] { parse(kCsv, TextFormat::Csv).Evaluate().WriteFigure("a.txt"); }, "a.txt", "",
         "a figure is", "give"},
    };
    for (const Case& each : cases) {
        try {
            each.call();
            ADD_FAILURE() << each.problem << " passes";
        } catch (const InputError& error) {
            const std::string place = error.Place().empty() ? "" : ": " + error.Place();
            EXPECT_EQ(error.what(),
                      error.Source() + place + ": " + error.Problem() + "; " + error.Mend());
            EXPECT_EQ(error.Source(), each.source) << error.what();
            EXPECT_EQ(error.Place().rfind(each.place, 0), 0U) << error.what();
            EXPECT_EQ(error.Problem().rfind(each.problem, 0), 0U) << error.what();
            EXPECT_EQ(error.Mend().rfind(each.mend, 0), 0U) << error.what();
        }
    }
}

TEST(EngineForHosts, OneSectionServesManyThreads) {
    const Section shared = Section::Open("HEB200");
    const std::string alone = shared.Evaluate().Json() + Section::Open("IPE300").Evaluate().Json();
    std::vector<std::string> texts(8);
    std::vector<std::thread> threads;
    for (std::string& text : texts) {
        threads.emplace_back([&text, &shared] {
            text = shared.Evaluate().Json() + Section::Open("IPE300").Evaluate().Json();
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const std::string& text : texts) EXPECT_EQ(text, alone);
}

TEST(EngineForHosts, BuildsUpSectionsAsSectionFilesDo) {
    const EvaluateOptions quick = {.wantsWarping = false};
    const auto at = [](const Section& section, Along x, Along y) {
        const Point from = section.PointOfBox(x, y);
        return section.Moved({-from.x, -from.y});
    };
    const auto plate = [](const std::string& width, const std::string& height) {
        return Section::Parse(
            R"({"version": 1, "unit": "mm", "parts": [{"shape": "plate", "width": )" + width +
                R"(, "height": )" + height + "}]}",
            TextFormat::Json, "plate");
    };
    const Section girder = at(Section::Open("HEB300"), Along::Middle, Along::Low);
    Setting astride;
    astride.touch = Touch::Outlines;
    const Section channel = Section::Open("UPE400").Turned(-90.0).SetOn(girder, astride);
    const Section left = Section::Open("UPE200");
    Setting beside;
    beside.side = Side::Right;
    beside.gap = 100.0;
    // Webs of 760 x 12, their outer faces 800 apart, as a row and as what is left of a block.
    const Section bottom = at(plate("1000", "20"), Along::Middle, Along::Low);
    const Section webs = plate("12", "760").InRow(2, {788.0, 0.0}).SetOn(bottom, {});
    const Section block = plate("800", "760").SetOn(bottom, {});
    const Section room = plate("776", "760").SetOn(bottom, {});
    const struct {
        Section built;
        Section file;
    } cases[] = {
        {girder.With(channel), Section::Open("examples/crane-girder.json")},
        {left.With(left.Mirrored(Mirror::AboutY).SetOn(left, beside)),
         Section::Open("examples/battened-channels.json")},
        {bottom.With(webs), bottom.With(block).Without(room)},
    };
    for (const auto& [built, file] : cases) {
        SCOPED_TRACE(file.Source());
        const SectionReport found = built.Evaluate(quick), expected = file.Evaluate(quick);
        EXPECT_TRUE(found.Published().empty());
        for (const char* key : {"area", "centroid_y", "inertia_x", "inertia_y", "plastic_modulus_x",
                                "elastic_modulus_right"}) {
            const double number = NumberOf(expected, key);
            EXPECT_NEAR(NumberOf(found, key), number, 1e-9 * number) << key;
        }
    }
    EXPECT_THROW(girder.With(Section::Open("examples/t-beam-metres.json")), InputError);
    EXPECT_THROW(girder.InRow(1001, {400.0, 0.0}), InputError);
    astride.shift = {1000.0, 0.0};
    EXPECT_THROW(channel.SetOn(girder, astride), InputError);
}

// Rectangles of whole numbers put together and taken away in turn: each unit square is there or
// not.
TEST(EngineForHosts, WhatIsTakenAwayIsGoneAndTakesNothingOfWhatComesLater) {
    constexpr int kSize = 12;
    std::mt19937 random(20);
    const auto upTo = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    for (int round = 0; round < 60; ++round) {
        std::array<std::array<double, kSize>, kSize> ratios{};
        std::optional<Section> section;
        std::string steps;
        const double stiff = round % 2 ? 7.0 : 1.0;
        for (int step = 0; step < 6; ++step) {
            const int x = upTo(kSize - 2), y = upTo(kSize - 2);
            const int width = 1 + upTo(kSize - 1 - x), height = 1 + upTo(kSize - 1 - y);
            const bool isTaken = section && step % 2;
            const double ratio = isTaken || upTo(1) ? 1.0 : stiff;
            const std::string text =
                R"({"version": 1, "unit": "mm", "parts": [{"shape": "plate", "width": )" +
                std::to_string(width) + R"(, "height": )" + std::to_string(height) +
                R"(, "modular_ratio": )" + std::to_string(ratio) + "}]}";
            const Section plate =
                Section::Parse(text, TextFormat::Json, "plate").Moved({double(x), double(y)});
            steps += (isTaken ? " -" : " +") + std::to_string(width) + "x" +
                     std::to_string(height) + "@" + std::to_string(x) + "," + std::to_string(y);
            section = !section ? plate : isTaken ? section->Without(plate) : section->With(plate);
            for (int i = x; i < x + width; ++i) {
                for (int j = y; j < y + height; ++j) {
                    double& at = ratios[std::size_t(i)][std::size_t(j)];
                    at = isTaken ? 0.0 : std::max(at, ratio);
                }
            }
        }
        double area = 0.0, moment = 0.0;
        for (std::size_t i = 0; i < kSize; ++i) {
            for (std::size_t j = 0; j < kSize; ++j) {
                area += ratios[i][j];
                moment += ratios[i][j] * (double(j) + 0.5);
            }
        }
        SCOPED_TRACE(steps);
        EvaluateOptions quick;
        quick.wantsWarping = false;
        const SectionReport report = section->Evaluate(quick);
        EXPECT_NEAR(NumberOf(report, "area"), area, 1e-9 * area);
        EXPECT_NEAR(NumberOf(report, "centroid_y"), moment / area, 1e-9 * kSize);
    }
}

}  // namespace
