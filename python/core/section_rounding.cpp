#include "section_rounding.h"

#include <cmath>
#include <utility>

namespace halvorn::python {

namespace {

constexpr double kUnit = 0.5 * std::numeric_limits<double>::epsilon();

// Units in the last place of what is summed (docs/theory.md, Integrals over a contour).
constexpr double kMomentSums = 16.0;

// An area of points on one line, for the rounding of their coordinates along the edges.
constexpr double kAreaSums = 8.0;

// The library's tolerance for an area [L^2] (docs/conventions.md).
constexpr double kZeroArea = 1e-15;

}  // namespace

void SectionRounding::AddContour(const double* coordinates, std::size_t count) {
    Range x;
    Range y;
    double pathX = 0.0;
    double pathY = 0.0;
    double area2 = 0.0;
    const double* before = coordinates + 2 * (count - 1);
    for (const double* point = coordinates; point != coordinates + 2 * count; point += 2) {
        x.Add(point[0]);
        y.Add(point[1]);
        pathX += std::fabs(point[0] - before[0]);
        pathY += std::fabs(point[1] - before[1]);
        area2 +=
            ((before[0] - coordinates[0]) + (point[0] - coordinates[0])) * (point[1] - before[1]);
        before = point;
    }
    const double area = 0.5 * std::fabs(area2);
    grossArea_ += area;
    contourScale_ += x.Size() * pathY + y.Size() * pathX;
    areaRounding_ += kAreaSums * kUnit * std::max(x.Farthest(), y.Farthest()) * (pathX + pathY);
    if (area <= kZeroArea) neglectedArea_ += area;
    for (const auto& [whole, part] : {std::pair(&x_, &x), std::pair(&y_, &y)}) {
        whole->Add(part->low);
        whole->Add(part->high);
    }
    hasContour_ = true;
}

void SectionRounding::AddProfile(const double* coordinates, std::size_t count, double x, double y,
                                 double area, double inertia1, double inertia2) {
    for (std::size_t i = 0; i < 2 * count; i += 2) {
        x_.Add(coordinates[i]);
        y_.Add(coordinates[i + 1]);
    }
    x_.Add(x);
    y_.Add(y);
    grossArea_ += std::fabs(area);
    givenInertia_ += std::fabs(inertia1) + std::fabs(inertia2);
}

ValueRounding SectionRounding::Bounds(double area) const {
    const double x = x_.Farthest();
    const double y = y_.Farthest();
    const double width = x_.Size();
    const double height = y_.Size();
    const double unit = kMomentSums * kUnit;
    const double net = std::fabs(area);
    const auto inertia = [&](double momentArm, double size) {
        return unit * (grossArea_ * momentArm + contourScale_ * size + givenInertia_);
    };
    return {areaRounding_,
            unit * (grossArea_ * x + contourScale_ * width) / net,
            unit * (grossArea_ * y + contourScale_ * height) / net,
            inertia(y * y, height * height),
            inertia(x * x, width * width),
            inertia(x * y, width * height)};
}

}  // namespace halvorn::python
