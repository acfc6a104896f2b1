/// @file axis_direction.h
/// Coordinates as a horizontal or vertical axis sees them.
#ifndef HALVORN_PLASTIC_AXIS_DIRECTION_H
#define HALVORN_PLASTIC_AXIS_DIRECTION_H

#include "numeric/constants.h"
#include "numeric/point2d.h"
#include "numeric/tolerance.h"

namespace halvorn {

/// Direction of an axis, and what is found about it.
enum AxisDirection : int {
    kHorizontalAxis = 0,  ///< a line y = const; gives Wplx
    kVerticalAxis = 1     ///< a line x = const; gives Wply
};

/// Returns the coordinate that tells on which side of an axis a point lies: y or x.
inline double CutCoordinate(const point2D& point, int iDir) {
    return iDir == kVerticalAxis ? point.x : point.y;
}

/// A range of cut coordinates [L]; its bounds mean nothing while it is empty.
struct CoordinateRange {
    double low = 0.0;
    double high = 0.0;
    bool isEmpty = true;

    /// Widens the range to `c`. A bound moves only by more than 1e-10, or to replace a NaN.
    void Widen(double c) {
        if (isEmpty) *this = {c, c, false};
        if (!(c >= low) && CompareTol(low, c, kSamePosition) > 0) low = c;
        if (!(c <= high) && CompareTol(high, c, kSamePosition) < 0) high = c;
    }
};

/// Coordinates as an axis sees them, relative to `origin`: `along` it and `across` it.
struct AxisView {
    bool isVertical;
    point2D origin;

    double Along(const point2D& p) const { return isVertical ? p.y - origin.y : p.x - origin.x; }
    double Across(const point2D& p) const { return isVertical ? p.x - origin.x : p.y - origin.y; }
};

}  // namespace halvorn

#endif
