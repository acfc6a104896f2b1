/// @file ring_findings.h
/// What one ring tells by itself.
#ifndef HALVORN_ENGINE_VALUES_RING_FINDINGS_H
#define HALVORN_ENGINE_VALUES_RING_FINDINGS_H

#include <cstddef>
#include <string>
#include <vector>

#include "HalvornEngine.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// A few places of each kind are enough to begin with.
inline constexpr std::size_t kMostPlaces = 5;

/// Whether a ring encloses no more than the rounding of its coordinates.
bool HasNoArea(const Points& ring);

/// Adds what the ring of an element tells: too few points, repeated points, straight vertices,
/// spikes, sizes too small for the class.
/// @param unit  of length, for messages
void AddRingFindings(const Element& element, const std::string& unit,
                     std::vector<Finding>* findings);

}  // namespace halvorn::engine

#endif
