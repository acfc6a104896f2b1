/// @file figure.h
/// A section as a drawing with its axes and dimensions.
#ifndef HALVORN_ENGINE_FIGURE_FIGURE_H
#define HALVORN_ENGINE_FIGURE_FIGURE_H

#include <string>

#include "values/report.h"

namespace halvorn::engine {

/// Fails early, before anything is computed.
/// @throws InputError when the ending is not .svg, .png or .pdf, this build draws no figures, the
///         folder is missing or the path is a folder
void CheckFigurePath(const std::string& path);

/// Writes the drawing of a section, which has its halves if they are to be tinted, to a file: all
/// of it, or an error and no file; what was there before stays until the new one is whole. Equal
/// reports give equal bytes on one machine.
/// @throws InputError as `CheckFigurePath`, when the section's extent overflows, and when the
/// report
///         has no stresses to draw;
///         std::runtime_error when the figure cannot be drawn or written
void WriteFigure(const Report& report, const std::string& path, const FigureOptions& options = {});

/// Returns the same drawing as the text of an SVG file.
/// @throws InputError as `WriteFigure`, but for a path
std::string SvgText(const Report& report, const FigureOptions& options = {});

}  // namespace halvorn::engine

#endif
