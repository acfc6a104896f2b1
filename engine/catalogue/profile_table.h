/// @file profile_table.h
/// The table of published values, profiles.csv, compiled in.
#ifndef HALVORN_ENGINE_CATALOGUE_PROFILE_TABLE_H
#define HALVORN_ENGINE_CATALOGUE_PROFILE_TABLE_H

#include <string>

namespace halvorn::engine {

/// Returns the text of the table; README.md in this folder says what its columns hold.
std::string ProfileTableText();

}  // namespace halvorn::engine

#endif
