/// @file equal_area_axis.h
/// The axis that halves a section's gross area.
#ifndef HALVORN_PLASTIC_EQUAL_AREA_AXIS_H
#define HALVORN_PLASTIC_EQUAL_AREA_AXIS_H

#include <cstddef>
#include <list>
#include <memory>
#include <vector>

#include "contour/contour_record.h"
#include "numeric/constants.h"
#include "numeric/point2d.h"
#include "numeric/tolerance.h"
#include "plastic/axis_direction.h"

namespace halvorn {

/// Gross areas on the two sides of an axis: every contour counts, whatever its flag [L^2].
struct SideAreas {
    double high;  ///< above a horizontal axis, right of a vertical one
    double low;
};

/// The bisection's state: a bracket that holds the axis, and the edges of all contours that can
/// still meet a line within it.
///
/// The area beyond a line is a sum over edges of the strip between the part of the edge beyond the
/// line and the line (Green's theorem), so no contour has to be cut. An edge that lies wholly on
/// one side of the bracket is on that side of every line to come: it is added to a constant or
/// dropped, and every step looks at fewer edges.
class EqualAreaBracket {
public:
    /// Begins with the range of all points. Coordinates are taken relative to `origin`.
    /// @param iDir an `AxisDirection`
    /// @throws std::bad_alloc for one array with an entry per edge
    EqualAreaBracket(const std::list<ContourRecord>& contours, int iDir, const point2D& origin);

    /// Returns the middle of the bracket, relative to `origin` [L].
    double Middle() const { return (high_ + low_) * 0.5; }

    /// Returns the areas beside the line at `pos`, which must lie within the bracket. Cost: the
    /// edges that meet the bracket.
    SideAreas AreasAt(double pos);

    /// Makes the line at `pos` the upper or the lower bound.
    void LowerTop(double pos) { high_ = pos; }
    void RaiseBottom(double pos) { low_ = pos; }

private:
    /// An edge between two cut coordinates. `width` is its extent along the axis [L], signed so
    /// that the areas of its contour come out positive. Edges of no width enclose nothing.
    struct SlopedEdge {
        double low;
        double high;
        double width;
    };

    void AddContour(const std::vector<point2D>& ring, int iDir, const point2D& origin,
                    CoordinateRange* range);

    // Room for every edge; the first `edgeCount_` can still meet a line.
    std::unique_ptr<SlopedEdge[]> edges_;
    std::size_t edgeCount_ = 0;
    double low_ = 0.0;
    double high_ = 0.0;
    double grossArea_ = 0.0;
    // Of the edges above the bracket: sums of width and of width times mean height, which give the
    // area between them and any line below.
    double widthAbove_ = 0.0;
    double momentAbove_ = 0.0;
};

/// Returns the position relative to `origin` of the line with equal gross areas on its two sides
/// [L]: by bisection, until they differ by less than 1e-7 (absolute), or at the 51st line.
/// @param onLine called as onLine(number, position, areas) for each line tried, from number 0
/// @throws std::bad_alloc
template <class OnLine>
double FindEqualAreaAxis(const std::list<ContourRecord>& contours, int iDir, const point2D& origin,
                         const OnLine& onLine) {
    EqualAreaBracket bracket(contours, iDir, origin);
    for (int i = 0;; ++i) {
        const double pos = bracket.Middle();
        const SideAreas areas = bracket.AreasAt(pos);
        onLine(i, pos, areas);
        const int balance = CompareTol(areas.high, areas.low, kBalancedAreas);
        if (balance == 0 || i >= kMostBisections) return pos;
        if (balance < 0) {
            bracket.LowerTop(pos);
        } else {
            bracket.RaiseBottom(pos);
        }
    }
}

}  // namespace halvorn

#endif
