/// @file vectors.h
/// Points and vectors: differences, products, lengths, angles. None allocates.
#ifndef HALVORN_KERNEL_VECTORS_H
#define HALVORN_KERNEL_VECTORS_H

#include <cmath>

#include "kernel/kernel.h"
#include "numeric/constants.h"
#include "numeric/tolerance.h"

namespace halvorn {

/// Stores (x, y) in `out` and returns it.
inline KPoint* KMakePoint(KPoint* out, double x, double y) {
    out->x = x;
    out->y = y;
    return out;
}

/// Stores (x, y, z) in `out` and returns it.
inline KPoint3* KMakePoint3(KPoint3* out, double x, double y, double z) {
    out->x = x;
    out->y = y;
    out->z = z;
    return out;
}

/// Stores the segment from `a` to `b` in `out` and returns it.
inline KSegment* KMakeSegment(KSegment* out, const KPoint* a, const KPoint* b) {
    const KSegment segment{*a, *b};
    *out = segment;
    return out;
}

/// Stores b - a in `out` and returns it.
inline KPoint* KVectorDiff(KPoint* out, const KPoint* a, const KPoint* b) {
    return KMakePoint(out, b->x - a->x, b->y - a->y);
}

/// Stores b - a in `out` and returns it.
inline KPoint3* KVectorDiff3(KPoint3* out, const KPoint3* a, const KPoint3* b) {
    return KMakePoint3(out, b->x - a->x, b->y - a->y, b->z - a->z);
}

/// Stores the midpoint of `a` and `b` in `out` and returns it.
inline KPoint* KMidpoint(KPoint* out, const KPoint* a, const KPoint* b) {
    return KMakePoint(out, (a->x + b->x) * 0.5, (a->y + b->y) * 0.5);
}

/// Returns the z component of a x b [L^2]: positive when b is counter-clockwise of a.
inline double KCross(const KPoint* a, const KPoint* b) {
    return a->x * b->y - a->y * b->x;
}

/// Returns the scalar product of two vectors [L^2].
inline double KDot(const KPoint* a, const KPoint* b) {
    return a->x * b->x + a->y * b->y;
}

/// Returns the distance of two points [L]; exactly 0 below 1e-50.
inline double KDistance(const KPoint* a, const KPoint* b) {
    const double squared = Sqr(a->x - b->x) + Sqr(a->y - b->y);
    return squared < kZeroSquaredDistance ? 0.0 : SqrtSafe(squared);
}

/// Returns the length of a vector [L]; exactly 0 below 1e-6 (a squared length below 1e-12).
inline double KVectorNorm(const KPoint* v) {
    const double squared = Sqr(v->x) + Sqr(v->y);
    return squared < kZeroVector ? 0.0 : SqrtSafe(squared);
}

/// Returns the signed angle from `a` to `b` [rad], counter-clockwise positive, within [-pi, pi]: a
/// negative zero in the cross product gives -pi for opposite vectors, so neither end is excluded.
/// 0 when either vector is shorter than 1e-6.
inline double KVectorAngle(const KPoint* a, const KPoint* b) {
    const double squaredA = Sqr(a->x) + Sqr(a->y);
    if (squaredA < kZeroVector) return 0.0;
    const double lengthA = SqrtSafe(squaredA);
    if (lengthA < kZeroVector) return 0.0;
    const double squaredB = Sqr(b->x) + Sqr(b->y);
    if (squaredB < kZeroVector) return 0.0;
    const double lengthB = SqrtSafe(squaredB);
    if (lengthB < kZeroVector) return 0.0;
    const double lengths = lengthA * lengthB;
    return std::atan2(KCross(a, b) / lengths, KDot(a, b) / lengths);
}

/// Returns s v.
inline KPoint KScaleVector(const KPoint& v, double s) {
    return {s * v.x, s * v.y};
}

/// Returns `v` turned counter-clockwise by `angle` [rad].
inline KPoint KRotateVector(const KPoint& v, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {v.x * c - v.y * s, v.y * c + v.x * s};
}

/// Returns p + v.
inline KPoint KTranslatePoint(const KPoint& p, const KPoint& v) {
    return {p.x + v.x, p.y + v.y};
}

/// Returns twice the signed area of a triangle [L^2], positive counter-clockwise; exactly 0 below
/// 1e-12.
inline double KCornerCross(const KPoint& a, const KPoint& b, const KPoint& c) {
    KPoint in;
    KPoint out;
    KVectorDiff(&in, &a, &b);
    KVectorDiff(&out, &b, &c);
    const double cross = KCross(&in, &out);
    return SignTol(cross, kZeroVector) == 0 ? 0.0 : cross;
}

/// Returns whether two points coincide: both coordinate differences within `tol` [L], inclusive. A
/// test per axis, not of the distance.
inline bool KPointsEqualTol(const KPoint& a, const KPoint& b, double tol) {
    return AbsValue(a.x - b.x) <= tol && AbsValue(a.y - b.y) <= tol;
}

}  // namespace halvorn

#endif
