/// @file derived.h
/// What engineers read off the values of a section.
#ifndef HALVORN_ENGINE_VALUES_DERIVED_H
#define HALVORN_ENGINE_VALUES_DERIVED_H

#include <string>

#include "values/report.h"

namespace halvorn::engine {

/// Appends to `derived` what follows from the values of a section of elements (docs/theory.md).
///
/// - Principal inertias I1 >= I2 and the angle of the first axis, in degrees in (-90, 90]. Ixy, and
///   the difference Ix - Iy, count as 0 up to 1e-12 (Ix + Iy) or, when that is more, up to the
///   rounding of Ix and Iy together (`SumRounding`). An angle that no difference decides is 0. An
///   I2 of which rounding leaves no digit is missing for `whyNoDigits`.
/// - Radii of gyration about the axes x, y, 1 and 2.
/// - Plastic axes; gross ones where there is a hole, and then the net axes and moduli too, of the
///   material as it is (`Region`).
/// - Shape factors: plastic modulus, net where there is a hole, over the smaller elastic modulus
///   from the centre of gravity, whatever the shift.
/// - The sum of the thin-wall torsion constants when every solid has one.
/// - Mass per metre when the density is known.
///
/// @pre the values of the report are computed
void AddDerived(Report* report, const std::string& whyNoDigits);

}  // namespace halvorn::engine

#endif
