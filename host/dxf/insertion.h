/// @file insertion.h
/// The entity that places a block in a drawing.
#ifndef HALVORN_HOST_DXF_INSERTION_H
#define HALVORN_HOST_DXF_INSERTION_H

#include <string>

#include "dxf/drawing.h"
#include "dxf/plane_map.h"

namespace halvorn::host::dxf {

struct Insertion {
    std::string block;     ///< key in `Drawing::blocks`
    bool isSingle = true;  ///< not repeated in rows and columns
    bool isFlat = true;    ///< parallel to the x-y plane, and no scale is 0
    PlaneMap placement;    ///< of the block's coordinates measured from its base point
};

/// Reads an INSERT.
/// @throws InputError naming the line
Insertion ReadInsertion(const Entity& entity, const std::string& source);

}  // namespace halvorn::host::dxf

#endif
