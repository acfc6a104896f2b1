// Regions of random outlines against their exact areas, and both ways to a region side by side.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "catalogue/catalogue.h"
#include "geometry/rings.h"
#include "model/outlines.h"
#include "random_sections.h"
#include "region/nested_rings.h"
#include "region/region.h"
#include "ring_sections.h"
#if defined(HALVORN_HAS_GMP)
#include "exact_areas.h"
#endif

namespace {

using namespace halvorn::engine;
using namespace test_support;

// What a region says that does not depend on where its rings start.
struct Summary {
    std::vector<double> numbers;
    std::vector<std::size_t> counts;

    explicit Summary(const Region& region)
        : numbers{region.area, region.size, region.frame.origin.x, region.frame.origin.y,
                  std::ldexp(1.0, region.frame.exponent)},
          counts{region.parts.size(),     region.oddPlaces.size(), region.pinches.size(),
                 region.crossings.size(), region.moved.size(),     region.nearMisses.size()} {
        for (const Part& part : region.parts) {
            counts.push_back(part.outline.size());
            counts.push_back(part.voids.size());
            numbers.push_back(part.area);
            numbers.push_back(TwiceArea(part.outline));
            std::vector<std::pair<double, std::size_t>> voids;
            for (const Points& ring : part.voids) voids.emplace_back(TwiceArea(ring), ring.size());
            std::sort(voids.begin(), voids.end());
            for (const auto& [area, size] : voids) {
                numbers.push_back(area);
                counts.push_back(size);
            }
        }
        for (const std::vector<std::size_t>& parts : region.partsOf) {
            counts.push_back(parts.size());
            counts.insert(counts.end(), parts.begin(), parts.end());
        }
    }

    void ExpectEqual(const Summary& other) const {
        EXPECT_EQ(counts, other.counts);
        ASSERT_EQ(numbers.size(), other.numbers.size());
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            EXPECT_NEAR(numbers[i], other.numbers[i], 1e-14 * std::fmax(1.0, numbers[i]));
        }
    }
};

constexpr unsigned kSeed = 20261;

TEST(RegionWays, AgreeOnRandomSections) {
    RandomSections sections(kSeed);
    int quick[kFamilies] = {};
    constexpr int kRounds = 300;
    for (int round = 0; round < kRounds * kFamilies; ++round) {
        const auto family = static_cast<Family>(round % kFamilies);
        const Rings rings = sections.Make(family);
        if (rings.empty()) continue;
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", round " + std::to_string(round));
        const auto outlines = Weighted(rings);
        quick[family] += RegionOfNestedRings(outlines, FrameOutlines(outlines)).has_value() ? 1 : 0;
        Summary(RegionOf(outlines)).ExpectEqual(Summary(RegionOfArrangement(outlines)));
    }
    EXPECT_GT(quick[kNested], kRounds / 2);
    EXPECT_LT(quick[kNested], kRounds);
    EXPECT_GT(quick[kSlivers], 0);
}

// What the speed of a batch rests on.
TEST(RegionWays, TheQuickOneServesEveryProfile) {
    for (const std::string& name : CatalogueNames()) {
        const auto elements =
            CatalogueElements(name, "mm", shapes::ArcDivision::ChordError(0.001), false);
        const auto outlines = OutlinesOf(elements);
        ASSERT_TRUE(RegionOfNestedRings(outlines, FrameOutlines(outlines))) << name;
    }
}

TEST(RegionAreas, AreThoseOfRationalArithmetic) {
#if defined(HALVORN_HAS_GMP)
    RandomSections sections(kSeed + 1);
    std::size_t odd = 0;
    for (int round = 0; round < 600; ++round) {
        const auto family = static_cast<Family>(round % kFamilies);
        const Rings rings = sections.Make(family);
        if (rings.empty()) continue;
        SCOPED_TRACE("seed " + std::to_string(kSeed + 1) + ", round " + std::to_string(round));
        const Region region = RegionOf(Weighted(rings));
        const double size = region.frame.LengthFromFrame(region.size);
        // A vertex that moves changes the area by half its way times its neighbours' distance.
        double moved = 0.0;
        for (const OutlineContact& contact : region.moved) moved += contact.distance * size;
        const double rounding = 1e-13 * size * size + 0.75 * moved;
        std::map<int, mpq_class> left = test_support::ExactAreas(rings);
        mpq_class material = -mpq_class(std::ldexp(region.area, 2 * region.frame.exponent));
        for (const auto& [sum, area] : left) material += sum >= 1 ? area : mpq_class(0);
        EXPECT_LE(std::fabs(material.get_d()), rounding);
        odd += region.oddPlaces.size();
        // Where a ring runs round something twice, or the other way, the sum may still be 0 or 1.
        for (const OddPlace& place : region.oddPlaces) left[place.sum] -= mpq_class(place.area);
        left.erase(0);
        left.erase(1);
        for (const auto& [sum, area] : left) {
            // Places of less than 1e-12 of the size squared are left out.
            EXPECT_LE(std::fabs(area.get_d()), rounding + 1e-11 * size * size) << "sum " << sum;
        }
    }
    EXPECT_GT(odd, 300U);
#else
    GTEST_SKIP() << "exact areas need GMP: apt-get install libgmp-dev";
#endif
}

}  // namespace
