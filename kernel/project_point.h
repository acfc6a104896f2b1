/// @file project_point.h
/// The foot of a point on a line.
#ifndef HALVORN_KERNEL_PROJECT_POINT_H
#define HALVORN_KERNEL_PROJECT_POINT_H

#include "kernel/kernel.h"

namespace halvorn {

/// Projects `p` onto the unbounded line through `a` and `b`.
///
/// Every output may be null. They are reset first: foot (NaN, NaN), the others 0.
/// @param foot the projection
/// @param code where it lies: 1 at `a`, 2 at `b` (per axis within `tol`), 3 between, 4 before `a`,
///             5 beyond `b`
/// @param t    signed distance of the foot from `a` [L]
/// @param dist distance of `p` from the line, never negative [L]
/// @return 1, or 0 with the outputs reset when `a` and `b` coincide within `tol` per axis. Nearer
///         than 1e-6 but not within `tol`, they define no direction (`KVectorNorm`): 1, with NaN.
int KProjectPointOnLine(const KPoint& p, const KPoint& a, const KPoint& b, double tol, KPoint* foot,
                        unsigned int* code, double* t, double* dist);

}  // namespace halvorn

#endif
