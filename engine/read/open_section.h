/// @file open_section.h
/// From what a user names to a section.
#ifndef HALVORN_ENGINE_READ_OPEN_SECTION_H
#define HALVORN_ENGINE_READ_OPEN_SECTION_H

#include <string>
#include <vector>

#include "HalvornEngine.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// Reads the section that `argument` names: a file (.json, .dxf, .csv by its ending; of any other
/// ending, and "-", standard input, JSON), or else a profile of the catalogue such as "IPE300".
/// A file of that name overrides the profile.
/// @throws InputError for whatever docs/file-format.md does not allow; nothing is guessed
SectionModel OpenSection(const std::string& argument, const InputOptions& options);

/// Returns the profile of that name, whatever files there are.
/// @throws InputError for a name that the catalogue does not have
SectionModel ProfileSection(const std::string& name, const InputOptions& options);

/// Returns the section in a text that came from `source`.
/// @throws InputError as `OpenSection`
SectionModel ParseSection(const std::string& text, TextFormat format, const std::string& source,
                          const InputOptions& options);

/// Returns whether `argument` names a drawing by its ending.
bool IsDrawing(const std::string& argument);

/// Returns one line per layer of a drawing with its entities counted by kind: "AXES (off or
/// frozen): 2 LINE".
/// @throws InputError, also for what is no drawing
std::string ListLayers(const std::string& argument);

/// Returns layers as the same lines.
std::string LayersText(const std::vector<DrawingLayer>& layers);

}  // namespace halvorn::engine

#endif
