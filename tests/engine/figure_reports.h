/// @file figure_reports.h
/// Reports for tests of figures, and their pages with letters of one width.
#ifndef HALVORN_TESTS_ENGINE_FIGURE_REPORTS_H
#define HALVORN_TESTS_ENGINE_FIGURE_REPORTS_H

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

}  // namespace figure_tests

#endif
