/// @file section_file.h
/// A section in a JSON file (docs/file-format.md).
#ifndef HALVORN_HOST_INPUT_SECTION_FILE_H
#define HALVORN_HOST_INPUT_SECTION_FILE_H

#include <string>

#include "input/open_section.h"

namespace halvorn::host {

/// Returns the section in a JSON text that came from `source`.
/// @throws InputError for whatever docs/file-format.md does not allow; nothing is guessed
SectionModel ReadSectionText(const std::string& text, const std::string& source,
                             const InputOptions& options);

}  // namespace halvorn::host

#endif
