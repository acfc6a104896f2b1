/// @file text.h
/// Numbers and foreign text as a figure shows them.
#ifndef HALVORN_ENGINE_FIGURE_TEXT_H
#define HALVORN_ENGINE_FIGURE_TEXT_H

#include <string>
#include <string_view>

#include "figure/page.h"

namespace halvorn::engine::figure {

/// Returns a number with so many significant digits, no zeros at its end and a true minus sign;
/// from `plainBelow` on and below 1e-4 with a power of ten whose exponent is a multiple of 3.
Runs Number(double value, int digits, double plainBelow);

/// Returns a symbol such as "Wpl,x" with all but its first letter lowered, "alpha" as the
/// Greek letter.
Runs Symbol(const std::string& symbol);

/// Returns a unit such as "mm^4" with its power raised.
Runs Unit(const std::string& unit);

/// Returns two texts one behind the other.
Runs Joined(Runs first, const Runs& second);

/// Returns the text without its levels, for readers that show none.
std::string PlainText(const Runs& runs);

/// Returns foreign text as one line of valid UTF-8 that XML may hold: whatever is none becomes
/// U+FFFD.
std::string ValidText(std::string_view text);

/// Returns the text, or as much of it as fits into `room` points, with an ellipsis; never cut
/// within a character. `text` is valid UTF-8.
std::string Shortened(const std::string& text, double room, double size, bool isBold,
                      const MeasureText& measure);

}  // namespace halvorn::engine::figure

#endif
