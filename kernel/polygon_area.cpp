#include "kernel/polygon_area.h"

#include <cstddef>

#include "numeric/scalar.h"

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

}  // namespace halvorn
