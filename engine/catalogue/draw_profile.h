/// @file draw_profile.h
/// Outlines of the profiles in a table of dimensions.
#ifndef HALVORN_ENGINE_CATALOGUE_DRAW_PROFILE_H
#define HALVORN_ENGINE_CATALOGUE_DRAW_PROFILE_H

#include "catalogue/csv_table.h"
#include "shapes/shape_kinds.h"

namespace halvorn::engine {

/// Draws the profile of a row by its column `type`: i, channel, angle, rhs, chs, taper_i or
/// taper_channel, in the unit of the table.
/// @throws std::runtime_error for an unknown type or a missing dimension, std::invalid_argument
///         for dimensions that do not fit together
shapes::Outline DrawProfile(const CsvRecord& row, const shapes::ArcDivision& division);

}  // namespace halvorn::engine

#endif
