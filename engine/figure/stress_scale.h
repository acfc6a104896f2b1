/// @file stress_scale.h
/// The levels and colours that a figure shows a stress in.
#ifndef HALVORN_ENGINE_FIGURE_STRESS_SCALE_H
#define HALVORN_ENGINE_FIGURE_STRESS_SCALE_H

#include <vector>

#include "figure/page.h"
#include "figure/pens.h"

namespace halvorn::engine::figure {

/// Levels are round: 1, 2, 2.5 or 5 times a power of ten apart, at most twelve bands between them;
/// only the ends need not be.
struct StressScale {
    std::vector<double> ends;     ///< rising: of each band, one more than bands; two alike when the
                                  ///< stress is the same all over
    std::vector<Colour> colours;  ///< of each band, the lowest first
    double step = 0.0;            ///< between levels; 0 with one band
    bool goesOn = false;          ///< the stress goes on beyond the largest: last colour
};

/// Returns the scale of a stress with a sign: blue below 0, light about it, red above, equally
/// strong at the same distance from it.
/// @param lowest, highest  of the whole field
/// @param largest          stated magnitude, at which the scale ends on either side; 0 or more
StressScale TwoSidedScale(double lowest, double highest, double largest);

/// Returns the scale of a stress without a sign, from light to dark: lightness falls from band to
/// band, so that the order shows in grey and to the colour-blind.
StressScale OneSidedScale(double lowest, double highest, double largest);

}  // namespace halvorn::engine::figure

#endif
