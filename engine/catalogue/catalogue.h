/// @file catalogue.h
/// Catalogue profiles by name, from the table of published values in this folder.
#ifndef HALVORN_ENGINE_CATALOGUE_CATALOGUE_H
#define HALVORN_ENGINE_CATALOGUE_CATALOGUE_H

#include <string>
#include <string_view>
#include <vector>

#include "geometry/arc_division.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Whether the catalogue has a profile of this name. Case, blanks and the kind of multiplication
/// sign do not matter: "ipe 300", "L 100X100x10".
bool IsCatalogueProfile(std::string_view name);

/// Returns the names closest to one that the catalogue does not have, at most three.
std::vector<std::string> SimilarProfiles(std::string_view name);

/// Returns the elements of a profile, lower left corner of its bounding box at the origin.
///
/// Drawn: the outline as free contours, a hollow profile as solid and hole. With published values:
/// one standard profile with the values of the table; what the table does not hold is empty.
/// @param name      as for `IsCatalogueProfile`
/// @param unit      of the elements and of the division
/// @throws std::out_of_range when the catalogue has no such profile, InputError for a division of
///         more than 100000 chords per quarter turn
std::vector<Element> CatalogueElements(std::string_view name, const std::string& unit,
                                       const shapes::ArcDivision& division,
                                       bool wantsPublishedValues);

/// Returns the published values of a profile under the keys of the report, those of a table's row
/// that are there.
/// @param unit  of the values
/// @throws std::out_of_range as `CatalogueElements`
std::vector<PublishedValue> PublishedValuesOf(std::string_view name, const std::string& unit);

}  // namespace halvorn::engine

#endif
