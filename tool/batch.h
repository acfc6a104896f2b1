/// @file batch.h
/// Many sections to one table, over all cores.
#ifndef HALVORN_TOOL_BATCH_H
#define HALVORN_TOOL_BATCH_H

#include <cstddef>
#include <functional>
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

/// Returns the arguments for `Section::Open` that `paths` stand for: the section files of a folder
/// in the order of their names; the entries of a list (.txt: one a line; .csv: those of the column
/// `name`, or the first); anything else as it is.
/// @param complain  gets one line for each row without a name, and for each folder or list that is
///                  empty or cannot be read; the rest is returned
std::vector<std::string> ExpandBatch(
    const std::vector<std::string>& paths,
    const std::function<void(const std::string& message)>& complain);

/// Evaluates the sections and hands the lines of the table to `write`, in the order of `arguments`.
/// A section that cannot be read is left out of the table; its reason goes to `complain`.
/// @returns the number of sections left out
std::size_t RunBatch(const std::vector<std::string>& arguments, const BatchOptions& options,
                     const std::function<void(const std::string& line)>& write,
                     const std::function<void(const std::string& message)>& complain);

}  // namespace halvorn::tool

#endif
