/// @file random_sections.h
/// Random sections of several kinds, the same ones on every platform.
#ifndef HALVORN_TESTS_ENGINE_RANDOM_SECTIONS_H
#define HALVORN_TESTS_ENGINE_RANDOM_SECTIONS_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>

#include "geometry/rings.h"
#include "ring_sections.h"

namespace test_support {

using halvorn::engine::Point;
using halvorn::engine::Points;

enum Family { kAtRandom, kTouching, kNested, kKeyholes, kSlivers, kThinWalls, kFamilies };

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
        if (family == kThinWalls) AddThinWalls(rings);
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
            return std::fabs(halvorn::engine::TwiceArea(ring.second)) < 1e-3 * scale * scale;
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

    // A box with up to three cells and a fin, all of one wall a 30th to a 200th of its size.
    void AddThinWalls(Rings& rings) {
        const double wall = 100.0 / (30 + Below(171));
        const int cells = 1 + Below(3);
        const double cell = (100.0 - wall) / cells, height = 30.0 + 60.0 * Unit();
        rings.emplace_back(true, Rectangle(0, 0, 100, height));
        for (int i = 0; i < cells; ++i) {
            rings.emplace_back(false,
                               Rectangle(wall + cell * i, wall, cell - wall, height - 2 * wall));
        }
        if (Below(2) == 0) {
            rings.emplace_back(true, Rectangle(100.0 * Unit(), height, wall, 10.0 + 60.0 * Unit()));
        }
    }

    std::mt19937 random_;
};

}  // namespace test_support

#endif
