// The search for the axis, its protocol, and the web parts.
#include <locale>

#include "plastic/axis_direction.h"
#include "plastic/format_fixed.h"
#include "plastic/plastic_moduli.h"
#include "plastic/plastic_pieces.h"
#include "unit/support.h"

namespace {

using namespace halvorn;
using test_support::ExpectNear;
using test_support::Ring;

std::list<ContourRecord> Section(std::initializer_list<Ring> rings) {
    std::list<ContourRecord> contours;
    for (const Ring& ring : rings) {
        contours.push_back({1, {}});
        for (const auto& [x, y] : ring) contours.back().Points.push_back({x, y});
    }
    return contours;
}

struct Search {
    double wplx = -7, wply = -7, webX = -7, webY = -7;
    std::string trace;
    explicit Search(const std::list<ContourRecord>& contours) {
        ComputePlasticModuli(contours, &wplx, &wply, &webX, &webY, &trace);
    }
};

TEST(PlasticSearch, WritesNothingWithoutBothOutputs) {
    double only = -7;
    ComputePlasticModuli(Section({test_support::Rectangle(0, 0, 1, 1)}), &only, nullptr, nullptr,
                         nullptr);
    ComputePlasticModuli(Section({test_support::Rectangle(0, 0, 1, 1)}), nullptr, &only, nullptr,
                         nullptr);
    EXPECT_EQ(only, -7);
}

TEST(PlasticSearch, GivesZeroForEmptySectionsAndEmptyRecords) {
    for (const auto& contours : {Section({}), Section({{}, {}})}) {
        const Search search(contours);
        EXPECT_TRUE(search.wplx == 0 && search.wply == 0 && search.webX == 0 && search.webY == 0);
    }
}

// The texts are fixed, the misspelt ones too; numbers are in the classic form in any locale.
TEST(PlasticSearch, ReportsEverySplit) {
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Comma));
    const Search search(Section({test_support::Rectangle(2, 1, 2.2, 1.4)}));
    std::locale::global(before);
    const std::string x = "\tAxisPos[mm] = 1200.0\t Asup|Ainf[mm2]: 40000.0|40000.0\n";
    const std::string y = "\tAxisPos[mm] = 2100.0\t Asup|Ainf[mm2]: 40000.0|40000.0\n";
    EXPECT_EQ(search.trace, "\niDir = 0\niCouter = 0" + x + "Finaly\niCouter = 1" + x +
                                "\niDir = 1\niCouter = 0" + y + "Finaly\niCouter = 1" + y +
                                "Wplx[cm^3] = 8000.0\nWply[cm^3] = 4000.0\n");
    EXPECT_EQ(FormatFixed(-1234567.25, 1), "-1234567.2");
    EXPECT_EQ(FormatFixed(1e300, 0).size(), 301U);
}

// A triangle so large that no double balances its areas to 1e-7 absolute.
TEST(PlasticSearch, StopsAfterFiftyOneSplitsWithTheLastPosition) {
    const double size = 1e7;
    const Search search(Section({{{0, 0}, {size, 0}, {0.3 * size, 0.9 * size}}}));
    const std::string last = search.trace.substr(0, search.trace.find("Finaly"));
    EXPECT_NE(last.find("iCouter = 50\t"), std::string::npos);
    EXPECT_EQ(last.find("iCouter = 51\t"), std::string::npos);
    EXPECT_EQ(search.trace.find("iCouter = 51\t"), last.size() + 7) << "the closing line counts on";
    // About a line parallel to its base b, a triangle h high has b h^2 (2 - sqrt 2) / 6.
    ExpectNear(search.wplx, size * 0.81 * size * size * (2 - std::sqrt(2.0)) / 6, 1e-9, "Wplx");
}

// A plate taller than wide: its halves' longest edges stand across the horizontal axis and along
// the vertical one.
TEST(PlasticSearch, CountsPiecesWithLongestEdgeAcrossTheAxisAsWeb) {
    const Search plate(Section({test_support::Rectangle(0, 0, 10, 60)}));
    ExpectNear(plate.webX, plate.wplx, 1e-12, "web part of Wplx");
    EXPECT_EQ(plate.webY, 0);
    const Search faraway(Section({test_support::Rectangle(1e7, -3e7, 1e7 + 10, -3e7 + 60)}));
    EXPECT_EQ(faraway.webX, plate.webX);
    // An unequal angle, whose axes lie at no round numbers: distance takes no digit.
    const auto angle = [](double x, double y) {
        return Search(Section({{{x, y},
                                {x + 80, y},
                                {x + 80, y + 7},
                                {x + 9, y + 7},
                                {x + 9, y + 110},
                                {x, y + 110}}}));
    };
    EXPECT_EQ(angle(1e7, -3e7).wplx, angle(0, 0).wplx);
    EXPECT_EQ(angle(1e7, -3e7).wply, angle(0, 0).wply);
    EXPECT_FALSE(IsLongestEdgeAcross({1, 0, {0, 0}, {{0, 0}}}, {0, 1}));
    // Equally long edges along and across: across counts. The closing edge does not.
    EXPECT_TRUE(IsLongestEdgeAcross({1, 0, {0, 0}, {{0, 0}, {2, 0}, {2, 2}}}, {0, 1}));
    EXPECT_FALSE(IsLongestEdgeAcross({1, 0, {0, 0}, {{0, 0}, {1, 0}, {1, 2}, {0, 5}}}, {1, 0}));
}

// Of a plate whose halves are 30 high, with vertices at half of that height: straight ones are
// dropped from the halves, and their longest edges are 30. A bend of less than the tolerance is the
// plate's shape all the same: it stays, and the longest edges are 15, or the ends when these
// are 20.
TEST(PlasticSearch, KeepsBendsBelowTheToleranceInItsPieces) {
    for (const double bend : {0.0, 5e-11, -5e-11}) {
        for (const double b : {10.0, 20.0}) {
            Ring plate = {{0, 0},  {b, 0},  {b + bend, 15}, {b + bend, 45},
                          {b, 60}, {0, 60}, {-bend, 45},    {-bend, 15}};
            for (const Ring& ring : {plate, test_support::Reversed(plate)}) {
                for (std::ptrdiff_t first = 0; first < 8; ++first) {
                    const Search search(Section({test_support::StartingAt(ring, first)}));
                    SCOPED_TRACE(testing::Message() << b << " wide, bent by " << bend);
                    ExpectNear(search.wplx, b * 60 * 60 / 4, 1e-10, "Wplx");
                    ExpectNear(search.webX, bend == 0 || b == 10 ? search.wplx : 0, 1e-12, "web");
                    EXPECT_EQ(search.webY, 0);
                }
            }
        }
    }
}

TEST(SplitSectionAtAxis, LeavesOutSliversOnTheAxisAndPutsTouchingContoursOnTheirSide) {
    std::list<PlasticPiece> high, low;
    double areaHigh = -1, areaLow = -1;
    const auto contours =
        Section({test_support::Rectangle(0, 0, 2, 1), test_support::Rectangle(0, 1, 2, 2),
                 test_support::Rectangle(0, 0.5, 2, 1 + 1.5e-10)});
    SplitSectionAtAxis(contours, kHorizontalAxis, 1, &areaHigh, &areaLow, high, low);
    EXPECT_EQ(high.size(), 1U);
    EXPECT_EQ(low.size(), 2U);
    EXPECT_NEAR(areaHigh, 2, 1e-15);
    EXPECT_NEAR(areaLow, 3, 1e-9);
    SplitSectionAtAxis({}, kHorizontalAxis, 1, &areaHigh, &areaLow, high, low);
    EXPECT_TRUE(high.empty() && low.empty() && areaHigh == 0 && areaLow == 0);
}

}  // namespace
