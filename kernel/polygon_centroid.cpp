#include "kernel/polygon_centroid.h"

#include <cstddef>

#include "kernel/classify_polygon.h"
#include "kernel/polygon_area.h"
#include "kernel/triangulate_polygon.h"
#include "kernel/vectors.h"
#include "numeric/c_array.h"
#include "numeric/constants.h"
#include "numeric/tolerance.h"

namespace halvorn {

KPoint* KPolygonCentroid(KPoint* out, const KPoint* ring, int n, double tol) {
    if (n < 1) return KMakePoint(out, 0.0, 0.0);
    if (n == 1) return KMakePoint(out, ring[0].x, ring[0].y);
    if (n == 2) return KMidpoint(out, &ring[0], &ring[1]);

    KPoint sum{0.0, 0.0};
    for (int i = 0; i < n; ++i) sum = KTranslatePoint(sum, ring[i]);
    KMakePoint(out, sum.x / n, sum.y / n);
    if (n == 3) return out;

    const int classified = KClassifyPolygon(ring, n, tol);
    if (classified != kSimplePolygon && classified != kConvexPolygon) return out;
    const CArray<int> triangles = AllocateZeroed<int>(3 * (static_cast<std::size_t>(n) - 2));
    int count = 0;
    if (!triangles || KTriangulatePolygon(ring, n, triangles.get(), &count, tol) != 0) return out;

    double area = 0.0;
    KPoint moment{0.0, 0.0};
    for (const int* triangle = triangles.get(); count > 0; --count, triangle += 3) {
        const KPoint& a = ring[triangle[0]];
        const KPoint& b = ring[triangle[1]];
        const KPoint& c = ring[triangle[2]];
        const double part = 0.5 * AbsValue(KCornerCross(a, b, c));
        area += part;
        moment.x += part * ((b.x + a.x + c.x) / 3.0);
        moment.y += part * ((b.y + a.y + c.y) / 3.0);
    }
    if (area != 0.0 && IsEqualTol(KPolygonArea(&ring->x, n), area, kAreaAgreement)) {
        KMakePoint(out, moment.x / area, moment.y / area);
    }
    return out;
}

}  // namespace halvorn
