// Arrangements of random outlines against winding numbers, and small regions worked out by hand.
#include "geometry/arrangement.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

#include "geometry/faces.h"
#include "geometry/predicates.h"
#include "geometry/ring_area.h"
#include "region/region.h"
#include "ring_sections.h"
#include "values/plastic_halves.h"

namespace {

using namespace halvorn::engine;
using test_support::Rectangle;
using test_support::Rings;
using test_support::Weighted;

double AreaOf(const Region& region) {
    return std::ldexp(region.area, 2 * region.frame.exponent);
}

int Winding(const Points& ring, const Point& p) {
    int winding = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Point &a = ring[i], &b = ring[(i + 1) % ring.size()];
        if ((a.y <= p.y) == (b.y <= p.y)) continue;
        if ((Cross(b - a, p - a) > 0.0) == (b.y > a.y)) winding += b.y > a.y ? 1 : -1;
    }
    return TwiceArea(ring) < 0.0 ? -winding : winding;
}

double DistanceToOutlines(const Rings& rings, const Point& p) {
    double least = 1e300;
    for (const auto& [isSolid, ring] : rings) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const Point along = ring[(i + 1) % ring.size()] - ring[i];
            const double square = std::max(Dot(along, along), 1e-300);
            const double share = std::clamp(Dot(p - ring[i], along) / square, 0.0, 1.0);
            const Point off = p - (ring[i] + share * along);
            least = std::min(least, std::hypot(off.x, off.y));
        }
    }
    return least;
}

// Rings on grids of three widths, turned, far away and in another unit: vertices and edges meet
// often.
Rings RandomRings(std::mt19937& random, int round) {
    const unsigned grid = round % 3 == 0 ? 6 : round % 3 == 1 ? 30 : 1000000;
    const double angle = round % 4 == 1 ? 0.3 : 0.0, scale = round % 7 == 3 ? 1e-3 : 1.0;
    const double away = round % 5 == 2 ? 1000.0 * grid : 0.0;
    const auto coordinate = [&] { return static_cast<double>(random() % (grid + 1)); };
    Rings rings;
    const auto count = 1 + random() % 5;
    for (std::size_t r = 0; r < count; ++r) {
        Points ring;
        const auto n = 3 + random() % (round % 2 == 0 ? 20 : 6);
        for (std::size_t i = 0; i < n; ++i) {
            const double x = coordinate(), y = coordinate();
            ring.emplace_back(scale * (x * std::cos(angle) - y * std::sin(angle) + away),
                              scale * (x * std::sin(angle) + y * std::cos(angle) - away));
        }
        // Without an area nothing tells which way round it runs.
        if (std::fabs(TwiceArea(ring)) < 1e-6 * scale * scale * grid * grid) continue;
        rings.emplace_back(random() % 3 != 0, ring);
    }
    return rings;
}

TEST(Arrangement, CountsWindingsOfRandomOutlines) {
    constexpr unsigned kSeed = 20260;
    std::mt19937 random(kSeed);
    int faces = 0;
    for (int round = 0; round < 600; ++round) {
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", round " + std::to_string(round));
        const Rings rings = RandomRings(random, round);
        if (rings.empty()) continue;
        const Arrangement arrangement(Weighted(rings));
        const Frame& frame = arrangement.Coordinates();
        const double size = frame.LengthFromFrame(arrangement.Size());
        for (const Face& face : FacesOf(arrangement)) {
            const Point place = frame.FromFrame(face.place);
            if (DistanceToOutlines(rings, place) < 3e-6 * size) continue;
            std::vector<std::pair<Index, int>> expected;
            int sum = 0;
            for (std::size_t i = 0; i < rings.size(); ++i) {
                const int winding = Winding(rings[i].second, place);
                if (winding != 0) expected.emplace_back(static_cast<Index>(i), winding);
                sum += rings[i].first ? winding : -winding;
            }
            ASSERT_EQ(face.windings, expected);
            ASSERT_EQ(face.sum, sum);
            ++faces;
        }
        const Region region = RegionOf(Weighted(rings));
        for (const Part& part : region.parts) {
            double area = 0.5 * TwiceArea(part.outline);
            EXPECT_GT(area, 0.0);
            for (const Points& ring : part.voids) area += 0.5 * TwiceArea(ring);
            EXPECT_NEAR(area, part.area, 1e-13);
            EXPECT_NEAR(0.5 * TwiceArea(JoinedRing(part)), part.area, 1e-13);
        }
        for (const auto direction : {AxisDirection::Horizontal, AxisDirection::Vertical}) {
            if (region.area < 1e-6) continue;
            EXPECT_EQ(HalvesOf(region, direction).whyMissing, "");
        }
    }
    EXPECT_GT(faces, 10000);
}

TEST(Arrangement, RefusesWhatCannotBeArranged) {
    const std::pair<const char*, Points> cases[] = {
        {"not a finite number", {{0, 0}, {1, NAN}, {1, 1}}},
        {"not a finite number", {{0, 0}, {INFINITY, 0}, {1, 1}}},
        {"one place", {{3, 3}, {3, 3}, {3, 3}}},
        {"too large", Rectangle(0, 0, 1e200, 1)}};
    for (const auto& [reason, ring] : cases) {
        try {
            const Arrangement arrangement(Weighted({{true, ring}}));
            ADD_FAILURE() << reason;
        } catch (const ArrangementError& error) {
            EXPECT_NE(std::string(error.what()).find(reason), std::string::npos) << error.what();
        }
    }
}

struct Expected {
    const char* name;
    Rings rings;
    std::size_t parts, voids, pinches, oddPlaces, moved, nearMisses;
    double area;
};

TEST(Region, TellsPartsVoidsPinchesAndContacts) {
    const Points square = Rectangle(0, 0, 100, 100);
    const Expected cases[] = {
        {"hole", {{true, square}, {false, Rectangle(20, 20, 10, 10)}}, 1, 1, 0, 0, 0, 0, 9900},
        {"apart", {{true, square}, {true, Rectangle(120, 0, 9, 9)}}, 2, 0, 0, 0, 0, 0, 10081},
        {"on an edge", {{true, square}, {true, Rectangle(100, 20, 9, 9)}}, 1, 0, 0, 0, 0, 0, 10081},
        {"at a corner",
         {{true, square}, {true, Rectangle(100, 100, 9, 9)}},
         2,
         0,
         1,
         0,
         0,
         0,
         10081},
        {"hole at a corner",
         {{true, square}, {false, Rectangle(0, 0, 9, 9)}},
         1,
         0,
         0,
         0,
         0,
         0,
         9919},
        {"slot", {{true, square}, {false, Rectangle(40, 90, 9, 10)}}, 1, 0, 0, 0, 0, 0, 9910},
        {"holes that meet",
         {{true, square}, {false, Rectangle(10, 10, 9, 9)}, {false, Rectangle(19, 19, 9, 9)}},
         1,
         1,
         1,
         0,
         0,
         0,
         10000 - 162},
        {"island in a hole",
         {{true, square}, {false, Rectangle(10, 10, 50, 50)}, {true, Rectangle(20, 20, 9, 9)}},
         2,
         1,
         0,
         0,
         0,
         0,
         7581},
        {"overlap", {{true, square}, {true, Rectangle(90, 0, 50, 10)}}, 1, 0, 0, 1, 0, 0, 10400},
        {"hole outside",
         {{true, square}, {false, Rectangle(95, 10, 10, 10)}},
         1,
         0,
         0,
         1,
         0,
         0,
         9950},
        {"gap of 1e-5",
         {{true, square}, {true, Rectangle(100.00001, 20, 9, 9)}},
         1,
         0,
         0,
         0,
         2,
         0,
         10081},
        {"gap of 5e-3",
         {{true, square}, {true, Rectangle(100.005, 20, 9, 9)}},
         2,
         0,
         0,
         0,
         0,
         1,
         10081},
        {"gap of 0.02",
         {{true, square}, {true, Rectangle(100.02, 20, 9, 9)}},
         2,
         0,
         0,
         0,
         0,
         0,
         10081},
        {"keyhole",
         {{true,
           {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {2, 2}, {2, 8}, {8, 8}, {8, 2}, {2, 2}}}},
         1,
         1,
         0,
         0,
         0,
         0,
         64}};
    for (const Expected& c : cases) {
        for (const double scale : {1.0, 1e-3}) {
            for (const double away : {0.0, 1e6}) {
                SCOPED_TRACE(std::string(c.name) + ", scale " + std::to_string(scale) + ", at " +
                             std::to_string(away));
                Rings rings = c.rings;
                for (auto& [isSolid, ring] : rings) {
                    for (Point& p : ring) p = scale * (p + Point(away, -away));
                    if (away != 0.0) std::reverse(ring.begin(), ring.end());
                }
                const Region region = RegionOf(Weighted(rings));
                std::size_t voids = 0;
                for (const Part& part : region.parts) voids += part.voids.size();
                EXPECT_EQ(region.parts.size(), c.parts);
                EXPECT_EQ(voids, c.voids);
                EXPECT_EQ(region.pinches.size(), c.pinches);
                EXPECT_EQ(region.oddPlaces.size(), c.oddPlaces);
                // Far away rounding moves what touches.
                if (away == 0.0) {
                    EXPECT_EQ(region.moved.size(), c.moved);
                }
                EXPECT_EQ(region.nearMisses.size(), c.nearMisses);
                EXPECT_NEAR(AreaOf(region), c.area * scale * scale, 1e-6 * c.area * scale * scale);
            }
        }
    }
}

TEST(Predicates, TellTheSideOfPointsThatRoundingHides) {
    const Point a(0.5, 0.5), b(12.0, 12.0), c(24.0, 24.0);
    constexpr double kUlp = 1.1102230246251565e-16;
    for (int i = 0; i < 64; ++i) {
        for (int k = 0; k < 64; ++k) {
            const Point p(0.5 + i * kUlp, 0.5 + k * kUlp);
            ASSERT_EQ(Orientation(p, b, c), i < k ? 1 : i > k ? -1 : 0) << i << ' ' << k;
        }
    }
    // On the circle about the origin through a; one digit in or out.
    const Point q(0.5, -0.5), r(-0.5, 0.5);
    for (const int off : {-1, 0, 1}) {
        EXPECT_EQ(InCircle(a, r, q, {-0.5 + off * kUlp, -0.5}), off) << off;
    }
}

}  // namespace
