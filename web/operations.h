/// @file operations.h
/// What can be asked of the engine in JSON.
#ifndef HALVORN_WEB_OPERATIONS_H
#define HALVORN_WEB_OPERATIONS_H

#include <nlohmann/json.hpp>
#include <string>

namespace halvorn::web {

/// Returns the answer to a request (docs/web.md).
/// @param request  the text of an object with "op"
/// @throws InputError for what the caller can mend
nlohmann::ordered_json Answer(const std::string& request);

/// Returns an answer as text on one line. What is no UTF-8 in it, as names of files may be, is
/// replaced.
std::string Written(const nlohmann::ordered_json& answer);

}  // namespace halvorn::web

#endif
