/// @file read_profiles.h
/// Tables of profiles that users write, as spreadsheets save them (docs/catalogues.md).
#ifndef HALVORN_ENGINE_CATALOGUE_READ_PROFILES_H
#define HALVORN_ENGINE_CATALOGUE_READ_PROFILES_H

#include <string>
#include <vector>

#include "HalvornEngine.h"
#include "catalogue/profile_rows.h"

namespace halvorn::engine {

/// Returns the rows that can be drawn, with the columns of the built-in table, `unit`, `standard`
/// and `t_nom`, and numbers with a decimal point.
/// @param findings  gets an error for every other row
/// @throws InputError when the text is no such table
ProfileRows ReadProfiles(const std::string& text, const std::string& source,
                         std::vector<Finding>* findings);

}  // namespace halvorn::engine

#endif
