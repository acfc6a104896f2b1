#include "plastic/plastic_pieces.h"

#include <utility>

#include "contour/area_moments.h"
#include "kernel/cut_polygon.h"
#include "kernel/polygon_area.h"
#include "kernel/polygon_centroid.h"
#include "kernel/project_point.h"
#include "kernel/vectors.h"
#include "numeric/constants.h"
#include "numeric/tolerance.h"
#include "plastic/axis_direction.h"

namespace halvorn {

namespace {

double AreaOf(const std::vector<point2D>& ring) {
    return ring.empty() ? 0.0 : KPolygonArea(&ring[0].x, static_cast<int>(ring.size()));
}

// The two sides that pieces are sorted into.
struct Sides {
    double* area[2];
    std::list<PlasticPiece>* pieces[2];

    void Add(bool isHigh, int weight, std::vector<point2D> ring) {
        const double ringArea = AreaOf(ring);
        *area[isHigh] += ringArea;
        pieces[isHigh]->push_back(PlasticPiece{weight, ringArea, {0.0, 0.0}, std::move(ring)});
    }
};

// Which side of the axis the centroid of a piece lies on: +1 high, -1 low, 0 on the axis. Every
// centroid rule gives a point between the extreme vertices, so they decide where they can.
int SideOfPiece(const std::vector<point2D>& ring, int iDir, double pos) {
    double reachHigh = 0.0;
    double reachLow = 0.0;
    for (const point2D& point : ring) {
        reachHigh = MaxValue(CutCoordinate(point, iDir) - pos, reachHigh);
        reachLow = MaxValue(pos - CutCoordinate(point, iDir), reachLow);
    }
    if (reachLow <= kSamePosition && reachHigh > kClearlyOneSided) return 1;
    if (reachHigh <= kSamePosition && reachLow > kClearlyOneSided) return -1;
    point2D centroid;
    KPolygonCentroid(&centroid, ring.data(), static_cast<int>(ring.size()), kSamePosition);
    return CompareTol(CutCoordinate(centroid, iDir), pos, kSamePosition);
}

void CutContour(const ContourRecord& contour, int iDir, double pos, Sides* sides) {
    const KPoint from = iDir == kVerticalAxis ? KPoint{pos, kAxisReach} : KPoint{kAxisReach, pos};
    const KPoint to = iDir == kVerticalAxis ? KPoint{pos, -kAxisReach} : KPoint{-kAxisReach, pos};
    KPieces cut;
    KCutPolygonByLine(contour.Points.data(), static_cast<int>(contour.Points.size()), from, to,
                      kSamePosition, &cut.count, &cut.ranges, &cut.points);
    for (int k = 0; k < cut.count; ++k) {
        std::vector<point2D> ring(cut.points + cut.ranges[k], cut.points + cut.ranges[k + 1]);
        const int side = SideOfPiece(ring, iDir, pos);
        if (side != 0) sides->Add(side > 0, contour.bSolid, std::move(ring));
    }
}

// The centroid of a piece from its area integrals, about a vertex of its own. `KPolygonCentroid`
// would give the same point for a valid ring and the vertex average for any other, such as a ring
// with a vertex in the middle of a side or a keyhole; that average is no basis for a lever arm.
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

}  // namespace

void SplitSectionAtAxis(const std::list<ContourRecord>& contours, int iDir, double pos,
                        double* areaHigh, double* areaLow, std::list<PlasticPiece>& high,
                        std::list<PlasticPiece>& low) {
    *areaHigh = 0.0;
    *areaLow = 0.0;
    high.clear();
    low.clear();
    Sides sides{{areaLow, areaHigh}, {&low, &high}};
    for (const ContourRecord& contour : contours) {
        CoordinateRange range;
        for (const point2D& point : contour.Points) range.Widen(CutCoordinate(point, iDir));
        if (range.isEmpty) continue;
        if (CompareTol(range.low, pos, kSamePosition) >= 0) {
            sides.Add(true, contour.bSolid, contour.Points);
        } else if (CompareTol(range.high, pos, kSamePosition) <= 0) {
            sides.Add(false, contour.bSolid, contour.Points);
        } else {
            CutContour(contour, iDir, pos, &sides);
        }
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

double LeverArmsOfPieces(std::list<PlasticPiece>& pieces, int iDir, double pos,
                         const point2D* across) {
    const bool isVertical = iDir == kVerticalAxis;
    const KPoint from = isVertical ? KPoint{pos, -kAxisReach} : KPoint{-kAxisReach, pos};
    const KPoint to = isVertical ? KPoint{pos, kAxisReach} : KPoint{kAxisReach, pos};
    double sum = 0.0;
    for (PlasticPiece& piece : pieces) {
        piece.centroid = PieceCentroid(piece.points);
        if (across && !IsLongestEdgeAcross(piece, *across)) continue;
        double distance = 0.0;
        KProjectPointOnLine(piece.centroid, from, to, kSamePosition, nullptr, nullptr, nullptr,
                            &distance);
        sum += static_cast<double>(piece.weight) * piece.area * distance;
    }
    return sum;
}

}  // namespace halvorn
