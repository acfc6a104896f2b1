// Sections of more than one material: worked beams, sums over the cells of a grid, invariances.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <random>

#include "HalvornEngine.h"
#include "figure/layout.h"
#include "geometry/rings.h"
#include "read/json/section_file.h"
#include "ring_sections.h"
#include "values/evaluate.h"
#include "write/csv.h"
#include "write/json.h"
#include "write/table.h"

namespace {

using namespace halvorn::engine;

SectionModel Read(const std::string& parts, const std::string& unit = "mm") {
    return ReadSectionText(
        R"({"version": 1, "density": 7850, "unit": ")" + unit + R"(", "parts": [)" + parts + "]}",
        "test", {});
}

double Number(const std::vector<Value>& values, const std::string& key) {
    const Value* const value = FindValue(values, key);
    return value == nullptr ? std::nan("") : value->number;
}

void ExpectNumbers(const std::vector<Value>& values,
                   const std::vector<std::pair<const char*, double>>& expected) {
    for (const auto& [key, number] : expected) {
        EXPECT_NEAR(Number(values, key), number, 1e-9 * std::fabs(number)) << key;
    }
}

const std::string kSteelBeam =
    R"({"name": "steel", "shape": "plate", "width": 200, "height": 20, "move": [400, 0]},
       {"name": "steel", "shape": "plate", "width": 10, "height": 360, "move": [495, 20]},
       {"name": "steel", "shape": "plate", "width": 200, "height": 20, "move": [400, 380]})";
const std::string kSlab = R"({"name": "slab", "shape": "plate", "width": 1000, "height": 100,
                              "move": [0, 400], "modular_ratio": 0.14285714285714285})";

// Three plates under a slab 1000 x 100, Ea / Ec = 7. By hand, in mm:
//   A  = 4000 + 3600 + 4000 + 100000 / 7 = 25885.7143
//   yG = (4000 10 + 3600 200 + 4000 390 + 14285.7143 450) / A = 337.969095
//   Ix = 200 20^3 / 12 2 + 10 360^3 / 12 + 1000 100^3 / 12 / 7
//        + 4000 327.97^2 + 3600 137.97^2 + 4000 52.03^2 + 14285.7 112.03^2 = 739961804
//   steel, below Ix / yG = 2189436, above Ix / (400 - yG) = 11928922
//   slab, above 7 Ix / (500 - yG) = 31967560, below 7 Ix / (yG - 400) = -83502451
TEST(CompositeSections, HaveTheValuesOfASteelBeamUnderASlabByHand) {
    const Report report = Evaluate(Read(kSteelBeam + ", " + kSlab), {});
    ExpectNumbers(
        report.values,
        {{"area", 25885.714285714286},
         {"centroid_x", 500},
         {"centroid_y", 337.9690949227373},
         {"inertia_x", 739961803.8473668},
         {"inertia_y", 1217172857.142857},
         {"principal_inertia_2", 739961803.8473668},
         {"radius_of_gyration_x", std::sqrt(739961803.8473668 / 25885.714285714286)},
         {"elastic_modulus_bottom", 2189436.297471307},
         {"elastic_modulus_top", 31967559.673024524},
         // Of what lies below: the flange and 317.97 of the web.
         {"static_moment_x", 4000 * 327.9690949227373 + 5 * 317.9690949227373 * 317.9690949227373},
         {"height", 500},
         {"fibre_distance_top", 500 - 337.9690949227373},
         {"perimeter", 2 * 1000 + 2 * 500 + 2 * 190}});
    ASSERT_EQ(report.parts.size(), 2U);
    EXPECT_EQ(report.parts[0].name + " " + report.parts[1].name, "steel slab");
    EXPECT_EQ(report.parts[1].modularRatio, 1.0 / 7.0);
    ExpectNumbers(report.parts[0].moduli, {{"elastic_modulus_bottom", 2189436.297471307},
                                           {"elastic_modulus_top", 11928921.606507372}});
    ExpectNumbers(report.parts[1].moduli, {{"elastic_modulus_bottom", -83502451.2455516},
                                           {"elastic_modulus_top", 31967559.673024524},
                                           {"elastic_modulus_left", 1217172857.142857 * 7 / 500}});
    // They touch, and nothing is doubtful.
    ASSERT_EQ(report.findings.size(), 1U) << FindingsText(report.findings);
    EXPECT_EQ(report.findings[0].kind, FindingKind::Composite);
}

// Two timbers 60 x 240 on both sides of a steel plate 12 x 240, E of timber 1/20 of steel:
//   Ix = (12 + 120 / 20) 240^3 / 12 = 20736000
//   Iy = 240 12^3 / 12 + 2 / 20 (240 60^3 / 12 + 240 60 36^2) = 2332800
// The stress of the steel governs at the top, that of the timber at the sides.
TEST(CompositeSections, HaveTheValuesOfAFlitchBeamByHand) {
    const std::string plate = R"("shape": "plate", "at": "centroid", "height": 240)";
    const std::string timber = "{" + plate + R"(, "width": 60, "modular_ratio": 0.05,)";
    const Report report = Evaluate(Read(timber + R"("name": "left", "move": [-36, 0]}, {)" + plate +
                                        R"(, "width": 12, "name": "steel"}, )" + timber +
                                        R"("name": "right", "move": [36, 0]})"),
                                   {});
    ExpectNumbers(report.values, {{"area", 12 * 240 + 0.05 * 120 * 240},
                                  {"inertia_x", 20736000},
                                  {"inertia_y", 2332800},
                                  {"static_moment_x", (12 + 6) * 240 * 240 / 8},
                                  {"elastic_modulus_top", 20736000.0 / 120},
                                  {"elastic_modulus_right", 2332800 / (0.05 * 66)}});
    ASSERT_EQ(report.parts.size(), 3U);
    ExpectNumbers(report.parts[0].moduli, {{"elastic_modulus_bottom", 20736000 / (0.05 * 120)},
                                           {"elastic_modulus_left", 2332800 / (0.05 * 66)},
                                           {"elastic_modulus_right", -2332800 / (0.05 * 6)}});
    ExpectNumbers(report.parts[1].moduli, {{"elastic_modulus_right", 2332800.0 / 6}});
    EXPECT_EQ(Number(report.values, "inertia_xy"), 0);
}

// A tube of four walls 5 mm thick, 60 x 100, and what is laid over it.
TEST(CompositeSections, LetTheStifferPartDisplaceAndAHoleTakeAll) {
    const std::string walls = R"("shape": "rhs", "height": 100, "width": 60, "thickness": 5,
                                 "outer_radius": 0, "at": "centroid")";
    const std::string tube = R"({"name": "tube", )" + walls;
    const auto fill = [](int width, int height, const char* more = "") {
        return R"({"name": "fill", "shape": "plate", "at": "centroid", "modular_ratio": 0.2,
                   "width": )" +
               std::to_string(width) + R"(, "height": )" + std::to_string(height) + more + "}";
    };
    const std::string hole = R"({"kind": "hole", "shape": "plate", "width": 10, "height": 10,
                                 "move": [-5, )";
    const double inertia = (60 * 1e6 - 0.8 * 50 * 729e3) / 12;  // filled
    const struct {
        std::string parts;
        double area, inertia;
        const char* finding;  // besides that of a composite section
        std::size_t others = 0;
    } cases[] = {
        {tube + "}, " + fill(50, 90), 2400, inertia, ""},
        {fill(50, 90) + ", " + tube + "}", 2400, inertia, ""},
        {tube + "}, " + fill(60, 100), 2400, inertia,
         "remark: fill: the stiffer \"tube\" takes 1500 mm^2 of it at ("},
        {fill(60, 100) + ", " + tube + "}", 2400, inertia,
         "remark: fill: the stiffer \"tube\" takes 1500 mm^2 of it at ("},
        // 10 mm through a wall and what is behind or under it.
        {tube + "}, " + fill(60, 100) + ", " + hole + "40]}", 2340, std::nan(""),
         "remark: fill: the stiffer \"tube\" takes 1450 mm^2"},
        {hole + "-5]}, " + tube + "}, " + fill(50, 90), 2380, inertia - 0.2 * 1e4 / 12, ""},
        {tube + "}, " + fill(50, 90) + ", " + hole + "-5]}, " + hole + "-4]}", 2378, std::nan(""),
         "warning: /parts/2: it overlaps the hole \"/parts/3\": 90 mm^2"},
        {tube + "}, " + fill(50, 90) + ", " + hole + "200]}", 2400, inertia,
         "warning: /parts/2: 100 mm^2 of this hole lie outside every solid"},
        // The hollow hole leaves what is within it, of both.
        {R"({"name": "base", "shape": "plate", "width": 200, "height": 200, "at": "centroid"},
            {"name": "half", "shape": "plate", "width": 100, "height": 200, "move": [0, -100],
             "modular_ratio": 3}, )" +
             tube + R"(, "kind": "hole"})",
         80000 - 3 * 750 - 750, (800e6 * 4 - 2 * (60e6 - 50 * 729e3)) / 12,
         "remark: base: the stiffer \"half\" takes 19250 mm^2", 1},
        {tube + "}, " + fill(50, 90) + ", " + fill(10, 10), 2400, inertia,
         "warning: fill: it overlaps \"fill\": 100 mm^2"},
        // The hole takes where they overlap, but not what is drawn within it.
        {tube + "}, " + fill(50, 90) + ", " + fill(20, 10) + ", " + hole + "-5]}", 2380,
         inertia - 0.2 * 1e4 / 12, "warning: fill: it overlaps \"fill\": 100 mm^2"},
        {tube + "}, " + fill(50, 90) + ", " + fill(10, 10) + ", " + hole + "-5]}", 2400, inertia,
         ""},
        {R"({"name": "timber", "shape": "plate", "width": 100, "height": 200, "at": "centroid"},
            {"kind": "hole", "shape": "plate", "width": 24, "height": 24, "at": "centroid"},
            {"name": "rod", "shape": "plate", "width": 20, "height": 20, "at": "centroid",
             "modular_ratio": 19})",
         20000 - 576 + 19 * 400, (100 * 8e6 - 331776 + 19 * 160000) / 12,
         "remark: test: the section is in 2 parts"},
        {R"({"name": "flange", "shape": "plate", "width": 60, "height": 40, "at": "bottom_centre"},
            {"kind": "hole", "shape": "plate", "width": 10, "height": 12, "move": [-5, 28]},
            {"name": "web", "shape": "plate", "width": 10, "height": 100, "at": "bottom_centre",
             "move": [0, 28], "modular_ratio": 0.5})",
         2400 - 120 + 0.5 * 880, std::nan(""),
         "warning: /parts/1: this hole takes 120 mm^2 of \"web\" at (", 3},
        {tube + R"(, "modular_ratio": 2}, {"name": "gone", "modular_ratio": 0.5, )" + walls + "}",
         3000, 2 * (60e6 - 50 * 729e3) / 12, "remark: gone: the stiffer \"tube\" takes 1500"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.parts);
        const Report report = Evaluate(Read(c.parts), {});
        EXPECT_NEAR(Number(report.values, "area"), c.area, 1e-9 * c.area);
        if (!std::isnan(c.inertia)) {
            EXPECT_NEAR(Number(report.values, "inertia_x"), c.inertia, 1e-9 * c.inertia);
        }
        const std::string found = FindingsText(report.findings);
        EXPECT_NE(found.find(c.finding), std::string::npos) << found;
        EXPECT_EQ(report.findings.size(), (*c.finding == '\0' ? 1U : 2U) + c.others) << found;
    }
}

struct Cell {
    int left, bottom, width, height;
    double ratio;  // 0: a hole
    bool Holds(int x, int y) const {
        return left <= x && x < left + width && bottom <= y && y < bottom + height;
    }
    bool IsApartFrom(const Cell& other) const {
        return left + width <= other.left || other.left + other.width <= left ||
               bottom + height <= other.bottom || other.bottom + other.height <= bottom;
    }
    bool LiesWithin(const Cell& other) const {
        return other.Holds(left, bottom) && other.Holds(left + width - 1, bottom + height - 1);
    }
};

// What holds at each cell of a grid, from the rule itself: nothing in a hole but what lies within
// it, else the greatest ratio of the rectangles there.
struct Grid {
    static constexpr int kSize = 12;
    double area = 0, x = 0, y = 0, xx = 0, yy = 0, xy = 0;

    // Whether a rectangle is there, and no hole takes it.
    static bool IsThere(const std::vector<Cell>& cells, const Cell& own, int x, int y) {
        const auto isHole = [&](const Cell& c) { return c.ratio == 0 && c.Holds(x, y); };
        const auto leaves = [&](const Cell& hole) {
            return hole.ratio > 0 || own.LiesWithin(hole) || own.IsApartFrom(hole);
        };
        return own.Holds(x, y) && (std::none_of(cells.begin(), cells.end(), isHole) ||
                                   std::all_of(cells.begin(), cells.end(), leaves));
    }
    static double RatioAt(const std::vector<Cell>& cells, int x, int y) {
        double ratio = 0;
        for (const Cell& cell : cells) {
            if (IsThere(cells, cell, x, y)) ratio = std::max(ratio, cell.ratio);
        }
        return ratio;
    }
    explicit Grid(const std::vector<Cell>& cells) {
        for (int i = 0; i < kSize * kSize; ++i) {
            const int column = i % kSize, row = i / kSize;
            const double n = RatioAt(cells, column, row);
            const double cx = column + 0.5, cy = row + 0.5;
            area += n, x += n * cx, y += n * cy, xy += n * cx * cy;
            xx += n * (cx * cx + 1.0 / 12), yy += n * (cy * cy + 1.0 / 12);
        }
        x /= area, y /= area;
        xx -= area * x * x, yy -= area * y * y, xy -= area * x * y;
    }
};

SectionModel SectionOf(const std::vector<Cell>& cells, double scale, double shift) {
    test_support::Rings rings;
    for (const Cell& c : cells) {
        rings.emplace_back(c.ratio > 0,
                           test_support::Rectangle(scale * c.left + shift, scale * c.bottom + shift,
                                                   scale * c.width, scale * c.height));
    }
    SectionModel section = test_support::Section(rings);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        section.elements[i].actsOnAll = cells[i].ratio == 0;
        if (cells[i].ratio > 0) section.elements[i].modularRatio = cells[i].ratio;
    }
    return section;
}

std::vector<Cell> RandomCells(std::mt19937& random) {
    const auto upTo = [&](int most) {
        return static_cast<int>(random() % static_cast<unsigned>(most + 1));
    };
    std::vector<Cell> cells;
    for (int i = 0; i < 3 + upTo(4); ++i) {
        const int left = upTo(Grid::kSize - 2), bottom = upTo(Grid::kSize - 2);
        constexpr double kRatios[] = {0, 0.15, 1, 1, 6.5};
        cells.push_back({left, bottom, 1 + upTo(Grid::kSize - 1 - left),
                         1 + upTo(Grid::kSize - 1 - bottom), kRatios[i == 0 ? 1 : upTo(4)]});
    }
    return cells;
}

// The outermost cells at which a rectangle is the stiffest, as far as there are any.
void ExpectPartModuli(const std::vector<Cell>& cells, const Cell& own, const Grid& grid,
                      double unit, const CompositePart& part) {
    double low = 1e9, high = -1e9;
    for (int i = 0; i < Grid::kSize * Grid::kSize; ++i) {
        const int x = i % Grid::kSize, y = i / Grid::kSize;
        if (!Grid::IsThere(cells, own, x, y)) continue;
        if (Grid::RatioAt(cells, x, y) != own.ratio) continue;
        low = std::min(low, 1.0 * y);
        high = std::max(high, y + 1.0);
    }
    const auto expect = [&](const char* key, double distance) {
        const bool isThere = low < high && std::fabs(distance) > 1e-9;
        EXPECT_EQ(FindValue(part.moduli, key) != nullptr, isThere) << key;
        if (!isThere) return;
        const double modulus = grid.yy / (own.ratio * distance) * unit * unit * unit;
        EXPECT_NEAR(Number(part.moduli, key), modulus, 1e-8 * std::fabs(modulus)) << key;
    };
    expect("elastic_modulus_bottom", grid.y - low);
    expect("elastic_modulus_top", high - grid.y);
}

TEST(CompositeSections, SumTheCellsOfAGridWhateverLiesOverWhat) {
    constexpr unsigned kSeed = 14;
    std::mt19937 random(kSeed);
    int looked = 0;
    for (int trial = 0; trial < 300; ++trial) {
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", trial " + std::to_string(trial));
        std::vector<Cell> cells = RandomCells(random);
        const Grid grid(cells);
        if (!(grid.area > 0)) continue;
        ++looked;
        const double unit = trial % 2 == 0 ? 1 : 0.025, shift = trial % 3 == 0 ? 0 : 1000 * unit;
        for (const bool isReversed : {false, true}) {
            if (isReversed) std::reverse(cells.begin(), cells.end());
            const Report report = Evaluate(SectionOf(cells, unit, shift), {});
            const double u2 = unit * unit, size = Grid::kSize * unit;
            const std::vector<Value>& v = report.values;
            const double i = (grid.xx + grid.yy) * u2 * u2;
            EXPECT_NEAR(Number(v, "area"), grid.area * u2, 1e-9 * grid.area * u2);
            EXPECT_NEAR(Number(v, "centroid_x"), grid.x * unit + shift, 1e-9 * size);
            EXPECT_NEAR(Number(v, "centroid_y"), grid.y * unit + shift, 1e-9 * size);
            EXPECT_NEAR(Number(v, "inertia_x"), grid.yy * u2 * u2, 1e-9 * i);
            EXPECT_NEAR(Number(v, "inertia_y"), grid.xx * u2 * u2, 1e-9 * i);
            EXPECT_NEAR(Number(v, "inertia_xy"), grid.xy * u2 * u2, 1e-9 * i);
            std::size_t part = 0;
            for (const Cell& cell : cells) {
                if (cell.ratio == 0) continue;
                ASSERT_LT(part, report.parts.size());
                ExpectPartModuli(cells, cell, grid, unit, report.parts[part++]);
            }
        }
    }
    EXPECT_GT(looked, 250);
}

// A host's view: what a factor on all ratios changes, and that 1 changes nothing.
TEST(CompositeSections, ScaleWithTheirRatiosAndAreOrdinaryAtRatioOne) {
    const auto evaluate = [](double ofBase, double ofTop) {
        const auto part = [](const char* name, double ratio, const char* rest) {
            return std::string(R"({"name": ")") + name + R"(", "modular_ratio": )" +
                   std::to_string(ratio) + R"(, "shape": "angle", "height": 80, "width": 50,
                   "thickness": 8, "root_radius": 9)" +
                   rest + "}";
        };
        return Section::Parse(R"({"version": 1, "unit": "mm", "parts": [)" +
                                  part("base", ofBase, "") + ", " +
                                  part("top", ofTop, R"(, "mirror": "x", "move": [7, 0])") + "]}",
                              TextFormat::Json, "test")
            .Evaluate();
    };
    const SectionReport one = evaluate(1, 3), four = evaluate(4, 12), plain = evaluate(1, 1);
    for (const Value& value : four.Values()) {
        const Value* const before = one.Find(value.key);
        ASSERT_EQ(before != nullptr, value.IsComputed()) << value.key;
        if (before == nullptr) continue;
        const bool grows = value.key == "area" || value.key.starts_with("static_") ||
                           value.key.find("inertia_") != std::string::npos;
        EXPECT_NEAR(value.number, (grows ? 4 : 1) * before->number, 1e-12 * std::fabs(value.number))
            << value.key;
    }
    ASSERT_EQ(one.Parts().size(), 2U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(one.Parts()[1].moduli[i].number, four.Parts()[1].moduli[i].number, 1e-3);
    }
    EXPECT_EQ(plain.Parts().size(), 0U);
    EXPECT_NE(plain.Find("torsion_constant"), nullptr);
    EXPECT_EQ(plain.Json().find("transformed"), std::string::npos);
}

// A plate within another, a slot through both: each area as it counts, the stiffer one in a tint.
TEST(CompositeSections, AreDrawnAsTheyCount) {
    const std::string box = R"("shape": "plate", "at": "centroid", "height": 100, "width": )";
    const auto measure = [](const std::string& text, double size, bool) {
        return 0.6 * size * static_cast<double>(text.size());
    };
    for (const char* const ratio : {"0.25", "4"}) {
        const Report report =
            Evaluate(Read("{" + box + "60}, {" + box + R"(30, "modular_ratio": )" + ratio + "}, {" +
                          box + R"(6, "kind": "hole"})"),
                     {});
        const figure::Page page = figure::LayOut(report, measure);
        const auto areaOf = [](const std::vector<figure::Spot>& spots) {
            Points ring;
            for (const figure::Spot& spot : spots) ring.emplace_back(spot.x, spot.y);
            return AreaOf(ring);
        };
        double drawn = 0;
        for (const figure::Area& area : page.areas) drawn += areaOf(area.spots);
        // The softer plate is displaced altogether, and then has no tint and no word in the legend.
        const bool isStiffer = *ratio == '4';
        ASSERT_EQ(page.blocks.size(), isStiffer ? 3U : 0U);
        if (isStiffer) {
            EXPECT_NEAR(areaOf(page.blocks[0].spots) / drawn, 12.0 / 54, 1e-9);
            EXPECT_TRUE(page.blocks[0].isFirst);
        }
        EXPECT_EQ(std::count_if(page.labels.begin(), page.labels.end(),
                                [&](const figure::Label& label) {
                                    return label.runs[0].text == "modular ratio 4";
                                }),
                  isStiffer ? 1 : 0);
    }
}

TEST(CompositeSections, SayWhyAValueIsMissing) {
    EvaluateOptions options;
    options.forces = SectionForces{};
    options.forces->mx = 1e6;
    const std::string text = R"({"version": 1, "unit": "mm", "density": 7850, "parts": [)" +
                             kSteelBeam + ", " + kSlab + "]}";
    const Section section = Section::Parse(text, TextFormat::Json, "test");
    const SectionReport report = section.Evaluate(options);
    EvaluateOptions withoutWarping;
    withoutWarping.wantsWarping = false;
    EXPECT_EQ(section.Evaluate(withoutWarping).CsvRow(), report.CsvRow());
    for (const Value& value : report.Values()) {
        const auto starts = [&](std::initializer_list<const char*> with) {
            return std::any_of(with.begin(), with.end(),
                               [&](const char* start) { return value.key.starts_with(start); });
        };
        SCOPED_TRACE(value.key);
        const char* const expected =
            starts({"plastic", "shape"})                            ? "strengths"
            : starts({"torsion", "warp", "shear", "mono", "polar"}) ? "without modular ratios"
            : value.key == "elastic_modulus_1" || value.key == "elastic_modulus_2"
                ? "about x and y, not"
            : starts({"mass"}) ? "density"
                               : nullptr;
        EXPECT_EQ(value.IsComputed(), expected == nullptr);
        if (expected != nullptr) {
            EXPECT_NE(value.whyMissing.find(expected), std::string::npos) << value.whyMissing;
        } else if (!starts({"elastic", "width", "height", "perimeter"})) {
            EXPECT_NE(value.method.find("transformed"), std::string::npos) << value.method;
        }
    }
    EXPECT_NE(report.Stresses()[0].value.whyMissing.find("each part"), std::string::npos);
    EXPECT_NE(report.Halves(AxisDirection::Vertical).whyMissing.find("strengths"),
              std::string::npos);
    EXPECT_THROW(report.WriteFigure("stress.svg", {{}, StressKind::Normal}), InputError);
    const nlohmann::json json = nlohmann::json::parse(report.Json());
    EXPECT_EQ(json["parts"][1]["name"], "slab");
    EXPECT_NEAR(json["parts"][1]["elastic_modulus_top"]["value"].get<double>(), 31967559.67, 0.01);
    EXPECT_NE(report.Table().find("\nslab                         0.142857  -83502451   31967560 "),
              std::string::npos)
        << report.Table();
    EXPECT_NE(report.CsvRow().find("the section is composite"), std::string::npos);
}

}  // namespace
