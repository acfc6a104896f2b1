/// @file section_file.h
/// A section in a JSON file (docs/file-format.md).
#ifndef HALVORN_ENGINE_READ_JSON_SECTION_FILE_H
#define HALVORN_ENGINE_READ_JSON_SECTION_FILE_H

#include <string>

#include "HalvornEngine.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Returns the section in a JSON text that came from `source`.
/// @throws InputError for whatever docs/file-format.md does not allow; nothing is guessed
SectionModel ReadSectionText(const std::string& text, const std::string& source,
                             const InputOptions& options);

}  // namespace halvorn::engine

#endif
