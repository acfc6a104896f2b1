#include "shapes/dimension_checks.h"

#include <cmath>
#include <sstream>
#include <stdexcept>

namespace halvorn::shapes {
namespace {

[[noreturn]] void Refuse(const char* shape, const Dimension& dimension, const std::string& rule) {
    throw std::invalid_argument(std::string(shape) + ": the " + dimension.name + " (" +
                                ShortNumber(dimension.value) + ") must be " + rule);
}

}  // namespace

std::string ShortNumber(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

void RequirePositive(const char* shape, std::initializer_list<Dimension> dimensions) {
    for (const Dimension& dimension : dimensions) {
        if (!std::isfinite(dimension.value) || dimension.value <= 0.0) {
            Refuse(shape, dimension, "a positive number");
        }
    }
}

void RequireNotNegative(const char* shape, std::initializer_list<Dimension> dimensions) {
    for (const Dimension& dimension : dimensions) {
        if (!std::isfinite(dimension.value) || dimension.value < 0.0) {
            Refuse(shape, dimension, "0 or a positive number");
        }
    }
}

void RequireSmaller(const char* shape, const Dimension& smaller, const Dimension& larger) {
    if (!(smaller.value < larger.value)) {
        Refuse(shape, smaller,
               std::string("smaller than the ") + larger.name + " (" + ShortNumber(larger.value) +
                   ")");
    }
}

}  // namespace halvorn::shapes
