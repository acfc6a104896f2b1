#include "section/moment_triple.h"

#include <cmath>

#include "numeric/scalar.h"

namespace halvorn {

MomentTriple RotateMoments(const MomentTriple& triple, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {Sqr(c) * triple.first - 2.0 * c * s * triple.product + Sqr(s) * triple.second,
            (triple.first - triple.second) * s * c + (Sqr(c) - Sqr(s)) * triple.product,
            Sqr(s) * triple.first + 2.0 * c * s * triple.product + Sqr(c) * triple.second};
}

MomentTriple TransferMoments(const MomentTriple& triple, double area, const point2D& centroid) {
    return {Sqr(centroid.y) * area + triple.first, centroid.x * area * centroid.y + triple.product,
            Sqr(centroid.x) * area + triple.second};
}

}  // namespace halvorn
