#include "kernel/primitives.h"

namespace halvorn {

double KPolygonSignedArea(const double* xy, int n) {
    double sum = 0.0;
    for (int i = 0; i < n; ++i) {
        const double* const p = xy + 2 * static_cast<std::ptrdiff_t>(i);
        const double* const q = i + 1 < n ? p + 2 : xy;
        sum += (q[0] - p[0]) * (p[1] + q[1]);
    }
    return sum * 0.5;
}

double KPolygonArea(const double* xy, int n) {
    return AbsValue(KPolygonSignedArea(xy, n));
}

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

}  // namespace halvorn
