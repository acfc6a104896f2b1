/// @file figure.h
/// A section as a drawing with its axes and dimensions.
#ifndef HALVORN_HOST_FIGURE_FIGURE_H
#define HALVORN_HOST_FIGURE_FIGURE_H

#include <string>

#include "results/report.h"

namespace halvorn::host {

/// Fails early, before anything is computed.
/// @throws InputError when the ending is not .svg, .png or .pdf, or this build draws no figures
void CheckFigurePath(const std::string& path);

/// Writes the drawing of a section to a file: all of it, or an error and no file.
/// @throws InputError as `CheckFigurePath`; std::runtime_error when it cannot be written
void WriteFigure(const Report& report, const std::string& path);

}  // namespace halvorn::host

#endif
