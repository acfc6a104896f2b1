/// @file command_line.h
/// The command line of halvorn-section.
#ifndef HALVORN_TOOL_COMMAND_LINE_H
#define HALVORN_TOOL_COMMAND_LINE_H

#include <optional>
#include <string>
#include <vector>

#include "tool/batch.h"

namespace halvorn::tool {

/// How the program ends.
enum ExitCode {
    kDone = 0,
    kNotWritten = 1,    ///< computed or not: nothing wrong with the input
    kNothingFound = 1,  ///< by `--find`
    kBadInput = 2,      ///< the command line or a section; of a batch, at least one section
    kDoubtful = 3       ///< `--check` found an error or a warning
};

enum class Task { Report, Check, Batch, ListProfiles, ListFamilies, Find, ListLayers, ListMethods };
enum class Format { Table, Json, Csv };

struct CommandLine {
    Task task = Task::Report;
    std::vector<std::string> inputs;
    std::vector<std::string> catalogues;  ///< paths of tables of the user's own
    std::string family;                   ///< of the profiles to list; empty: all
    std::string query;                    ///< of `Task::Find`
    Format format = Format::Table;
    std::string figurePath;  ///< empty: no figure
    engine::FigureOptions figure;
    engine::TableOptions table;
    SectionOptions section;
    unsigned threads = 0;
};

/// Reads the arguments of `main`.
/// @param text  set to what is to be printed instead of anything else, for --help and --version
/// @returns nothing when `text` was set
/// @throws InputError for a command line that makes no sense
std::optional<CommandLine> ReadCommandLine(int argc, char** argv, std::string* text);

}  // namespace halvorn::tool

#endif
