/// @file figure_reports.h
/// Reports for tests of figures, and their pages with letters of one width.
#ifndef HALVORN_TESTS_ENGINE_FIGURE_REPORTS_H
#define HALVORN_TESTS_ENGINE_FIGURE_REPORTS_H

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "figure/layout.h"
#include "figure/text.h"
#include "values/evaluate.h"

namespace figure_tests {

using namespace halvorn::engine;
using namespace halvorn::engine::figure;

inline Points Rectangle(double left, double bottom, double right, double top) {
    return {{left, bottom}, {right, bottom}, {right, top}, {left, top}};
}

inline Report ReportOf(const Points& solid, const Points& hole = {},
                       const std::string& name = "a <b> & c") {
    SectionModel section;
    section.name = name;
    section.unit = "mm";
    section.elements.emplace_back();
    section.elements.back().ring = solid;
    if (!hole.empty()) {
        section.elements.emplace_back();
        section.elements.back().isSolid = false;
        section.elements.back().ring = hole;
    }
    return Evaluate(section, {});
}

inline Report WithValue(Report report, const std::string& key, double number) {
    std::erase_if(report.values, [&](const Value& value) { return value.key == key; });
    Value value;
    value.key = key;
    value.symbol = key;
    value.number = number;
    report.values.push_back(value);
    return report;
}

inline double Characters(const std::string& text, double size, bool isBold) {
    const auto count = std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    });
    return static_cast<double>(count) * size * (isBold ? 0.7 : 0.6);
}

inline Page LaidOut(const Report& report) {
    return LayOut(report, Characters);
}

inline void ExpectOrderly(const Page& page) {
    const PageBox sheet = PageBox{0.0, 0.0, page.width, page.height}.Grown(-10.0);
    for (const Line& line : page.lines) {
        for (const Spot& spot : line.spots) EXPECT_TRUE(sheet.Holds(spot));
    }
    for (const auto& head : page.arrowHeads) {
        for (const Spot& spot : head) EXPECT_TRUE(sheet.Holds(spot));
    }
    for (std::size_t i = 0; i < page.labels.size(); ++i) {
        const PageBox box = BoxOf(page.labels[i], Characters);
        EXPECT_TRUE(sheet.Holds({box.left, box.top}) && sheet.Holds({box.right, box.bottom}))
            << PlainText(page.labels[i].runs);
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_FALSE(box.Meets(BoxOf(page.labels[k], Characters)))
                << PlainText(page.labels[i].runs) << " on " << PlainText(page.labels[k].runs);
        }
    }
    EXPECT_LT(page.width, 660.0);
    EXPECT_LT(page.height, 440.0);
    ASSERT_EQ(page.bars.size(), 1U);  // the black half of the scale bar
    const double share = 2.0 * page.bars[0].Width() / page.drawing.Width();
    EXPECT_GT(share, 0.1);
    EXPECT_LT(share, 0.4);
}

}  // namespace figure_tests

#endif
