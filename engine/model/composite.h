/// @file composite.h
/// Sections of more than one material: what of each is where.
#ifndef HALVORN_ENGINE_MODEL_COMPOSITE_H
#define HALVORN_ENGINE_MODEL_COMPOSITE_H

#include <cstddef>
#include <string>
#include <vector>

#include "geometry/arrangement.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Returns whether an element has another modulus of elasticity than the reference.
bool IsComposite(const std::vector<Element>& elements);

/// Returns the modular ratios of the solids, the greatest first, each once.
std::vector<double> ModularRatiosOf(const std::vector<Element>& elements);

/// Elements of one name, that of their row where they are of one, and of one modular ratio.
struct MaterialPart {
    std::string name;  ///< label of its first solid
    double modularRatio = 1.0;
    std::vector<std::size_t> elements;  ///< solids and the holes of hollow ones
};

/// Returns what a composite section consists of, in the order of its elements.
std::vector<MaterialPart> MaterialPartsOf(const std::vector<Element>& elements);

/// Returns whether a ring lies within another or sticks out by no more than the chords of an arc
/// may: a thousandth of the other's size.
bool LiesWithin(const Points& inner, const Points& outer);

/// Returns the holes in all materials that a solid is an island of: it lies within them, and no
/// other such hole comes near it.
std::vector<const Element*> HolesAround(const Element& solid, const std::vector<Element>& elements);

/// Returns the outlines of all material of at least a modular ratio. They refer to the elements. A
/// hollow part is hollow for itself alone, so that another may fill it; any other hole outweighs
/// all solids, and so takes whatever lies under it, but for its islands.
std::vector<WeightedRing> OutlinesFrom(const std::vector<Element>& elements, double leastRatio);

/// Returns the outlines of what a part keeps: without what stiffer parts and holes take. Likewise.
std::vector<WeightedRing> OutlinesOf(const std::vector<Element>& elements,
                                     const MaterialPart& part);

}  // namespace halvorn::engine

#endif
