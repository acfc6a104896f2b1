#include "HalvornEngine.h"

namespace halvorn::engine {

InputError::InputError(const std::string& source, const std::string& problem,
                       const std::string& mend)
    : InputError(source, std::string(), problem, mend) {}

InputError::InputError(const std::string& source, const std::string& place,
                       const std::string& problem, const std::string& mend)
    : std::runtime_error(source + (place.empty() ? "" : ": " + place) + ": " + problem + "; " +
                         mend),
      parts_(std::make_shared<const Parts>(Parts{source, place, problem, mend})) {}

InputError::InputError(const std::string& source, std::size_t line, const std::string& problem,
                       const std::string& mend)
    : InputError(source, "line " + std::to_string(line), problem, mend) {}

}  // namespace halvorn::engine
