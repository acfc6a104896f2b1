#include "values/net_plastic.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "kernel/cut_polygon.h"

namespace halvorn::engine {

namespace {

// The part of a ring between two heights above the lowest point of all. `width` is its extent along
// the line, signed so that the area of material comes out positive.
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

// Along the line and across it.
Point AcrossAxis(const Point& point, AxisDirection direction) {
    return direction == AxisDirection::Horizontal ? point : Point{-point.y, point.x};
}

std::vector<Strip> StripsOf(const Region& region, AxisDirection direction, double lowest) {
    std::vector<Strip> strips;
    for (const Part& part : region.parts) {
        const Points& ring = part.joined;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const Point a = AcrossAxis(ring[i], direction);
            const Point b = AcrossAxis(ring[i + 1 == ring.size() ? 0 : i + 1], direction);
            strips.push_back({std::min(a.y, b.y) - lowest, std::max(a.y, b.y) - lowest, a.x - b.x});
        }
    }
    return strips;
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

// The pieces of a ring on both sides of a line, in the coordinates along and across it.
std::vector<Points> CutAt(const Points& ring, double height, double size) {
    constexpr double kTolerance = 1e-10;  // in the frame, whose size is about 1
    std::vector<KPoint> points;
    points.reserve(ring.size());
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const Point& point : ring) {
        points.push_back({point.x, point.y});
        low = std::min(low, point.y);
        high = std::max(high, point.y);
    }
    if (low >= height - kTolerance || high <= height + kTolerance) return {ring};
    KPieces pieces;
    const KPoint from = {0.0, height};
    const KPoint to = {size, height};
    KCutPolygonByLine(points.data(), static_cast<int>(points.size()), from, to, kTolerance,
                      &pieces.count, &pieces.ranges, &pieces.points);
    std::vector<Points> cut;
    for (int k = 0; k < pieces.count; ++k) {
        Points& piece = cut.emplace_back();
        for (int i = pieces.ranges[k]; i < pieces.ranges[k + 1]; ++i) {
            piece.push_back({pieces.points[i].x, pieces.points[i].y});
        }
    }
    return cut;
}

struct AreaMoment {
    double area = 0.0;
    Point moment;  // about the origin of the coordinates

    // Summed about the first point, so that little cancels far from the origin.
    static AreaMoment Of(const Points& ring) {
        AreaMoment sum;
        for (std::size_t i = 1; i + 1 < ring.size(); ++i) {
            const Point a = ring[i] - ring[0];
            const Point b = ring[i + 1] - ring[0];
            const double area = 0.5 * Cross(a, b);
            sum.area += area;
            sum.moment = sum.moment + (area / 3.0) * (a + b);
        }
        sum.moment = sum.moment + sum.area * ring[0];
        return sum;
    }
};

}  // namespace

std::optional<double> PlasticAxis(const Region& region, AxisDirection direction) {
    constexpr double kRounding = 1e-13;  // of the sum of all strips [-]
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    for (const Part& part : region.parts) {
        for (const Point& point : part.outline) {
            const double height = AcrossAxis(point, direction).y;
            lowest = std::min(lowest, height);
            highest = std::max(highest, height);
        }
    }
    if (!(lowest < highest)) return std::nullopt;
    const std::vector<Strip> strips = StripsOf(region, direction, lowest);
    double area = 0.0;
    double sum = 0.0;
    for (const Strip& strip : strips) {
        area += strip.width * strip.Middle();
        sum += std::fabs(strip.width * strip.Middle());
    }
    const double rounding = kRounding * sum;
    if (!(area > rounding)) return std::nullopt;
    const double height = highest - lowest;
    const double from = HeightWithAreaAbove(strips, 0.5 * area + rounding, 0.0, height);
    const double to = HeightWithAreaAbove(strips, 0.5 * area - rounding, 0.0, height);
    return lowest + 0.5 * (from + to);
}

PlasticHalves HalvesOf(const Region& region, AxisDirection direction) {
    constexpr double kAgreement = 1e-9;  // of the area [-]
    PlasticHalves halves;
    const auto axis = PlasticAxis(region, direction);
    if (!axis) {
        halves.whyMissing = "there is no area to halve";
        return halves;
    }
    std::array<AreaMoment, 2> sums;
    for (const Part& part : region.parts) {
        Points turned;
        for (const Point& point : part.joined) turned.push_back(AcrossAxis(point, direction));
        for (Points& piece : CutAt(turned, *axis, region.size)) {
            const AreaMoment own = AreaMoment::Of(piece);
            const std::size_t side = own.moment.y >= *axis * own.area ? 0 : 1;
            sums[side].area += own.area;
            sums[side].moment = sums[side].moment + own.moment;
            for (Point& point : piece) {
                if (direction == AxisDirection::Vertical) point = {point.y, -point.x};
                point = region.frame.FromFrame(point);
            }
            halves.sides[side].pieces.push_back(std::move(piece));
        }
    }
    for (std::size_t side = 0; side < 2; ++side) {
        const AreaMoment& sum = sums[side];
        if (!(std::fabs(sum.area - 0.5 * region.area) <= kAgreement * region.area)) {
            return {{}, "the section could not be cut at its plastic axis"};
        }
        Point centroid = (1.0 / sum.area) * sum.moment;
        PlasticHalf& half = halves.sides[side];
        half.leverArm = region.frame.LengthFromFrame(std::fabs(centroid.y - *axis));
        if (direction == AxisDirection::Vertical) centroid = {centroid.y, -centroid.x};
        half.centroid = region.frame.FromFrame(centroid);
        half.area = std::ldexp(sum.area, 2 * region.frame.exponent);
    }
    return halves;
}

}  // namespace halvorn::engine
