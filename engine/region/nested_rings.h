/// @file nested_rings.h
/// The region of outlines that keep clear of each other, without a triangulation.
#ifndef HALVORN_ENGINE_REGION_NESTED_RINGS_H
#define HALVORN_ENGINE_REGION_NESTED_RINGS_H

#include <optional>
#include <span>

#include "geometry/arrangement.h"
#include "region/region.h"

namespace halvorn::engine {

/// Returns the region of outlines that neither meet nor nearly meet, themselves included, and of
/// which one lies in another as solids and holes do; its parts are the rings, in any order. Empty
/// for all others, also for those of which a quick look cannot tell.
std::optional<Region> RegionOfNestedRings(std::span<const WeightedRing> outlines,
                                          FramedOutlines framed);

}  // namespace halvorn::engine

#endif
