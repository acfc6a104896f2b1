#include "values/stress_values.h"

#include <cmath>

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
    "the result is not a finite number: the forces are too large";

std::string WhyNoStresses(const Report& report) {
    if (report.transformed) return kNoStressesOfComposite;
    if (report.warping == nullptr) return report.whyNoWarping;
    return report.warping->values.isOnePart ? "" : kPartsApart;
}

}  // namespace

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

void AddStresses(Report* report) {
    const std::string why = WhyNoStresses(*report);
    for (const ValueDescription& description : kStresses) {
        Value value = DescribedValue(description, report->section.unit);
        value.unit = "F/" + report->section.unit + "^2";
        value.whyMissing = why;
        report->stresses.push_back({value, {}});
    }
    if (why.empty()) SetStresses(LargestStresses(*report->warping, *report->forces), report);
}

}  // namespace halvorn::engine
