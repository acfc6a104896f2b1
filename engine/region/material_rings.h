/// @file material_rings.h
/// The border of the material of an arrangement as rings.
#ifndef HALVORN_ENGINE_REGION_MATERIAL_RINGS_H
#define HALVORN_ENGINE_REGION_MATERIAL_RINGS_H

#include <array>
#include <cstddef>
#include <vector>

#include "geometry/arrangement.h"
#include "geometry/point.h"

namespace halvorn::engine {

/// A walk round a border of the material, which lies on its left.
struct MaterialRing {
    Points points;             ///< in the frame
    Index triangle = kNone;    ///< one of the material beside it
    std::vector<Index> edges;  ///< outlines along it, without repetition
};

/// Returns what a bridge costs: the square of its length, four times as much within 3 degrees of an
/// axis, where neutral axes run.
inline double BridgeCost(const Point& from, const Point& to) {
    constexpr double kAxisPenalty = 4.0;
    constexpr double kAlongAxis = 0.05 * 0.05;  // square of the sine of the angle
    const double x = (to.x - from.x) * (to.x - from.x);
    const double y = (to.y - from.y) * (to.y - from.y);
    const double square = x + y;
    const bool isAlongAxis = (x < y ? x : y) <= kAlongAxis * square;
    return isAlongAxis ? kAxisPenalty * square : square;
}

/// See `Region` and `Part` for what the rings are.
class MaterialRings {
public:
    explicit MaterialRings(const Arrangement& arrangement);

    const std::vector<MaterialRing>& Rings() const { return rings_; }
    /// Vertices that several walks pass, or one several times.
    const std::vector<Index>& Pinches() const { return pinches_; }

    /// The rings again, those of each connected piece of material joined by bridges along edges of
    /// the triangulation: one ring for each piece. Bridges are as short as can be, and keep off the
    /// directions of the axes where they can, since neutral axes run there.
    std::vector<MaterialRing> Joined() const;

private:
    struct Side {
        Index triangle = kNone;
        std::size_t edge = 0;
    };
    using Flags = std::vector<std::array<bool, 3>>;

    bool IsMaterial(Index triangle) const;
    bool IsWall(const Side& side, const Flags& bridges) const;
    Side Beyond(const Side& side) const;
    std::vector<MaterialRing> Trace(const Flags& bridges,
                                    std::vector<std::array<Index, 3>>* corners,
                                    std::vector<int>* passes) const;
    Flags Bridges() const;
    void NoteOutlines(const Side& side, MaterialRing& ring) const;

    const Arrangement& arrangement_;
    const Triangulation& mesh_;
    std::vector<MaterialRing> rings_;
    std::vector<Index> pinches_;
    std::vector<std::array<Index, 3>> cornerRing_;  // of each corner of a triangle: the ring that
                                                    // passes it, or kNone
};

}  // namespace halvorn::engine

#endif
