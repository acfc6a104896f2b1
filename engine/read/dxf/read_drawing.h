/// @file read_drawing.h
/// Sections drawn in DXF files (docs/file-format.md).
#ifndef HALVORN_ENGINE_READ_DXF_READ_DRAWING_H
#define HALVORN_ENGINE_READ_DXF_READ_DRAWING_H

#include <string>

#include "HalvornEngine.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Returns the section drawn in a DXF text that came from `source`: closed polylines, circles and
/// chains of lines, arcs, ellipses and splines. Nesting decides what is solid and what a hole.
/// Only the layers that the options name are read, if any. Whatever is left out is named in the
/// remarks.
/// @throws InputError naming the line and, where there is one, the entity
SectionModel ReadDrawing(const std::string& text, const std::string& source,
                         const InputOptions& options);

}  // namespace halvorn::engine

#endif
