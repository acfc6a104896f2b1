/// @file class_values.h
/// The outputs of the library's class as values.
#ifndef HALVORN_ENGINE_VALUES_CLASS_VALUES_H
#define HALVORN_ENGINE_VALUES_CLASS_VALUES_H

#include "values/report.h"

namespace halvorn::engine {

/// What the values of the class are, one sentence.
inline constexpr const char* kClassValuesAre =
    "the outputs of CSectionTools as they stand: holes count as area in the plastic moduli, and "
    "torsion and shear values of drawn contours are those of ellipses";
inline constexpr const char* kPolylineValuesAre =
    "the outputs of CSectionTools for a polyline as they stand: second moments are about the "
    "origin, and a closed wall's centre of gravity is that of all within its outer face";

/// Fills in the outputs of the class for a section, and a remark where its sums lose digits that a
/// table shows.
/// @pre section and shift of the report are there
void AddClassValues(Report* report);

}  // namespace halvorn::engine

#endif
