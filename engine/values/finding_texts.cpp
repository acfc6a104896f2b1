#include <algorithm>

#include "HalvornEngine.h"
#include "base/text.h"

namespace halvorn::engine {

const char* SeverityName(Severity severity) {
    switch (severity) {
        case Severity::Error:
            return "error";
        case Severity::Warning:
            return "warning";
        case Severity::Remark:
            return "remark";
        case Severity::Hint:
            break;
    }
    return "hint";
}

const char* KindName(FindingKind kind) {
    switch (kind) {
        case FindingKind::TooFewPoints:
            return "too_few_points";
        case FindingKind::RepeatedPoint:
            return "repeated_point";
        case FindingKind::StraightVertex:
            return "straight_vertex";
        case FindingKind::Spike:
            return "spike";
        case FindingKind::NoArea:
            return "no_area";
        case FindingKind::SelfCrossing:
            return "self_crossing";
        case FindingKind::RepeatedTurn:
            return "repeated_turn";
        case FindingKind::Overlap:
            return "overlap";
        case FindingKind::HoleOutside:
            return "hole_outside";
        case FindingKind::NearMiss:
            return "near_miss";
        case FindingKind::SetOnto:
            return "set_onto";
        case FindingKind::Pinch:
            return "pinch";
        case FindingKind::PartsApart:
            return "parts_apart";
        case FindingKind::GivenValues:
            return "given_values";
        case FindingKind::SmallForClass:
            return "small_for_class";
        case FindingKind::LostDigits:
            return "lost_digits";
        case FindingKind::LostDigitsOfClass:
            return "lost_digits_of_class";
        case FindingKind::NotArranged:
            return "not_arranged";
        case FindingKind::WideBounds:
            return "wide_bounds";
        case FindingKind::SharpCorners:
            return "sharp_corners";
        case FindingKind::PublishedDiffers:
            return "published_differs";
        case FindingKind::Composite:
            return "composite";
        case FindingKind::Reading:
            break;
    }
    return "reading";
}

std::string FindingText(const Finding& finding) {
    return SingleLine(finding.element + ": " + finding.problem +
                      (finding.mend.empty() ? "" : "; " + finding.mend));
}

std::string FindingsText(const std::vector<Finding>& findings) {
    if (findings.empty()) return "nothing found\n";
    std::string text;
    for (const Finding& finding : findings) {
        text += SeverityName(finding.severity) + (": " + FindingText(finding)) + '\n';
    }
    return text;
}

const Finding* FindFinding(const std::vector<Finding>& findings, FindingKind kind) {
    const auto found = std::find_if(findings.begin(), findings.end(),
                                    [&](const Finding& finding) { return finding.kind == kind; });
    return found == findings.end() ? nullptr : &*found;
}

}  // namespace halvorn::engine
