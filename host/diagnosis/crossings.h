/// @file crossings.h
/// Where a ring meets itself.
#ifndef HALVORN_HOST_DIAGNOSIS_CROSSINGS_H
#define HALVORN_HOST_DIAGNOSIS_CROSSINGS_H

#include <cstddef>
#include <utility>
#include <vector>

#include "model/section_model.h"

namespace halvorn::host {

/// A place where two edges of a ring cross or touch. Edge i runs from point i to the next.
struct Crossing {
    std::size_t firstEdge = 0;
    std::size_t secondEdge = 0;
    std::pair<double, double> place;
    bool isProper = false;  ///< the edges cross; otherwise they touch or run along each other
};

/// Returns the places where edges of a ring without repeated points meet that do not follow each
/// other, at most `most` and one of several in one point; bridges of keyhole rings, two edges with
/// the same ends, are no such places. The cost is that of sorting the edges and comparing those
/// that overlap in x.
/// @param isOpen the last point does not join the first
std::vector<Crossing> FindCrossings(const Points& ring, bool isOpen, std::size_t most);

}  // namespace halvorn::host

#endif
