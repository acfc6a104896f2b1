/// @file plastic_halves.h
/// The halves of a region on both sides of a plastic axis.
#ifndef HALVORN_ENGINE_VALUES_PLASTIC_HALVES_H
#define HALVORN_ENGINE_VALUES_PLASTIC_HALVES_H

#include <array>
#include <vector>

#include "HalvornEngine.h"
#include "region/region.h"

namespace halvorn::engine {

/// Cuts every part of a region at its plastic axis, as `KCutPolygonByLine` cuts. The area of each
/// half agrees with half of the region's within 1e-9 of it, else there are none.
PlasticHalves HalvesOf(const Region& region, AxisDirection direction);

/// Returns the same.
/// @param joined  the ring of each part, as `JoinedRing` gives it, for both directions
PlasticHalves HalvesOf(const Region& region, const std::vector<Points>& joined,
                       AxisDirection direction);

/// Returns the joined ring of each part.
std::vector<Points> JoinedRingsOf(const Region& region);

/// Returns what the sides about an axis are called: "above" and "below", "right" and "left".
std::array<const char*, 2> SidesOf(AxisDirection direction);

}  // namespace halvorn::engine

#endif
