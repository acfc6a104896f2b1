#include "values/plastic_axis.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace halvorn::engine {

namespace {

// The part of a ring between two heights above the lowest point of all. `width` is its extent along
// the line, signed so that the area that counts comes out positive.
struct Strip {
    double low;
    double high;
    double width;

    double Middle() const { return 0.5 * (low + high); }
    double AreaAbove(double height) const {
        if (height >= high) return 0.0;
        if (height <= low) return width * (Middle() - height);
        return width * (high - height) * (high - height) / (2.0 * (high - low));
    }
};

// @param ring    points as (along the line, across it)
void AddStrips(const Points& ring, double lowest, std::vector<Strip>& strips) {
    const std::size_t first = strips.size();
    double area = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const auto& [u0, v0] = ring[i];
        const auto& [u1, v1] = ring[(i + 1) % ring.size()];
        const Strip strip = {std::min(v0, v1) - lowest, std::max(v0, v1) - lowest, u0 - u1};
        area += strip.width * strip.Middle();
        strips.push_back(strip);
    }
    if (area >= 0.0) return;
    for (std::size_t i = first; i < strips.size(); ++i) strips[i].width = -strips[i].width;
}

// The height above which the strips have an area. Strips on one side of the bracket stay there:
// below it they count no more, above it as two sums.
double HeightWithAreaAbove(std::vector<Strip> strips, double area, double low, double high) {
    double widthAbove = 0.0;
    double momentAbove = 0.0;
    for (;;) {
        const double middle = 0.5 * (low + high);
        if (!(low < middle && middle < high)) return middle;
        double above = momentAbove - widthAbove * middle;
        for (const Strip& strip : strips) above += strip.AreaAbove(middle);
        if (above > area) {
            low = middle;
            std::erase_if(strips, [&](const Strip& strip) { return strip.high <= low; });
            continue;
        }
        high = middle;
        std::erase_if(strips, [&](const Strip& strip) {
            if (strip.low < high) return false;
            widthAbove += strip.width;
            momentAbove += strip.width * strip.Middle();
            return true;
        });
    }
}

}  // namespace

std::optional<double> HalvingLine(std::vector<Points> rings, AxisDirection direction) {
    constexpr double kRounding = 1e-13;  // of the sum of all strips [-]
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    for (Points& ring : rings) {
        for (Point& point : ring) {
            if (direction == AxisDirection::Vertical) std::swap(point.x, point.y);
            lowest = std::min(lowest, point.y);
            highest = std::max(highest, point.y);
        }
    }
    std::vector<Strip> strips;
    for (const Points& ring : rings) AddStrips(ring, lowest, strips);
    double area = 0.0;
    double sum = 0.0;
    for (const Strip& strip : strips) {
        area += strip.width * strip.Middle();
        sum += std::fabs(strip.width * strip.Middle());
    }
    const double rounding = kRounding * sum;
    if (!(area > rounding) || !std::isfinite(sum)) return std::nullopt;
    const double height = highest - lowest;
    const auto heightAt = [&](double shift) {
        return HeightWithAreaAbove(strips, 0.5 * area + shift, 0.0, height);
    };
    const double from = heightAt(rounding);
    const double to = heightAt(-rounding);
    const double line = lowest + 0.5 * (from + to);
    constexpr double kNearOrigin = 1e-3;  // of the height [-]: where a 0 is worth a look
    if (std::fabs(line) > kNearOrigin * height) return line;
    const double off = 0.5 * (from - heightAt(2.0 * rounding) + heightAt(-2.0 * rounding) - to);
    return std::fabs(line) <= off ? 0.0 : line;
}

}  // namespace halvorn::engine
