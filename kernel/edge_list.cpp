#include "kernel/edge_list.h"

#include <cstddef>

#include "kernel/vectors.h"
#include "numeric/scalar.h"

namespace halvorn {

namespace {

bool IsLiveInList(const KEdgeList& edges, int e) {
    return AbsValue(edges.points[2 * static_cast<std::ptrdiff_t>(e)].x) < UNDEFINED_VALUE;
}

}  // namespace

int KFindDanglingEdge(const KEdgeList& edges, double tol) {
    const auto isMatched = [&](int point, int edge) {
        for (int i = 0; i < edges.pointCount; ++i) {
            if (i / 2 != edge && KPointsEqualTol(edges.points[point], edges.points[i], tol)) {
                return true;
            }
        }
        return false;
    };
    for (int e = 0; 2 * e + 1 < edges.pointCount; ++e) {
        if (!IsLiveInList(edges, e)) continue;
        if (!isMatched(2 * e, e) || !isMatched(2 * e + 1, e)) return 2 * e;
    }
    return -1;
}

}  // namespace halvorn
