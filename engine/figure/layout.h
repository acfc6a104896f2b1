/// @file layout.h
/// From a report to everything that is on the page. Pure geometry: no file, no graphics library.
#ifndef HALVORN_ENGINE_FIGURE_LAYOUT_H
#define HALVORN_ENGINE_FIGURE_LAYOUT_H

#include "figure/figure.h"
#include "figure/page.h"
#include "figure/stress_picture.h"
#include "values/report.h"

namespace halvorn::engine::figure {

/// Lays out the figure of a report: section, dimensions, axes, centre of gravity, origin, scale
/// bar, values and legend. The page is no larger than A5 on its side and as small as its content
/// allows. What the report does not know is not drawn.
/// With stresses: section, dimensions and elastic axes, the bands of the stress, the forces and the
/// scale.
/// @throws InputError when the section's extent is not a finite number; std::runtime_error for a
///         stress that is none
Page LayOut(const Report& report, const MeasureText& measure, const FigureOptions& options = {},
            const StressPicture* stress = nullptr);

/// Returns the largest of 1, 2, 5, 10, 20 ... (and 0.5, 0.2 ...) that is not above `most`, a
/// positive number.
double RoundLength(double most);

}  // namespace halvorn::engine::figure

#endif
