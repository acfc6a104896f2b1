/// @file split_ring.h
/// A ring's edges split where lines meet it, and the stretches of the lines that run inside it.
#ifndef HALVORN_KERNEL_SPLIT_RING_H
#define HALVORN_KERNEL_SPLIT_RING_H

#include "kernel/kernel.h"
#include "numeric/c_array.h"

namespace halvorn {

/// A line that cuts a ring.
struct KCutLine {
    KPoint origin;
    KPoint direction;  ///< of length 1
    double low;        ///< where the cutting segment begins along the line, from `origin` on [L]
    double high;       ///< where it ends; -infinity and +infinity for an unbounded line
};

/// A stretch of a line through the ring's interior, from one cut point to another.
struct KStretch {
    int start;
    int end;
};

/// A ring that lines are cutting, one after the other.
///
/// Invariants: neighbouring vertices differ unless both are cut points; vertices of one cut point
/// coincide with it per axis within the tolerance; no edge has its ends beyond the tolerance on
/// opposite sides of a line already cut.
struct KSplitRing {
    int count = 0;            ///< vertices
    CArray<KPoint> vertices;  ///< the ring's own and the crossings, in ring order
    CArray<int> cutPointOf;   ///< per vertex: its cut point, or -1
    int cutPointCount = 0;
    CArray<KPoint> cutPoints;
    int besideCount = 0;  ///< vertices that belong to a cut point but differ from it in some bit
    int stretchCount = 0;
    CArray<KStretch> stretches;
    bool hasFreeEnd = false;  ///< a stretch ends inside the ring, at the end of its segment
    bool straddles = false;   ///< a line has vertices beyond the tolerance on both sides
};

/// Fills `split` with the n points of a ring, without those equal to their predecessors. Edges no
/// longer than the tolerance stay: dropping them would change the area.
/// @return 0, or -90 when memory is exhausted
int KBeginSplit(KSplitRing* split, const KPoint* ring, int n);

/// Splits the ring where `line` meets it, and appends the stretches of the line that run inside.
///
/// A vertex within `tol` [L] of the line is a cut point with its own coordinates. Other cut points
/// arise only on edges whose ends lie beyond `tol` on opposite sides. Cut points that coincide per
/// axis within `tol` become one. A stretch between two neighbouring cut points is inside when the
/// ring crosses the line an odd number of times before it, counted just left of the line, and no
/// edge of the ring runs along it.
/// @return 0, or -90 when memory is exhausted, or -1 when a cut point is not finite
/// Cost: n + k log k for k cut points.
int KSplitAtLine(KSplitRing* split, const KCutLine& line, double tol);

}  // namespace halvorn

#endif
