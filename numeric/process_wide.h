/// @file process_wide.h
/// The library's only state outside its objects: a tolerance and a flag of the whole process,
/// shared by every section on every thread.
///
/// Both are relaxed atomics: sections on different threads never race, and no order is promised
/// between a write and what other threads compute meanwhile.
#ifndef HALVORN_NUMERIC_PROCESS_WIDE_H
#define HALVORN_NUMERIC_PROCESS_WIDE_H

#include <atomic>

#include "numeric/ieee_arithmetic.h"

namespace halvorn {

/// Tolerance of thin-wall offsetting, for the length of a sum of two unit normals; 1e-8 until a
/// host sets another value.
extern std::atomic<double> Tol3D;

/// Cleared when a contour's area is zero within 1e-15; never set, never read by a computation.
extern std::atomic<unsigned char> CalculValid;

}  // namespace halvorn

#endif
