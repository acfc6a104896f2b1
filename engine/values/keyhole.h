/// @file keyhole.h
/// Solids with their holes as single rings.
#ifndef HALVORN_ENGINE_VALUES_KEYHOLE_H
#define HALVORN_ENGINE_VALUES_KEYHOLE_H

#include <string>
#include <vector>

#include "model/section_model.h"

namespace halvorn::engine {

/// The net outlines of a section, or why there are none.
struct NetRings {
    std::vector<Points> rings;  ///< one a solid, in the order of the solids; counter-clockwise
    std::string whyMissing;     ///< one sentence without a full stop; empty: there are rings
};

/// Joins every hole to the solid around it by a bridge of no width, there and back, between two
/// vertices that see each other: a ring round the solid and the other way round its holes, whose
/// area integrals are those of the solid less its holes. No vertex is moved or added.
///
/// There are no rings when a hole does not lie in one solid, reaches its outline or another hole,
/// when solids overlap or an outline crosses itself. Solids may touch, and lie in a hole of another
/// one. Nearer than 1e-6 of the diagonal of the smaller ring's box counts as touching.
///
/// Source of the bridges: the vertex of a hole farthest to the right sees, in the triangle between
/// itself, the nearest edge to the right and the right end of that edge, the vertex that lies
/// nearest in direction (D. Eberly, "Triangulation by ear clipping", 2002). Cost: pairs of rings
/// whose boxes meet, and for every hole one pass over the ring around it.
NetRings JoinHoles(const std::vector<Element>& elements);

}  // namespace halvorn::engine

#endif
