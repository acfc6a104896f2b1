/// @file polygons.h
/// The parts of a region as polygons that other programs take.
#ifndef HALVORN_ENGINE_REGION_POLYGONS_H
#define HALVORN_ENGINE_REGION_POLYGONS_H

#include <vector>

#include "region/region.h"

namespace halvorn::engine {

/// Returns a polygon for each part, in their order, in the section's coordinates. A ring of a part
/// may come back to a point; here each loop between is a ring of its own.
std::vector<Polygon> PolygonsOf(const Region& region);

}  // namespace halvorn::engine

#endif
