#include "plastic/equal_area_axis.h"

#include "kernel/primitives.h"
#include "kernel/ring_edges.h"
#include "numeric/tolerance.h"

namespace halvorn {

namespace {

// Coordinates as an axis sees them, relative to `origin`: `along` it and `across` it.
struct AxisView {
    bool isVertical;
    point2D origin;

    double Along(const point2D& p) const { return isVertical ? p.y - origin.y : p.x - origin.x; }
    double Across(const point2D& p) const { return isVertical ? p.x - origin.x : p.y - origin.y; }
};

int CountOf(const std::vector<point2D>& ring) {
    return static_cast<int>(ring.size());
}

// Six times the integral of v^2 / 2 along the axis over an edge that is `width` long there, v from
// v0 to v1.
double EdgeMoment(double width, double v0, double v1) {
    return width * (v0 * v0 + v0 * v1 + v1 * v1);
}

// Six times the first moments of one ring's parts beside the axis, with the sign of its
// orientation.
struct SideMoments {
    double high = 0.0;
    double low = 0.0;

    void Add(double width, double v0, double v1) {
        if (v0 >= 0.0 && v1 >= 0.0) {
            high += EdgeMoment(width, v0, v1);
        } else if (v0 <= 0.0 && v1 <= 0.0) {
            low += EdgeMoment(width, v0, v1);
        } else {
            const double part = v0 / (v0 - v1);
            (v0 > 0.0 ? high : low) += EdgeMoment(width * part, v0, 0.0);
            (v1 > 0.0 ? high : low) += EdgeMoment(width * (1.0 - part), 0.0, v1);
        }
    }
};

}  // namespace

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
    ForEachRingEdge(CountOf(ring), ring.data(), [&](const point2D& start, const point2D& end) {
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

double SumOfLeverArms(const std::list<ContourRecord>& contours, int iDir, const point2D& origin,
                      double pos) {
    const AxisView view{iDir == kVerticalAxis, origin};
    double sum = 0.0;
    for (const ContourRecord& contour : contours) {
        if (contour.bSolid == 0) continue;
        SideMoments moments;
        ForEachRingEdge(CountOf(contour.Points), contour.Points.data(),
                        [&](const point2D& start, const point2D& end) {
                            moments.Add(view.Along(end) - view.Along(start),
                                        view.Across(start) - pos, view.Across(end) - pos);
                        });
        sum += static_cast<double>(contour.bSolid) *
               ((AbsValue(moments.high) + AbsValue(moments.low)) / 6.0);
    }
    return sum;
}

}  // namespace halvorn
