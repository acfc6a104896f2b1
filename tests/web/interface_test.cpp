// Requests and answers of the C interface, as the page and other hosts see them.
#include <HalvornEngine.h>
#include <gtest/gtest.h>
#include <interface.h>

#include <cmath>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>

namespace {

using nlohmann::json;
using namespace halvorn::engine;

json Called(const std::string& request) {
    const char* const answer = halvorn_call(request.c_str());
    json parsed = json::parse(answer);
    halvorn_free(answer);
    return parsed;
}

json Called(const json& request) {
    return Called(request.dump());
}

json Evaluated(json section, const char* want, json more = json::object()) {
    more.update({{"op", "evaluate"}, {"section", std::move(section)}, {"want", {want}}});
    json answer = Called(more);
    EXPECT_TRUE(answer.at("ok").get<bool>()) << answer;
    return answer.value(want, json());
}

// A bar 30 x 20 with a hole of 10 x 10, its lower left corner at (5, 7).
constexpr const char* kBar =
    R"({"version": 1, "unit": "mm", "name": "bar", "density": 8000, "contours": [
        {"kind": "solid", "points": [[5, 7], [35, 7], [35, 27], [5, 27]]},
        {"kind": "hole", "points": [[10, 12], [20, 12], [20, 22], [10, 22]]}]})";

json ValueOfKey(const json& values, const std::string& key) {
    for (const json& group : values.at("groups")) {
        for (const json& value : group.at("values")) {
            if (value.at("key") == key) return value;
        }
    }
    return {};
}

TEST(WebInterface, GivesWhatTheEngineKnowsOfASection) {
    const json section = {{"text", kBar}, {"source", "bar.json"}};
    const Section bar = Section::Parse(kBar, TextFormat::Json, "bar.json");
    const SectionReport report = bar.Evaluate();
    const json warped = {{"options", {{"warping", true}}}};
    EXPECT_EQ(Evaluated(section, "table", warped), report.Table());
    EXPECT_EQ(Evaluated(section, "json", warped), report.Json());
    EXPECT_EQ(Evaluated(section, "csv", warped), CsvHeader() + report.CsvRow());
    EXPECT_EQ(Evaluated(section, "svg", warped), report.Svg());
    EXPECT_EQ(Evaluated(section, "box"), json({5.0, 7.0, 35.0, 27.0}));
    EXPECT_EQ(Evaluated(section, "findings").size(),
              bar.Evaluate({.wantsWarping = false}).Findings().size());
    const json material = Evaluated(section, "material");
    ASSERT_EQ(material.size(), 1U);
    EXPECT_EQ(material[0].at("outline").size(), 4U);
    EXPECT_EQ(material[0].at("holes").size(), 1U);
    // Without being asked for, the solution is not there.
    EXPECT_TRUE(
        ValueOfKey(Evaluated(section, "values"), "torsion_constant").at("number").is_null());
    const json forces = {{"options", {{"forces", {{"N", 5000}}}}}};
    const json stress = Evaluated(section, "stresses", forces)[0];
    EXPECT_NEAR(stress.at("number").get<double>(), 10.0, 1e-9);  // 5000 over 500
    EXPECT_EQ(stress.at("unit"), "F/mm^2");
}

// Every number of a value has the power of its unit; 1 in = 25.4 mm.
TEST(WebInterface, ShowsValuesInAnotherUnit) {
    const json options = {{"warping", true}, {"density", 7850}, {"forces", {{"Vy", 1000}}}};
    json inMillimetres = {{"options", options}};
    json inInches = {{"options", options}, {"unit", "in"}};
    const json profile = {{"profile", "ipe 300"}};
    const json mm = Evaluated(profile, "values", inMillimetres);
    const json in = Evaluated(profile, "values", inInches);
    const std::pair<const char*, int> powers[] = {{"area", 2},
                                                  {"centroid_x", 1},
                                                  {"inertia_x", 4},
                                                  {"elastic_modulus_top", 3},
                                                  {"mass_per_metre", 0},
                                                  {"torsion_constant", 4},
                                                  {"warping_constant", 6}};
    for (const auto& [key, power] : powers) {
        const json a = ValueOfKey(mm, key), b = ValueOfKey(in, key);
        ASSERT_FALSE(a.is_null()) << key;
        for (const char* number : {"number", "lower", "upper", "error", "published"}) {
            ASSERT_EQ(a.at(number).is_null(), b.at(number).is_null()) << key << number;
            if (a.at(number).is_null()) continue;
            const double expected = a.at(number).get<double>() / std::pow(25.4, power);
            EXPECT_NEAR(b.at(number).get<double>(), expected, 1e-13 * std::fabs(expected)) << key;
        }
        const std::string unit = power == 0   ? "kg/m"
                                 : power == 1 ? "in"
                                              : "in^" + std::to_string(power);
        EXPECT_EQ(b.at("unit"), unit);
        EXPECT_EQ(a.at("difference_text"), b.at("difference_text"));
    }
    // As the table shows it, with its bound.
    const json warping = ValueOfKey(mm, "torsion_constant");
    const std::string table = Evaluated(profile, "table", inMillimetres);
    EXPECT_NE(table.find(warping.at("text").get<std::string>()), std::string::npos);
    EXPECT_NE(table.find("± " + warping.at("plus_minus").get<std::string>() + " "),
              std::string::npos);
    const json stress = Evaluated(profile, "stresses", inInches)[1];
    const json metric = Evaluated(profile, "stresses", inMillimetres)[1];
    EXPECT_EQ(stress.at("unit"), "F/in^2");
    EXPECT_NEAR(stress.at("number").get<double>(), metric.at("number").get<double>() * 645.16,
                1e-9);
    EXPECT_EQ(stress.at("place"), metric.at("place"));
}

// A form of the registry makes sections: of what must be given alone, and of all of it.
TEST(WebInterface, DescribesShapesThatCanBeDrawn) {
    const json shapes = Called(json{{"op", "shapes"}}).at("shapes");
    EXPECT_GE(shapes.size(), 9U);
    for (const json& shape : shapes) {
        double areas[2] = {};
        for (const bool isWhole : {false, true}) {
            json part = {{"shape", shape.at("kind")}};
            for (const json& dimension : shape.at("dimensions")) {
                EXPECT_FALSE(dimension.at("description").get<std::string>().empty());
                EXPECT_GT(dimension.at("example").get<double>(), 0.0);
                if (isWhole || dimension.at("required"))
                    part[dimension.at("key")] = dimension.at("example");
            }
            const json file = {{"version", 1}, {"unit", "mm"}, {"parts", {part}}};
            const json values = Evaluated({{"text", file.dump()}}, "values");
            areas[isWhole ? 1 : 0] = ValueOfKey(values, "area").at("number").get<double>();
            EXPECT_EQ(Evaluated({{"text", file.dump()}}, "findings"), json::array()) << part;
        }
        // The optional ones are details.
        EXPECT_NEAR(areas[0] / areas[1], 1.0, 0.1) << shape.at("kind");
    }
}

TEST(WebInterface, TurnsEveryFormatIntoASectionFileOfTheSameValues) {
    std::string csv = "# unit: cm\nx,y,contour\n";
    for (const char* point : {"0,0", "7.1,0", "7.1,3.3", "0,3.3"})
        csv += std::string(point) + ",a\n";
    for (const char* point : {"1,1", "2,1", "2,2.7"}) csv += std::string(point) + ",b\n";
    const json inputs[] = {{{"text", kBar}},
                           {{"text", csv}, {"format", "csv"}},
                           {{"profile", "UPE200"}},
                           {{"profile", "CHS114.3x5"}, {"unit", "in"}}};
    for (const json& input : inputs) {
        const json converted = Called({{"op", "convert"}, {"section", input}});
        ASSERT_TRUE(converted.at("ok")) << converted;
        const json again = {{"text", converted.at("text")}};
        EXPECT_EQ(Evaluated(again, "box"), Evaluated(input, "box"));
        const json before = Evaluated(input, "values"), after = Evaluated(again, "values");
        for (const char* key : {"area", "inertia_x", "plastic_modulus_y"}) {
            for (const char* part : {"number", "unit"}) {
                EXPECT_EQ(ValueOfKey(before, key).at(part), ValueOfKey(after, key).at(part))
                    << key << input;
            }
        }
    }
    // A hole within its own material alone cannot be a contour.
    const json composite = {{"version", 1},
                            {"unit", "mm"},
                            {"parts",
                             {{{"shape", "chs"}, {"diameter", 100}, {"thickness", 5}},
                              {{"shape", "round"}, {"diameter", 100}, {"modular_ratio", 0.15}}}}};
    EXPECT_FALSE(Called({{"op", "convert"}, {"section", {{"text", composite.dump()}}}}).at("ok"));
}

TEST(WebInterface, ListsTheLayersOfADrawing) {
    const std::string drawing =
        "0\nSECTION\n2\nTABLES\n0\nLAYER\n2\nAxes\n70\n1\n62\n7\n0\nENDSEC\n0\nSECTION\n2\nENTITIES"
        "\n"
        "0\nCIRCLE\n8\nSteel\n10\n0\n20\n0\n40\n5\n0\nLINE\n8\nAxes\n10\n0\n20\n0\n11\n9\n21\n0\n"
        "0\nENDSEC\n0\nEOF\n";
    const json section = {{"text", drawing}, {"format", "dxf"}};
    const json layers = Called({{"op", "layers"}, {"section", section}});
    EXPECT_EQ(layers.at("layers"), json({"Axes", "Steel"}));
    EXPECT_EQ(layers.at("read"), json({"Steel"}));
    EXPECT_EQ(layers.at("entities"),
              json::parse(R"({"Axes": {"LINE": 1}, "Steel": {"CIRCLE": 1}})"));
    EXPECT_FALSE(Called({{"op", "layers"}, {"section", {{"text", kBar}}}}).at("ok"));
}

TEST(WebInterface, KnowsTheCatalogue) {
    std::size_t profiles = 0;
    const json families = Called(json{{"op", "families"}}).at("families");
    for (const json& family : families) {
        const json names = Called({{"op", "names"}, {"family", family.at("name")}}).at("names");
        EXPECT_EQ(names.size(), family.at("profiles"));
        profiles += names.size();
    }
    EXPECT_EQ(Called(json{{"op", "names"}}).at("names").size(), profiles);
    const json profile = Called({{"op", "profile"}, {"name", "heb 200"}}).at("profile");
    EXPECT_EQ(profile.at("name"), "HEB200");
    EXPECT_EQ(profile.at("dimensions").at("tw"), 9.0);
    EXPECT_EQ(Called({{"op", "similar"}, {"name", "HEB205"}}).at("names")[0], "HEB200");
    const json found = Called({{"op", "find"}, {"query", "family=IPE Wplx>=500cm^3 limit=1"}});
    EXPECT_EQ(found.at("profiles")[0].at("name"), "IPE300");
    EXPECT_TRUE(found.at("limited"));
}

// Where a request is wrong and how to mend it; the next one is answered.
TEST(WebInterface, NamesWhatIsWrongWithARequest) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"[1]", "/op"},
        {R"({"op": 3})", "/op"},
        {R"({"op": "evaluat"})", "/op"},
        {R"({"op": "evaluate"})", "/section"},
        {R"({"op": "evaluate", "section": 5})", "/section"},
        {R"({"op": "evaluate", "section": {"text": 5}})", "/section/text"},
        {R"({"op": "evaluate", "section": {"text": "", "format": "pdf"}})", "/section/format"},
        {R"({"op": "evaluate", "section": {"text": "", "profile": "IPE300"}})", "/section/profile"},
        {R"({"op": "evaluate", "section": {"profile": "IPE300"}, "options": {"warpin": true}})",
         "/options/warpin"},
        {R"({"op": "evaluate", "section": {"profile": "IPE300"}, "options": {"poisson": "a"}})",
         "/options/poisson"},
        {R"({"op": "evaluate", "section": {"profile": "IPE300"}, "options": {"warping": 1}})",
         "/options/warping"},
        {R"({"op": "evaluate", "section": {"profile": "IPE300"}, "want": ["all"]})", "/want"},
        {R"({"op": "evaluate", "section": {"profile": "IPE300"}, "want": "all"})", "/want"},
    };
    for (const auto& [request, place] : cases) {
        const json answer = Called(std::string(request));
        ASSERT_FALSE(answer.at("ok").get<bool>()) << request;
        EXPECT_EQ(answer.at("error").at("source"), "request") << request;
        EXPECT_EQ(answer.at("error").at("place"), place) << request;
        EXPECT_FALSE(answer.at("error").at("mend").get<std::string>().empty()) << request;
    }
    const json answer = Called(json{{"op", "evaluate"}, {"section", {{"profile", "IPE3000"}}}});
    EXPECT_EQ(answer.at("error").at("source"), "IPE3000");
    EXPECT_EQ(Called(std::string(R"({"op": "version"})")).at("library"), "HalvornSectionTools");
}

}  // namespace
