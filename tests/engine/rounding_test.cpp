// What rounding leaves: never more than its bound, and 0 where nothing else is left.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>
#include <random>
#include <span>

#include "catalogue/csv_table.h"
#include "figure/sheet.h"
#include "figure/text.h"
#include "model/class_outputs.h"
#include "read/json/section_file.h"
#include "region/moments.h"
#include "ring_sections.h"
#include "values/class_rounding.h"
#include "values/evaluate.h"
#include "write/csv.h"
#include "write/json.h"
#include "write/table.h"

namespace {

using namespace halvorn::engine;

using test_support::Rectangle;
using test_support::Rings;
using test_support::Section;

// xG, yG, Ix, Iy, Ixy of solids in long double, each ring about a point of its own and moved from
// there to one near all of them.
std::array<long double, 5> SumsOf(const Rings& rings, double x0, double y0) {
    std::array<long double, 6> sum{};  // A, and the integrals of x, y, y^2, x^2 and x y
    for (const auto& [isSolid, ring] : rings) {
        long double a = 0, ax = 0, ay = 0, ayy = 0, axx = 0, axy = 0;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const auto &o = ring[0], &p = ring[i], &q = ring[(i + 1) % ring.size()];
            const long double px = static_cast<long double>(p.x) - o.x,
                              py = static_cast<long double>(p.y) - o.y,
                              qx = static_cast<long double>(q.x) - o.x,
                              qy = static_cast<long double>(q.y) - o.y, cross = px * qy - qx * py;
            a += cross / 2;
            ax += cross * (px + qx) / 6;
            ay += cross * (py + qy) / 6;
            ayy += cross * (py * py + py * qy + qy * qy) / 12;
            axx += cross * (px * px + px * qx + qx * qx) / 12;
            axy += cross * (px * qy + 2 * px * py + 2 * qx * qy + qx * py) / 24;
        }
        const long double dx = static_cast<long double>(ring[0].x) - x0,
                          dy = static_cast<long double>(ring[0].y) - y0;
        sum[0] += a;
        sum[1] += ax + dx * a;
        sum[2] += ay + dy * a;
        sum[3] += ayy + 2 * dy * ay + dy * dy * a;
        sum[4] += axx + 2 * dx * ax + dx * dx * a;
        sum[5] += axy + dx * ay + dy * ax + dx * dy * a;
    }
    const auto [a, ax, ay, ayy, axx, axy] = sum;
    return {x0 + ax / a, y0 + ay / a, ayy - ay * ay / a, axx - ax * ax / a, axy - ax * ay / a};
}

Points Placed(Points ring, double angle, double moveX, double moveY) {
    for (auto& [x, y] : ring) {
        const double turned = x * std::cos(angle) - y * std::sin(angle) + moveX;
        y = x * std::sin(angle) + y * std::cos(angle) + moveY;
        x = turned;
    }
    return ring;
}

TEST(Rounding, StaysBelowItsBound) {
    constexpr unsigned kSeed = 20261121;
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", round " + std::to_string(round));
        const double far = round % 3 == 0 ? 0.0 : std::pow(10.0, 5.0 + 4.0 * unit(random));
        const int count = round % 20 == 19 ? 2000 : 3 + round % 50;
        Rings rings;
        for (int k = 0; k <= round % 3; ++k) {
            Points ring = Rectangle(-500, 0, 1000, std::pow(10.0, 3.0 * unit(random)));
            for (int i = 0; round % 5 != 0 && i < count; ++i) {
                if (i == 0) ring.clear();
                const double turn = 2 * std::numbers::pi * i / count, r = 50 + 30 * unit(random);
                ring.emplace_back(r * std::cos(turn), r * std::sin(turn));
            }
            rings.emplace_back(true, Placed(ring, 4 * unit(random), far * unit(random) + 2000 * k,
                                            far * unit(random)));
        }
        const SectionModel section = Section(rings);
        const SumRounding bound = RoundingOf(section.elements);
        const ClassOutputs out = ClassOutputsOf(section.elements);
        const double area = out.area;
        const std::array<double, 5> bounds = {bound.firstX / area, bound.firstY / area,
                                              bound.inertiaX, bound.inertiaY, bound.inertiaXY};
        const auto exact = SumsOf(rings, out.centroid.x, out.centroid.y);
        const std::array<double, 5> sums = {out.centroid.x, out.centroid.y, out.inertiaX,
                                            out.inertiaY, out.inertiaXY};
        for (std::size_t i = 0; i < exact.size(); ++i) {
            EXPECT_LE(std::fabs(sums[i] - exact[i]), bounds[i]) << i;
        }
        // A region's moments keep their digits wherever it lies.
        rings.resize(1);
        const WeightedRing alone = {&rings[0].second, 1};
        const Moments moments = MomentsOf(RegionOf(std::span(&alone, 1)));
        const auto own = SumsOf(rings, moments.centroid.x, moments.centroid.y);
        const double x = moments.inertiaX, y = moments.inertiaY;
        EXPECT_NEAR(x, static_cast<double>(own[2]), 1e-11 * x);
        EXPECT_NEAR(y, static_cast<double>(own[3]), 1e-11 * y);
        EXPECT_NEAR(moments.inertiaXY, static_cast<double>(own[4]),
                    1e-11 * std::sqrt(x * y) + moments.inertiaXYError);
        const auto principal =
            static_cast<double>(own[2] + own[3] - std::hypot(own[2] - own[3], 2 * own[4])) / 2;
        EXPECT_NEAR(moments.second, principal, 1e-11 * moments.second + 1e-18 * (x + y));
    }
}

SectionModel Read(const std::string& rest) {
    return ReadSectionText(R"({"version": 1, "unit": "mm", )" + rest + "}", "test", {});
}

SectionModel Part(const std::string& part) {
    return Read(R"("parts": [{)" + part + "}]");
}

// In every output the same 0, without a sign.
void ExpectZero(const Report& report, const std::string& key) {
    const Value* const value = report.Find(key);
    ASSERT_NE(value, nullptr) << key;
    EXPECT_EQ(value->number, 0.0) << key;
    EXPECT_FALSE(std::signbit(value->number)) << key;
    const auto json = nlohmann::json::parse(JsonText(report));
    EXPECT_EQ(json["values"][key]["value"].dump(), "0.0");
    const std::vector<std::string> columns = SplitCsvLine(CsvHeader()),
                                   cells = SplitCsvLine(CsvRow(report));
    const auto at = std::find(columns.begin(), columns.end(), key) - columns.begin();
    EXPECT_EQ(cells[static_cast<std::size_t>(at)], "0") << key;
    const std::string table = TableText(report);
    const std::size_t symbol = table.find("  " + value->symbol + "  ");
    EXPECT_EQ(table[table.find_first_not_of(' ', symbol + value->symbol.size() + 3)], '0') << key;
    for (const figure::ValueRow& row : figure::ValueRows(report)) {
        if (figure::PlainText(row.symbol) == figure::PlainText(figure::Symbol(value->symbol))) {
            EXPECT_EQ(figure::PlainText(row.number), "0") << key;
        }
    }
}

TEST(Rounding, Leaves0WhereASectionIsSymmetric) {
    for (const char* const profile : {"IPE300", "HEB200", "SHS100x5", "CHS355.6x8"}) {
        for (const char* const values : {"drawn", "published"}) {
            for (const int angle : {0, 90, 180, 30}) {
                SCOPED_TRACE(std::string(profile) + values + std::to_string(angle));
                const Report report = Evaluate(
                    Part(R"("at": "centroid", "profile": ")" + std::string(profile) +
                         R"(", "values": ")" + values + R"(", "rotate": )" + std::to_string(angle)),
                    {});
                for (const char* const key :
                     {"centroid_x", "centroid_y", "plastic_axis_x", "plastic_axis_y"}) {
                    ExpectZero(report, key);
                }
                if (angle != 30 || profile[0] == 'S') ExpectZero(report, "inertia_xy");
            }
        }
    }
    for (const char* const kind :
         {"\"solid\"", R"("closed_wall", "thickness": 1, "torsion": "tube")"}) {
        const Report report = Evaluate(
            Read(std::string(R"("polyline": {"radii": [3, 3, 3, 3], "points": [[-33.3, -7.7],
                [33.3, -7.7], [33.3, 7.7], [-33.3, 7.7]], "kind": )") +
                 kind + "}"),
            {});
        for (const char* const key : {"centroid_x", "centroid_y", "inertia_xy"}) {
            ExpectZero(report, key);
        }
    }
}

// A quarter turn in radians is none: its cosine leaves 6e-17 of what is given.
TEST(Rounding, Leaves0OfAGiven0ThatIsTurned) {
    SectionModel section = Section({{true, Rectangle(-50, -5, 100, 10)}});
    GivenValues& given = section.elements[0].given.emplace();
    given.area = 1000;
    given.angle = std::numbers::pi / 2;
    given.inertia1 = 1e6;
    given.shearArea1 = 0.0;
    given.shearArea2 = 500;
    const Report report = Evaluate(section, {});
    for (const char* const key : {"inertia_x", "inertia_xy", "shear_area_2"}) {
        EXPECT_EQ(FindValue(report.classValues, key)->number, 0.0) << key;
        EXPECT_FALSE(std::signbit(FindValue(report.classValues, key)->number)) << key;
    }
    EXPECT_EQ(FindValue(report.classValues, "inertia_y")->number, 1e6);
    EXPECT_TRUE(report.findings.empty()) << FindingsText(report.findings);
}

TEST(Rounding, LeavesTrueSmallValuesAlone) {
    const auto valueOf = [](const Rings& rings, const char* key) {
        const Report report = Evaluate(Section(rings), {});
        const Value* const value = report.Find(key);
        return value == nullptr ? std::nan("") : value->number;
    };
    // As in metres: an axis at 2e-9 of a square of 0.002, a plate turned by 1e-10, thin plates.
    const Points square = {
        {-1e-3, -1e-3}, {1e-3 + 4e-9, -1e-3}, {1e-3 + 4e-9, 1e-3}, {-1e-3, 1e-3}};
    const double turn = 1e-10, length = 0.3, height = 1.7e-9;
    const Rings turned = {{true, Placed(Rectangle(-0.1, -0.1, 0.2, 0.2 / 3), turn, 0, 0.2 / 3)}},
                thin = {{true, Rectangle(0, 0, length, height)}};
    const struct {
        Rings rings;
        const char* key;
        double expected, relative;
    } cases[] = {
        {{{true, square}}, "plastic_axis_x", 2e-9, 1e-6},
        {{{true, square}}, "centroid_x", 2e-9, 1e-6},
        {{{true, Rectangle(0, 1e-6, 0.01, 0.01)}, {true, Rectangle(0, -0.01 + 1e-6, 0.01, 0.01)}},
         "plastic_axis_y",
         1e-6,
         1e-9},
        {turned, "inertia_xy", 0.2 * 0.2 / 3 * (0.04 - 0.04 / 9) / 12 * turn, 1e-4},
        {thin, "centroid_y", height / 2, 1e-12},
        {thin, "inertia_x", length * std::pow(height, 3) / 12, 1e-12},
        {thin, "principal_inertia_2", length * std::pow(height, 3) / 12, 1e-12},
    };
    for (const auto& [rings, key, expected, relative] : cases) {
        EXPECT_NEAR(valueOf(rings, key), expected, relative * expected) << key;
    }
}

TEST(Rounding, SaysWhatTakesTheDigitsOfTheClass) {
    const Points bar = Rectangle(0, 0, 1000, 1e-4);
    const struct {
        Points ring;
        const char* finding;  // empty: none
    } cases[] = {
        {bar, ""},
        {Placed(bar, 0.5, 0, 0), "the outline is so thin for its size that of 16 digits of class"},
        {Placed(bar, 0, 1e6, 0), ""},
        {Placed(bar, 0, 0, 1e6), "so far from the origin"},
        {Placed(bar, 0.5, 1e9, 1e9), "so far from the origin"},
        {Rectangle(1e9, 0, 100, 100), "so far from the origin"},
        {Rectangle(-3e5, 1e5, 300, 100), ""},
    };
    for (const auto& [ring, expected] : cases) {
        std::string text;
        for (const Finding& finding : Evaluate(Section({{true, ring}}), {}).findings) {
            if (finding.kind == FindingKind::LostDigitsOfClass) text += FindingText(finding);
        }
        EXPECT_EQ(text.empty(), *expected == '\0') << text;
        EXPECT_NE(text.find(expected), std::string::npos) << text;
    }
}

}  // namespace
