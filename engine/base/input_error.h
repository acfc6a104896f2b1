/// @file input_error.h
/// The one way in which bad input leaves every routine of the engine and the tool.
#ifndef HALVORN_ENGINE_BASE_INPUT_ERROR_H
#define HALVORN_ENGINE_BASE_INPUT_ERROR_H

#include <cstddef>
#include <stdexcept>
#include <string>

namespace halvorn::engine {

/// Input that the user can mend. The message names the place, the problem and the remedy.
class InputError : public std::runtime_error {
public:
    InputError(const std::string& place, const std::string& problem, const std::string& remedy)
        : std::runtime_error(place + ": " + problem + "; " + remedy) {}
    /// @param line  of the text of that source, from 1
    InputError(const std::string& source, std::size_t line, const std::string& problem,
               const std::string& remedy)
        : InputError(source + ": line " + std::to_string(line), problem, remedy) {}
};

}  // namespace halvorn::engine

#endif
