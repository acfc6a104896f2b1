/// @file records.h
/// The plain records that kernel routines exchange.
///
/// Kernel conventions: a polygon (ring) is a pointer and an `int` count; it is closed implicitly
/// and never repeats its first point. Routines return an `int` status, 0 or more for results and
/// below 0 for failures, write zero to every out-parameter first, free what they allocated when
/// they fail, and let no exception pass. Arrays come from calloc or realloc and are released with
/// free.
#ifndef HALVORN_KERNEL_RECORDS_H
#define HALVORN_KERNEL_RECORDS_H

#include "numeric/point2d.h"

namespace halvorn {

/// The kernel's 2-D point or vector [L]: the section's own point under its kernel name, so that
/// arrays pass between the layers without a cast.
using KPoint = point2D;

/// A 3-D point or vector [L].
struct KPoint3 {
    double x;
    double y;
    double z;
};

/// A directed segment: start, then end.
struct KSegment {
    KPoint start;
    KPoint end;
};

/// Status of a routine that could not get memory.
inline constexpr int kOutOfMemory = -90;

}  // namespace halvorn

#endif
