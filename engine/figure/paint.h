/// @file paint.h
/// A page as the bytes of a picture. One of two sources stands behind it: with Cairo, or without a
/// graphics library, which can paint SVG alone.
#ifndef HALVORN_ENGINE_FIGURE_PAINT_H
#define HALVORN_ENGINE_FIGURE_PAINT_H

#include <string>

#include "figure/page.h"

namespace halvorn::engine::figure {

enum class Format { Svg, Png, Pdf };

/// Returns whether this build can paint a format: SVG always, the others with a graphics library.
bool CanPaint(Format format);

/// Returns the widths of texts in the font that `Paint` uses for a format.
MeasureText FontMeasure(Format format);

/// Returns the whole file; equal pages give equal bytes. PNG at 200 dots per inch.
/// @throws std::runtime_error when the graphics library fails, std::logic_error without one
std::string Paint(const Page& page, Format format);

}  // namespace halvorn::engine::figure

#endif
