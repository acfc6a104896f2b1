#include "plastic/equal_area_axis.h"

#include "kernel/ring_edges.h"
#include "numeric/scalar.h"
#include "plastic/axis_direction.h"

namespace halvorn {

EqualAreaBracket::EqualAreaBracket(const std::list<ContourRecord>& contours, int iDir,
                                   const point2D& origin) {
    std::size_t count = 0;
    for (const ContourRecord& contour : contours) count += contour.Points.size();
    edges_ = std::make_unique_for_overwrite<SlopedEdge[]>(count);
    CoordinateRange range;
    for (const ContourRecord& contour : contours) {
        AddContour(contour.Points, iDir, origin, &range);
    }
    low_ = range.low;
    high_ = range.high;
}

void EqualAreaBracket::AddContour(const std::vector<point2D>& ring, int iDir, const point2D& origin,
                                  CoordinateRange* range) {
    const AxisView view{iDir == kVerticalAxis, origin};
    CoordinateRange widened = *range;
    SlopedEdge* const first = edges_.get() + edgeCount_;
    SlopedEdge* next = first;
    double area = 0.0;
    ForEachRingEdge(static_cast<int>(ring.size()), ring.data(),
                    [&](const point2D& start, const point2D& end) {
                        const double v0 = view.Across(start);
                        const double v1 = view.Across(end);
                        widened.Widen(v0);
                        const double width = view.Along(end) - view.Along(start);
                        if (width == 0.0) return;
                        area += width * (v0 + v1) * 0.5;
                        *next++ = {MinValue(v0, v1), MaxValue(v0, v1), width};
                    });
    *range = widened;
    edgeCount_ += static_cast<std::size_t>(next - first);
    grossArea_ += AbsValue(area);
    if (area >= 0.0) return;
    for (SlopedEdge* edge = first; edge != next; ++edge) edge->width = -edge->width;
}

SideAreas EqualAreaBracket::AreasAt(double pos) {
    double area = 0.0;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < edgeCount_; ++i) {
        const SlopedEdge edge = edges_[i];
        if (edge.high <= low_) continue;
        if (edge.low >= high_) {
            widthAbove_ += edge.width;
            momentAbove_ += edge.width * (edge.low + edge.high) * 0.5;
            continue;
        }
        edges_[kept++] = edge;
        if (edge.low >= pos) {
            area += edge.width * ((edge.low + edge.high) * 0.5 - pos);
        } else if (edge.high > pos) {
            area += edge.width * Sqr(edge.high - pos) / (2.0 * (edge.high - edge.low));
        }
    }
    edgeCount_ = kept;
    area += momentAbove_ - pos * widthAbove_;
    // Rounding can make an empty side slightly negative.
    return {MaxValue(area, 0.0), MaxValue(grossArea_ - area, 0.0)};
}

}  // namespace halvorn
