/// @file placed_entities.h
/// All entities that a drawing places in model space, those of its blocks too.
#ifndef HALVORN_ENGINE_READ_DXF_PLACED_ENTITIES_H
#define HALVORN_ENGINE_READ_DXF_PLACED_ENTITIES_H

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "read/dxf/drawing.h"
#include "read/dxf/plane_map.h"

namespace halvorn::engine::dxf {

/// What an entity takes over from the placement of the block that holds it.
struct Placement {
    PlaneMap map;
    std::string_view layer = "0";     ///< of what is drawn on the layer 0 of the block
    bool isAslant = false;            ///< the block, to the x-y plane
    const Entity* clipped = nullptr;  ///< the INSERT whose border may cut the entity off, if any
    int depth = 0;
};

/// What the walk calls for each entity.
struct EntityVisitor {
    /// Returns whether to go on with an entity, with an INSERT to what its block holds.
    /// @param layer that of the entity, or of its INSERT where it is drawn on the layer 0
    std::function<bool(const Entity& entity, std::string_view layer)> wants;

    /// Takes an entity that is wanted and no INSERT.
    /// @param vertices the VERTEX entities that follow a POLYLINE; else empty
    std::function<void(const Entity& entity, std::span<const Entity> vertices,
                       const Placement& placement)>
        take;

    /// Is told what cannot be placed: "INSERT of the block A, which ..., left out".
    std::function<void(const std::string& what, int line)> leaveOut;
};

/// Goes through model space in the order of the file.
/// @throws InputError for damaged entities, for blocks too deep in each other, and for more than
///         500000 entities and copies of blocks
void VisitPlaced(const Drawing& drawing, const std::string& source, const EntityVisitor& visitor);

}  // namespace halvorn::engine::dxf

#endif
