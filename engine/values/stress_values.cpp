#include "values/stress_values.h"

#include <cmath>

#include "region/moments.h"
#include "values/composite_values.h"
#include "values/values.h"
#include "values/warping_values.h"

namespace halvorn::engine {

namespace {

constexpr std::array<ValueDescription, 3> kStresses = {{
    {"normal", "Largest normal stress", "sigma", -2},
    {"shear", "Largest shear stress", "tau", -2},
    {"von_mises", "Largest von Mises stress", "sigma,v", -2},
}};

constexpr const char* kForcesTooLarge =
    "the result is not a finite number: forces or section are too large or too small";

// The largest at a vertex, from area and second moments.
PeakStress LargestNormal(const Region& region, const SectionForces& forces) {
    const Moments m = MomentsOf(region);
    // In parts of their sum the second moments of no size overflow.
    const double sum = m.inertiaX + m.inertiaY;
    const double xx = m.inertiaX / sum, yy = m.inertiaY / sum, xy = m.inertiaXY / sum;
    const double determinant = xx * yy - xy * xy;
    const Point slopes{(xx * forces.my - xy * forces.mx) / determinant / sum,
                       (yy * forces.mx - xy * forces.my) / determinant / sum};
    PeakStress largest;
    for (const Part& part : region.parts) {
        for (const Point& vertex : part.outline) {
            const Point at = region.frame.FromFrame(vertex);
            const double stress = forces.n / m.area + Dot(slopes, at - m.centroid);
            if (!(std::fabs(stress) > std::fabs(largest.stress.value))) continue;
            largest = {{stress, 0.0}, at};
        }
    }
    return largest;
}

}  // namespace

std::string WhyNoStresses(const Report& report) {
    if (report.transformed) return kNoStressesOfComposite;
    if (report.warping == nullptr) return report.whyNoWarping;
    return report.warping->values.isOnePart ? "" : kPartsApart;
}

void SetStresses(const Stresses& stresses, Report* report) {
    const PeakStress* const peaks[] = {&stresses.normal, &stresses.shear, &stresses.vonMises};
    for (std::size_t i = 0; i < kStresses.size(); ++i) {
        const Estimate& stress = peaks[i]->stress;
        Value& value = report->stresses[i].value;
        value.number = stress.value + 0.0;  // no value is -0
        value.error = stress.error;
        value.method = "estimate";
        if (!std::isfinite(value.number) || !std::isfinite(stress.error)) {
            value.whyMissing = kForcesTooLarge;
        }
        std::optional<Point>& place = report->stresses[i].place;
        place.reset();
        if (value.IsComputed() && value.number != 0.0) place = peaks[i]->place;
    }
}

namespace {

// Without shear forces and torque the von Mises stress is the normal one.
void SetNormalAlone(Report* report) {
    const SectionForces& forces = *report->forces;
    const PeakStress normal = LargestNormal(report->region, forces);
    const std::string why = report->stresses.front().value.whyMissing;
    for (LargestStress& stress : report->stresses) stress.value.whyMissing.clear();
    const double magnitude = std::fabs(normal.stress.value);
    SetStresses({normal, {{}, normal.place}, {{magnitude, 0.0}, normal.place}}, report);
    if (forces.vx == 0.0 && forces.vy == 0.0 && forces.t == 0.0) return;
    for (std::size_t i = 1; i < report->stresses.size(); ++i) {
        report->stresses[i].value.whyMissing = why;
        report->stresses[i].place.reset();
    }
}

}  // namespace

void AddStresses(Report* report) {
    const std::string why = WhyNoStresses(*report);
    for (const ValueDescription& description : kStresses) {
        Value value = DescribedValue(description, report->section.unit);
        value.unit = "F/" + report->section.unit + "^2";
        value.whyMissing = why;
        report->stresses.push_back({value, {}});
    }
    if (why.empty()) {
        SetStresses(LargestStresses(*report->warping, *report->forces), report);
    } else if (!report->transformed && report->whyNoRegion.empty()) {
        SetNormalAlone(report);
    }
}

}  // namespace halvorn::engine
