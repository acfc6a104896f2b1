// Catalogue profiles by name, and rings of points in CSV, as they arrive in a section.
#include "catalogue/catalogue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "HalvornEngine.h"
#include "base/text.h"
#include "catalogue/csv_table.h"
#include "read/open_section.h"
#include "values/evaluate.h"

namespace {

using namespace halvorn::engine;

const auto kDivision = halvorn::engine::shapes::ArcDivision::ChordError(0.01);

double Number(const Report& report, const char* key) {
    const Value* const value = report.Find(key);
    return value != nullptr ? value->number : NAN;
}

double OfClass(const Report& report, const char* key) {
    const Value* const value = FindValue(report.classValues, key);
    return value != nullptr ? value->number : NAN;
}

Report ReportOf(const std::string& name, const std::string& unit, bool wantsPublished,
                double chordTolerance = 0.01) {
    InputOptions options;
    options.chordTolerance = chordTolerance;
    options.unit = unit;
    options.wantsPublishedValues = wantsPublished;
    return Evaluate(OpenSection(name, options), {});
}

// Area between two tangents that meet at a turn and the arc that rounds them.
double Spandrel(double radius, double turn) {
    return radius * radius * (std::tan(turn / 2.0) - turn / 2.0);
}

// The area of a row's dimensions: rectangles, spandrels and rings.
double AreaOf(const CsvRecord& row) {
    const auto d = [&](const char* column) { return row.Number(column).value_or(0.0); };
    const std::string& type = row.Text("type");
    const double right = std::numbers::pi / 2.0;
    if (type == "chs") return 2.0 * right * d("t") * (d("h") - d("t"));
    if (type == "rhs") {
        return d("h") * d("b") - (d("h") - 2.0 * d("t")) * (d("b") - 2.0 * d("t")) -
               4.0 * (Spandrel(d("r_out"), right) - Spandrel(d("r_in"), right));
    }
    if (type == "angle") {
        return d("t") * (d("h") + d("b") - d("t")) + Spandrel(d("r_root"), right) -
               2.0 * Spandrel(d("r_toe"), right);
    }
    // Four or two overhangs, whose flanges have their mean thickness in the middle.
    const bool isChannel = type.ends_with("channel");
    const double overhang = (d("b") - d("tw")) / (isChannel ? 1.0 : 2.0);
    const double flange = d("tf") + d("slope") * (overhang / 2.0 - d("tf_at_from_toe"));
    const double turn = right - std::atan(d("slope"));
    const double root = type.starts_with("taper") ? d("r_root") : d("r");
    return d("h") * d("tw") + (isChannel ? 2.0 : 4.0) * (overhang * flange + Spandrel(root, turn) -
                                                         Spandrel(d("r_toe"), turn));
}

// The areas of the table are rounded to three or four digits, some of them twice.
TEST(Catalogue, DrawsEveryProfileWithTheAreaOfItsDimensionsAndItsPublishedArea) {
    std::size_t compared = 0;
    for (const CsvRecord& row : ParseCsv(ReadInput("engine/catalogue/profiles.csv"))) {
        const std::string& name = row.Text("name");
        ASSERT_TRUE(IsCatalogueProfile(name)) << name;
        const Report drawn = ReportOf(name, "mm", false);
        for (const Report& coarse : {drawn, ReportOf(name, "mm", false, 5.0)}) {
            EXPECT_NEAR(Number(coarse, "area"), AreaOf(row), 1e-12 * AreaOf(row)) << name;
        }
        const std::optional<double> area = row.Number("area");
        if (!area) continue;
        EXPECT_NEAR(Number(drawn, "area"), *area, 0.006 * *area) << name;
        EXPECT_EQ(OfClass(ReportOf(name, "mm", true), "area"), *area) << name;
        EXPECT_EQ(FindValue(drawn.published, "area")->number, *area) << name;
        ++compared;
    }
    EXPECT_EQ(compared, 857U);
    EXPECT_EQ(CatalogueNames().size(), 896U);
}

TEST(Catalogue, GivesPublishedValuesInAnyUnitAndOnlyThose) {
    const Report angle = ReportOf("L100x100x10", "mm", true);
    const Report inches = ReportOf("L100x100x10", "in", true);
    for (const auto& [key, published] : {std::pair{"inertia_x", 1767000.0},
                                         {"inertia_y", 1767000.0},
                                         {"inertia_xy", -1040000.0}}) {
        EXPECT_NEAR(OfClass(angle, key), published, 1e-3 * std::fabs(published)) << key;
        EXPECT_NEAR(OfClass(inches, key) * std::pow(25.4, 4), OfClass(angle, key),
                    1e-9 * std::fabs(published));
    }
    // The table has the moduli of an IPE, not its inertias.
    const Report beam = ReportOf("IPE300", "mm", true);
    EXPECT_NEAR(OfClass(beam, "elastic_modulus_top"), 557000.0, 500.0);
    EXPECT_NEAR(OfClass(beam, "elastic_modulus_left"), 80500.0, 100.0);
    const Report tapered = ReportOf("UPN200", "mm", true);
    EXPECT_NEAR(OfClass(tapered, "elastic_modulus_top"), 191000.0, 500.0);
    EXPECT_NEAR(OfClass(tapered, "elastic_modulus_right"), 27000.0, 100.0);
    // Values are of the outline, and what is published stands beside them.
    EXPECT_NEAR(Number(beam, "elastic_modulus_top"), 557073.9, 0.1);
    EXPECT_EQ(FindValue(beam.published, "elastic_modulus_x_min")->number, 557000.0);
    EXPECT_NEAR(FindValue(inches.published, "inertia_xy")->number * std::pow(25.4, 4), -1040000.0,
                1e-3 * 1040000);
    const Element hollow = CatalogueElements("SHS100x5", "mm", kDivision, true).front();
    EXPECT_FALSE(hollow.given->torsionConstant || hollow.given->shearArea1);
    EXPECT_EQ(CatalogueElements("SHS100x5", "mm", kDivision, false).size(), 2U);
}

TEST(Catalogue, DividesArcsByAToleranceInMillimetresWhateverTheUnit) {
    std::size_t points = 0;
    for (const double tolerance : {5.0, 1e-3, 1e-4}) {
        InputOptions options;
        options.chordTolerance = tolerance;
        const std::size_t found = OpenSection("IPE300", options).elements[0].ring.size();
        EXPECT_GT(found, points);
        points = found;
        for (const char* unit : {"cm", "m", "in"}) {
            options.unit = unit;
            EXPECT_EQ(OpenSection("IPE300", options).elements[0].ring.size(), found) << unit;
        }
    }
}

TEST(Catalogue, KnowsOtherSpellingsAndTheNeighboursOfUnknownNames) {
    const std::pair<const char*, const char*> spellings[] = {{"ipe 300", "IPE300"},
                                                             {"HE 200 B", "HEB200"},
                                                             {"HE-200-B", "HEB200"},
                                                             {"L 100 X 100 X 10", "L100x100x10"},
                                                             {"L100x10", "L100x100x10"},
                                                             {"SHS100*5", "SHS 100x100x5"},
                                                             {"rhs100x100x5", "SHS 100x100x5"},
                                                             {"chs114,3x5", "CHS 114.3x5"},
                                                             {"rhs 200\xC3\x97"
                                                              "100\xC3\x97"
                                                              "8.0",
                                                              "RHS 200x100x8"}};
    for (const auto& [spelling, name] : spellings) {
        ASSERT_TRUE(IsCatalogueProfile(spelling)) << spelling;
        EXPECT_EQ(CatalogueElements(spelling, "mm", kDivision, false).front().label, name);
    }
    const std::string endless = "1." + std::string(1000000, '0');
    for (const std::string& unknown :
         {std::string("IPE310"), std::string("IPE"), std::string(), std::string("HE"),
          std::string("X"), std::string("SHS1e2x5"), std::string(".0x.0x"), endless}) {
        EXPECT_FALSE(IsCatalogueProfile(unknown)) << unknown.substr(0, 20);
    }
    // Same letters first, then the nearest in the numbers, one after the other.
    const std::pair<const char*, std::vector<std::string>> similar[] = {
        {"IPE301", {"IPE300", "IPE330", "IPE270"}},
        {"HEB30", {"HEB300", "HEB100", "HEB120"}},
        {"HE300", {"HEA300", "HEB300", "HEM300"}},
        {"RHS 100x200x5.2", {"RHS 200x100x5", "RHS 200x100x5.6", "RHS 200x100x6.3"}},
        {"L100/100/10", {"L100x100x10", "L100x100x8", "L100x100x12"}},
        {"SHS100/5", {"SHS 100x100x5", "SHS 100x100x5.6", "SHS 100x100x4"}},
        {"chs 114", {"CHS 114.3x3.6", "CHS 114.3x4", "CHS 114.3x4.5"}}};
    for (const auto& [typed, names] : similar) EXPECT_EQ(Catalogue().Similar(typed), names);
    for (const char* const slip : {"IPE 30O", "IPX300", "IPE300mm"}) {
        EXPECT_EQ(Catalogue().Similar(slip).front(), "IPE300") << slip;
    }
    for (const std::string& strange : {std::string("Hollow brick wall"), endless + "1",
                                       std::string("X12"), std::string("300")}) {
        EXPECT_TRUE(Catalogue().Similar(strange).empty());
    }
    EXPECT_THROW(CatalogueElements("IPE300", "mm",
                                   halvorn::engine::shapes::ArcDivision::ChordError(1e-15), false),
                 InputError);
    try {
        OpenSection("IPE301", {});
        ADD_FAILURE() << "IPE301 is no profile";
    } catch (const InputError& error) {
        EXPECT_NE(std::string(error.what()).find("similar profiles: IPE300"), std::string::npos);
    }
}

}  // namespace
