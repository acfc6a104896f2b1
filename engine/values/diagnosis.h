/// @file diagnosis.h
/// What is doubtful about a section before anything is computed.
#ifndef HALVORN_ENGINE_VALUES_DIAGNOSIS_H
#define HALVORN_ENGINE_VALUES_DIAGNOSIS_H

#include <string>
#include <vector>

#include "model/section_model.h"

namespace halvorn::engine {

enum class Severity {
    Remark,   ///< harmless: a straight vertex
    Warning,  ///< the values may not be what is meant: a hole outside its solid
    Error     ///< the values are wrong: a ring crosses itself
};

struct Finding {
    Severity severity = Severity::Remark;
    std::string element;  ///< label of the element
    std::string problem;  ///< what and where, with coordinates and amounts in the section's unit
    std::string remedy;   ///< what to do about it
};

/// Looks for repeated points, straight vertices, self-intersections, holes outside their solid,
/// overlapping solids, lost digits, rings without area, and sections without one or without
/// values.
std::vector<Finding> Diagnose(const SectionModel& section);

/// Returns the findings as lines for people, worst first; "nothing found" when there are none.
std::string FindingsText(const std::vector<Finding>& findings);

}  // namespace halvorn::engine

#endif
