/// @file region.h
/// What the outlines of a section mean: where there is material, once, and in which parts.
#ifndef HALVORN_ENGINE_REGION_REGION_H
#define HALVORN_ENGINE_REGION_REGION_H

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "geometry/arrangement.h"
#include "geometry/point.h"

namespace halvorn::engine {

/// A connected piece of material. Its rings are simple: where two places of it meet in one point
/// only, each ring passes by the point on its own side of the material. The outline runs
/// counter-clockwise, the voids clockwise; voids that meet in a point are one ring.
struct Part {
    Points outline;
    std::vector<Points> voids;
    double area = 0.0;  ///< net
};

/// A face of the plane where the outlines say something else than one solid or nothing: solids less
/// holes are 2 or more (overlap) or -1 or less (a hole takes what is not there), or are 1 of three
/// outlines or more of which no hole is smaller than one solid and larger than the next (a hole in
/// solids that overlap), or an outline runs round it more than once or the other way.
struct OddPlace {
    int sum = 0;        ///< solids less holes there
    double area = 0.0;  ///< [L^2]
    Point place;        ///< a point within [L]
    /// The outlines that run round it, and how often, counter-clockwise positive.
    std::vector<std::pair<std::size_t, int>> windings;
};

/// The material of a section. Rings are in the coordinates of `frame`, whose size is about 1.
///
/// There is material where the winding numbers of the solids less those of the holes sum to 1 or
/// more; what overlaps counts once.
struct Region {
    Frame frame;
    std::vector<Part> parts;  ///< in the order of their lowest, then leftmost points
    double area = 0.0;        ///< of all parts, in the frame
    double size = 0.0;        ///< longer side of the box around all outlines, in the frame

    std::vector<OddPlace> oddPlaces;
    std::vector<Point> pinches;  ///< where material meets in one point only [L]
    std::vector<OutlineCrossing> crossings;
    std::vector<OutlineContact> moved;
    std::vector<OutlineContact> nearMisses;  ///< of outlines that neither cross nor are filled up
    /// Of each outline: the parts that it borders.
    std::vector<std::vector<std::size_t>> partsOf;

    bool IsEmpty() const { return parts.empty(); }
};

/// Returns the region of the outlines of a section. Cost: a few passes over the vertices where the
/// outlines keep clear of each other, as those of most sections do; otherwise that of
/// `RegionOfArrangement`.
/// @throws ArrangementError for outlines that cannot be arranged
Region RegionOf(std::span<const WeightedRing> outlines);

/// Returns the same, always by the arrangement of all outlines; the rings of the parts may start
/// at other points. Cost: n log n for outlines with few crossings.
/// @throws ArrangementError
Region RegionOfArrangement(std::span<const WeightedRing> outlines);

/// Returns the outline and the voids of a part as one ring, joined by bridges, there and back. They
/// are as short as can be, and keep off the directions of the axes where they can, since neutral
/// axes run there. Cost: a triangulation of the part, when it has voids.
Points JoinedRing(const Part& part);

}  // namespace halvorn::engine

#endif
