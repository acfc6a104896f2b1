/// @file draw_profile.h
/// Outlines of the profiles in a table of dimensions.
#ifndef HALVORN_ENGINE_CATALOGUE_DRAW_PROFILE_H
#define HALVORN_ENGINE_CATALOGUE_DRAW_PROFILE_H

#include <optional>
#include <string>

#include "catalogue/csv_table.h"
#include "shapes/shape_kinds.h"

namespace halvorn::engine {

/// Draws the profile of a row by its column `type`, one of `ProfileTypes`, in the unit of the row.
/// @throws std::runtime_error for an unknown type or a missing dimension, std::invalid_argument
///         for dimensions that do not fit together
shapes::Outline DrawProfile(const CsvRecord& row, const shapes::ArcDivision& division);

/// What keeps a row from being drawn.
struct ProfileFault {
    std::string column;  ///< empty: none is to blame alone
    std::string problem;
    std::string mend;
};

/// Returns the first fault of a row of known type whose numbers are numbers: a dimension that is
/// missing or does not fit. Nothing: it can be drawn.
std::optional<ProfileFault> FindProfileFault(const CsvRecord& row);

}  // namespace halvorn::engine

#endif
