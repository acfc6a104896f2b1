#include "values/halving_line.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

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

// Along the line and across it. The order changes the sense of a ring about a vertical line.
Point AlongAndAcross(const Point& p, AxisDirection direction) {
    return direction == AxisDirection::Horizontal ? p : Point(p.y, p.x);
}

void AddStrips(const Points& ring, AxisDirection direction, double lowest,
               std::vector<Strip>& strips) {
    const double sign = direction == AxisDirection::Horizontal ? 1.0 : -1.0;
    Point from = AlongAndAcross(ring.empty() ? Point() : ring.back(), direction);
    for (const Point& vertex : ring) {
        const Point to = AlongAndAcross(vertex, direction);
        strips.push_back({std::min(from.y, to.y) - lowest, std::max(from.y, to.y) - lowest,
                          sign * (from.x - to.x)});
        from = to;
    }
}

// The strips that a enclosure of heights may still cut. Those below it count no more, those above
// it as two sums.
class Enclosure {
public:
    Enclosure(std::vector<Strip> strips, double height)
        : strips_(std::move(strips)), high_(height) {}

    // Halves the enclosure until the area above its middle is within a distance of a given one.
    void Narrow(double area, double distance) {
        for (;;) {
            const double above = AreaAboveMiddle();
            if (IsPoint() || std::fabs(above - area) <= distance) return;
            Halve(above > area);
        }
    }

    // The height above which the strips have an area.
    double HeightWithAreaAbove(double area) && {
        while (!IsPoint()) Halve(AreaAboveMiddle() > area);
        return Middle();
    }

private:
    double Middle() const { return 0.5 * (low_ + high_); }
    bool IsPoint() const { return !(low_ < Middle() && Middle() < high_); }

    double AreaAboveMiddle() const {
        const double middle = Middle();
        double above = momentAbove_ - widthAbove_ * middle;
        for (const Strip& strip : strips_) above += strip.AreaAbove(middle);
        return above;
    }

    void Halve(bool isAbove) {
        if (isAbove) {
            low_ = Middle();
            std::erase_if(strips_, [&](const Strip& strip) { return strip.high <= low_; });
            return;
        }
        high_ = Middle();
        std::erase_if(strips_, [&](const Strip& strip) {
            if (strip.low < high_) return false;
            widthAbove_ += strip.width;
            momentAbove_ += strip.width * strip.Middle();
            return true;
        });
    }

    std::vector<Strip> strips_;
    double low_ = 0.0;
    double high_;
    double widthAbove_ = 0.0;
    double momentAbove_ = 0.0;
};

}  // namespace

std::optional<double> HalvingLine(std::span<const Points* const> rings, AxisDirection direction) {
    constexpr double kRounding = 1e-13;  // of the sum of all strips [-]
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    std::size_t count = 0;
    for (const Points* const ring : rings) {
        count += ring->size();
        for (const Point& point : *ring) {
            const double across = AlongAndAcross(point, direction).y;
            lowest = std::min(lowest, across);
            highest = std::max(highest, across);
        }
    }
    std::vector<Strip> strips;
    strips.reserve(count);
    for (const Points* const ring : rings) AddStrips(*ring, direction, lowest, strips);
    double area = 0.0;
    double sum = 0.0;
    for (const Strip& strip : strips) {
        area += strip.width * strip.Middle();
        sum += std::fabs(strip.width * strip.Middle());
    }
    const double rounding = kRounding * sum;
    if (!(area > rounding) || !std::isfinite(sum)) return std::nullopt;
    const double height = highest - lowest;
    Enclosure enclosure(std::move(strips), height);
    enclosure.Narrow(0.5 * area, 4.0 * rounding);
    const auto heightAt = [&](double shift) {
        return Enclosure(enclosure).HeightWithAreaAbove(0.5 * area + shift);
    };
    const double from = heightAt(rounding);
    const double to = heightAt(-rounding);
    const double line = lowest + 0.5 * (from + to);
    constexpr double kNearOrigin = 1e-3;  // of the height [-]: where a 0 is worth a look
    if (std::fabs(line) > kNearOrigin * height) return line;
    const double off = 0.5 * (from - heightAt(2.0 * rounding) + heightAt(-2.0 * rounding) - to);
    return std::fabs(line) <= off ? 0.0 : line;
}

// With v the distance across the line, |v| is the derivative of v |v| / 2 across it; by Green's
// theorem the integral is that of v |v| / 2 along the ring. Its mean along an edge is
// (v0^2 + v0 v1 + v1^2) / 6 on one side of the line, and (|v1|^3 - |v0|^3) / (v1 - v0) / 6 across.
double DistanceIntegral(const Points& ring, AxisDirection direction, double line) {
    double sum = 0.0;
    Point from = AlongAndAcross(ring.empty() ? Point() : ring.back(), direction);
    from.y -= line;
    for (const Point& vertex : ring) {
        Point to = AlongAndAcross(vertex, direction);
        to.y -= line;
        const double width = from.x - to.x;
        if ((from.y < 0.0) == (to.y < 0.0)) {
            const double squares = from.y * from.y + from.y * to.y + to.y * to.y;
            sum += to.y < 0.0 ? -width * squares : width * squares;
        } else {
            const double below = std::fabs(from.y);
            const double above = std::fabs(to.y);
            sum += width * (above * above * above - below * below * below) / (to.y - from.y);
        }
        from = to;
    }
    return (direction == AxisDirection::Horizontal ? sum : -sum) / 6.0;
}

}  // namespace halvorn::engine
