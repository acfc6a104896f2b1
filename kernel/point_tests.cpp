#include "kernel/point_tests.h"

#include "kernel/ring_edges.h"
#include "kernel/vectors.h"
#include "numeric/scalar.h"

namespace halvorn {

int KPointOnSegment(const KPoint& p, const KPoint& a, const KPoint& b, double tol) {
    if (p.x < MinValue(a.x, b.x) - tol || p.x > MaxValue(a.x, b.x) + tol ||
        p.y < MinValue(a.y, b.y) - tol || p.y > MaxValue(a.y, b.y) + tol) {
        return 0;
    }
    if (KPointsEqualTol(p, a, tol)) return 1;
    if (KPointsEqualTol(p, b, tol)) return 2;
    if (KPointsEqualTol(a, b, tol)) return 0;

    KPoint along;
    KPoint fromA;
    KPoint fromB;
    KVectorDiff(&along, &a, &b);
    KVectorDiff(&fromA, &a, &p);
    KVectorDiff(&fromB, &p, &b);
    const double length = KVectorNorm(&along);
    if (length == 0.0) return 0;
    const double t = KDot(&fromA, &along) / length;
    const double u = KDot(&fromB, &along) / length;
    if (!(t > 0.0 && u > 0.0)) return 0;
    const KPoint foot = KTranslatePoint(a, KScaleVector(KScaleVector(along, 1.0 / length), t));
    return KPointsEqualTol(p, foot, tol) ? 3 : 0;
}

int KPointInPolygon(const KPoint& p, const KPoint* ring, int n, double tol) {
    if (n < 1) return -1;
    KPoint low = ring[0];
    KPoint high = ring[0];
    for (int i = 1; i < n; ++i) {
        low = {MinValue(ring[i].x, low.x), MinValue(ring[i].y, low.y)};
        high = {MaxValue(ring[i].x, high.x), MaxValue(ring[i].y, high.y)};
    }
    if (p.x < low.x - tol || p.x > high.x + tol || p.y < low.y - tol || p.y > high.y + tol) {
        return -1;
    }
    for (int i = 0; i < n; ++i) {
        if (KPointOnSegment(p, ring[i], ring[i + 1 < n ? i + 1 : 0], tol) > 0) return 0;
    }
    double winding = 0.0;
    ForEachRingEdge(n, ring, [&](const KPoint& start, const KPoint& end) {
        KPoint toStart;
        KPoint toEnd;
        KVectorDiff(&toStart, &p, &start);
        KVectorDiff(&toEnd, &p, &end);
        winding += KVectorAngle(&toStart, &toEnd);
    });
    // One radian stands between about 0 and about 2 pi, far from either.
    return AbsValue(winding) > 1.0 ? 1 : -1;
}

}  // namespace halvorn
