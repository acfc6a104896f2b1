/// @file arrangement.h
/// All outlines of a section in one plane: what lies in what, where they meet and cross.
#ifndef HALVORN_ENGINE_GEOMETRY_ARRANGEMENT_H
#define HALVORN_ENGINE_GEOMETRY_ARRANGEMENT_H

#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "geometry/point.h"
#include "geometry/triangulation.h"

namespace halvorn::engine {

/// The coordinates in which an arrangement computes: moved near the origin where they lie far from
/// it, and scaled by a power of two to a size between 1/2 and 1. Both steps are exact.
struct Frame {
    Point origin;      ///< in the section's coordinates [L]
    int exponent = 0;  ///< one unit of the frame is 2^exponent [L]

    Point ToFrame(const Point& p) const;
    Point FromFrame(const Point& p) const;
    double LengthFromFrame(double length) const;
};

/// A closed outline. Its winding number counts `weight` times: 1 for a solid, -1 for a hole. An
/// outline counts as counter-clockwise on the whole, whichever way it was drawn.
struct WeightedRing {
    const Points* ring = nullptr;
    int weight = 1;
};

/// The outlines of a section in the frame of an arrangement.
struct FramedOutlines {
    Frame frame;
    double size = 0.0;  ///< longer side of the box around all, in the frame
    std::vector<Points> rings;
};

/// Where outlines cross. Both are the same where one crosses itself.
struct OutlineCrossing {
    Index first = kNone;
    Index second = kNone;
    Point place;  ///< [L]
};

/// A vertex of one outline near an edge or a vertex of another.
struct OutlineContact {
    Index vertexOf = kNone;
    Index edgeOf = kNone;
    Point place;            ///< of the vertex [L]
    double distance = 0.0;  ///< [L]
    Point foot;             ///< where the other is nearest [L]
};

/// Outlines that cannot be arranged: coordinates that are not finite or far too large, or more
/// crossings than any section has.
class ArrangementError : public std::runtime_error {
public:
    explicit ArrangementError(const std::string& problem, Index first = kNone, Index second = kNone)
        : std::runtime_error(problem), first_(first), second_(second) {}

    /// Two of the outlines with too many crossings, the same twice where one crosses itself; kNone
    /// for other errors.
    Index First() const { return first_; }
    Index Second() const { return second_; }

private:
    Index first_;
    Index second_;
};

/// Brings outlines into the frame in which an arrangement computes.
/// @throws ArrangementError
FramedOutlines FrameOutlines(std::span<const WeightedRing> rings);

/// Distances in parts of the size, the longer side of the box around all outlines.
inline constexpr double kMergeDistance = 1e-9;    ///< points nearer than this are one
inline constexpr double kContactDistance = 1e-6;  ///< a vertex this near to another outline's
                                                  ///< edge is set onto it
inline constexpr double kNearMissDistance =
    1e-4;  ///< outlines this near that do not touch are told

/// A constrained Delaunay triangulation of the outlines with the winding sum of every triangle.
///
/// Points nearer than 1e-9 of the size become one. A vertex within 1e-6 of the size of another
/// outline's vertex or edge is set onto it; nothing else moves. Where outlines cross there is a new
/// vertex. Cost: n log n for outlines with few crossings.
class Arrangement {
public:
    /// @throws ArrangementError
    explicit Arrangement(std::span<const WeightedRing> rings);

    /// An arrangement in which nothing moves, of rings in the coordinates of a frame that touch in
    /// common vertices and whole edges at most. They count as they run: counter-clockwise 1,
    /// clockwise -1.
    static Arrangement OfTouchingRings(std::span<const Points* const> rings);

    const Triangulation& Mesh() const { return mesh_; }
    const Frame& Coordinates() const { return frame_; }
    double Size() const { return size_; }  ///< in the frame
    /// The weighted winding numbers summed: 0 outside, 1 within one solid, 2 where two overlap.
    int SumAt(Index triangle) const { return sums_[static_cast<std::size_t>(triangle)]; }

    const std::vector<OutlineCrossing>& Crossings() const { return crossings_; }
    /// Vertices that were set onto another outline.
    const std::vector<OutlineContact>& Moved() const { return moved_; }
    /// Of each pair of outlines that nearly touch and do not: the place where they are nearest.
    const std::vector<OutlineContact>& NearMisses() const { return nearMisses_; }

private:
    friend class ArrangementBuilder;
    Arrangement() = default;

    Frame frame_;
    double size_ = 0.0;
    Triangulation mesh_;
    std::vector<int> sums_;
    std::vector<OutlineCrossing> crossings_;
    std::vector<OutlineContact> moved_;
    std::vector<OutlineContact> nearMisses_;
};

}  // namespace halvorn::engine

#endif
