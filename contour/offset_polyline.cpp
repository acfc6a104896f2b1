#include "contour/offset_polyline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "kernel/polygon_area.h"
#include "kernel/vectors.h"
#include "numeric/c_array.h"
#include "numeric/constants.h"
#include "numeric/process_wide.h"
#include "numeric/tolerance.h"

namespace halvorn {

namespace {

// The unit normal to the left of the segment from a to b, which must differ. The true length, not
// KVectorNorm, which is 0 for segments shorter than 1e-6.
KPoint LeftNormal(const KPoint& a, const KPoint& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double length = std::hypot(dx, dy);
    return {-dy / length, dx / length};
}

// The offset of the left face from the vertex between two distinct neighbours.
KPoint CornerOffset(double thickness, const KPoint& prev, const KPoint& vertex,
                    const KPoint& next) {
    const KPoint normalIn = LeftNormal(prev, vertex);
    const KPoint normalOut = LeftNormal(vertex, next);
    const KPoint sum = KTranslatePoint(normalIn, normalOut);
    const double length = KVectorNorm(&sum);
    // Never divides by 0, even when a host has made the tolerance negative.
    const bool cancels =
        IsEqualTol(length, 0.0, Tol3D.load(std::memory_order_relaxed)) || length == 0.0;
    const double scale = cancels ? 1.0 : 1.0 / length;

    KPoint toPrev;
    KPoint toNext;
    KVectorDiff(&toPrev, &vertex, &prev);
    KVectorDiff(&toNext, &vertex, &next);
    const double halfAngle = AbsValue(KVectorAngle(&toPrev, &toNext)) * 0.5;
    double distance = thickness * 0.5;
    if (CompareTol(halfAngle, kPi, kZeroCorner) != 0 &&
        CompareTol(halfAngle, 0.0, kZeroCorner) != 0) {
        distance /= std::sin(halfAngle);
    }
    return KScaleVector(KScaleVector(sum, scale), distance);
}

}  // namespace

void OffsetVertex(double thickness, const KPoint& prev, const KPoint& vertex, const KPoint& next,
                  KPoint* sideA, KPoint* sideB) {
    const bool hasPrev = !KPointsEqualTol(prev, vertex, kZeroCorner);
    const bool hasNext = !KPointsEqualTol(next, vertex, kZeroCorner);
    KPoint offset{0.0, 0.0};
    if (hasPrev && hasNext) {
        offset = CornerOffset(thickness, prev, vertex, next);
    } else if (hasPrev) {
        offset = KScaleVector(LeftNormal(prev, vertex), thickness * 0.5);
    } else if (hasNext) {
        offset = KScaleVector(LeftNormal(vertex, next), thickness * 0.5);
    }
    *sideA = KTranslatePoint(vertex, offset);
    *sideB = KTranslatePoint(vertex, KScaleVector(offset, -1.0));
}

void OffsetPolyline(int n, bool isOpen, double thickness, const KPoint* points, KPoint* outA,
                    KPoint* outB) {
    if (n < 1) return;
    const auto size = static_cast<std::size_t>(n);
    const CArray<KPoint> line = AllocateZeroedOrThrow<KPoint>(size);
    std::copy_n(points, size, line.get());
    // The left face of a counter-clockwise ring is its inner one, of a clockwise ring its outer
    // one.
    const bool isClockwise = KPolygonSignedArea(&line[0].x, n) > 0.0;
    KPoint* const left = isClockwise ? outB : outA;
    KPoint* const right = isClockwise ? outA : outB;
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t before = i > 0 ? i - 1 : (isOpen ? i : size - 1);
        const std::size_t after = i + 1 < size ? i + 1 : (isOpen ? i : 0);
        OffsetVertex(thickness, line[before], line[i], line[after], &left[i], &right[i]);
    }
}

}  // namespace halvorn
