/// @file paint_svg.h
/// A page as SVG with real text, without a graphics library.
#ifndef HALVORN_ENGINE_FIGURE_PAINT_SVG_H
#define HALVORN_ENGINE_FIGURE_PAINT_SVG_H

#include <string>

#include "figure/page.h"

namespace halvorn::engine::figure {

/// Returns the whole file; equal pages give equal bytes on every machine. A text whose letters have
/// known widths carries its own, so that it takes the same room in whatever font a viewer has.
std::string PaintSvg(const Page& page);

}  // namespace halvorn::engine::figure

#endif
