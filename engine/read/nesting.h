/// @file nesting.h
/// Solid and hole of rings that do not say which they are.
#ifndef HALVORN_ENGINE_READ_NESTING_H
#define HALVORN_ENGINE_READ_NESTING_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "model/section_model.h"

namespace halvorn::engine {

/// Makes rings within an even number of others solid, those within an odd number holes; their
/// order, orientation and points stay.
///
/// Rings that touch, in a point or along an edge, are told apart by the rest of their outlines: two
/// plates side by side are both solid, a slot that begins on the edge of its plate is a hole. What
/// is near enough to touch is said in geometry/outline_sides.h. Rings that cross, and a ring that
/// lies on another all the way round, do not tell what is meant.
/// @param elements  with rings of at least three finite points
/// @param source    how messages call the file that the rings came from
/// @return the ring that holds all others, if there is one
/// @throws InputError naming two rings by their labels when they cross or lie on each other
std::optional<std::size_t> ClassifyByNesting(std::vector<Element>* elements,
                                             const std::string& source);

}  // namespace halvorn::engine

#endif
