/// @file outline.h
/// The rings of a drawn profile or wall.
#ifndef HALVORN_ENGINE_GEOMETRY_OUTLINE_H
#define HALVORN_ENGINE_GEOMETRY_OUTLINE_H

#include <cstddef>

#include "geometry/point.h"

namespace halvorn::engine::shapes {

/// The outer ring of a profile or wall and, for hollow ones, the ring of its hole; the hole is
/// empty otherwise. Both rings run counter-clockwise.
struct Outline {
    Points solid;
    Points hole;
};

/// Returns a hollow outline as one keyhole ring: the outer ring counter-clockwise, a bridge to
/// the hole, the hole clockwise, the same bridge back. Without a hole it is the outer ring.
///
/// The bridge joins the points of both rings that lie farthest in the direction (1, 1). It has no
/// width, so every area integral over the ring is that of the net section. It keeps clear of the
/// axes of symmetry, on which a plastic neutral axis would run along a bridge.
/// @pre both rings are convex and the hole lies inside the outer ring, as in all hollow outlines
///      drawn here; then the bridge meets each ring in its end point only
Points KeyholeRing(const Outline& outline);

/// Returns a hollow outline as one keyhole ring in the same way, bridged from one point of the
/// solid ring to one of the hole by their indices.
/// @pre the bridge meets each ring in its end point only
Points KeyholeRing(const Outline& outline, std::size_t solidPoint, std::size_t holePoint);

}  // namespace halvorn::engine::shapes

#endif
