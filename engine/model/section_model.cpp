#include "model/section_model.h"

#include <stdexcept>

namespace halvorn::engine {

double MetresPer(const std::string& unit) {
    if (unit == "mm") return 1e-3;
    if (unit == "cm") return 1e-2;
    if (unit == "m") return 1.0;
    if (unit == "in") return 0.0254;
    throw std::invalid_argument("unknown unit of length: " + unit);
}

}  // namespace halvorn::engine
