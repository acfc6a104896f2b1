#include <algorithm>
#include <vector>

#include "HalvornEngine.h"
#include "geometry/rings.h"
#include "values/halving_line.h"

namespace halvorn::engine {

std::optional<Point> GrossPlasticAxes(const std::vector<Contour>& contours) {
    std::vector<Points> turned;
    turned.reserve(contours.size());
    std::vector<const Points*> rings;
    for (const Contour& contour : contours) {
        if (TwiceArea(contour.points) >= 0.0) {
            rings.push_back(&contour.points);
            continue;
        }
        Points& ring = turned.emplace_back(contour.points);
        std::reverse(ring.begin(), ring.end());
        rings.push_back(&ring);
    }
    const std::optional<double> y = HalvingLine(rings, AxisDirection::Horizontal);
    const std::optional<double> x = HalvingLine(rings, AxisDirection::Vertical);
    if (!x || !y) return std::nullopt;
    return Point(*x, *y);
}

}  // namespace halvorn::engine
