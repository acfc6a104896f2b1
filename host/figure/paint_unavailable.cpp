#include <stdexcept>

#include "figure/paint.h"

namespace halvorn::host::figure {

bool CanPaint() {
    return false;
}

MeasureText FontMeasure() {
    throw std::logic_error("no graphics library");
}

std::string Paint(const Page& /*page*/, Format /*format*/) {
    throw std::logic_error("no graphics library");
}

}  // namespace halvorn::host::figure
