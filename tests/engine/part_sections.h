/// @file part_sections.h
/// Sections of parts, and the closed forms of rectangles, for tests.
#ifndef HALVORN_TESTS_ENGINE_PART_SECTIONS_H
#define HALVORN_TESTS_ENGINE_PART_SECTIONS_H

#include <CSectionTools.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <initializer_list>
#include <string>

#include "model/push_element.h"
#include "read/json/section_file.h"

namespace test_support {

inline halvorn::engine::SectionModel Read(const std::string& parts, const std::string& unit = "mm",
                                          const std::string& more = "") {
    return halvorn::engine::ReadSectionText(
        "{\"version\": 1, \"unit\": \"" + unit + "\"" + more + ", \"parts\": [" + parts + "]}",
        "test", halvorn::engine::InputOptions{});
}

struct Values {
    double area, x, y, inertiaX, inertiaY, inertiaXY;
};

inline Values Evaluate(const halvorn::engine::SectionModel& section) {
    CSectionTools tools;
    for (const halvorn::engine::Element& element : section.elements)
        halvorn::engine::PushElement(tools, element);
    std::array<double, 17> out{};
    tools.GetCalculValues(0.0, 0.0, &out[0], &out[1], &out[2], &out[3], &out[4], &out[5], &out[6],
                          &out[7], &out[8], &out[9], &out[10], &out[11], &out[12], &out[13],
                          &out[14], &out[15], &out[16]);
    return {out[3], out[1], out[2], out[7], out[6], out[8]};
}

// Lengths within the tolerance of the root of the area, moments within that of its square.
inline void ExpectNear(const Values& found, const Values& expected, double tolerance) {
    const double length = tolerance * std::sqrt(expected.area);
    const double moment = tolerance * expected.area * expected.area;
    EXPECT_NEAR(found.area, expected.area, tolerance * expected.area);
    EXPECT_NEAR(found.x, expected.x, length);
    EXPECT_NEAR(found.y, expected.y, length);
    EXPECT_NEAR(found.inertiaX, expected.inertiaX, moment);
    EXPECT_NEAR(found.inertiaY, expected.inertiaY, moment);
    EXPECT_NEAR(found.inertiaXY, expected.inertiaXY, moment);
}

// A rectangle by its middle; of a hole the width is negative, its cube with it.
struct Plate {
    double width, height, x, y;
};

inline Values Sum(std::initializer_list<Plate> plates) {
    Values sum{};
    for (const auto& [b, h, x, y] : plates) {
        sum.area += b * h;
        sum.x += b * h * x;
        sum.y += b * h * y;
    }
    sum.x /= sum.area;
    sum.y /= sum.area;
    for (const auto& [b, h, x, y] : plates) {
        sum.inertiaX += b * h * (h * h / 12.0 + std::pow(y - sum.y, 2));
        sum.inertiaY += b * h * (b * b / 12.0 + std::pow(x - sum.x, 2));
        sum.inertiaXY += b * h * (x - sum.x) * (y - sum.y);
    }
    return sum;
}

}  // namespace test_support

#endif
