#include "figure/outline.h"

#include <algorithm>
#include <cstddef>

namespace halvorn::engine::figure {

namespace {

using Edge = std::pair<Point, Point>;

}  // namespace

std::vector<Stretch> WithoutBridges(const Points& ring) {
    const std::size_t n = ring.size();
    std::vector<Edge> edges;
    for (std::size_t i = 0; i < n; ++i) edges.emplace_back(ring[i], ring[(i + 1) % n]);
    std::vector<Edge> sorted = edges;
    std::sort(sorted.begin(), sorted.end());
    const auto isBridge = [&](std::size_t i) {
        return std::binary_search(sorted.begin(), sorted.end(),
                                  Edge{edges[i].second, edges[i].first});
    };
    std::size_t first = 0;
    while (first < n && !isBridge(first)) ++first;
    if (first == n) return {{ring, true}};

    std::vector<Stretch> stretches;
    bool isGap = true;
    for (std::size_t k = 1; k < n; ++k) {
        const std::size_t i = (first + k) % n;
        if (isBridge(i)) {
            isGap = true;
            continue;
        }
        if (isGap) stretches.push_back({{edges[i].first}, false});
        isGap = false;
        stretches.back().points.push_back(edges[i].second);
    }
    for (Stretch& stretch : stretches) {
        if (stretch.points.front() != stretch.points.back()) continue;
        stretch.points.pop_back();
        stretch.isClosed = true;
    }
    return stretches;
}

}  // namespace halvorn::engine::figure
