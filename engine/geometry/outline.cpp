#include "geometry/outline.h"

namespace halvorn::engine::shapes {

namespace {

// Index of the point that lies farthest in the direction (1, 1).
std::size_t FarthestUpRight(const std::vector<double>& ring) {
    std::size_t farthest = 0;
    for (std::size_t i = 1; i < ring.size() / 2; ++i) {
        if (ring[2 * i] + ring[2 * i + 1] > ring[2 * farthest] + ring[2 * farthest + 1]) {
            farthest = i;
        }
    }
    return farthest;
}

// Appends all points of a ring from `start` round to `start` again, backwards when asked.
void AppendRound(const std::vector<double>& ring, std::size_t start, bool backwards,
                 std::vector<double>& contour) {
    const std::size_t n = ring.size() / 2;
    for (std::size_t k = 0; k <= n; ++k) {
        const std::size_t i = (start + (backwards ? n - k : k)) % n;
        contour.insert(contour.end(), {ring[2 * i], ring[2 * i + 1]});
    }
}

}  // namespace

std::vector<double> KeyholeRing(const Outline& outline) {
    if (outline.hole.empty()) return outline.solid;
    return KeyholeRing(outline, FarthestUpRight(outline.solid), FarthestUpRight(outline.hole));
}

std::vector<double> KeyholeRing(const Outline& outline, std::size_t solidPoint,
                                std::size_t holePoint) {
    std::vector<double> contour;
    contour.reserve(outline.solid.size() + outline.hole.size() + 4);
    AppendRound(outline.solid, solidPoint, false, contour);
    AppendRound(outline.hole, holePoint, true, contour);
    return contour;
}

}  // namespace halvorn::engine::shapes
