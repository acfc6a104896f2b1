/// @file points_csv.h
/// Rings of points in comma-separated values (docs/file-format.md).
#ifndef HALVORN_ENGINE_READ_CSV_POINTS_CSV_H
#define HALVORN_ENGINE_READ_CSV_POINTS_CSV_H

#include <string>

#include "HalvornEngine.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Returns the section in a CSV text that came from `source`.
/// @throws InputError naming the line
SectionModel ReadPointsCsv(const std::string& text, const std::string& source,
                           const InputOptions& options);

}  // namespace halvorn::engine

#endif
