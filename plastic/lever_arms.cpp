#include "plastic/lever_arms.h"

#include "kernel/ring_edges.h"
#include "numeric/scalar.h"
#include "plastic/axis_direction.h"

namespace halvorn {

namespace {

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

double SumOfLeverArms(const std::list<ContourRecord>& contours, int iDir, const point2D& origin,
                      double pos) {
    const AxisView view{iDir == kVerticalAxis, origin};
    double sum = 0.0;
    for (const ContourRecord& contour : contours) {
        if (contour.bSolid == 0) continue;
        SideMoments moments;
        ForEachRingEdge(static_cast<int>(contour.Points.size()), contour.Points.data(),
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
