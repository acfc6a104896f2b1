/// @file section_file.h
/// A section as a section file.
#ifndef HALVORN_ENGINE_WRITE_SECTION_FILE_H
#define HALVORN_ENGINE_WRITE_SECTION_FILE_H

#include <string>

#include "model/section_model.h"

namespace halvorn::engine {

/// Returns the text of a section file (docs/file-format.md) with the rings of a section as
/// contours, a line each.
/// @throws InputError for a composite section with a hole that cuts its own material alone
std::string SectionFileText(const SectionModel& section);

}  // namespace halvorn::engine

#endif
