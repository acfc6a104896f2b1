#include "kernel/project_point.h"

#include "kernel/vectors.h"
#include "numeric/scalar.h"

namespace halvorn {

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
