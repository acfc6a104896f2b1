// What a figure says, and how large and where its parts are.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>

#include "figure_reports.h"

namespace {

using namespace figure_tests;

// The rows of the column of values and of the legend below it, from left to right.
std::vector<std::string> ColumnRows(const Page& page) {
    std::map<double, std::map<double, std::string>> rows;
    for (const Label& label : page.labels) {
        const auto [x, y] = label.at;
        if (x > page.drawing.right && y > page.drawing.top) rows[y][x] = PlainText(label.runs);
    }
    std::vector<std::string> texts;
    for (const auto& [baseline, parts] : rows) {
        texts.emplace_back();
        for (const auto& [x, part] : parts)
            texts.back() += (x > parts.begin()->first ? " " : "") + part;
    }
    return texts;
}

const Label* Find(const Page& page, const std::string& text) {
    const auto found =
        std::find_if(page.labels.begin(), page.labels.end(),
                     [&](const Label& label) { return PlainText(label.runs) == text; });
    return found == page.labels.end() ? nullptr : &*found;
}

// Where the first ring, a rectangle, is on the page.
PageBox SectionBox(const Page& page) {
    const std::vector<Spot>& ring = page.areas.at(0).spots;
    return {ring[0].x, ring[2].y, ring[2].x, ring[0].y};
}

// A tube of 100 x 100 x 5: A = 1900, I = (100^4 - 90^4) / 12, W = I / 50, Wpl = (100^3 - 90^3) / 4.
TEST(FigureColumn, SaysValuesWithTheirUnits) {
    const std::vector<std::string> tube =
        ColumnRows(LaidOut(ReportOf(Rectangle(0, 0, 100, 100), Rectangle(5, 5, 95, 95))));
    const std::vector<std::string> expected = {"A 1900 mm^2",
                                               "Ix 2.8658·10^6 mm^4",
                                               "Iy 2.8658·10^6 mm^4",
                                               "Ixy 0 mm^4",
                                               "I1 2.8658·10^6 mm^4",
                                               "I2 2.8658·10^6 mm^4",
                                               "\u03B1 0 \u00B0",
                                               "Wel,bottom 57317 mm^3",
                                               "Wel,top 57317 mm^3",
                                               "Wel,left 57317 mm^3",
                                               "Wel,right 57317 mm^3",
                                               "Wpl,x 67750 mm^3",
                                               "Wpl,y 67750 mm^3",
                                               "ypl 50 mm",
                                               "xpl 50 mm",
                                               "ENA, elastic neutral axes",
                                               "PNA, plastic neutral axes",
                                               "G, centre of gravity"};
    EXPECT_EQ(tube, expected);
    const std::vector<std::string> plate = ColumnRows(LaidOut(ReportOf(Rectangle(0, 0, 100, 100))));
    EXPECT_EQ(plate.at(11), "Wpl,x 250·10^3 mm^3");
}

// The tee's axis at 82 halves 3600; its halves below and above cover 1 each of the two tints.
TEST(FigureBlocks, TintBothHalvesAndTellTheirLeverArms) {
    Report report =
        ReportOf({{40, 0}, {60, 0}, {60, 80}, {100, 80}, {100, 100}, {0, 100}, {0, 80}, {40, 80}});
    FigureOptions options;
    options.blocks = AxisDirection::Horizontal;
    EXPECT_TRUE(LayOut(report, Characters, options).blocks.empty()) << "no halves were asked for";
    AddHalves(&report);
    const Page page = LayOut(report, Characters, options);
    std::array<double, 2> areas{};
    for (const Block& block : page.blocks) {
        double twice = 0.0;
        for (std::size_t i = 0; i < block.spots.size(); ++i) {
            const Spot &a = block.spots[i], &b = block.spots[(i + 1) % block.spots.size()];
            twice += a.x * b.y - a.y * b.x;
        }
        areas[block.isFirst ? 0 : 1] += std::fabs(twice) / 2;
    }
    const double swatch = 30.0 * 7.0;  // of the legend
    EXPECT_NEAR((areas[0] - swatch) / (areas[1] - swatch), 1.0, 1e-9);
    EXPECT_EQ(page.centroids.size(), 4U) << "G, two halves and the legend";
    // Above 18 x 100 about 91; below 1600 about 40 and 2 x 100 about 81.
    const std::vector<std::string> rows = ColumnRows(page);
    EXPECT_NE(std::find(rows.begin(), rows.end(), "half below, its centroid and lever arm"),
              rows.end());
    std::set<std::string> texts;
    for (const Label& label : page.labels) texts.insert(PlainText(label.runs));
    EXPECT_TRUE(texts.contains("z = 9 mm"));
    EXPECT_TRUE(texts.contains("z = 37.444 mm")) << (1600 * 42 + 200 * 1) / 1800.0;
}

TEST(FigureColumn, ExplainsInItsLegendWhatTheDrawingHas) {
    Report report = ReportOf(Rectangle(0, 0, 120, 80), Rectangle(50, 50, 60, 90));
    report.section.elements.push_back(report.section.elements.front());
    const std::vector<std::string> rows =
        ColumnRows(LaidOut(WithValue(report, "principal_angle", 30.0)));
    const std::vector<std::string> expected = {
        "in two solids at once",     "hole outside of solids", "ENA, elastic neutral axes",
        "PNA, plastic neutral axes", "principal axes 1 and 2", "G, centre of gravity"};
    ASSERT_GT(rows.size(), expected.size());
    EXPECT_EQ(std::vector<std::string>(rows.end() - 6, rows.end()), expected);
}

TEST(FigureLayout, SaysWidthHeightAndScale) {
    const struct {
        Points ring;
        const char* unit;
        const char* width;
        const char* height;
    } cases[] = {{Rectangle(0, 0, 120, 80), "mm", "120 mm", "80 mm"},
                 {Rectangle(-0.15, 1, 0.15, 1.006), "m", "0.3 m", "0.006 m"},
                 {Rectangle(1e6, -2e6, 1e6 + 30.5, 60 - 2e6), "in", "30.5 in", "60 in"},
                 {Rectangle(-1e5, -4e4, 1e5, 7e4), "cm", "200000 cm", "110000 cm"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.width);
        Report report = ReportOf(c.ring);
        report.section.unit = c.unit;
        const Page page = LaidOut(report);
        const PageBox section = SectionBox(page);
        const Label* const width = Find(page, c.width);
        const Label* const height = Find(page, c.height);
        ASSERT_TRUE(width != nullptr && height != nullptr);
        EXPECT_FALSE(width->isUpright);
        EXPECT_GT(width->at.y, section.bottom);
        EXPECT_LT(height->at.x, section.left);
        const auto tipsAt = [&](double Spot::*axis, double at) {
            return std::count_if(
                page.arrowHeads.begin(), page.arrowHeads.end(),
                [&](const auto& head) { return std::fabs(head.front().*axis - at) < 1e-6; });
        };
        for (const double end : {section.left, section.right}) EXPECT_GE(tipsAt(&Spot::x, end), 1);
        for (const double end : {section.top, section.bottom}) EXPECT_GE(tipsAt(&Spot::y, end), 1);

        const PageBox& bar = page.bars.at(0);  // its black half
        const auto text = std::find_if(page.labels.begin(), page.labels.end(), [&](const Label& l) {
            return l.anchor == Anchor::Centre && std::fabs(l.at.x - bar.right) < 1e-9;
        });
        ASSERT_NE(text, page.labels.end());
        const double extent = c.ring[2].x - c.ring[0].x;
        const double length = 2.0 * bar.Width() * extent / section.Width();
        EXPECT_NEAR(std::stod(PlainText(text->runs)) / length, 1.0, 1e-9);
        EXPECT_TRUE(PlainText(text->runs).ends_with(std::string(" ") + c.unit));
    }
}

// The section fills the drawing wherever its origin is: in the drawing, beside it, or so far away
// that a note says where the section lies.
TEST(FigureLayout, LeavesTheSectionItsShareOfThePageFarAway) {
    const std::pair<double, bool> cases[] = {{0, false},   {20, false}, {-120, false}, {50, true},
                                             {-160, true}, {1e5, true}, {-1e8, true}};
    for (const auto& [away, isFar] : cases) {
        SCOPED_TRACE(away);
        const Page page = LaidOut(ReportOf(Rectangle(away, away / 2, away + 100, away / 2 + 70)));
        EXPECT_GT(SectionBox(page).Width() / page.drawing.Width(), 0.45);
        EXPECT_EQ(Find(page, "section's lower left:") != nullptr, isFar);
        if (!isFar) continue;
        EXPECT_NE(Find(page, "x = " + PlainText(Number(away, 15, 1e12)) + " mm"), nullptr);
        EXPECT_NE(Find(page, "y = " + PlainText(Number(away / 2, 15, 1e12)) + " mm"), nullptr);
    }
}

TEST(FigureLayout, DrawsPrincipalAxesPerpendicularWithTheirLabels) {
    for (const double angle : {30.0, -20.0, 45.0, 75.0, -62.5}) {
        SCOPED_TRACE(angle);
        const Page page =
            LaidOut(WithValue(ReportOf(Rectangle(0, 0, 100, 80)), "principal_angle", angle));
        const double radians = angle * std::numbers::pi / 180.0;
        const Spot along[] = {{std::cos(radians), -std::sin(radians)},
                              {std::sin(radians), std::cos(radians)}};
        const Spot& centre = page.centroids.at(0);
        const auto distance = [&](const Spot& from, const Spot& spot, const Spot& direction) {
            return std::fabs((spot.x - from.x) * direction.y - (spot.y - from.y) * direction.x);
        };
        int drawn[] = {0, 0};
        for (const Line& line : page.lines) {
            const Spot &from = line.spots.front(), &to = line.spots.back();
            if (line.kind != LineKind::Principal || from.x > page.drawing.right) continue;
            EXPECT_LT(distance(from, centre, {to.x - from.x, to.y - from.y}), 1e-6);
            for (const int i : {0, 1}) drawn[i] += distance(from, to, along[i]) < 1e-6;
        }
        EXPECT_TRUE(drawn[0] == 1 && drawn[1] == 1);
        const std::string names[] = {"1 (" + PlainText(Number(angle, 4, 1e4)) + "\u00B0)", "2"};
        for (const int i : {0, 1}) {
            const Label* const label = Find(page, names[i]);
            ASSERT_NE(label, nullptr) << names[i];
            const PageBox box = BoxOf(*label, Characters);
            const Spot middle{0.5 * (box.left + box.right), 0.5 * (box.top + box.bottom)};
            EXPECT_LT(distance(centre, middle, along[i]), distance(centre, middle, along[1 - i]));
        }
    }
}

}  // namespace
