#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "CSectionTools.h"
#include "numeric/process_wide.h"
#include "unit/section_access.h"
#include "unit/support.h"

namespace halvorn {
namespace {

using namespace test_support;

void Push(CSectionTools& section, const Ring& ring, unsigned char flag = 1) {
    std::vector<double> coords = Coords(ring);
    section.PushContour(static_cast<int>(ring.size()), coords.data(), flag);
    coords.assign(coords.size(), 1e300);  // the host's array is the host's again
}

CSectionTools Section(const Ring& ring, unsigned char flag = 1) {
    CSectionTools section;
    Push(section, ring, flag);
    return section;
}

Moments MomentsOf(const CSectionTools& section) {
    const SectionAccess s(section);
    return {s.Area, s.MomentAX, s.MomentAY, s.SecondMomentX0, s.SecondMomentY0, s.ProductMoment0};
}

/// The eighteen sums in the order of their declaration: the bounding box is 11 to 14.
std::vector<double> Sums(const CSectionTools& section) {
    const SectionAccess s(section);
    std::vector<double> sums = {s.NbContours, s.Area, s.Ixx, s.Wt, s.ShearAreaY, s.ShearAreaZ};
    sums.insert(sums.end(), {s.SecondMomentX0, s.SecondMomentY0, s.ProductMoment0, s.MomentAX});
    sums.insert(sums.end(), {s.MomentAY, s.XMin, s.XMax, s.YMin, s.YMax, s.Wplx, s.Wply});
    sums.push_back(s.ExtraSum);
    return sums;
}

using Rings = std::vector<std::pair<unsigned char, Ring>>;

Rings Stored(const CSectionTools& section) {
    Rings stored;
    for (const ContourRecord& record : SectionAccess(section).Contours) {
        stored.emplace_back(record.bSolid, Ring{});
        for (const point2D& p : record.Points) stored.back().second.emplace_back(p.x, p.y);
    }
    return stored;
}

TEST(Section, StartsEmpty) {
    CSectionTools section;
    double x = 0, y = 0;
    section.GetCDG(&x, &y);
    EXPECT_TRUE(std::isnan(x) && std::isnan(y));
    EXPECT_EQ(section.GetIxx(), 0.0);
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Sums(section), (std::vector<double>{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, inf, -inf, inf,
                                                  -inf, 0, 0, 0}));
    EXPECT_TRUE(Stored(section).empty());
}

TEST(PushContour, MatchesExactIntegralsInEveryPlacementAndOrder) {
    for (std::uint32_t seed = 1; seed <= 25; ++seed) {
        const int size = 1 + static_cast<int>(seed % 6);
        for (const Ring& base : {RandomStar(seed, size), RandomSkyline(seed, size)}) {
            const CSectionTools original = Section(base);
            const SectionAccess reference(original);
            for (const Affine& place : Placements()) {
                const Ring ring = place * base;
                const double k = place.Scale();
                for (const Ring& same : {ring, Reversed(ring), StartingAt(ring, 1)}) {
                    SCOPED_TRACE(testing::Message() << "seed " << seed << " " << place.name);
                    const CSectionTools section = Section(same);
                    const SectionAccess s(section);
                    ExpectMoments(MomentsOf(section), ExactMoments(ring), 2e-13);
                    ExpectNear(s.Ixx, reference.Ixx * std::pow(k, 4), 1e-10, "J");
                    ExpectNear(s.Wt, reference.Wt * std::pow(k, 3), 1e-10, "Wt");
                    ExpectNear(s.ShearAreaY, reference.ShearAreaY * k * k, 1e-10, "shear");
                    EXPECT_EQ(s.ShearAreaY, s.ShearAreaZ);
                }
            }
        }
    }
}

TEST(PushContour, PartsOfASplitContourSumToTheWhole) {
    for (std::uint32_t seed = 1; seed <= 10; ++seed) {
        const Ring star = RandomStar(seed, 3);
        const auto cut = star.begin() + 1 + seed % 10;
        Ring one(star.begin(), cut + 1), two(cut, star.end());
        one.push_back(kStarCentre);
        two.insert(two.end(), {star.front(), kStarCentre});
        CSectionTools parts = Section(one);
        Push(parts, Reversed(two), 255);  // any flag but 0 is solid
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectMoments(MomentsOf(parts), MomentsOf(Section(star)), 1e-13);
    }
}

TEST(PushContour, ASolidAndTheSameHoleLeaveExactlyNothing) {
    for (const Affine& place : Placements()) {
        SCOPED_TRACE(place.name);
        const Ring ring = place * Ring{{0.1, 0.2}, {7.3, 0.7}, {6.1, 5.9}, {-1.7, 3.3}};
        CSectionTools section = Section(ring);
        const double wt = SectionAccess(section).Wt;
        EXPECT_GT(wt, 0.0);
        Push(section, ring, 0);
        const SectionAccess s(section);
        EXPECT_EQ(Sums(section), (std::vector<double>{2, 0, 0, wt, 0, 0, 0, 0, 0, 0, 0, s.XMin,
                                                      s.XMax, s.YMin, s.YMax, 0, 0, 0}));
        EXPECT_EQ(Stored(section), (Rings{{1, ring}, {0, ring}}));
    }
}

TEST(PushContour, BoundingBoxHoldsHolesAndWtIsTheLargestSolids) {
    CSectionTools section = Section(Rectangle(100, 100, 140, 140), 0);
    EXPECT_EQ(SectionAccess(section).Wt, 0.0);
    Push(section, Rectangle(0, 0, 4, 2));
    const double wt = SectionAccess(section).Wt;
    Push(section, Rectangle(-5, 0, -4, 1));
    const SectionAccess s(section);
    EXPECT_TRUE(s.Wt == wt && s.Area == -1600 + 8 + 1);
    EXPECT_TRUE(s.XMin == -5 && s.XMax == 140 && s.YMin == 0 && s.YMax == 140);
}

TEST(PushContour, EmptyAndFlatContoursAddNothingButARecord) {
    CalculValid = 1;
    CSectionTools section = Section(Rectangle(0, 0, 2, 1));
    EXPECT_EQ(CalculValid, 1);
    std::vector<double> expected = Sums(section);
    for (const int count : {0, -1, -2147483647 - 1}) section.PushContour(count, nullptr, 1);
    EXPECT_EQ(CalculValid, 0);
    Push(section, {{1, 0}, {2, 1}, {0, -1}});  // collinear
    Push(section, {{1, 1}});
    expected[0] = 6;
    expected[13] = -1;
    EXPECT_EQ(Sums(section), expected);
    EXPECT_EQ(Stored(section).size(), 6u);
    EXPECT_TRUE(Stored(section)[2].second.empty());
}

struct Profile {
    double alpha = 0, xG = 0, yG = 0, area = 0, shear2 = 0, shear1 = 0, torsion = 0, inertia2 = 0,
           inertia1 = 0, reserved = 0, wt = 0, wplx = 0, wply = 0, extra = 0;
    Ring outline = {};
};

void Push(CSectionTools& section, const Profile& p, unsigned char flag) {
    std::vector<double> coords = Coords(p.outline);
    section.PushContourStandard(static_cast<int>(p.outline.size()), coords.data(), p.alpha, p.xG,
                                p.yG, p.area, p.shear2, p.shear1, p.torsion, p.inertia2, p.inertia1,
                                p.reserved, p.wt, p.wplx, p.wply, p.extra, flag);
}

TEST(PushContourStandard, TransfersUnturnedValuesAndTakesTheBoxFromTheOutline) {
    Profile p{0, 10, -3, 7, 2, 5, 11, 13, 17, std::nan(""), 19, 23, 29, 31};
    p.outline = Rectangle(500, 600, 501, 602);  // nothing like the values
    CSectionTools section;
    Push(section, p, 200);
    const double yy = 17 + 9 * 7, xx = 13 + 100 * 7;
    EXPECT_EQ(Sums(section), (std::vector<double>{1, 7, 11, 19, 5, 2, yy, xx, -210, 70, -21, 500,
                                                  501, 600, 602, 23, 29, 31}));
    EXPECT_EQ(Stored(section), (Rings{{200, p.outline}}));
    p.extra = 5;
    p.wt = 20;  // a hole's never counts
    Push(section, p, 0);
    EXPECT_EQ(Sums(section), (std::vector<double>{2, 0, 0, 19, 0, 0, 0, 0, 0, 0, 0, 500, 501, 600,
                                                  602, 0, 0, 36}));
    Push(section, p, 0);
    EXPECT_EQ(SectionAccess(section).Wplx, -23.0);
    EXPECT_EQ(SectionAccess(section).Wply, -29.0);
    EXPECT_EQ(SectionAccess(section).Wt, 19.0);
}

TEST(PushContourStandard, TurnedValuesEqualTheTurnedRectangle) {
    const double b = 8, h = 3, area = b * h;
    for (const double alpha : {0.0, kPi / 6, kPi / 2, -kPi / 3, 2.0}) {
        SCOPED_TRACE(alpha);
        Affine place = Turn("", alpha);
        place.e = 12;
        place.f = -5;
        CSectionTools section;
        Push(section,
             {alpha, 12, -5, area, 2, 7, 1, h * b * b * b / 12, b * h * h * h / 12, 0, 0, 0, 0, 0},
             1);
        ExpectMoments(MomentsOf(section),
                      ExactMoments(place * Rectangle(-b / 2, -h / 2, b / 2, h / 2)), 1e-14);
        const double c2 = std::pow(std::cos(alpha), 2), s2 = 1 - c2;
        EXPECT_NEAR(SectionAccess(section).ShearAreaY, 7 * c2 + 2 * s2, 1e-14);
        EXPECT_NEAR(SectionAccess(section).ShearAreaZ, 7 * s2 + 2 * c2, 1e-14);
    }
}

TEST(SectionValue, CopiesAndMovesKeepSumsAndContours) {
    auto source = std::make_unique<CSectionTools>(Section(RandomStar(3, 4)));
    Push(*source, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, Rectangle(0, 0, 1, 1)}, 0);
    const CSectionTools shorter = Section(RandomSkyline(2, 5), 77);
    const auto sums = Sums(*source);
    const auto stored = Stored(*source);
    const auto expectLong = [&](const CSectionTools& section, const char* what) {
        EXPECT_EQ(Sums(section), sums) << what;
        EXPECT_EQ(Stored(section), stored) << what;
    };

    CSectionTools copy(*source), assigned(shorter);
    EXPECT_EQ(&(assigned = *source), &assigned);
    expectLong(assigned, "short to long");
    Push(copy, Rectangle(0, 0, 9, 9));
    expectLong(*source, "a push into the copy leaves the source");
    copy = *source;
    source.reset();
    expectLong(copy, "copy outlives its source");
    assigned = shorter;
    EXPECT_EQ(Sums(assigned), Sums(shorter));
    EXPECT_EQ(Stored(assigned), Stored(shorter));

    CSectionTools& same = copy;
    copy = same;
    expectLong(copy, "self copy");
    copy = std::move(same);
    expectLong(copy, "self move");

    CSectionTools moved(std::move(copy));
    expectLong(moved, "move construction");
    EXPECT_EQ(Sums(copy), sums);
    EXPECT_TRUE(Stored(copy).empty());
    EXPECT_EQ(&(assigned = std::move(moved)), &assigned);
    expectLong(assigned, "move assignment");
    EXPECT_EQ(Sums(moved), sums);
    EXPECT_TRUE(Stored(moved).empty());
}

}  // namespace
}  // namespace halvorn
