#include "contour/fillets.h"

#include <algorithm>
#include <cstddef>

#include "kernel/vectors.h"
#include "numeric/c_array.h"
#include "numeric/constants.h"
#include "numeric/tolerance.h"

namespace halvorn {

namespace {

bool IsZeroCorner(double value) {
    return CompareTol(value, 0.0, kZeroCorner) == 0;
}

KPoint DiffOf(const KPoint& from, const KPoint& to) {
    KPoint difference;
    return *KVectorDiff(&difference, &from, &to);
}

// Writes the six points of one rounded corner.
void WriteArc(const KPoint& centre, const KPoint& tangent1, const KPoint& tangent2, KPoint* out) {
    const KPoint arm1 = DiffOf(centre, tangent1);
    const KPoint arm2 = DiffOf(centre, tangent2);
    const bool hasArc = !IsZeroCorner(KVectorNorm(&arm1)) && !IsZeroCorner(KVectorNorm(&arm2));
    const double step = hasArc ? KVectorAngle(&arm1, &arm2) / FILLET_ARC_STEPS : 0.0;
    out[0] = tangent1;
    for (int k = 1; k < FILLET_ARC_STEPS; ++k) {
        out[k] = hasArc ? KTranslatePoint(centre, KRotateVector(arm1, k * step)) : tangent1;
    }
    out[FILLET_ARC_STEPS] = tangent2;
}

}  // namespace

bool CornerFillet(double thickness, double radius, const KPoint& prev, const KPoint& vertex,
                  const KPoint& next, KPoint* centre, KPoint* tangent1, KPoint* tangent2,
                  double* turnSign) {
    *centre = *tangent1 = *tangent2 = vertex;
    *turnSign = 1.0;
    if (radius <= kZeroCorner) return false;

    const KPoint toPrev = DiffOf(vertex, prev);
    const KPoint toNext = DiffOf(vertex, next);
    const double lengthPrev = KVectorNorm(&toPrev);
    const double lengthNext = KVectorNorm(&toNext);
    const double halfAngle = KVectorAngle(&toPrev, &toNext) * 0.5;
    if (CompareTol(halfAngle, kPi, kZeroCorner) == 0 || IsZeroCorner(halfAngle) ||
        IsZeroCorner(lengthPrev) || IsZeroCorner(lengthNext)) {
        return false;
    }

    // The centre lies on the bisector at R / sin(phi), the tangent points at R / tan(phi) along the
    // edges. |sin| <= 1 also when rounded, so the root is never of a negative number.
    const double arcRadius = radius + thickness * 0.5;
    const double centreDistance = arcRadius / std::sin(halfAngle);
    const double tangentLength = SqrtSafe(Sqr(centreDistance) - Sqr(arcRadius));
    const KPoint unitPrev = KScaleVector(toPrev, 1.0 / lengthPrev);
    const KPoint unitNext = KScaleVector(toNext, 1.0 / lengthNext);
    const KPoint bisector = KRotateVector(unitPrev, halfAngle);
    *turnSign = halfAngle < 0.0 ? -1.0 : 1.0;
    *centre = KTranslatePoint(vertex, KScaleVector(bisector, *turnSign * centreDistance));
    *tangent1 = KTranslatePoint(vertex, KScaleVector(unitPrev, tangentLength));
    *tangent2 = KTranslatePoint(vertex, KScaleVector(unitNext, tangentLength));
    return lengthPrev > tangentLength && lengthNext > tangentLength;
}

void ContourFillets(int n, bool isOpen, double thickness, const double* radii, const KPoint* points,
                    KPoint* centres, KPoint* tangents1, KPoint* tangents2, double* turnSigns) {
    for (int i = 0; i < n; ++i) {
        const bool isEnd = isOpen && (i == 0 || i == n - 1);
        const KPoint& prev = points[i > 0 ? i - 1 : n - 1];
        const KPoint& next = points[i + 1 < n ? i + 1 : 0];
        CornerFillet(thickness, isEnd ? 0.0 : radii[i], prev, points[i], next, &centres[i],
                     &tangents1[i], &tangents2[i], &turnSigns[i]);
    }
}

void RoundContour(int n, bool isOpen, double thickness, const double* radii, const KPoint* points,
                  int* m, KPoint* out) {
    const auto size = static_cast<std::size_t>(std::max(n, 0));
    const CArray<KPoint> centres = AllocateZeroedOrThrow<KPoint>(size);
    const CArray<KPoint> tangents1 = AllocateZeroedOrThrow<KPoint>(size);
    const CArray<KPoint> tangents2 = AllocateZeroedOrThrow<KPoint>(size);
    const CArray<double> turnSigns = AllocateZeroedOrThrow<double>(size);
    ContourFillets(n, isOpen, thickness, radii, points, centres.get(), tangents1.get(),
                   tangents2.get(), turnSigns.get());

    KPoint* writer = out;
    for (std::size_t i = 0; i < size; ++i) {
        if (IsZeroCorner(radii[i])) {
            *writer++ = points[i];
        } else {
            WriteArc(centres[i], tangents1[i], tangents2[i], writer);
            writer += kPointsPerFillet;
        }
    }
    *m = static_cast<int>(writer - out);
}

}  // namespace halvorn
