#include <stdexcept>

#include "figure/paint.h"

namespace halvorn::engine::figure {

bool CanPaint() {
    return false;
}

MeasureText FontMeasure() {
    throw std::logic_error("no graphics library");
}

std::string Paint(const Page& /*page*/, Format /*format*/) {
    throw std::logic_error("no graphics library");
}

}  // namespace halvorn::engine::figure
