#include "geometry/outline.h"

#include <algorithm>

namespace halvorn::engine::shapes {

namespace {

// Index of the point that lies farthest in the direction (1, 1).
std::size_t FarthestUpRight(const Points& ring) {
    const auto isLower = [](const Point& a, const Point& b) { return a.x + a.y < b.x + b.y; };
    return static_cast<std::size_t>(std::max_element(ring.begin(), ring.end(), isLower) -
                                    ring.begin());
}

// Appends all points of a ring from `start` round to `start` again, backwards when asked.
void AppendRound(const Points& ring, std::size_t start, bool backwards, Points& contour) {
    const std::size_t n = ring.size();
    for (std::size_t k = 0; k <= n; ++k) {
        contour.push_back(ring[(start + (backwards ? n - k : k)) % n]);
    }
}

}  // namespace

Points KeyholeRing(const Outline& outline) {
    if (outline.hole.empty()) return outline.solid;
    return KeyholeRing(outline, FarthestUpRight(outline.solid), FarthestUpRight(outline.hole));
}

Points KeyholeRing(const Outline& outline, std::size_t solidPoint, std::size_t holePoint) {
    Points contour;
    contour.reserve(outline.solid.size() + outline.hole.size() + 2);
    AppendRound(outline.solid, solidPoint, false, contour);
    AppendRound(outline.hole, holePoint, true, contour);
    return contour;
}

}  // namespace halvorn::engine::shapes
