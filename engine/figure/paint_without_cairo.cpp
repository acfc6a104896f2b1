#include <stdexcept>

#include "figure/font_widths.h"
#include "figure/paint.h"
#include "figure/paint_svg.h"

namespace halvorn::engine::figure {

bool CanPaint(Format format) {
    return format == Format::Svg;
}

MeasureText FontMeasure(Format /*format*/) {
    return TextWidth;
}

std::string Paint(const Page& page, Format format) {
    if (format != Format::Svg) throw std::logic_error("no graphics library");
    return PaintSvg(page);
}

}  // namespace halvorn::engine::figure
