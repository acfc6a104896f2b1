// SVG and the widths of letters, which no graphics library stands behind.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <sstream>

#include "figure/font_widths.h"
#include "figure/paint_svg.h"
#include "figure_reports.h"

namespace {

using namespace figure_tests;

std::string Svg(const Report& report) {
    return PaintSvg(LayOut(report, TextWidth));
}

// The subpaths of the last grey path, points in points.
std::vector<std::vector<Spot>> GreyRings(const std::string& svg) {
    const std::size_t grey = svg.find("<path fill=\"#d9d9d9\"");
    if (grey == std::string::npos) return {};
    const std::size_t start = svg.find(" d=\"", grey) + 4;
    std::istringstream path(svg.substr(start, svg.find('"', start) - start));
    std::vector<std::vector<Spot>> rings;
    for (std::string ring; std::getline(path, ring, 'Z');) {
        std::istringstream numbers(ring.substr(1));
        rings.emplace_back();
        for (Spot spot{}; numbers >> spot.x >> spot.y;) rings.back().push_back(spot);
    }
    return rings;
}

double SignedArea(const std::vector<Spot>& ring) {
    double sum = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Spot& next = ring[(i + 1) % ring.size()];
        sum += ring[i].x * next.y - next.x * ring[i].y;
    }
    return 0.5 * sum;
}

// Thousandths of the size, as published for the fonts of these widths.
TEST(FontWidths, AreThoseOfThePublishedTable) {
    struct Case {
        const char* text;
        double regular;
        double bold;
    };
    for (const auto& [text, regular, bold] :
         std::initializer_list<Case>{{"0123456789", 5560, 5560},
                                     {"AW", 1611, 1666},
                                     {"il~", 1028, 1140},
                                     {" ,.", 834, 834},
                                     {"\u00C4\u00DF", 1278, 1333},
                                     {"\u2026\u2212", 1584, 1584}}) {
        EXPECT_NEAR(TextWidth(text, 1000.0, false), regular, 1e-9) << text;
        EXPECT_NEAR(TextWidth(text, 1000.0, true), bold, 1e-9) << text;
        EXPECT_NEAR(TextWidth(text, 9.0, false), 0.009 * regular, 1e-9) << text;
        EXPECT_TRUE(HasKnownWidth(text)) << text;
    }
    for (const auto& [text, width] : std::initializer_list<std::pair<const char*, double>>{
             {"e\u0301", 556}, {"\u622A", 1000}, {"\U0001F600", 1300}, {"\u05E9", 700}}) {
        EXPECT_NEAR(TextWidth(text, 1000.0, false), width, 1e-9) << text;
        EXPECT_FALSE(HasKnownWidth(text)) << text;
    }
}

// Whichever way round the file gives them, holes are painted against their solid.
TEST(PaintSvg, PaintsWhatTheSolidsHaveAndTheHolesLeave) {
    const auto reversed = [](Points ring) { return Points{ring.rbegin(), ring.rend()}; };
    const Points outer = Rectangle(0, 0, 100, 100);
    const Points inner = Rectangle(5, 5, 95, 95);
    for (const auto& [solid, hole] : {std::pair{outer, inner}, std::pair{reversed(outer), inner},
                                      std::pair{outer, reversed(inner)}}) {
        const std::string svg = Svg(ReportOf(solid, hole));
        const auto rings = GreyRings(svg);
        ASSERT_EQ(rings.size(), 2U);
        const double scale =
            std::fabs(rings[0][1].x - rings[0][0].x + rings[0][1].y - rings[0][0].y) / 100.0;
        EXPECT_NEAR((SignedArea(rings[0]) + SignedArea(rings[1])) / scale / scale, 1900.0, 2.0);
        // Holes that reach beyond the solid are cut at its edge.
        const std::size_t clip = svg.find("<clipPath id=\"");
        ASSERT_NE(clip, std::string::npos);
        const std::string name = svg.substr(clip + 14, svg.find('"', clip + 14) - clip - 14);
        EXPECT_NE(svg.find("clip-path=\"url(#" + name + ")\""), std::string::npos);
    }
    EXPECT_EQ(Svg(ReportOf(outer)).find("clip"), std::string::npos);
}

TEST(PaintSvg, LeavesOutVerticesOfFineArcsAlone) {
    constexpr int kPoints = 100000;
    Points circle;
    for (int i = 0; i < kPoints; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / kPoints;
        circle.emplace_back(100.0 * std::cos(angle), 100.0 * std::sin(angle));
    }
    const std::string svg = Svg(ReportOf(circle));
    EXPECT_LT(svg.size(), 30000U);
    const auto rings = GreyRings(svg);
    ASSERT_EQ(rings.size(), 1U);
    double left = 1e9, right = 0.0;
    for (const Spot& spot : rings[0]) {
        left = std::min(left, spot.x);
        right = std::max(right, spot.x);
    }
    const double radius = 0.5 * (right - left);
    EXPECT_NEAR(SignedArea(rings[0]) / (std::numbers::pi * radius * radius), 1.0, 3e-4);
    // A slit of 1/1000 of the width, and a spike out and back.
    const Points slit = {{0, 0},      {100, 0},   {100, 50}, {130, 50}, {100, 50}, {100, 100},
                         {50.1, 100}, {50.1, 20}, {50, 20},  {50, 100}, {0, 100}};
    EXPECT_EQ(GreyRings(Svg(ReportOf(slit))).at(0).size(), slit.size());
}

TEST(PaintSvg, GivesTextsTheirWidthWhereItIsKnown) {
    const auto textOf = [](const std::string& svg, const std::string& words) {
        const std::size_t end = svg.find(">" + words);
        EXPECT_NE(end, std::string::npos) << words;
        return end == std::string::npos
                   ? ""
                   : svg.substr(svg.rfind("<text", end), end - svg.rfind("<text", end));
    };
    const std::string svg = Svg(ReportOf(Rectangle(0, 0, 120, 80), {}, "AW"));
    EXPECT_EQ(textOf(svg, "AW</text>"),
              "<text x=\"20\" y=\"31\" font-size=\"14\" font-weight=\"bold\" textLength=\"23.32\"");
    EXPECT_NE(textOf(svg, "80 mm</text>").find("rotate(-90)"), std::string::npos);
    EXPECT_NE(svg.find(">I<tspan dy=\"2.52\" font-size=\"6.48\">x</tspan></text>"),
              std::string::npos);
    const std::string foreign = Svg(ReportOf(Rectangle(0, 0, 120, 80), {}, "\u622A"));
    EXPECT_EQ(textOf(foreign, "\u622A</text>").find("textLength"), std::string::npos);
}

// Raised and lowered runs shift the next one back; the edge is a copy for texts in the drawing
// alone.
TEST(PaintSvg, PutsTextsWhereTheyAre) {
    Page page;
    page.drawing = {0, 0, 100, 100};
    page.labels = {{{{"a"}, {"2", 1}, {"b", 0}, {"c", -1}}, {50, 60}, 10.0, Anchor::Right},
                   {{{"d"}}, {150, 60}, 10.0, Anchor::Centre}};
    const std::string svg = PaintSvg(page);
    const std::string first =
        R"(<text x="50" y="60" font-size="10" text-anchor="end" textLength="18.72">a)"
        R"(<tspan dy="-2.8" font-size="7.2">2</tspan><tspan dy="2.8">b</tspan>)"
        R"(<tspan dy="2.8" font-size="7.2">c</tspan></text>)";
    const std::size_t edge = svg.find(first);
    ASSERT_NE(edge, std::string::npos) << svg;
    EXPECT_NE(svg.find(first, edge + 1), std::string::npos);
    const std::size_t second = svg.find(
        R"(<text x="150" y="60" font-size="10" text-anchor="middle" textLength="5.56">d</)");
    ASSERT_NE(second, std::string::npos) << svg;
    EXPECT_EQ(svg.find(">d<", second + 80), std::string::npos);
}

}  // namespace
