/// @file catalogue_tasks.h
/// What the tool does with catalogues: adds the user's own, lists profiles, finds those that suit.
#ifndef HALVORN_TOOL_CATALOGUE_TASKS_H
#define HALVORN_TOOL_CATALOGUE_TASKS_H

#include <string>
#include <vector>

#include "HalvornEngine.h"
#include "tool/command_line.h"

namespace halvorn::tool {

/// Returns the tables of a command line and, before them, those of the folder that the environment
/// variable HALVORN_CATALOGUES names, in the order of their names; each file once.
/// @throws InputError when the folder cannot be read
std::vector<std::string> CataloguePaths(const std::vector<std::string>& named);

/// Returns the built-in catalogue with these tables.
/// @param findings  gets what was found in them
/// @throws InputError for a table that cannot be read
engine::Catalogue CatalogueWith(const std::vector<std::string>& paths,
                                std::vector<engine::Finding>* findings);

/// Returns the names of a family's profiles, one per line; of all when it is empty.
/// @throws InputError when there is no such family
std::string ProfilesText(const engine::Catalogue& catalogue, const std::string& family);

/// Returns the families, one per line: name, number of profiles, what their names begin with.
std::string FamiliesText(const engine::Catalogue& catalogue);

/// Returns the profiles that suit a query, as a table, JSON or CSV.
/// @throws InputError for a query that cannot be understood
std::string SearchText(const CommandLine& line);

}  // namespace halvorn::tool

#endif
