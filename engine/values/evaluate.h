/// @file evaluate.h
/// From a section to everything that is known about it.
#ifndef HALVORN_ENGINE_VALUES_EVALUATE_H
#define HALVORN_ENGINE_VALUES_EVALUATE_H

#include "values/report.h"

namespace halvorn::engine {

/// Computes all values of a section but those of torsion, warping and shear, which are missing with
/// the option that asks for them; `shift` has no meaning for the class's values of a polyline.
/// @param wantsClassValues  else the outputs of the class are left out, and what is found about
/// them
/// @throws InputError for a section that `isDrawn` with an outline that crosses itself
Report Evaluate(const SectionModel& section, const Shift& shift, bool wantsClassValues = true);

/// Solves torsion, warping and shear: adds their values to a report, the largest stresses when
/// there are forces, and what is found about them.
/// @param options  tolerance, Poisson's ratio, forces and interruption, all in range
void AddWarping(const EvaluateOptions& options, Report* report);

/// Returns what `Evaluate` finds, of outlines that cross themselves too.
std::vector<Finding> Diagnose(SectionModel section);

/// Adds the halves of the section about both plastic axes to its report.
void AddHalves(Report* report);

}  // namespace halvorn::engine

#endif
