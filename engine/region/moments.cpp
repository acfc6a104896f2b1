#include "region/moments.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "geometry/double_double.h"
#include "model/principal_inertias.h"

namespace halvorn::engine {

namespace {

constexpr double kUnit = 0.5 * std::numeric_limits<double>::epsilon();

template <typename Visit>
void VisitEdges(const Region& region, const Visit& visit) {
    const auto visitRing = [&](const Points& ring) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            visit(ring[i], ring[i + 1 == ring.size() ? 0 : i + 1]);
        }
    };
    for (const Part& part : region.parts) {
        visitRing(part.outline);
        for (const Points& hole : part.voids) visitRing(hole);
    }
}

// The integrals of 1, x, y, y^2, x^2 and x y over a region about a point, in the frame.
template <typename Number>
struct Sums {
    Number area = 0.0, x = 0.0, y = 0.0, yy = 0.0, xx = 0.0, xy = 0.0;

    static Sums Over(const Region& region, const Point& about) {
        const Number left = about.x;
        const Number bottom = about.y;
        Sums sum;
        VisitEdges(region, [&](const Point& from, const Point& to) {
            const Number px = Number(from.x) - left, py = Number(from.y) - bottom;
            const Number qx = Number(to.x) - left, qy = Number(to.y) - bottom;
            const Number cross = px * qy - qx * py;
            const Number sumX = px + qx;
            const Number sumY = py + qy;
            sum.area += cross;
            sum.x += cross * sumX;
            sum.y += cross * sumY;
            sum.yy += cross * (sumY * sumY - py * qy);
            sum.xx += cross * (sumX * sumX - px * qx);
            sum.xy += cross * (sumX * sumY + px * py + qx * qy);
        });
        return {sum.area / Number(2.0), sum.x / Number(6.0),   sum.y / Number(6.0),
                sum.yy / Number(12.0),  sum.xx / Number(12.0), sum.xy / Number(24.0)};
    }
};

// The same about the centre of gravity.
struct CentralMoments {
    double area;
    Point centroid;
    double x, y, xy, second;

    template <typename Number>
    static CentralMoments Of(const Sums<Number>& sums, const Point& about) {
        const Number x = sums.x / sums.area;
        const Number y = sums.y / sums.area;
        const Number xx = sums.yy - y * sums.y;
        const Number yy = sums.xx - x * sums.x;
        const Number xy = sums.xy - x * sums.y;
        CentralMoments moments{
            static_cast<double>(sums.area),
            {static_cast<double>(Number(about.x) + x), static_cast<double>(Number(about.y) + y)},
            static_cast<double>(xx),
            static_cast<double>(yy),
            static_cast<double>(xy),
            0.0};
        const double first = PrincipalInertiasOf(moments.x, moments.y, moments.xy).first;
        if (first > 0.0) moments.second = static_cast<double>((xx * yy - xy * xy) / Number(first));
        return moments;
    }
};

struct Extent {
    double left = std::numeric_limits<double>::infinity();
    double bottom = left;
    double right = -left;
    double top = -left;
    std::size_t points = 0;

    static Extent Of(const Region& region) {
        Extent extent;
        VisitEdges(region, [&](const Point& point, const Point&) {
            extent.left = std::min(extent.left, point.x);
            extent.bottom = std::min(extent.bottom, point.y);
            extent.right = std::max(extent.right, point.x);
            extent.top = std::max(extent.top, point.y);
            ++extent.points;
        });
        return extent;
    }
    double Width() const { return right - left; }
    double Height() const { return top - bottom; }
};

// Whether sums in doubles about a point within leave more digits than any table shows.
bool HasDigits(const CentralMoments& moments, const Extent& extent) {
    constexpr double kEnough = 1e-11;  // relative
    const double roundings = kUnit * (8.0 + 0.5 * std::sqrt(static_cast<double>(extent.points)));
    const double width = extent.Width();
    const double height = extent.Height();
    const double box = roundings * width * height;
    return box <= kEnough * moments.area && box * height * height <= kEnough * moments.x &&
           box * width * width <= kEnough * moments.y &&
           box * std::min(width, height) * std::max(width, height) <= kEnough * moments.second;
}

CentralMoments CentralMomentsOf(const Region& region, const Extent& extent) {
    Point about = {0.5 * (extent.left + extent.right), 0.5 * (extent.bottom + extent.top)};
    const CentralMoments rough = CentralMoments::Of(Sums<double>::Over(region, about), about);
    if (HasDigits(rough, extent)) {
        about = rough.centroid;
        return CentralMoments::Of(Sums<double>::Over(region, about), about);
    }
    return CentralMoments::Of(Sums<DoubleDouble>::Over(region, about), about);
}

// What a shift of every edge changes: integrals along the edges of 1, |x|, |y|, y^2, x^2 and x y
// about the centre of gravity, times how far each moves across itself.
struct EdgeSums {
    double length = 0.0, x = 0.0, y = 0.0, yy = 0.0, xx = 0.0, xy = 0.0;

    // @param shift  of each coordinate at most
    static EdgeSums Along(const Region& region, const Point& about, const Point& shift) {
        EdgeSums sum;
        VisitEdges(region, [&](const Point& from, const Point& to) {
            const Point p = from - about;
            const Point q = to - about;
            const double swept = shift.x * std::fabs(q.y - p.y) + shift.y * std::fabs(q.x - p.x);
            sum.length += swept;
            sum.x += swept * 0.5 * (std::fabs(p.x) + std::fabs(q.x));
            sum.y += swept * 0.5 * (std::fabs(p.y) + std::fabs(q.y));
            sum.yy += swept * (p.y * p.y + p.y * q.y + q.y * q.y) / 3.0;
            sum.xx += swept * (p.x * p.x + p.x * q.x + q.x * q.x) / 3.0;
            sum.xy += swept * (2.0 * (p.x * p.y + q.x * q.y) + p.x * q.y + q.x * p.y) / 6.0;
        });
        return sum;
    }
};

// A value that is 0 but for rounding, when a tenth of it is no more than its error or when it is
// nothing beside its scale.
double Cleared(double value, double error, double scale) {
    constexpr double kNothing = 1e-12;
    return std::fabs(value) <= std::max(10.0 * error, kNothing * scale) ? 0.0 : value;
}

// What the difference of a larger moment and a smaller one rounds by, in parts of the larger one.
constexpr double kDifference = 8.0 * kUnit;

// Adds second moments and errors of a region to sums about another point than its own.
void AddAbout(const Point& about, const Moments& own, double weight, Moments* sum) {
    const Point arm = own.centroid - about;
    const double x = std::fabs(arm.x);
    const double y = std::fabs(arm.y);
    sum->inertiaX += weight * (own.inertiaX + own.area * y * y);
    sum->inertiaY += weight * (own.inertiaY + own.area * x * x);
    sum->inertiaXY += weight * (own.inertiaXY + own.area * arm.x * arm.y);
    sum->firstXError += weight * (own.firstXError + x * own.areaError);
    sum->firstYError += weight * (own.firstYError + y * own.areaError);
    const double ofX = own.inertiaXError + 2.0 * y * own.firstYError + y * y * own.areaError;
    const double ofY = own.inertiaYError + 2.0 * x * own.firstXError + x * x * own.areaError;
    sum->inertiaXError += weight * ofX;
    sum->inertiaYError += weight * ofY;
    sum->inertiaXYError += weight * std::sqrt(ofX) * std::sqrt(ofY);
}

// How far the coordinates of a region may be from what was meant, in the frame.
Point CoordinateError(const Region& region, const Extent& extent) {
    constexpr double kDrawn = 4.0 * kUnit;  // a rotation or an arc rounds some times
    const Frame& frame = region.frame;
    const Point low = frame.FromFrame({extent.left, extent.bottom});
    const Point high = frame.FromFrame({extent.right, extent.top});
    return {std::ldexp(kDrawn * std::max(std::fabs(low.x), std::fabs(high.x)), -frame.exponent),
            std::ldexp(kDrawn * std::max(std::fabs(low.y), std::fabs(high.y)), -frame.exponent)};
}

}  // namespace

Moments MomentsOf(const Region& region) {
    const Extent extent = Extent::Of(region);
    const CentralMoments own = CentralMomentsOf(region, extent);
    const EdgeSums errors = EdgeSums::Along(region, own.centroid, CoordinateError(region, extent));
    const double axis = PrincipalInertiasOf(own.x, own.y, own.xy).angle;
    const double s = std::sin(axis);
    const double c = std::cos(axis);
    const int power = region.frame.exponent;
    const auto told = [power](double value, int dimension) {
        return std::ldexp(value, dimension * power);
    };

    Moments moments;
    moments.area = told(own.area, 2);
    moments.areaError = told(errors.length, 2);
    moments.firstXError = told(errors.x, 3);
    moments.firstYError = told(errors.y, 3);
    moments.inertiaX = told(own.x, 4);
    moments.inertiaXError = told(errors.yy, 4);
    moments.inertiaY = told(own.y, 4);
    moments.inertiaYError = told(errors.xx, 4);
    moments.inertiaXYError = told(std::sqrt(errors.xx) * std::sqrt(errors.yy), 4);
    moments.inertiaXY = Cleared(told(own.xy, 4), moments.inertiaXYError,
                                told(std::sqrt(own.x) * std::sqrt(own.y), 4));
    moments.second = told(own.second, 4);
    moments.secondError = told(s * s * errors.yy + c * c * errors.xx + 2.0 * s * c * errors.xy, 4);
    const Point centroid = region.frame.FromFrame(own.centroid);
    moments.centroid = {
        Cleared(centroid.x, moments.firstXError / moments.area, told(extent.Width(), 1)),
        Cleared(centroid.y, moments.firstYError / moments.area, told(extent.Height(), 1))};
    moments.toBottom = told(own.centroid.y - extent.bottom, 1);
    moments.toTop = told(extent.top - own.centroid.y, 1);
    moments.toLeft = told(own.centroid.x - extent.left, 1);
    moments.toRight = told(extent.right - own.centroid.x, 1);
    return moments;
}

Moments SumOf(std::span<const WeightedMoments> levels) {
    const Moments& all = levels.back().moments;
    Moments sum;
    Point first;  // moments about the centre of gravity of all, so that little cancels far away
    for (const auto& [own, weight] : levels) {
        sum.area += weight * own.area;
        sum.areaError += weight * own.areaError;
        first = first + weight * own.area * (own.centroid - all.centroid);
    }
    const Point shift = (1.0 / sum.area) * first;
    sum.centroid = all.centroid + shift;
    for (const auto& [own, weight] : levels) AddAbout(sum.centroid, own, weight, &sum);
    sum.toBottom = all.toBottom + shift.y;
    sum.toTop = all.toTop - shift.y;
    sum.toLeft = all.toLeft + shift.x;
    sum.toRight = all.toRight - shift.x;
    sum.centroid = {Cleared(sum.centroid.x, sum.firstXError / sum.area, sum.toLeft + sum.toRight),
                    Cleared(sum.centroid.y, sum.firstYError / sum.area, sum.toBottom + sum.toTop)};
    sum.inertiaXY = Cleared(sum.inertiaXY, sum.inertiaXYError,
                            std::sqrt(sum.inertiaX) * std::sqrt(sum.inertiaY));
    const PrincipalInertias axes = PrincipalInertiasOf(sum.inertiaX, sum.inertiaY, sum.inertiaXY);
    sum.second = axes.second;
    // The product of both axes' errors bounds that of the product moment, as for the integrals.
    const double across = std::fabs(std::sin(axes.angle)) * std::sqrt(sum.inertiaXError) +
                          std::fabs(std::cos(axes.angle)) * std::sqrt(sum.inertiaYError);
    sum.secondError = across * across + kDifference * axes.first;
    return sum;
}

}  // namespace halvorn::engine
