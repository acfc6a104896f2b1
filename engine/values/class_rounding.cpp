#include "values/class_rounding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace halvorn::engine {

namespace {

constexpr double kUnit = 0.5 * std::numeric_limits<double>::epsilon();

// Measured on rings of 4 to 20000 points, turned and far from the origin: at most a half of it. The
// roundings of many points add up like those of a random walk.
double RoundingsOf(std::size_t points) {
    return kUnit * (8.0 + 0.5 * std::sqrt(static_cast<double>(points)));
}

// How far a box reaches from the origin and, from there, across itself.
std::pair<double, double> ReachOf(const Box& box) {
    return {std::max(std::fabs(box.left), std::fabs(box.right)) + (box.right - box.left),
            std::max(std::fabs(box.bottom), std::fabs(box.top)) + (box.top - box.bottom)};
}

// The share of one ring of `count` points. The area of its box bounds its own, and is the scale of
// what cancels in a slender one at an angle.
void AddRing(const Box& box, std::size_t count, SumRounding* sum) {
    const auto [x, y] = ReachOf(box);
    const double area = RoundingsOf(count) * (box.right - box.left) * (box.top - box.bottom);
    sum->firstX += area * x;
    sum->firstY += area * y;
    sum->inertiaX += area * y * y;
    sum->inertiaY += area * x * x;
    sum->inertiaXY += area * x * y;
}

// Given values are as they stand. What places, turns and adds them rounds.
void AddGiven(const GivenValues& given, const Box& box, SumRounding* sum) {
    const double area = RoundingsOf(1) * given.area;
    const auto [reachX, reachY] = ReachOf(box);
    sum->firstX += area * reachX;
    sum->firstY += area * reachY;
    const double x = std::fabs(given.centroidX);
    const double y = std::fabs(given.centroidY);
    sum->inertiaX += area * y * y;
    sum->inertiaY += area * x * x;
    sum->inertiaXY += area * x * y + RoundingsOf(1) * std::fabs(given.inertia1 - given.inertia2);
    const double turned = RoundingsOf(1) * std::fabs(std::sin(given.angle) * std::cos(given.angle));
    sum->turnedInertia += turned * (given.inertia1 + given.inertia2);
    sum->turnedShear += turned * (given.shearArea1.value_or(0.0) + given.shearArea2.value_or(0.0));
}

void ClearNumber(double most, double* number) {
    if (std::fabs(*number) <= most) *number = 0.0;
}

template <typename Outputs>
void ClearMoments(const SumRounding& rounding, Outputs* out) {
    if (!std::isfinite(out->area)) return;
    ClearNumber(rounding.firstX / std::fabs(out->area), &out->centroid.x);
    ClearNumber(rounding.firstY / std::fabs(out->area), &out->centroid.y);
    ClearNumber(rounding.inertiaXY, &out->inertiaXY);
}

}  // namespace

SumRounding RoundingOf(const Polyline& polyline) {
    Box box(polyline.points);
    box.left -= polyline.thickness;
    box.bottom -= polyline.thickness;
    box.right += polyline.thickness;
    box.top += polyline.thickness;
    constexpr std::size_t kPointsPerVertex = 12;  // a rounded corner on both faces
    SumRounding sum;
    AddRing(box, kPointsPerVertex * polyline.points.size(), &sum);
    return sum;
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

SumRounding RoundingOf(const std::vector<Element>& elements) {
    SumRounding sum;
    for (const Element& element : elements) {
        const Box box(element.ring);
        if (element.given) {
            AddGiven(*element.given, box, &sum);
        } else {
            AddRing(box, element.ring.size(), &sum);
        }
    }
    return sum;
}

void ClearRounding(const SumRounding& rounding, ClassOutputs* out) {
    ClearMoments(rounding, out);
    for (double* const inertia : {&out->inertiaX, &out->inertiaY}) {
        ClearNumber(rounding.turnedInertia, inertia);
    }
    for (double* const area : {&out->shearArea1, &out->shearArea2}) {
        ClearNumber(rounding.turnedShear, area);
    }
}

void ClearRounding(const SumRounding& rounding, PolylineOutputs* out) {
    ClearMoments(rounding, out);
}

}  // namespace halvorn::engine
