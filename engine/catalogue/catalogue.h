/// @file catalogue.h
/// Catalogue profiles by name, from the built-in table in this folder and tables of the user's own.
#ifndef HALVORN_ENGINE_CATALOGUE_CATALOGUE_H
#define HALVORN_ENGINE_CATALOGUE_CATALOGUE_H

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "HalvornEngine.h"
#include "catalogue/profile_rows.h"
#include "geometry/arc_division.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// What a `Catalogue` shares with its copies: the tables that were added, in their order.
struct CatalogueData {
    std::vector<std::shared_ptr<const ProfileRows>> own;
};

/// The way to a catalogue's data.
struct CatalogueAccess {
    /// Null: the built-in table alone.
    static const CatalogueData* DataOf(const Catalogue& catalogue) { return catalogue.data_.get(); }
    static Catalogue Of(std::shared_ptr<const CatalogueData> data);
};

/// Whether the catalogue has one profile of this name: written so but for case and blanks, or the
/// only one in any spelling of `CanonicalProfileName`.
bool IsCatalogueProfile(std::string_view name, const Catalogue& catalogue = {});

/// Returns the names of the profiles that a name can mean as a list for messages; empty when they
/// are not several.
std::string SeveralProfiles(std::string_view name, const Catalogue& catalogue);

/// Returns the elements of a profile, lower left corner of its bounding box at the origin.
///
/// Drawn: the outline as free contours, a hollow profile as solid and hole. With published values:
/// one standard profile with the values of the table; what the table does not hold is empty.
/// @param name      as for `IsCatalogueProfile`
/// @param unit      of the elements and of the division
/// @throws std::out_of_range when the catalogue has no such profile, InputError for a division of
/// more than 100000
///         chords per quarter turn and for published values of a profile that has none
std::vector<Element> CatalogueElements(std::string_view name, const std::string& unit,
                                       const shapes::ArcDivision& division,
                                       bool wantsPublishedValues, const Catalogue& catalogue = {});

/// Returns the names of all families as a list for messages.
std::string FamilyList(const Catalogue& catalogue);

/// Returns the section that a profile is.
/// @param options  whose unit may be empty; checked before
/// @throws as `CatalogueElements`
SectionModel CatalogueSection(std::string_view name, const InputOptions& options);

}  // namespace halvorn::engine

#endif
