#include "section_rounding.h"

#include <cmath>

namespace halvorn::python {

namespace {

constexpr double kUnit = 0.5 * std::numeric_limits<double>::epsilon();

// An area of points on one line, for the rounding of their coordinates along the edges.
constexpr double kAreaSums = 8.0;

// The library's tolerance for an area [L^2] (docs/conventions.md).
constexpr double kZeroArea = 1e-15;

// Of one bound to another [-]: a digit.
constexpr double kMuchWorse = 10.0;

// The roundings of many points add up like those of a random walk (docs/theory.md, Rounding of
// class values).
double RoundingsOf(std::size_t points) {
    return kUnit * (8.0 + 0.5 * std::sqrt(static_cast<double>(points)));
}

}  // namespace

void SectionRounding::AddContour(const double* coordinates, std::size_t count, bool isSolid) {
    Range x;
    Range y;
    double path = 0.0;
    double area2 = 0.0;
    const double* before = coordinates + 2 * (count - 1);
    for (const double* point = coordinates; point != coordinates + 2 * count; point += 2) {
        x.Add(point[0]);
        y.Add(point[1]);
        path += std::fabs(point[0] - before[0]) + std::fabs(point[1] - before[1]);
        area2 +=
            ((before[0] - coordinates[0]) + (point[0] - coordinates[0])) * (point[1] - before[1]);
        before = point;
    }
    const double area = 0.5 * std::fabs(area2);
    areaRounding_ += kAreaSums * kUnit * std::max(x.Farthest(), y.Farthest()) * path;
    if (area <= kZeroArea) neglectedArea_ += area;
    AddShare(x, y, RoundingsOf(count) * x.Size() * y.Size());
    AddToBox(x, y);
    hasContour_ = true;
    hasHole_ = hasHole_ || !isSolid;
}

void SectionRounding::AddProfile(const double* coordinates, std::size_t count, bool isSolid,
                                 const GivenProfile& given) {
    Range x;
    Range y;
    for (std::size_t i = 0; i < 2 * count; i += 2) {
        x.Add(coordinates[i]);
        y.Add(coordinates[i + 1]);
    }
    AddToBox(x, y);
    // What is given is as it stands. What places, turns and adds it rounds.
    AddShare({given.x, given.x}, {given.y, given.y}, RoundingsOf(1) * std::fabs(given.area));
    givenInertia_ += std::fabs(given.inertia1) + std::fabs(given.inertia2);
    hasProfile_ = true;
    hasHole_ = hasHole_ || !isSolid;
}

void SectionRounding::AddShare(const Range& x, const Range& y, double area) {
    const double reachX = x.Farthest() + x.Size();
    const double reachY = y.Farthest() + y.Size();
    shares_ += area;
    firstX_ += area * reachX;
    firstY_ += area * reachY;
    inertiaX_ += area * reachY * reachY;
    inertiaY_ += area * reachX * reachX;
    inertiaXY_ += area * reachX * reachY;
}

void SectionRounding::AddToBox(const Range& x, const Range& y) {
    boxX_.Add(x.low);
    boxX_.Add(x.high);
    boxY_.Add(y.low);
    boxY_.Add(y.high);
}

ValueRounding SectionRounding::Bounds(double area) const {
    const double net = std::fabs(area);
    const double turn = RoundingsOf(1) * givenInertia_;
    return {areaRounding_,    firstX_ / net,    firstY_ / net,
            inertiaX_ + turn, inertiaY_ + turn, inertiaXY_ + turn};
}

bool SectionRounding::IsByDistance(const ValueRounding& bounds,
                                   double ValueRounding::*inertia) const {
    // From the middle to a side of the box and, from there, across all of it.
    const double width = 1.5 * boxX_.Size();
    const double height = 1.5 * boxY_.Size();
    const double turn = RoundingsOf(1) * givenInertia_;
    const ValueRounding atHome = {.inertiaX = shares_ * height * height + turn,
                                  .inertiaY = shares_ * width * width + turn};
    return bounds.*inertia > kMuchWorse * (atHome.*inertia);
}

bool SectionRounding::IsOutside(double x, double y, const ValueRounding& bounds) const {
    return x < boxX_.low - bounds.centroidX || x > boxX_.high + bounds.centroidX ||
           y < boxY_.low - bounds.centroidY || y > boxY_.high + bounds.centroidY;
}

}  // namespace halvorn::python
