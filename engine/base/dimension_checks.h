/// @file dimension_checks.h
/// Checks of dimensions whose failure tells the user which one is wrong and how to mend it.
#ifndef HALVORN_ENGINE_BASE_DIMENSION_CHECKS_H
#define HALVORN_ENGINE_BASE_DIMENSION_CHECKS_H

#include <initializer_list>
#include <stdexcept>
#include <string>

namespace halvorn::engine::shapes {

/// A dimension and the words that name it in a message.
struct Dimension {
    const char* name;
    double value;
    /// The dimension that a user changes to change this one, as section files call it: "flange" for
    /// the thickness of both flanges. Empty: none is known.
    const char* field = "";
};

/// A dimension that is impossible by itself or beside another.
class DimensionError : public std::invalid_argument {
public:
    DimensionError(const std::string& problem, std::string field, std::string remedy);

    /// As `Dimension::field` of the offending dimension.
    const std::string& Field() const { return field_; }
    const std::string& Remedy() const { return remedy_; }

private:
    std::string field_;
    std::string remedy_;
};

/// @throws DimensionError for the first dimension that is not finite and above 0
void RequirePositive(const char* shape, std::initializer_list<Dimension> dimensions);

/// @throws DimensionError for the first dimension that is not finite or is below 0
void RequireNotNegative(const char* shape, std::initializer_list<Dimension> dimensions);

/// @throws DimensionError naming both dimensions unless the first is the smaller one
void RequireSmaller(const char* shape, const Dimension& smaller, const Dimension& larger);

}  // namespace halvorn::engine::shapes

#endif
