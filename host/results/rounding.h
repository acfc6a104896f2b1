/// @file rounding.h
/// What rounding leaves of a section's values.
#ifndef HALVORN_HOST_RESULTS_ROUNDING_H
#define HALVORN_HOST_RESULTS_ROUNDING_H

#include <string>
#include <vector>

#include "model/ring_sides.h"
#include "model/section_model.h"
#include "results/report.h"

namespace halvorn::host {

/// Returns the box around the rings of all elements.
/// @pre there is an element
Box BoxOf(const std::vector<Element>& elements);

/// Returns how large the area of points on one line may come out, for the rounding of their
/// coordinates along the perimeter [L^2].
double AreaRounding(const Points& points);

/// Returns how far second moments about the centre of gravity may be off: they are differences of
/// sums about the origin (docs/theory.md, Integrals over a contour) [L^4].
double InertiaRounding(const std::vector<Element>& elements);

/// Returns the value as people read it: 0 when it is no more than the rounding of sums that cancel,
/// such as the product moment of a symmetric section. The area gives the scale.
double WithoutRounding(const Value& value, const Report& report);

/// Returns a note that names the digits which the distance from the origin leaves of the second
/// moments when it costs more than 1e-9 of them; empty otherwise.
std::string LostDigitsNote(const std::vector<Element>& elements);

}  // namespace halvorn::host

#endif
