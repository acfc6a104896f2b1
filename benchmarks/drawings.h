/// @file drawings.h
/// Outlines of the engine's benchmarks.
#ifndef HALVORN_BENCHMARKS_DRAWINGS_H
#define HALVORN_BENCHMARKS_DRAWINGS_H

#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "geometry/arrangement.h"
#include "geometry/point.h"

namespace halvorn::benchmarks {

using engine::Point;
using engine::Points;

/// Rings with their weights, as arrangements and regions take them.
struct Drawing {
    std::vector<Points> rings;
    std::vector<int> weights;

    void Add(Points ring, int weight) {
        rings.push_back(std::move(ring));
        weights.push_back(weight);
    }
    std::vector<engine::WeightedRing> Outlines() const {
        std::vector<engine::WeightedRing> outlines;
        for (std::size_t i = 0; i < rings.size(); ++i) outlines.push_back({&rings[i], weights[i]});
        return outlines;
    }
};

/// A regular polygon of n vertices; a negative radius turns it by a half.
inline Points Polygon(std::size_t n, const Point& centre, double radius) {
    Points ring;
    for (std::size_t i = 0; i < n; ++i) {
        const double angle = 6.283185307179586 * static_cast<double>(i) / static_cast<double>(n);
        ring.push_back(centre + radius * Point(std::cos(angle), std::sin(angle)));
    }
    return ring;
}

/// A wheel of n vertices, four a tooth, with a bore.
inline Drawing Gear(std::size_t n) {
    Points ring = Polygon(n, {0, 0}, 500.0);
    for (std::size_t i = 0; i < ring.size(); ++i) {
        if (i % 4 < 2) ring[i] = 0.9 * ring[i];
    }
    Drawing drawing;
    drawing.Add(std::move(ring), 1);
    drawing.Add(Polygon(64, {0, 0}, 100.0), -1);
    return drawing;
}

}  // namespace halvorn::benchmarks

#endif
