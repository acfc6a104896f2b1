/// @file finding.h
/// What is doubtful about a section, and what its reader should know.
#ifndef HALVORN_ENGINE_VALUES_FINDING_H
#define HALVORN_ENGINE_VALUES_FINDING_H

#include <optional>
#include <string>
#include <vector>

#include "geometry/point.h"

namespace halvorn::engine {

enum class Severity {
    Hint,     ///< harmless for the values: a straight vertex
    Remark,   ///< to be known: a part that touches no other
    Warning,  ///< the values may not be what is meant: solids overlap
    Error     ///< the values are not what is meant: a ring crosses itself
};

/// What is found, for programs; these never change once released.
enum class FindingKind {
    TooFewPoints,       ///< a ring has fewer than three different points
    RepeatedPoint,      ///< a point repeats the one before
    StraightVertex,     ///< a vertex lies straight between its neighbours
    Spike,              ///< an edge runs back over the one before
    NoArea,             ///< a ring, or the section, encloses no area
    SelfCrossing,       ///< a ring crosses itself, or runs round a part of it the other way
    RepeatedTurn,       ///< a ring runs round a part of its area more than once
    Overlap,            ///< solids overlap, or holes within a solid
    HoleOutside,        ///< a hole takes what is not there
    NearMiss,           ///< outlines nearly touch
    SetOnto,            ///< a vertex was set onto another outline
    Pinch,              ///< material hangs together in one point only
    PartsApart,         ///< parts of the material share no edge
    GivenValues,        ///< given values contradict their outline
    SmallForClass,      ///< the class's fixed tolerances are too coarse
    LostDigits,         ///< rounding has taken digits of the values
    LostDigitsOfClass,  ///< likewise of class_values
    NotArranged,        ///< nothing tells what the outlines mean
    Reading             ///< the reader left something out or took it for granted
};

struct Finding {
    Severity severity = Severity::Remark;
    FindingKind kind = FindingKind::Reading;
    std::string element;         ///< label of the element, or the source of the section
    std::string problem;         ///< what and where, amounts in the section's unit
    std::string mend;            ///< what to do about it; may be empty
    std::optional<Point> place;  ///< [L]
};

/// Returns "error", "warning", "remark" or "hint".
const char* SeverityName(Severity severity);

/// Returns a kind as programs read it: "self_crossing".
const char* KindName(FindingKind kind);

/// Returns a finding as one line without its severity: element, problem, mend.
std::string FindingText(const Finding& finding);

/// Returns all findings as lines for people; "nothing found" when there are none.
std::string FindingsText(const std::vector<Finding>& findings);

}  // namespace halvorn::engine

#endif
