/// @file cut_polygon.h
/// Cuts a ring into closed pieces, by a line or along a polyline.
#ifndef HALVORN_KERNEL_CUT_POLYGON_H
#define HALVORN_KERNEL_CUT_POLYGON_H

#include <cstdlib>

#include "kernel/kernel.h"

namespace halvorn {

/// The pieces of a cut, as the routines below write them; frees its arrays.
struct KPieces {
    int count = 0;             ///< number of pieces
    int* ranges = nullptr;     ///< count + 1 offsets: piece k begins at points[ranges[k]]
    KPoint* points = nullptr;  ///< the pieces, each a ring closed implicitly

    KPieces() = default;
    KPieces(const KPieces&) = delete;
    KPieces& operator=(const KPieces&) = delete;
    ~KPieces() {
        std::free(ranges);
        std::free(points);
    }
};

/// Cuts a ring of n points by the unbounded line through `p1` and `p2`.
///
/// Every piece lies on one side of the line, up to `tol` [L], and has the orientation of the ring.
/// The pieces of a simple ring add up to it. A hole that hangs on the outline by a bridge, the same
/// edge out and back, is cut as a hole. Parts smaller than about twice the tolerance where the line
/// runs, such as an edge of 1.5 tol that ends on it, may come out on either side, or join the
/// pieces that they touch.
///
/// All this holds while no coordinate exceeds 1e14 tol, which is 1e4 for a tolerance of 1e-10.
/// Above it, rounding comes near the tolerance, and a piece may reach across the line: from
/// about 1.5e14 tol where the line passes vertices at about the tolerance, from about 2e15 tol
/// where it runs through a vertex. A line clear of all vertices still cuts well.
///
/// `p1` and `p2` must be at least 1e-6 apart: nearer they give no direction (`KVectorAngle`), and a
/// line that is not level may miss the ring.
///
/// Cost: n + k log k for k cut points, and d^2 for d edges that meet in one of them.
/// @return positive with the pieces in the out-parameters, which the caller frees; 0 with 0 and
///         null for a line that misses or only touches the ring, for p1 and p2 coinciding within
///         `tol` per axis, for coordinates that are not finite, and when memory is exhausted. Never
///         negative.
int KCutPolygonByLine(const KPoint* ring, int n, const KPoint& p1, const KPoint& p2, double tol,
                      int* count, int** ranges, KPoint** points);

/// Splits a ring of n points along a polyline of `ncut` points, read as segments 0-1, 2-3, ...; an
/// odd last point is not read. A segment that ends inside the ring cuts only if another segment
/// goes on from there. Segments that cross each other inside the ring are not supported: the pieces
/// then overlap. Coordinates as for `KCutPolygonByLine`.
///
/// With ncut = 0 the result is a copy of the ring with the one irregular count of the kernel: it is
/// 2, the number of offsets [0, n], not of pieces.
///
/// Cost: for each of s segments N + k log k, where N counts the vertices and the points at which
/// the lines of all earlier segments, in full length, meet the ring; k of them lie on this line;
/// and d^2 as above.
/// @return 1 with the pieces; 0 when the split is not valid: some edge of the ring belongs to no
///         piece; -90 when memory is exhausted. For 0 and below the outputs are 0 and null.
int KSplitPolygonByPolyline(const KPoint* ring, int n, const KPoint* cut, int ncut, double tol,
                            int* count, int** ranges, KPoint** points);

}  // namespace halvorn

#endif
