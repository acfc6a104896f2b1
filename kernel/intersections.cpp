#include "kernel/intersections.h"

#include "kernel/point_tests.h"
#include "kernel/vectors.h"

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

int KLineIntersection(const KPoint* a, const KPoint* b, const KPoint* c, const KPoint* d,
                      KPoint* out) {
    KMakePoint(out, INVALID_VALUE, INVALID_VALUE);
    // Each line as A x + B y + C = 0, solved by Cramer's rule.
    const double A1 = a->y - b->y;
    const double B1 = b->x - a->x;
    const double C1 = -(A1 * a->x + B1 * a->y);
    const double A2 = c->y - d->y;
    const double B2 = d->x - c->x;
    const double C2 = -(A2 * c->x + B2 * c->y);
    const double determinant = A1 * B2 - A2 * B1;
    const double xNumerator = B1 * C2 - B2 * C1;
    const double yNumerator = A2 * C1 - A1 * C2;
    const bool solvable = KAreBounded(A1, B2) && KAreBounded(B1, A2) && KAreBounded(B1, C2) &&
                          KAreBounded(B2, C1) && KAreBounded(A2, C1) && KAreBounded(A1, C2) &&
                          KIsSafeQuotient(xNumerator, determinant) &&
                          KIsSafeQuotient(yNumerator, determinant);
    if (!solvable) return 0;
    KMakePoint(out, xNumerator / determinant, yNumerator / determinant);
    return 1;
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

}  // namespace halvorn
