// The outputs of the class without a report, beside those of the report.
#include <HalvornEngine.h>
#include <gtest/gtest.h>

#include <limits>

#include "random_sections.h"

namespace {

using namespace halvorn::engine;

bool IsDoubtful(const Finding& finding) {
    return finding.severity == Severity::Error || finding.severity == Severity::Warning;
}

TEST(ClassNumbers, AreThoseOfTheReportAndItHasNoDoubts) {
    constexpr int kSections = 300;  // of each family
    const Shift shift{1.5, -0.25};
    int found = 0;
    for (int family = 0; family < test_support::kFamilies; ++family) {
        test_support::RandomSections random(static_cast<unsigned>(family) + 1);
        for (int i = 0; i < kSections; ++i) {
            std::vector<Contour> contours;
            for (const auto& [isSolid, ring] :
                 random.Make(static_cast<test_support::Family>(family))) {
                contours.push_back({ring, isSolid});
            }
            if (contours.empty()) continue;
            const Section section = Section::OfContours(contours, "mm", "", "random");
            const auto numbers = section.ClassNumbers(shift);
            if (!numbers) continue;
            ++found;
            SCOPED_TRACE(testing::Message() << "family " << family << ", section " << i);
            const SectionReport report =
                section.Evaluate({.shift = shift, .wantsWarping = false, .wantsClassValues = true});
            ASSERT_EQ(report.ClassValues().size(), numbers->size());
            for (std::size_t k = 0; k < numbers->size(); ++k) {
                const Value& value = report.ClassValues()[k];
                EXPECT_TRUE(value.IsComputed() && value.number == (*numbers)[k]) << value.key;
            }
            for (const Finding& finding : report.Findings()) {
                EXPECT_FALSE(IsDoubtful(finding)) << FindingText(finding);
            }
        }
    }
    EXPECT_GT(found, 30) << "the quick way is gone";
}

TEST(SectionOfContours, IsThatOfASectionFile) {
    const std::vector<Contour> contours = {{{{0, 0}, {8, 0}, {8, 6}, {0, 6}}, true},
                                           {{{2, 1}, {2, 5}, {5, 5}, {5, 1}}, false}};
    const Section built = Section::OfContours(contours, "cm", "frame", "frame");
    const Section read = Section::Parse(
        R"({"version": 1, "unit": "cm", "name": "frame", "contours": [
            {"kind": "solid", "points": [[0, 0], [8, 0], [8, 6], [0, 6]]},
            {"kind": "hole", "points": [[2, 1], [2, 5], [5, 5], [5, 1]]}]})",
        TextFormat::Json, "frame");
    EXPECT_EQ(built.Evaluate().Json(), read.Evaluate().Json());
    for (const Section& section : {built, read}) {
        ASSERT_EQ(section.Contours().size(), 2U);
        EXPECT_FALSE(section.Contours()[1].isSolid);
        EXPECT_EQ(section.Contours()[1].points[2].x, 5.0);
        EXPECT_TRUE(section.ClassNumbers().has_value());
        EXPECT_FALSE(section.With(section.Moved({4.0, 0.0})).ClassNumbers()) << "they overlap";
    }
    // To the area of 48 the hole adds 12: 8 y + 3 (y - 1) = 30 and 6 x + 4 (x - 2) = 30.
    const std::optional<Point> axes = GrossPlasticAxes(contours);
    ASSERT_TRUE(axes);
    EXPECT_DOUBLE_EQ(axes->y, 3.0);
    EXPECT_DOUBLE_EQ(axes->x, 3.8);
    EXPECT_FALSE(GrossPlasticAxes({}));
}

TEST(SectionOfContours, RefusesWhatNoSectionFileMayHave) {
    const Points square = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    const double none = std::numeric_limits<double>::quiet_NaN();
    const auto place = [&](const std::vector<Contour>& contours, const char* unit) -> std::string {
        try {
            Section::OfContours(contours, unit, "", "test");
        } catch (const InputError& error) {
            return error.Place().empty() ? error.Problem() : error.Place();
        }
        return "nothing";
    };
    EXPECT_EQ(place({{square}}, "ft"), "unit");
    EXPECT_EQ(place({}, "mm"), "the section is empty");
    EXPECT_EQ(place({{square}, {{{0, 0}, {1, 1}}}}, "mm"), "/contours/1");
    EXPECT_EQ(place({{{{0, 0}, {1, none}, {1, 1}}}}, "mm"), "/contours/0/points/1");
}

}  // namespace
