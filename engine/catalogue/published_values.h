/// @file published_values.h
/// What the table publishes of a profile.
#ifndef HALVORN_ENGINE_CATALOGUE_PUBLISHED_VALUES_H
#define HALVORN_ENGINE_CATALOGUE_PUBLISHED_VALUES_H

#include <string>
#include <vector>

#include "catalogue/csv_table.h"
#include "geometry/outline.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Returns the published values of a row under the keys of the report, those that are there.
/// @param unit  of the values
std::vector<PublishedValue> PublishedValuesOf(const CsvRecord& row, const std::string& unit);

/// Returns what stands in for the values of an outline: those that the row has, the others of the
/// outline. Second moments follow from a smaller elastic modulus where the row has that alone.
/// @param outline  of the row, in its unit
/// @param unit     of what is returned
/// @throws InputError when the row has none
GivenValues PublishedStandIn(const CsvRecord& row, const shapes::Outline& outline,
                             const std::string& unit);

}  // namespace halvorn::engine

#endif
