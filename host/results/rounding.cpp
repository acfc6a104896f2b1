#include "results/rounding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace halvorn::host {

Box BoxOf(const std::vector<Element>& elements) {
    Box box(elements.front().ring);
    for (const Element& element : elements) {
        const Box other(element.ring);
        box.left = std::min(box.left, other.left);
        box.right = std::max(box.right, other.right);
        box.bottom = std::min(box.bottom, other.bottom);
        box.top = std::max(box.top, other.top);
    }
    return box;
}

double AreaRounding(const Points& points) {
    constexpr double kRounding = 4.0 * std::numeric_limits<double>::epsilon();
    double largest = 0.0;
    double perimeter = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto& [x, y] = points[i];
        const auto& [nextX, nextY] = points[(i + 1) % points.size()];
        largest = std::max({largest, std::fabs(x), std::fabs(y)});
        perimeter += std::hypot(nextX - x, nextY - y);
    }
    return kRounding * largest * perimeter;
}

double InertiaRounding(const std::vector<Element>& elements) {
    constexpr double kUnit = 0.5 * std::numeric_limits<double>::epsilon();
    const Box box = BoxOf(elements);
    const double distance = std::max(std::fabs(box.left), std::fabs(box.right)) +
                            std::max(std::fabs(box.bottom), std::fabs(box.top)) + box.Diagonal();
    // The area of the box bounds that of the solids, and is the scale of slender ones at an angle.
    const double area = (box.right - box.left) * (box.top - box.bottom);
    return 16.0 * kUnit * area * distance * distance;
}

double WithoutRounding(const Value& value, const Report& report) {
    constexpr double kRounding = 1e-13;
    const Value* const area = report.Find("area");
    if (area == nullptr || value.power == 0) return value.number;
    const double scale = std::pow(std::fabs(area->number), 0.5 * value.power);
    return std::fabs(value.number) < kRounding * scale ? 0.0 : value.number;
}

std::string LostDigitsNote(const std::vector<Element>& elements) {
    constexpr double kTooCoarse = 1e-9;  // relative error of the second moments
    const Box box = BoxOf(elements);
    const double farthest = std::hypot(std::max(std::fabs(box.left), std::fabs(box.right)),
                                       std::max(std::fabs(box.bottom), std::fabs(box.top)));
    const double ratio = farthest / std::min(box.right - box.left, box.top - box.bottom);
    const double lost = std::numeric_limits<double>::epsilon() * ratio * ratio;
    if (!(lost > kTooCoarse) || !std::isfinite(lost)) return "";
    const int digits = std::max(0, static_cast<int>(-std::log10(lost)));
    return "the section lies so far from the origin that of 16 digits of its second moments, and "
           "of what follows from them, about " +
           std::to_string(digits) + " are left; move the origin to the section";
}

}  // namespace halvorn::host
