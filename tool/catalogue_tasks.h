/// @file catalogue_tasks.h
/// What the tool does with catalogues: adds the user's own, lists profiles, finds those that suit.
#ifndef HALVORN_TOOL_CATALOGUE_TASKS_H
#define HALVORN_TOOL_CATALOGUE_TASKS_H

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "HalvornEngine.h"
#include "tool/command_line.h"

namespace halvorn::tool {

/// A table of the user's own.
struct CatalogueFile {
    std::string path;
    bool isNamed = false;  ///< on the command line; else it merely lies in the folder
};

/// Returns the tables of a command line and, before them, those of the folder that the environment
/// variable HALVORN_CATALOGUES names, in the order of their names; each file once.
/// @throws InputError when the folder cannot be read
std::vector<CatalogueFile> CatalogueFiles(const std::vector<std::string>& named);

/// Whether the run may look up a profile: not where every input is a file that names none.
bool MayNeedProfiles(const CommandLine& line);

/// Returns the built-in catalogue with these tables.
/// @param findings  gets what was found in them, and a remark for each table of the folder that
///                  cannot be read
/// @throws InputError for a table of the command line that cannot be read
engine::Catalogue CatalogueWith(const std::vector<CatalogueFile>& files,
                                std::vector<engine::Finding>* findings);

/// Returns the lines of a table whose rows were left out of the catalogue; none where the table is
/// not part of it.
/// @param named     tables of the command line
/// @param findings  of `CatalogueWith`
std::set<std::size_t> RefusedRows(const std::string& path, const std::vector<std::string>& named,
                                  const std::vector<engine::Finding>& findings);

/// Returns the profile that words of a command line are together, "HSS 4x4x1/4"; empty: none is.
/// @param named  tables of the command line
std::string ProfileOfWords(const std::vector<std::string>& words,
                           const std::vector<std::string>& named);

/// Returns the names of a family's profiles, one per line; of all when it is empty.
/// @throws InputError when there is no such family
std::string ProfilesText(const engine::Catalogue& catalogue, const std::string& family);

/// Returns the families, one per line: name, number of profiles, what their names begin with.
std::string FamiliesText(const engine::Catalogue& catalogue);

/// Returns the profiles that suit a query, as a table, JSON or CSV; nothing when none does.
/// @param showsProgress  a bar on standard error while torsion and shear are solved
/// @throws InputError for a query that cannot be understood
std::string SearchText(const CommandLine& line, bool showsProgress);

}  // namespace halvorn::tool

#endif
