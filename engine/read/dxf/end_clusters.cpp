#include "read/dxf/end_clusters.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "base/disjoint_sets.h"

namespace halvorn::engine::dxf {

namespace {

using Cell = std::pair<std::int64_t, std::int64_t>;

// The points of one cell of a grid: a part of a list that is sorted by cells.
struct CellPoints {
    Cell cell;
    std::size_t begin;
    std::size_t end;
};

// No two points of a cell of half the reach are farther apart than that. The neighbours of a cell
// with more points than this count as linked without comparing every pair.
constexpr std::size_t kCrowd = 64;

std::vector<std::pair<Cell, std::size_t>> SortedByCells(const Points& points, double side) {
    std::vector<std::pair<Cell, std::size_t>> sorted;
    sorted.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        sorted.push_back({{static_cast<std::int64_t>(std::floor(points[i].x / side)),
                           static_cast<std::int64_t>(std::floor(points[i].y / side))},
                          i});
    }
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

double Reach(const Points& points, double tolerance) {
    double largest = 0.0;
    for (const auto& [x, y] : points) largest = std::max({largest, std::abs(x), std::abs(y)});
    return std::max({tolerance, 1e-12 * largest, 1e-300});
}

}  // namespace

std::vector<std::size_t> ClusterPoints(const Points& points, double tolerance) {
    const double reach = Reach(points, tolerance);
    const auto sorted = SortedByCells(points, 0.5 * reach);
    DisjointSets clusters(points.size());
    std::vector<CellPoints> cells;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        if (cells.empty() || cells.back().cell != sorted[i].first) {
            cells.push_back({sorted[i].first, i, i});
        }
        cells.back().end = i + 1;
        clusters.Join(sorted[i].second, sorted[cells.back().begin].second);
    }
    const auto linkIfNear = [&](const CellPoints& one, const CellPoints& other) {
        const bool isCrowded = (one.end - one.begin) * (other.end - other.begin) > kCrowd * kCrowd;
        for (std::size_t i = one.begin; i < one.end; ++i) {
            const auto& p = points[sorted[i].second];
            for (std::size_t j = other.begin; j < other.end; ++j) {
                const auto& q = points[sorted[j].second];
                if (isCrowded || std::hypot(p.x - q.x, p.y - q.y) <= reach) {
                    clusters.Join(sorted[i].second, sorted[j].second);
                    return;
                }
            }
        }
    };
    // Points in reach of each other lie at most two cells apart; each pair of cells is seen once.
    for (const CellPoints& one : cells) {
        for (std::int64_t dx = 0; dx <= 2; ++dx) {
            for (std::int64_t dy = dx == 0 ? 1 : -2; dy <= 2; ++dy) {
                const Cell wanted{one.cell.first + dx, one.cell.second + dy};
                const auto found = std::lower_bound(
                    cells.begin(), cells.end(), wanted,
                    [](const CellPoints& have, const Cell& cell) { return have.cell < cell; });
                if (found != cells.end() && found->cell == wanted) linkIfNear(one, *found);
            }
        }
    }
    std::vector<std::size_t> numbers(points.size()), numberOfRoot(points.size(), points.size());
    std::size_t count = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        std::size_t& number = numberOfRoot[clusters.Find(i)];
        if (number == points.size()) number = count++;
        numbers[i] = number;
    }
    return numbers;
}

}  // namespace halvorn::engine::dxf
