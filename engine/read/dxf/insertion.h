/// @file insertion.h
/// The entity that places a block in a drawing.
#ifndef HALVORN_ENGINE_READ_DXF_INSERTION_H
#define HALVORN_ENGINE_READ_DXF_INSERTION_H

#include <string>
#include <utility>

#include "geometry/point.h"
#include "read/dxf/drawing.h"
#include "read/dxf/plane_map.h"

namespace halvorn::engine::dxf {

struct Insertion {
    std::string block;      ///< key in `Drawing::blocks`
    int columns = 1;        ///< at least one
    int rows = 1;           ///< likewise
    bool isAslant = false;  ///< to the x-y plane
    bool hasExtent = true;  ///< no scale is 0

    /// Returns the map of one copy, from the block's coordinates measured from its base point to
    /// those of the drawing; of a block aslant what is seen along z of its x-y plane.
    PlaneMap Copy(int column, int row) const;

    Point toColumn;      ///< step to the next column, in the entity's coordinates
    Point toRow;         ///< likewise to the next row
    PlaneMap placement;  ///< of the first copy, likewise
    PlaneMap toDrawing;  ///< from the entity's coordinates to the drawing's
};

/// Reads an INSERT. Rows and columns turn with the block, their distances do not stretch with it.
/// @throws InputError naming the line, also for more rows and columns than any section has
Insertion ReadInsertion(const Entity& entity, const std::string& source);

}  // namespace halvorn::engine::dxf

#endif
