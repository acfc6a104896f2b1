/// @file hole_places.h
/// Whether holes lie within the solids of their section.
#ifndef HALVORN_PYTHON_CORE_HOLE_PLACES_H
#define HALVORN_PYTHON_CORE_HOLE_PLACES_H

#include <cstddef>
#include <optional>
#include <vector>

namespace halvorn::python {

/// A ring of points x0, y0, x1, y1, ... [L].
struct Outline {
    const double* coordinates;
    std::size_t count;
    bool isSolid;
};

/// A point of a hole where there is nothing to subtract.
struct MisplacedPoint {
    std::size_t outline;
    double x;
    double y;
};

/// Returns a point of a hole that lies outside all solids, or within as many other holes as solids;
/// nothing when every hole has its place.
///
/// Looked at are the corners of holes and the middles of their edges, a little inside. Up to 1e-6
/// of the section's size a hole may stick out, as coordinates that were rounded let it. Edges that
/// cross between these points are not found. It costs the sorting of all edges, and for each point
/// the edges at its height.
std::optional<MisplacedPoint> FindMisplacedHole(const std::vector<Outline>& outlines);

}  // namespace halvorn::python

#endif
