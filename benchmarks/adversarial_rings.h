/// @file adversarial_rings.h
/// Rings that are chosen to make routines slow.
#ifndef HALVORN_BENCHMARKS_ADVERSARIAL_RINGS_H
#define HALVORN_BENCHMARKS_ADVERSARIAL_RINGS_H

#include <cstddef>
#include <vector>

#include "numeric/point2d.h"

namespace halvorn::benchmarks {

/// A family of rings with about n vertices each; those of random points differ with the seed.
struct RingFamily {
    const char* name;
    std::vector<point2D> (*make)(std::size_t n, unsigned int seed);
    bool meetsInOnePoint = false;  ///< a share of all edges meets y = 0 or x = 0 in one point
    bool isOneContour = true;      ///< else every three vertices are a contour
};

/// All families, from winding outlines over points that coincide to coordinates that are no
/// numbers. The lines y = 0 and x = 0 meet most of them, in as many edges as the family allows.
const std::vector<RingFamily>& AdversarialRings();

}  // namespace halvorn::benchmarks

#endif
