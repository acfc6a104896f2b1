/// @file composite_values.h
/// What a section of more than one material has instead of the values of one.
#ifndef HALVORN_ENGINE_VALUES_COMPOSITE_VALUES_H
#define HALVORN_ENGINE_VALUES_COMPOSITE_VALUES_H

#include <vector>

#include "values/report.h"

namespace halvorn::engine {

/// Why torsion, warping and shear of a composite section are missing.
inline constexpr const char* kNoWarpingOfComposite =
    "the section is composite; torsion, warping and shear are solved without modular ratios";

/// Why plastic values of a composite section are missing.
inline constexpr const char* kNoPlasticOfComposite =
    "the section is composite; plastic values take the strengths of its materials, which are not "
    "known";

/// Why stresses under forces of a composite section are missing.
inline constexpr const char* kNoStressesOfComposite =
    "the section is composite; shear is solved without modular ratios, and bending stresses are M "
    "over the elastic moduli of each part";

/// Returns the moments of a composite section, each place weighed with the modular ratio of the
/// stiffest part there: the sum over the ratios n1 > n2 > ... of (n1 - n2) times the moments of all
/// material of at least n1, and so on, in which no difference of areas takes digits.
/// @param region  of the whole section, not empty
/// @throws ArrangementError
Moments TransformedMoments(const std::vector<Element>& elements, const Region& region);

/// Says of the values of a composite section how they are transformed, takes those away that have
/// no meaning there, and adds its parts with their elastic moduli. The elastic moduli of the
/// section are those of the material at its outermost fibre, of the stiffest where there are
/// several.
/// @pre the values of the report are there, and `transformed` or `whyNoRegion`
void AddComposite(Report* report);

}  // namespace halvorn::engine

#endif
