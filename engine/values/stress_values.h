/// @file stress_values.h
/// The largest stresses under forces as reported values.
#ifndef HALVORN_ENGINE_VALUES_STRESS_VALUES_H
#define HALVORN_ENGINE_VALUES_STRESS_VALUES_H

#include <array>
#include <string>

#include "values/report.h"
#include "warping/stresses.h"

namespace halvorn::engine {

/// A force on a section and what it is called: "N", "Mx", in the command line too.
struct ForceDescription {
    const char* name;
    double SectionForces::*force;
    bool isMoment;  ///< in F L, else in F
};

/// All forces, in reading order.
inline constexpr std::array<ForceDescription, 6> kForces = {{
    {"N", &SectionForces::n, false},
    {"Mx", &SectionForces::mx, true},
    {"My", &SectionForces::my, true},
    {"Vx", &SectionForces::vx, false},
    {"Vy", &SectionForces::vy, false},
    {"T", &SectionForces::t, true},
}};

/// Returns why a report has no stresses at points, or nothing when it has.
/// @pre `warping` of the report is there, or `whyNoWarping`
std::string WhyNoStresses(const Report& report);

/// Adds the largest stresses under the forces of the report, or the reason why there are none. The
/// normal stress takes no solution of shear: parts apart have it, as one bar.
/// @pre `forces` of the report are there, and `warping` or `whyNoWarping`
void AddStresses(Report* report);

/// Fills the largest stresses of a report in.
/// @pre its stresses are there without numbers
void SetStresses(const Stresses& stresses, Report* report);

}  // namespace halvorn::engine

#endif
