// Regions of random outlines against their exact areas, and both ways to a region side by side.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <string>

#include "catalogue/catalogue.h"
#include "geometry/rings.h"
#include "model/outlines.h"
#include "region/nested_rings.h"
#include "region/region.h"
#include "ring_sections.h"
#if defined(HALVORN_HAS_GMP)
#include "exact_areas.h"
#endif

namespace {

using namespace halvorn::engine;
using test_support::Rectangle;
using test_support::Rings;
using test_support::Weighted;

enum Family { kAtRandom, kTouching, kNested, kKeyholes, kSlivers, kFamilies };

// Sections of about 100 across. Everything in it is drawn from one random sequence.
class RandomSections {
public:
    explicit RandomSections(unsigned seed) : random_(seed) {}

    // Turned, far away, and in another unit, with rings either way round.
    Rings Make(Family family) {
        Rings rings;
        if (family == kAtRandom) Scatter(rings, 1e6);
        if (family == kTouching) Scatter(rings, 6.0);
        if (family == kNested) Nest(rings);
        if (family == kKeyholes) AddKeyholes(rings);
        if (family == kSlivers) AddSlivers(rings);
        const double angle = Below(2) * 0.3, scale = Below(3) == 0 ? 1e-3 : 1.0;
        const double away = Below(3) == 0 ? 1e5 : 0.0;
        for (auto& [isSolid, ring] : rings) {
            for (Point& p : ring) {
                p = scale * Point(p.x * std::cos(angle) - p.y * std::sin(angle) + away,
                                  p.x * std::sin(angle) + p.y * std::cos(angle) - away);
            }
            if (Below(2) == 0) std::reverse(ring.begin(), ring.end());
        }
        // Without an area nothing tells which way round a ring runs.
        std::erase_if(rings, [&](const auto& ring) {
            return std::fabs(TwiceArea(ring.second)) < 1e-3 * scale * scale;
        });
        return rings;
    }

private:
    int Below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
    double Unit() { return static_cast<double>(random_() % 1000001U) / 1e6; }

    void Scatter(Rings& rings, double grid) {
        const int count = 1 + Below(4);
        for (int r = 0; r < count; ++r) {
            Points ring(static_cast<std::size_t>(3 + Below(6)));
            for (Point& p : ring) {
                p = (100.0 / grid) * Point(std::round(grid * Unit()), std::round(grid * Unit()));
            }
            rings.emplace_back(Below(3) != 0, ring);
        }
    }

    // Solids and holes in turn, some of them with a pair side by side, most of them clear of each
    // other.
    void Nest(Rings& rings) {
        double radius = 50.0;
        const int depth = 1 + Below(4);
        for (int r = 0; r < depth; ++r) {
            const int n = 3 + Below(20);
            rings.emplace_back(r % 2 == 0, Polygon(n, {0, 0}, radius));
            radius *= std::cos(std::numbers::pi / n) * (0.3 + 0.8 * Unit());
        }
        rings.emplace_back(depth % 2 == 0, Polygon(5, {-0.45 * radius, 0}, 0.4 * radius));
        rings.emplace_back(depth % 2 == 0, Polygon(7, {0.45 * radius, 0}, 0.4 * radius));
    }

    Points Polygon(int n, const Point& centre, double radius) {
        Points ring;
        const double start = Unit();
        for (int i = 0; i < n; ++i) {
            const double angle = start + 2.0 * std::numbers::pi * i / n;
            ring.push_back(centre + radius * Point(std::cos(angle), std::sin(angle)));
        }
        return ring;
    }

    // Holes in the ring of their plate, by bridges to its corner; plates side by side or
    // overlapping.
    void AddKeyholes(Rings& rings) {
        for (int plate = 0; plate < 2; ++plate) {
            const double x = plate * (30.0 + 20.0 * Below(3));
            Points ring = Rectangle(x, 0, 50, 40);
            ring.push_back(ring[0]);
            for (const double y : {5.0, 20.0}) {
                Points hole = Rectangle(x + 5 + 10 * Unit(), y, 15 + 10 * Unit(), 12 - 5 * Unit());
                std::reverse(hole.begin(), hole.end());
                ring.insert(ring.end(), hole.begin(), hole.end());
                ring.push_back(hole[0]);
                ring.push_back({x, 0});
            }
            ring.pop_back();
            rings.emplace_back(true, ring);
        }
    }

    // Rectangles with gaps, overlaps and necks on both sides of every distance that matters.
    void AddSlivers(Rings& rings) {
        const double widths[] = {0.5e-6, 1e-6, 2e-6, 5e-5, 0.98e-4, 1.02e-4, 3e-4};
        const auto sliver = [&] { return (Below(2) == 0 ? 100.0 : -100.0) * widths[Below(7)]; };
        rings.emplace_back(true, Rectangle(0, 0, 60, 100));
        const Points level = Rectangle(60 + sliver(), 0, 39, 100);
        rings.emplace_back(true, Below(2) == 0 ? level : Rectangle(60 + sliver(), 7, 39, 60));
        rings.emplace_back(false, Rectangle(10, 100 - 20 + sliver(), 30, 20));
        rings.emplace_back(false, Rectangle(10, 100 - 60 - sliver(), 30, 40 - 20));
    }

    std::mt19937 random_;
};

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
