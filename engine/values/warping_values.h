/// @file warping_values.h
/// Torsion, warping and shear as reported values.
#ifndef HALVORN_ENGINE_VALUES_WARPING_VALUES_H
#define HALVORN_ENGINE_VALUES_WARPING_VALUES_H

#include <string_view>

#include "values/report.h"

namespace halvorn::engine {

/// Why there is no solution when nothing else says so.
inline constexpr const char* kNoWarpingAsked =
    "it takes a solution over the whole section; --warping asks for it in a batch";

/// Why parts apart have no values that belong to one section.
inline constexpr const char* kPartsApart =
    "the section is in parts that share no edge, and so has no shear centre; join them, or take "
    "each as a section of its own";

/// Whether a value comes from the solution of torsion, warping and shear.
bool IsOfWarping(std::string_view key);

/// Fills in the values of torsion, warping and shear, which are in the report without numbers, and
/// adds what is found about them.
///
/// - Torsion constant and shear stiffness areas: the middle between two bounds; of a Poisson's
///   ratio above 0 the areas are estimates.
/// - Shear centre and monosymmetry constants: within a bound of the error. A shear centre that
///   differs from the origin, or from the centre of gravity, by no more than rounding is there.
/// - Torsion modulus and warping constant: estimates with their error.
///
/// To each bound and error is added what the rounding of the coordinates can change.
///
/// @pre `warping` of the report is there, or `whyNoWarping`
void AddWarpingValues(Report* report);

/// Adds a warning for bounds wider than was asked for, and a remark that names the corners at which
/// the stress of torsion has no bound.
/// @pre `warping` of the report is there
void AddWarpingFindings(Report* report);

}  // namespace halvorn::engine

#endif
