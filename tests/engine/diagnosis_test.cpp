// What is found, and what is not, on sections whose faults are drawn on purpose.
#include <gtest/gtest.h>

#include <cmath>

#include "ring_sections.h"
#include "values/evaluate.h"

namespace {

using namespace halvorn::engine;

using test_support::Rectangle;
using test_support::Section;

struct Case {
    const char* name;
    std::vector<std::pair<bool, Points>> rings;
    const char* expected;  // in the text; empty: nothing is found
    std::size_t count = 1;
};

TEST(Diagnosis, FindsEachKindOfFaultAndItsPlace) {
    const Points square = Rectangle(0, 0, 10, 10);
    const Points keyhole = {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0},
                            {2, 2}, {2, 8},  {8, 8},   {8, 2},  {2, 2}};
    const Case cases[] = {
        {"sound", {{true, square}, {false, Rectangle(2, 2, 4, 4)}}, ""},
        {"side by side", {{true, square}, {true, Rectangle(10, 0, 5, 10)}}, ""},
        {"keyhole", {{true, keyhole}}, ""},
        {"island",
         {{true, square}, {false, Rectangle(1, 1, 8, 8)}, {true, Rectangle(4, 4, 2, 2)}},
         "remark: test: the section is in 2 parts that share no edge"},
        {"tube in a tube",
         {{true, square},
          {false, Rectangle(1, 1, 8, 8)},
          {true, Rectangle(2, 2, 6, 6)},
          {false, Rectangle(3, 3, 4, 4)}},
         "remark: test: the section is in 2 parts that share no edge"},
        {"keyhole whose hole turns like its outline",
         {{true,
           {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {2, 2}, {8, 2}, {8, 8}, {2, 8}, {2, 2}}}},
         "more than once: 36 mm^2 at (4, 4) count once; "},
        {"solids overlap around a hole",
         {{true, square}, {true, Rectangle(6, 0, 9, 10)}, {false, Rectangle(7, 1, 2, 2)}},
         "overlaps \"ring 1\": 36 mm^2 at",
         2},
        {"hole in a lap",
         {{true, square}, {true, Rectangle(6, 0, 9, 10)}, {false, Rectangle(6, 0, 4, 10)}},
         "warning: ring 2: of this hole 40 mm^2 at (7.33333, 6.66667) stay material"},
        {"island across a lap of others",
         {{true, square},
          {true, Rectangle(9, 0, 5, 10)},
          {false, Rectangle(1, 1, 6, 6)},
          {true, Rectangle(1, 2, 2, 2)}},
         "ring 0: it overlaps \"ring 1\": 10 mm^2 at (9"},
        {"repeated", {{true, {{0, 0}, {9, 0}, {9, 0}, {9, 9}}}}, "hint: ring 0: 1 point repeats"},
        {"closed by hand", {{true, {{0, 0}, {9, 0}, {9, 9}, {0, 0}}}}, "first point 3 at (0, 0)"},
        {"straight", {{true, {{0, 0}, {4, 0}, {9, 0}, {9, 9}}}}, "first point 1 at (4, 0)"},
        {"bow",
         {{true, {{0, 0}, {10, 10}, {10, 0}, {0, 10}}}},
         "error: ring 0: it crosses itself at (5, 5)"},
        {"spike",
         {{true, {{0, 0}, {9, 0}, {9, 20}, {9, 9}, {0, 9}}}},
         "a spike without area ends at (9, 20)"},
        {"vertex on an edge",
         {{true, {{0, 0}, {10, 0}, {10, 9}, {5, 0}, {0, 9}}}},
         "warning: test: the material hangs together in one point only at (5, 0)",
         2},
        {"hole half outside",
         {{true, square}, {false, Rectangle(8, 2, 4, 3)}},
         "ring 1: 6 mm^2 of this hole lie outside every solid, at ("},
        {"hole without solid",
         {{false, Rectangle(1, 1, 2, 2)}, {true, Rectangle(5, 5, 2, 3)}},
         "ring 0: 4 mm^2 of this hole lie outside"},
        {"solids overlap",
         {{true, square}, {true, Rectangle(9, 0, 5, 10)}},
         "ring 0: it overlaps \"ring 1\": 10 mm^2 at (9"},
        {"holes overlap",
         {{true, square}, {false, Rectangle(1, 1, 4, 4)}, {false, Rectangle(4, 1, 4, 4)}},
         "ring 1: it overlaps the hole \"ring 2\": 4 mm^2 at (4"},
        {"no area", {{true, {{0, 0}, {1, 1}, {3, 3}}}}, "error: ring 0: it encloses no area"},
        {"one place", {{true, {{1, 1}, {1, 1}, {1, 1}}}}, "error: ring 0: it has too few", 2},
        {"hole takes all",
         {{true, square}, {false, square}},
         "error: test: the section encloses no area"},
        {"holes take all",
         {{true, square}, {false, Rectangle(0, 0, 10, 4)}, {false, Rectangle(0, 4, 10, 6)}},
         "error: test: the section encloses no area"},
        {"holes take more",
         {{true, Rectangle(2, 2, 4, 4)}, {false, square}},
         "84 mm^2 of this hole lie outside",
         2},
        {"too large", {{true, Rectangle(0, 0, 1e200, 1e200)}}, "error: test: "},
        {"sliver", {{true, Rectangle(0, 0, 1000, 1e-4)}}, ""},
        {"sliver at an angle",
         {{true, {{0, 0}, {1000, 1000}, {1000, 1000 + 1e-4}}}},
         "remark: test: the outline is so thin for its size"},
        {"metres", {{true, Rectangle(0, 0, 0.02, 0.02)}}, "0.025 % of its area"},
        {"tiny", {{true, Rectangle(0, 0, 0.003, 0.003)}}, "no torsion constant"},
        {"far away",
         {{true, Rectangle(1e6, 1e6, 10, 10)}},
         "remark: test: the section lies so far from the origin that of 16 digits of class_values"},
        {"nearly touching",
         {{true, square}, {true, Rectangle(10.0005, 0, 5, 10)}},
         "ring 0: it comes within 0.0005 mm of \"ring 1\" at (10, 0)",
         2},
        {"set onto an edge",
         {{true, square}, {true, Rectangle(10.000008, 2, 5, 5)}},
         "it is set onto \"ring 0\" at (10"},
        {"apart",
         {{true, square}, {true, Rectangle(20, 0, 5, 10)}},
         "remark: test: the section is in 2 parts that share no edge, one of them at (2"},
        {"three solids overlap",
         {{true, square}, {true, Rectangle(8, 0, 9, 10)}, {true, Rectangle(9, 0, 9, 10)}},
         "ring 0: it overlaps \"ring 1\" and \"ring 2\": 10 mm^2",
         3},
        {"two overlaps, told by the larger one",
         {{true, {{0, 0}, {30, 0}, {30, 10}, {20, 10}, {20, 5}, {10, 5}, {10, 10}, {0, 10}}},
          {true, Rectangle(8, 7, 20, 9)}},
         "30 mm^2 at (22"},
        {"an island in a hole, and what overlaps it",
         {{true, square},
          {false, Rectangle(1, 1, 8, 8)},
          {true, Rectangle(2, 2, 5, 5)},
          {true, Rectangle(3, 3, 2, 2)}},
         "ring 2: it overlaps \"ring 3\": 4 mm^2",
         2},
        {"five corners that touch",
         {{true, Rectangle(0, 0, 1, 1)},
          {true, Rectangle(1, 1, 1, 1)},
          {true, Rectangle(2, 2, 1, 1)},
          {true, Rectangle(3, 3, 1, 1)}},
         "in one point only at (3, 3)",
         4},
        {"three meet in a corner, one a little off",
         {{true, Rectangle(0, 0, 100, 100)},
          {true, Rectangle(100, 0, 100, 100)},
          {true, {{0, 100}, {100.000001, 100}, {100.000001, 200}, {0, 200}}}},
         "remark: ring 2: it is set onto \"ring 0\" at (100, 100), 1e-06 mm away"},
        {"a gap that a third one fills",
         {{true, Rectangle(0, 0, 2000, 10)},
          {true, Rectangle(200, 10, 400, 0.1)},
          {true, Rectangle(200, 10.1, 400, 50)}},
         ""},
        {"a neck of material between holes",
         {{true, Rectangle(0, 0, 100, 100)},
          {false, Rectangle(20, 20, 20, 20)},
          {false, Rectangle(40.001, 20, 20, 20)}},
         "ring 1: it comes within 0.001 mm of \"ring 2\" at (40, "},
        {"lost beside the rest",
         {{true, Rectangle(0, 0, 1e6, 1e6)}, {true, Rectangle(2e6, 0, 1e-3, 1e-3)}},
         "error: ring 1: it is so small beside the section",
         2},
        {"far, but not too far", {{true, Rectangle(1e4, 1e4, 10, 10)}}, ""}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::vector<Finding> found = Diagnose(Section(c.rings));
        const std::string text = FindingsText(found);
        if (*c.expected == '\0') {
            EXPECT_EQ(text, "nothing found\n");
            continue;
        }
        EXPECT_NE(text.find(c.expected), std::string::npos) << text;
        EXPECT_EQ(found.size(), c.count) << text;
    }
}

TEST(Diagnosis, NamesTheWorstFirstAndTellsWhatGivenValuesContradict) {
    SectionModel section =
        Section({{true, Rectangle(0, 0, 10, 10)}, {true, {{20, 0}, {30, 10}, {30, 0}, {20, 10}}}});
    GivenValues given;
    given.area = 1.0;  // cm^2, in a section in mm
    section.elements[0].given = given;
    section.remarks = {"1 text was left out"};
    const std::vector<Finding> found = Diagnose(section);
    ASSERT_EQ(found.size(), 4U) << FindingsText(found);
    EXPECT_EQ(found[0].severity, Severity::Error);
    EXPECT_EQ(found[1].element, "ring 0");
    EXPECT_NE(found[1].problem.find("encloses 100, the area given is 1"), std::string::npos);
    EXPECT_EQ(found.back().problem, "1 text was left out");
}

TEST(Diagnosis, IsQuickOnManyVertices) {
    Points star;
    constexpr int kVertices = 20000;
    for (int i = 0; i < kVertices; ++i) {
        const double angle = 6.283185307179586 * i / kVertices, radius = i % 2 == 0 ? 100 : 99;
        star.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
    }
    EXPECT_TRUE(Diagnose(Section({{true, star}})).empty());
}

}  // namespace
