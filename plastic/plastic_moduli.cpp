#include "plastic/plastic_moduli.h"

#include <charconv>
#include <cmath>
#include <cstddef>

#include "contour/ring_integrals.h"
#include "kernel/point_tests.h"
#include "kernel/primitives.h"
#include "kernel/triangulate_polygon.h"
#include "numeric/tolerance.h"
#include "plastic/constants.h"

namespace halvorn {

namespace {

// The axis that a search ended with, and the pieces on its two sides.
struct BalancedSplit {
    double pos = 0.0;
    std::list<PlasticPiece> high;
    std::list<PlasticPiece> low;
};

struct Modulus {
    double total = 0.0;
    double webPart = 0.0;
};

void TraceLine(int counter, double pos, double areaHigh, double areaLow, std::string* trace) {
    if (!trace) return;
    *trace += "iCouter = " + std::to_string(counter) +
              "\tAxisPos[mm] = " + FormatFixed(pos * 1000.0, 1) +
              "\t Asup|Ainf[mm2]: " + FormatFixed(areaHigh * 1e6, 1) + "|" +
              FormatFixed(areaLow * 1e6, 1) + "\n";
}

// Finds the axis by bisection between the bounds of the contours. `traceOrigin` is where the
// contours' coordinates begin in the host's.
BalancedSplit FindEqualAreaAxis(const std::list<ContourRecord>& contours, int iDir,
                                double traceOrigin, std::string* trace) {
    CoordinateRange range{0.0, 0.0, true};
    for (const ContourRecord& contour : contours) WidenRange(contour.Points, iDir, &range);
    double low = range.low;
    double high = range.high;
    if (trace) *trace += "\niDir = " + std::to_string(iDir) + "\n";
    BalancedSplit split;
    for (int i = 0;; ++i) {
        split.pos = (high + low) * 0.5;
        double areaHigh = 0.0;
        double areaLow = 0.0;
        SplitSectionAtAxis(contours, iDir, split.pos, &areaHigh, &areaLow, split.high, split.low);
        TraceLine(i, split.pos + traceOrigin, areaHigh, areaLow, trace);
        const int balance = CompareTol(areaHigh, areaLow, kBalancedAreas);
        if (balance == 0 || i >= kMostBisections) {
            if (trace) *trace += "Finaly\n";
            TraceLine(i + 1, split.pos + traceOrigin, areaHigh, areaLow, trace);
            return split;
        }
        (balance < 0 ? high : low) = split.pos;
    }
}

// The centroid of a piece from its area integrals, about a vertex of its own. `KPolygonCentroid`
// would give the same point for a valid ring and the vertex average for any other, such as a ring
// with a vertex in the middle of a side or a keyhole: no lever arm may rest on that.
point2D PieceCentroid(const std::vector<point2D>& ring) {
    const int n = static_cast<int>(ring.size());
    if (n > 0) {
        const AreaMoments moments = SignedAreaMoments(n, ring.data(), ring[0]);
        if (moments.area != 0.0) {
            return {ring[0].x + moments.firstX / moments.area,
                    ring[0].y + moments.firstY / moments.area};
        }
    }
    point2D centroid;
    return *KPolygonCentroid(&centroid, ring.data(), n, kBalancedAreas);
}

// First moment of the pieces about the axis, all distances positive.
Modulus SumOfLeverArms(std::list<PlasticPiece>& pieces, int iDir, double pos, bool wantWeb) {
    const bool isVertical = iDir == kVerticalAxis;
    const KPoint from = isVertical ? KPoint{pos, -kAxisReach} : KPoint{-kAxisReach, pos};
    const KPoint to = isVertical ? KPoint{pos, kAxisReach} : KPoint{kAxisReach, pos};
    const point2D across = isVertical ? point2D{1.0, 0.0} : point2D{0.0, 1.0};
    Modulus sum;
    for (PlasticPiece& piece : pieces) {
        piece.centroid = PieceCentroid(piece.points);
        double distance = 0.0;
        KProjectPointOnLine(piece.centroid, from, to, kSamePosition, nullptr, nullptr, nullptr,
                            &distance);
        const double part = static_cast<double>(piece.weight) * piece.area * distance;
        sum.total += part;
        if (wantWeb && IsLongestEdgeAcross(piece, across)) sum.webPart += part;
    }
    return sum;
}

Modulus PlasticModulus(const std::list<ContourRecord>& contours, int iDir, double traceOrigin,
                       bool wantWeb, std::string* trace) {
    BalancedSplit split = FindEqualAreaAxis(contours, iDir, traceOrigin, trace);
    const Modulus high = SumOfLeverArms(split.high, iDir, split.pos, wantWeb);
    const Modulus low = SumOfLeverArms(split.low, iDir, split.pos, wantWeb);
    return {low.total + high.total, low.webPart + high.webPart};
}

// The first point of the section, or the origin when there is none to measure from.
point2D LocalOrigin(const std::list<ContourRecord>& contours) {
    for (const ContourRecord& contour : contours) {
        if (contour.Points.empty()) continue;
        const point2D& first = contour.Points.front();
        if (std::isfinite(first.x) && std::isfinite(first.y)) return first;
        break;
    }
    return {0.0, 0.0};
}

}  // namespace

void ComputePlasticModuli(const std::list<ContourRecord>& contours, double* wplx, double* wply,
                          double* webPartX, double* webPartY, std::string* trace) {
    if (!wplx || !wply) return;
    const bool wantWeb = webPartX && webPartY;
    std::list<ContourRecord> local = contours;
    const point2D origin = LocalOrigin(local);
    for (ContourRecord& contour : local) {
        for (point2D& point : contour.Points) KVectorDiff(&point, &origin, &point);
    }
    const Modulus x = PlasticModulus(local, kHorizontalAxis, origin.y, wantWeb, trace);
    *wplx = x.total;
    if (webPartX) *webPartX = x.webPart;
    const Modulus y = PlasticModulus(local, kVerticalAxis, origin.x, wantWeb, trace);
    *wply = y.total;
    if (webPartY) *webPartY = y.webPart;
    if (trace) {
        *trace += "Wplx[cm^3] = " + FormatFixed(*wplx * 1e6, 1) + "\n";
        *trace += "Wply[cm^3] = " + FormatFixed(*wply * 1e6, 1) + "\n";
    }
}

bool IsLongestEdgeAcross(const PlasticPiece& piece, const point2D& direction) {
    double longest = 0.0;
    bool isAcross = false;
    for (std::size_t i = 0; i + 1 < piece.points.size(); ++i) {
        point2D edge;
        KVectorDiff(&edge, &piece.points[i], &piece.points[i + 1]);
        const double length = KDistance(&piece.points[i + 1], &piece.points[i]);
        const int order = CompareTol(longest, length, kSamePosition);
        if (order > 0) continue;
        const bool isParallel = SignTol(KCross(&edge, &direction), kParallelEdge) == 0;
        isAcross = order < 0 ? isParallel : (isAcross || isParallel);
        if (order < 0) longest = length;
    }
    return isAcross;
}

std::string FormatFixed(double value, int precision) {
    // The largest double has 309 digits before the point; sign and point make two more.
    std::string text(static_cast<std::size_t>(precision > 0 ? precision : 0) + 311, '\0');
    const std::to_chars_result end = std::to_chars(text.data(), text.data() + text.size(), value,
                                                   std::chars_format::fixed, precision);
    text.resize(static_cast<std::size_t>(end.ptr - text.data()));
    return text;
}

}  // namespace halvorn
