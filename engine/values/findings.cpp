#include "values/findings.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "geometry/rings.h"
#include "model/composite.h"
#include "values/region_findings.h"
#include "values/ring_findings.h"

namespace halvorn::engine {

namespace {

using Kind = FindingKind;

void LookAtGivenValues(const Element& element, std::vector<Finding>& findings) {
    constexpr double kAgreement = 0.1;
    if (!element.given || element.isWall) return;  // a wall's are computed
    const double drawn = AreaOf(element.ring);
    if (std::fabs(drawn - element.given->area) <= kAgreement * element.given->area) return;
    findings.push_back({Severity::Warning,
                        Kind::GivenValues,
                        element.label,
                        "its outline encloses " + ShortNumber(drawn) + ", the area given is " +
                            ShortNumber(element.given->area),
                        "values are of the outline, class_values of what is given: check both, and "
                        "their unit",
                        {}});
}

// The modular ratios of a section, some of many.
std::string RatiosText(const std::vector<Element>& elements) {
    constexpr std::size_t kMost = 5;
    const std::vector<double> ratios = ModularRatiosOf(elements);
    std::string text;
    for (std::size_t i = 0; i < std::min(kMost, ratios.size()); ++i) {
        text += (i == 0 ? "" : ", ") + ShortNumber(ratios[i]);
    }
    return ratios.size() > kMost ? text + ", ..." : text;
}

void TellComposite(const Report& report, std::vector<Finding>& findings) {
    if (!report.transformed) return;
    constexpr double kPrincipal = 1e-6;  // of the sum of the second moments
    const Moments& m = *report.transformed;
    const bool isOblique = std::fabs(m.inertiaXY) > kPrincipal * (m.inertiaX + m.inertiaY);
    findings.push_back(
        {Severity::Remark,
         Kind::Composite,
         report.section.source,
         "the section is composite, of modular ratios " + RatiosText(report.section.elements) +
             ": area, centre of gravity and second moments are transformed to ratio 1, and each "
             "elastic modulus is for the stress in the material of its fibre; another part may "
             "govern" +
             (isOblique ? ". As x and y are no principal axes, the moduli hold where the section "
                          "is held to bend about x or y alone; free of that, stresses are larger"
                        : ""),
         "",
         {}});
}

void LookForMissingRegion(const Report& report, std::vector<Finding>& findings) {
    const auto isError = [](const Finding& finding) { return finding.severity == Severity::Error; };
    if (report.whyNoRegion.empty() || std::any_of(findings.begin(), findings.end(), isError)) {
        return;
    }
    const bool isArranged = report.region.size > 0.0;
    findings.push_back({Severity::Error,
                        isArranged ? Kind::NoArea : Kind::NotArranged,
                        report.section.source,
                        report.whyNoRegion,
                        isArranged ? "look for missing points, and for holes that are too large"
                                   : "correct the coordinates, or bring the outlines into order",
                        {}});
}

}  // namespace

std::vector<Finding> FindingsOf(const Report& report) {
    const SectionModel& section = report.section;
    std::vector<Finding> findings;
    for (const Element& element : section.elements) {
        AddRingFindings(element, section.unit, &findings);
        LookAtGivenValues(element, findings);
    }
    AddRegionFindings(section, report.region, &findings);
    LookForMissingRegion(report, findings);
    TellComposite(report, findings);
    for (const std::string& remark : section.remarks) {
        findings.push_back({Severity::Remark, Kind::Reading, section.source, remark, "", {}});
    }
    return findings;
}

const Finding* FindSelfCrossing(const std::vector<Finding>& findings) {
    const auto found = std::find_if(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.kind == FindingKind::SelfCrossing;
    });
    return found == findings.end() ? nullptr : &*found;
}

}  // namespace halvorn::engine
