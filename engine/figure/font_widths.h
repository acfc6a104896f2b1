/// @file font_widths.h
/// Widths of texts from a table in the program, the same on every machine.
#ifndef HALVORN_ENGINE_FIGURE_FONT_WIDTHS_H
#define HALVORN_ENGINE_FIGURE_FONT_WIDTHS_H

#include <string>

namespace halvorn::engine::figure {

/// Returns the width of a text of valid UTF-8 in a plain sans-serif font [pt], an estimate where
/// the table lacks a letter.
double TextWidth(const std::string& text, double size, bool isBold);

/// Returns whether the table has all letters of a text, so that its width is no estimate.
bool HasKnownWidth(const std::string& text);

}  // namespace halvorn::engine::figure

#endif
