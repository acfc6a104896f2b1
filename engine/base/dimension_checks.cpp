#include "base/dimension_checks.h"

#include <cmath>
#include <utility>

#include "base/numbers.h"

namespace halvorn::engine::shapes {
namespace {

[[noreturn]] void Refuse(const char* shape, const Dimension& dimension, const std::string& rule,
                         const std::string& remedy) {
    throw DimensionError(std::string(shape) + ": the " + dimension.name + " (" +
                             ShortNumber(dimension.value) + ") must be " + rule,
                         dimension.field, remedy);
}

// What the user changes: the field where it is known, else the dimension itself.
std::string Changed(const Dimension& dimension) {
    const std::string field = dimension.field;
    return field.empty() ? std::string("the ") + dimension.name : "\"" + field + "\"";
}

void RequireSign(bool mayBeZero, const char* shape, std::initializer_list<Dimension> dimensions) {
    for (const Dimension& dimension : dimensions) {
        const double value = dimension.value;
        if (std::isfinite(value) && (value > 0.0 || (mayBeZero && value == 0.0))) continue;
        Refuse(shape, dimension, mayBeZero ? "0 or a positive number" : "a positive number",
               "make " + Changed(dimension) + " larger");
    }
}

}  // namespace

DimensionError::DimensionError(const std::string& problem, std::string field, std::string remedy)
    : std::invalid_argument(problem), field_(std::move(field)), remedy_(std::move(remedy)) {}

void RequirePositive(const char* shape, std::initializer_list<Dimension> dimensions) {
    RequireSign(false, shape, dimensions);
}

void RequireNotNegative(const char* shape, std::initializer_list<Dimension> dimensions) {
    RequireSign(true, shape, dimensions);
}

void RequireSmaller(const char* shape, const Dimension& smaller, const Dimension& larger) {
    if (!(smaller.value < larger.value)) {
        Refuse(
            shape, smaller,
            std::string("smaller than the ") + larger.name + " (" + ShortNumber(larger.value) + ")",
            "make " + Changed(smaller) + " smaller or " + Changed(larger) + " larger");
    }
}

}  // namespace halvorn::engine::shapes
