#include "values/plastic_halves.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "kernel/cut_polygon.h"
#include "values/net_plastic.h"

namespace halvorn::engine {

namespace {

// Along the line and across it.
Point AcrossAxis(const Point& point, AxisDirection direction) {
    return direction == AxisDirection::Horizontal ? point : Point(-point.y, point.x);
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

std::vector<Points> JoinedRingsOf(const Region& region) {
    std::vector<Points> joined;
    for (const Part& part : region.parts) joined.push_back(JoinedRing(part));
    return joined;
}

PlasticHalves HalvesOf(const Region& region, AxisDirection direction) {
    return HalvesOf(region, JoinedRingsOf(region), direction);
}

PlasticHalves HalvesOf(const Region& region, const std::vector<Points>& joined,
                       AxisDirection direction) {
    constexpr double kAgreement = 1e-9;  // of the area [-]
    PlasticHalves halves;
    const auto axis = PlasticAxis(region, direction);
    if (!axis) {
        halves.whyMissing = "there is no area to halve";
        return halves;
    }
    const Point onAxis = region.frame.FromFrame({*axis, *axis});
    halves.axis = direction == AxisDirection::Horizontal ? onAxis.y : onAxis.x;
    std::array<AreaMoment, 2> sums;
    for (const Points& ring : joined) {
        Points turned;
        turned.reserve(ring.size());
        for (const Point& point : ring) turned.push_back(AcrossAxis(point, direction));
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
            return {0.0, {}, "the section could not be cut at its plastic axis"};
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

std::array<const char*, 2> SidesOf(AxisDirection direction) {
    if (direction == AxisDirection::Horizontal) return {"above", "below"};
    return {"right", "left"};
}

}  // namespace halvorn::engine
