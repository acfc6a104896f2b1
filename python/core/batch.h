/// @file batch.h
/// Many sections in one call, over threads.
#ifndef HALVORN_PYTHON_CORE_BATCH_H
#define HALVORN_PYTHON_CORE_BATCH_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "section_values.h"

namespace halvorn::python {

/// Sections of free contours, one after the other in flat arrays.
struct Batch {
    std::vector<double> coordinates;           // x0, y0, x1, y1, ... of all contours [L]
    std::vector<std::int64_t> contourOffsets;  // first point of each contour, and the number of all
    std::vector<unsigned char> flags;          // one per contour
    std::vector<std::int64_t> sectionOffsets;  // first contour of each section, and their number
    std::vector<double> dx;                    // one per section [L]
    std::vector<double> dy;
    bool wantsPlasticAxes = false;  // behind the other values

    std::size_t SectionCount() const { return sectionOffsets.size() - 1; }
    std::size_t ColumnCount() const { return kValueCount + (wantsPlasticAxes ? 2 : 0); }
};

/// Returns "points[17] (section 2, contour 5, its point 3)", counted from 0 as in the arrays; no
/// more than "points[17]" when the offsets do not hold it.
std::string NameBatchPoint(const Batch& batch, std::size_t point);

/// Returns what is wrong with the offsets, in one line that names contour and section; empty when
/// every section has a contour and every contour three points.
std::string FindOffsetFault(const Batch& batch);

/// Returns how many threads a batch is worth when the caller leaves it open: never more than there
/// are processors or sections.
std::size_t ChooseThreadCount(const Batch& batch);

/// Writes the values of every section in reading order, NaN for what was not computed: the same
/// bits whatever the number of threads.
/// @param batch       without faults; it is only read
/// @param threadCount at least 1; the calling thread is one of them. When the system gives fewer,
///                    fewer do the work.
/// @param values      `ColumnCount` per section
/// @param losses      one per section: the relative error of its inertias where rounding leaves
///                    fewer than seven digits of them, else 0
/// @param isInterrupted asked on the calling thread every so often; true ends the work early
/// @returns whether all was computed
/// @throws std::bad_alloc when memory runs out on any thread
bool ComputeBatch(Batch& batch, std::size_t threadCount, double* values, double* losses,
                  const std::function<bool()>& isInterrupted);

}  // namespace halvorn::python

#endif
