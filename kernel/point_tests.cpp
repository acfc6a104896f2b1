#include "kernel/point_tests.h"

#include "kernel/primitives.h"
#include "kernel/ring_edges.h"
#include "numeric/tolerance.h"

namespace halvorn {

namespace {

// Signed distance of `p` from the line of `segment` [L], positive on its left; 0 without direction.
double DistanceFromLine(const KPoint& p, const KSegment& segment) {
    KPoint direction;
    KPoint toPoint;
    KVectorDiff(&direction, &segment.start, &segment.end);
    KVectorDiff(&toPoint, &segment.start, &p);
    const double length = KDistance(&segment.start, &segment.end);
    return length > 0.0 ? KCross(&direction, &toPoint) / length : 0.0;
}

bool AreApart(double first, double second, double tol) {
    return (first > tol && second < -tol) || (first < -tol && second > tol);
}

}  // namespace

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

int KIntersectSegments(const KSegment& first, const KSegment& second, double tol) {
    KPoint contacts[4];
    int count = 0;
    const auto addContact = [&](const KPoint& end, const KSegment& other) {
        if (KPointOnSegment(end, other.start, other.end, tol) == 0) return;
        for (int i = 0; i < count; ++i) {
            if (KPointsEqualTol(contacts[i], end, tol)) return;
        }
        contacts[count++] = end;
    };
    addContact(first.start, second);
    addContact(first.end, second);
    addContact(second.start, first);
    addContact(second.end, first);
    if (count > 0) return count > 1 ? 2 : 1;

    const bool cross =
        AreApart(DistanceFromLine(second.start, first), DistanceFromLine(second.end, first), tol) &&
        AreApart(DistanceFromLine(first.start, second), DistanceFromLine(first.end, second), tol);
    return cross ? 1 : 0;
}

int KProjectPointOnLine(const KPoint& p, const KPoint& a, const KPoint& b, double tol, KPoint* foot,
                        unsigned int* code, double* t, double* dist) {
    if (t) *t = 0.0;
    if (dist) *dist = 0.0;
    if (code) *code = 0;
    if (foot) KMakePoint(foot, INVALID_VALUE, INVALID_VALUE);
    if (KPointsEqualTol(a, b, tol)) return 0;

    KPoint along;
    KPoint toPoint;
    KVectorDiff(&along, &a, &b);
    KVectorDiff(&toPoint, &a, &p);
    const double length = KVectorNorm(&along);
    const KPoint unit = KScaleVector(along, 1.0 / length);
    const double position = KDot(&toPoint, &unit);
    const KPoint projection = KTranslatePoint(a, KScaleVector(unit, position));
    if (t) *t = position;
    if (dist) *dist = AbsValue(KCross(&unit, &toPoint));
    if (foot) *foot = projection;
    if (code) {
        *code = KPointsEqualTol(projection, a, tol)   ? 1U
                : KPointsEqualTol(projection, b, tol) ? 2U
                : position < 0.0                      ? 4U
                : position > length                   ? 5U
                                                      : 3U;
    }
    return 1;
}

}  // namespace halvorn
