/// @file json_document.h
/// Strict JSON text to a document.
#ifndef HALVORN_ENGINE_READ_JSON_JSON_DOCUMENT_H
#define HALVORN_ENGINE_READ_JSON_JSON_DOCUMENT_H

#include <nlohmann/json.hpp>
#include <string>

namespace halvorn::engine {

/// Returns the document written in `text`. Every number in it is finite, no object has a key twice,
/// and it is nested at most 32 deep.
/// @param source the name of the input for messages
/// @throws InputError with line and column for text that is not JSON, with the JSON pointer for a
///         number beyond the range of a double, a repeated key or too deep nesting
nlohmann::json ParseJson(const std::string& text, const std::string& source);

/// Returns a key with its '~' and '/' escaped as a JSON pointer wants them (RFC 6901), a long one
/// cut short as by `Excerpt`.
std::string PointerToken(const std::string& key);

}  // namespace halvorn::engine

#endif
