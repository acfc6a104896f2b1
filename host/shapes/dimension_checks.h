/// @file dimension_checks.h
/// Checks of dimensions whose failure tells the user which one is wrong and why.
#ifndef HALVORN_HOST_SHAPES_DIMENSION_CHECKS_H
#define HALVORN_HOST_SHAPES_DIMENSION_CHECKS_H

#include <initializer_list>
#include <string>

namespace halvorn::shapes {

/// A dimension and the words that name it in a message.
struct Dimension {
    const char* name;
    double value;
};

/// Returns a number in at most six significant digits, for messages.
std::string ShortNumber(double value);

/// @throws std::invalid_argument naming the first dimension that is not finite and above 0
void RequirePositive(const char* shape, std::initializer_list<Dimension> dimensions);

/// @throws std::invalid_argument naming the first dimension that is not finite or is below 0
void RequireNotNegative(const char* shape, std::initializer_list<Dimension> dimensions);

/// @throws std::invalid_argument naming both dimensions unless the first is the smaller one
void RequireSmaller(const char* shape, const Dimension& smaller, const Dimension& larger);

}  // namespace halvorn::shapes

#endif
