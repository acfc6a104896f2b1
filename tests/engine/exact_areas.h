/// @file exact_areas.h
/// Areas of outlines in rational arithmetic.
#ifndef HALVORN_TESTS_ENGINE_EXACT_AREAS_H
#define HALVORN_TESTS_ENGINE_EXACT_AREAS_H

#include <gmpxx.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "ring_sections.h"

namespace test_support {

// Of each sum of winding numbers, solids less holes, the area where it is that. Each ring counts as
// counter-clockwise. Between the ordinates of all vertices and crossings no edges cross, so that
// the widths in the middle of each slab integrate it exactly.
inline std::map<int, mpq_class> ExactAreas(const Rings& rings) {
    struct Edge {
        mpq_class x0, y0, x1, y1, slope;  // upwards; dx / dy
        int step;
    };
    std::vector<Edge> edges;
    std::vector<mpq_class> cuts;
    for (const auto& [isSolid, ring] : rings) {
        const std::size_t first = edges.size();
        mpq_class twiceArea = 0;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const auto &a = ring[i], &b = ring[(i + 1) % ring.size()];
            const mpq_class ax(a.x), ay(a.y), bx(b.x), by(b.y);
            twiceArea += ax * by - ay * bx;
            cuts.push_back(ay);
            if (a.y == b.y) continue;
            const mpq_class slope = (bx - ax) / (by - ay);
            // From left to right the winding number grows by 1 where the ring runs down.
            if (a.y < b.y) edges.push_back({ax, ay, bx, by, slope, -1});
            if (a.y > b.y) edges.push_back({bx, by, ax, ay, slope, 1});
        }
        const int turn = (sgn(twiceArea) < 0 ? -1 : 1) * (isSolid ? 1 : -1);
        for (std::size_t i = first; i < edges.size(); ++i) edges[i].step *= turn;
    }
    for (std::size_t i = 0; i < edges.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            const Edge &e = edges[i], &f = edges[k];
            if (e.slope == f.slope || e.y1 <= f.y0 || f.y1 <= e.y0) continue;
            const mpq_class y =
                (f.x0 - e.x0 + e.y0 * e.slope - f.y0 * f.slope) / (e.slope - f.slope);
            if (y > std::max(e.y0, f.y0) && y < std::min(e.y1, f.y1)) cuts.push_back(y);
        }
    }
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
    std::map<int, mpq_class> areas;
    for (std::size_t k = 1; k < cuts.size(); ++k) {
        const mpq_class y = (cuts[k - 1] + cuts[k]) / 2, height = cuts[k] - cuts[k - 1];
        std::vector<std::pair<mpq_class, int>> steps;
        for (const Edge& e : edges) {
            if (e.y0 < y && y < e.y1) steps.emplace_back(e.x0 + (y - e.y0) * e.slope, e.step);
        }
        std::sort(steps.begin(), steps.end());
        int sum = 0;
        for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
            sum += steps[i].second;
            if (sum != 0) areas[sum] += height * (steps[i + 1].first - steps[i].first);
        }
    }
    return areas;
}

}  // namespace test_support

#endif
