#include "contour/contour_integrals.h"

#include <cmath>

#include "contour/edge_sums.h"
#include "kernel/ring_edges.h"

namespace halvorn {

double ContourSignedArea(int n, const point2D* ring) {
    EdgeSums sums;
    ForEachRingEdge(n, ring, [&sums](const point2D& p, const point2D& q) {
        sums.AddArea(p.x + q.x, q.y - p.y);
    });
    return sums.area2 * 0.5;
}

std::pair<double, double> ContourFirstMoments(int n, const point2D* ring) {
    EdgeSums sums;
    ForEachRingEdge(n, ring, [&sums](const point2D& p, const point2D& q) {
        sums.AddFirst(p, q, q.x - p.x, q.y - p.y);
    });
    return {sums.first6X / 6.0, sums.first6Y / 6.0};
}

void ContourSecondMoments(int n, const point2D* ring, double* ixxRaw, double* iyyRaw,
                          double* ixyRaw) {
    EdgeSums sums;
    ForEachRingEdge(n, ring, [&sums](const point2D& p, const point2D& q) {
        sums.AddSecond(p, q, q.x - p.x, q.y - p.y, p.x + q.x, p.y + q.y);
    });
    *ixxRaw = sums.second24X / 24.0;
    *iyyRaw = -(sums.second24Y / 24.0);
    *ixyRaw = sums.product24 / 24.0;
}

double ContourPerimeter(int n, const point2D* ring) {
    double sum = 0.0;
    ForEachRingEdge(n, ring, [&sum](const point2D& p, const point2D& q) {
        const double dx = q.x - p.x;
        const double dy = q.y - p.y;
        sum += std::sqrt(dx * dx + dy * dy);
    });
    return sum;
}

}  // namespace halvorn
