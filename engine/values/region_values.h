/// @file region_values.h
/// What an engineer means by each symbol, from the region of a section.
#ifndef HALVORN_ENGINE_VALUES_REGION_VALUES_H
#define HALVORN_ENGINE_VALUES_REGION_VALUES_H

#include "values/report.h"

namespace halvorn::engine {

/// Fills in the values of a report and, where the rounding of coordinates takes digits that a table
/// shows, a warning (docs/theory.md, Values of the region).
///
/// - Area and centre of gravity; second moments, radii of gyration and elastic moduli about it. The
///   moduli are of the outermost fibres of the material, from the shifted reference point.
/// - Principal second moments I1 >= I2 and the angle of the first axis, in degrees in (-90, 90].
///   Ixy, and the difference Ix - Iy, count as 0 up to 1e-12 (Ix + Iy) or what rounding leaves of
///   them when that is more. An angle that no difference decides is 0.
/// - Plastic axes and moduli of the material as it is; shape factors, the plastic modulus over the
///   smaller elastic one from the centre of gravity, whatever the shift.
/// - Torsion, warping and shear are missing with `whyNoWarping`, until they are solved.
/// - Mass per metre when the density is known.
///
/// @pre section, shift, region, `whyNoRegion` and `whyNoWarping` of the report are there
void AddRegionValues(Report* report);

}  // namespace halvorn::engine

#endif
