/// @file overlaps.h
/// Areas that several elements share.
#ifndef HALVORN_ENGINE_VALUES_OVERLAPS_H
#define HALVORN_ENGINE_VALUES_OVERLAPS_H

#include <cstddef>
#include <vector>

#include "model/section_model.h"

namespace halvorn::engine {

/// Area of an element that another one, or none, has. All areas in the square of the unit.
struct Overlap {
    std::size_t first = 0;   ///< index of the element
    std::size_t second = 0;  ///< of the other element; for a hole outside the solids the same
    double area = 0.0;
};

struct Overlaps {
    std::vector<Overlap> solids;        ///< pairs of solids: area counted twice
    std::vector<Overlap> holes;         ///< pairs of holes: area subtracted twice
    std::vector<Overlap> outsideHoles;  ///< area of a hole that lies in no solid
    std::vector<Overlap> turns;         ///< area of one ring that it runs round more than once
};

/// Returns the overlaps of more than the 1e-9th part of the smaller element. Where solids less
/// holes count 1 or 0, as on an island within a hole, nothing overlaps. Rings that cross themselves
/// count as what an even-odd filling shows.
/// @throws ArrangementError for outlines that cannot be arranged
Overlaps FindOverlaps(const std::vector<Element>& elements);

}  // namespace halvorn::engine

#endif
