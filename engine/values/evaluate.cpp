#include "values/evaluate.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "HalvornEngine.h"
#include "geometry/place_text.h"
#include "model/composite.h"
#include "model/outlines.h"
#include "region/moments.h"
#include "values/class_values.h"
#include "values/composite_values.h"
#include "values/digits.h"
#include "values/findings.h"
#include "values/plastic_halves.h"
#include "values/published.h"
#include "values/region_values.h"
#include "values/stress_values.h"
#include "values/values.h"
#include "values/warping_values.h"
#include "warping/warping.h"

namespace halvorn::engine {

namespace {

void AddRegion(Report* report) {
    try {
        report->region = RegionOf(OutlinesOf(report->section.elements));
        if (report->region.IsEmpty()) report->whyNoRegion = kNoArea;
        if (report->whyNoRegion.empty() && IsComposite(report->section.elements)) {
            report->transformed = TransformedMoments(report->section.elements, report->region);
        }
    } catch (const ArrangementError& error) {
        report->whyNoRegion = error.what();
    }
}

// Drawings and points are meant as they look, and a loop looks like material.
void RefuseSelfCrossing(const Report& report) {
    if (!report.section.isDrawn) return;
    const Finding* const crossing = FindSelfCrossing(report.findings);
    if (crossing == nullptr) return;
    throw InputError(report.section.source, crossing->element,
                     "crosses itself at " + PlaceText(*crossing->place), crossing->mend);
}

void KeepDigitsOfHalves(const Moments& moments, AxisDirection direction, PlasticHalves* halves) {
    const double across =
        direction == AxisDirection::Horizontal ? moments.firstYError : moments.firstXError;
    const double half = 0.5 * moments.area;
    const auto clear = [&](double& coordinate, double extent) {
        constexpr double kNothing = 1e-12;
        if (std::fabs(coordinate) <= kNothing * extent) coordinate = 0.0;
    };
    for (PlasticHalf& side : halves->sides) {
        clear(side.centroid.x, moments.toLeft + moments.toRight);
        clear(side.centroid.y, moments.toBottom + moments.toTop);
        const bool hasDigits = KeepDigits(moments.areaError, &side.area) &&
                               KeepDigits(moments.firstXError / half, &side.centroid.x) &&
                               KeepDigits(moments.firstYError / half, &side.centroid.y) &&
                               KeepDigits(across / half, &side.leverArm);
        if (halves->whyMissing.empty() && !hasDigits) {
            halves->whyMissing = "rounding of the coordinates leaves no digit of the halves";
        }
    }
}

void SortFindings(Report* report) {
    std::stable_sort(report->findings.begin(), report->findings.end(),
                     [](const Finding& a, const Finding& b) { return a.severity > b.severity; });
}

void LeaveOutFindingsOfClass(std::vector<Finding>* findings) {
    std::erase_if(*findings, [](const Finding& finding) {
        return finding.kind == FindingKind::SmallForClass;
    });
}

void Solve(const EvaluateOptions& options, Report* report) {
    if (report->transformed) {
        report->whyNoWarping = kNoWarpingOfComposite;
        return;
    }
    WarpingOptions wanted;
    wanted.tolerance = options.tolerance;
    wanted.poisson = options.poisson;
    wanted.isInterrupted = options.isInterrupted;
    try {
        report->warping =
            std::make_shared<const WarpingSolution>(SolveWarping(report->region, wanted));
    } catch (const WarpingError& error) {
        report->whyNoWarping = error.what();
    }
}

}  // namespace

Report Evaluate(const SectionModel& section, const Shift& shift, bool wantsClassValues) {
    if (section.elements.empty()) {
        throw InputError(section.source, "the section is empty", "give it an outline");
    }
    Report report;
    report.section = section;
    report.shift = shift;
    report.whyNoWarping = kNoWarpingAsked;
    AddRegion(&report);
    if (report.transformed) report.whyNoWarping = kNoWarpingOfComposite;
    report.findings = FindingsOf(report);
    RefuseSelfCrossing(report);
    AddRegionValues(&report);
    AddComposite(&report);
    AddPublished(&report);
    CompareWithPublished(&report);
    if (wantsClassValues) {
        AddClassValues(&report);
    } else {
        LeaveOutFindingsOfClass(&report.findings);
    }
    SortFindings(&report);
    return report;
}

void AddWarping(const EvaluateOptions& options, Report* report) {
    report->tolerance = options.tolerance;
    report->poisson = options.poisson;
    report->forces = options.forces;
    report->whyNoWarping = report->whyNoRegion;
    if (report->whyNoRegion.empty()) {
        Solve(options, report);
        AddWarpingValues(report);
        CompareWithPublished(report);
    }
    if (options.forces) AddStresses(report);
    SortFindings(report);
}

void AddHalves(Report* report) {
    report->halves.clear();
    const std::vector<Points> joined = JoinedRingsOf(report->region);
    const Moments moments = report->whyNoRegion.empty() ? MomentsOf(report->region) : Moments{};
    for (const AxisDirection direction : {AxisDirection::Horizontal, AxisDirection::Vertical}) {
        PlasticHalves& halves = report->halves.emplace_back();
        if (report->transformed) {
            halves.whyMissing = kNoPlasticOfComposite;
        } else if (report->whyNoRegion.empty()) {
            halves = HalvesOf(report->region, joined, direction);
            KeepDigitsOfHalves(moments, direction, &halves);
        } else {
            halves.whyMissing = report->whyNoRegion;
        }
    }
}

std::vector<Finding> Diagnose(SectionModel section) {
    section.isDrawn = false;
    return Evaluate(section, {}).findings;
}

const Value* FindValue(const std::vector<Value>& values, std::string_view key) {
    const auto value = std::find_if(values.begin(), values.end(),
                                    [&](const Value& other) { return other.key == key; });
    return value != values.end() && value->IsComputed() ? &*value : nullptr;
}

}  // namespace halvorn::engine
