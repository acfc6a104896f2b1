/// @file lever_arms.h
/// The lever arms of a section about an axis, without cutting it.
#ifndef HALVORN_PLASTIC_LEVER_ARMS_H
#define HALVORN_PLASTIC_LEVER_ARMS_H

#include <list>

#include "contour/contour_record.h"
#include "numeric/point2d.h"

namespace halvorn {

/// Returns the sum over all contours of flag x (first moments of its parts on the two sides of the
/// axis at `pos`, both positive) [L^3]. `pos` and all coordinates are relative to `origin`. One
/// pass that skips contours of flag 0; no allocation.
double SumOfLeverArms(const std::list<ContourRecord>& contours, int iDir, const point2D& origin,
                      double pos);

}  // namespace halvorn

#endif
