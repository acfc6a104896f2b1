/// @file batch.h
/// Many sections to one table, over all cores.
#ifndef HALVORN_TOOL_BATCH_H
#define HALVORN_TOOL_BATCH_H

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "HalvornEngine.h"

namespace halvorn::tool {

/// What the command line says about every section.
struct SectionOptions {
    engine::InputOptions input;
    engine::EvaluateOptions values;
};

/// Reads the section that `argument` names and computes its values.
/// @throws InputError as `Section::Open` and `Section::Evaluate`
engine::SectionReport EvaluateInput(const std::string& argument, const SectionOptions& options);

enum class BatchFormat { Csv, JsonLines };

struct BatchOptions {
    SectionOptions section;
    BatchFormat format = BatchFormat::Csv;
    unsigned threads = 0;        ///< 0: one for each core
    bool showsProgress = false;  ///< a bar on standard error
};

/// One section of a batch.
struct BatchEntry {
    std::string argument;  ///< for `Section::Open`
    std::string place;     ///< of the list that names it, "list.csv: line 3"; empty: none does
};

/// What the inputs of a batch stand for.
struct BatchInputs {
    std::vector<BatchEntry> entries;
    /// One line for each row without a name, and for each folder or list that is empty or cannot be
    /// read.
    std::vector<std::string> complaints;
    std::vector<std::string> remarks;  ///< one line for each list that a folder holds
    std::size_t refusedRows = 0;       ///< those of `RefusedLines`
};

/// Returns the lines of a table that were refused when it was read as a catalogue.
using RefusedLines = std::function<std::set<std::size_t>(const std::string& path)>;

/// Returns what `paths` stand for: the section files of a folder in the order of their names; the
/// entries of a list (.txt: one a line; .csv: those of the column `name`, or the first); anything
/// else as it is.
/// @param refused  rows of these lines are left out: of a catalogue their names are those of others
BatchInputs ExpandBatch(const std::vector<std::string>& paths, const RefusedLines& refused = {});

/// Evaluates the sections and hands the lines of the table to `write`, in the order of `entries`.
/// A section that cannot be read is left out of the table; its place and the reason go to
/// `complain`.
/// @returns the number of sections left out
std::size_t RunBatch(const std::vector<BatchEntry>& entries, const BatchOptions& options,
                     const std::function<void(const std::string& line)>& write,
                     const std::function<void(const std::string& message)>& complain);

}  // namespace halvorn::tool

#endif
