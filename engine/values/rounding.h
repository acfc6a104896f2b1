/// @file rounding.h
/// What rounding leaves of a section's values.
#ifndef HALVORN_ENGINE_VALUES_ROUNDING_H
#define HALVORN_ENGINE_VALUES_ROUNDING_H

#include <string>
#include <vector>

#include "geometry/box.h"
#include "model/section_model.h"
#include "values/report.h"

namespace halvorn::engine {

/// Returns the box around the rings of all elements.
/// @pre there is an element
Box BoxOf(const std::vector<Element>& elements);

/// Returns how large the area of points on one line may come out, for the rounding of their
/// coordinates along the perimeter [L^2].
double AreaRounding(const Points& points);

/// How far the library's sums over a section may be off by rounding. Each ring's share is
/// (8 + sqrt(n) / 2) u a X^i Y^k, with its n points, u = 2^-53, the area a of its box and its reach
/// from the origin, X = largest |x| + width and Y likewise (docs/theory.md, Derived values).
struct SumRounding {
    double firstX = 0.0;         ///< of the moments of area [L^3]
    double firstY = 0.0;         ///< likewise
    double inertiaX = 0.0;       ///< of second moments about the centre of gravity [L^4]
    double inertiaY = 0.0;       ///< likewise
    double inertiaXY = 0.0;      ///< likewise
    double turnedInertia = 0.0;  ///< what a given angle of a quarter turn leaves of a given 0 [L^4]
    double turnedShear = 0.0;    ///< likewise [L^2]
};

SumRounding RoundingOf(const std::vector<Element>& elements);

/// Second moments about the centre of gravity [L^4].
struct Moments {
    double x;
    double y;
    double xy;
};

/// Returns how far the smaller principal second moment may be off [L^4].
double SecondPrincipalRounding(const Moments& moments, const SumRounding& rounding);

/// Sets to 0 what is no more than rounding of 0: centres of gravity and product moments on an axis
/// of symmetry, what a quarter turn leaves of a given 0. No value keeps the sign of a zero.
/// @pre the values of the report are computed, the derived ones are not
void ClearRounding(Report* report);

/// What rounding took of second moments.
struct DigitLoss {
    double relative = 0.0;      ///< relative error, no more than 1
    bool isByDistance = false;  ///< an origin at the section would give a digit back or more; else
                                ///< the outline is thin for its size
};

struct DigitLosses {
    DigitLoss axes;    ///< of Ix or Iy, whichever is worse
    DigitLoss second;  ///< of the smaller principal one
};

/// Returns the loss of digits of second moments as the library gave them; none where they are not
/// finite or given small.
DigitLosses DigitLossesOf(const std::vector<Element>& elements, const Moments& moments);

/// Returns why no digit is left of a second moment, one sentence.
std::string WhyNoDigits(const DigitLoss& loss);

/// Returns a note that names the digits that are left of the second moments where they are fewer
/// than a table shows, and why; empty otherwise.
std::string LostDigitsNote(const DigitLosses& losses);

}  // namespace halvorn::engine

#endif
