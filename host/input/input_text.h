/// @file input_text.h
/// Whole text files in, safe single lines out.
#ifndef HALVORN_HOST_INPUT_INPUT_TEXT_H
#define HALVORN_HOST_INPUT_INPUT_TEXT_H

#include <string>
#include <string_view>

namespace halvorn::host {

/// Returns how messages call the input: its path, or "standard input" for "-".
std::string SourceName(const std::string& path);

/// Returns the whole content of a file, or of standard input for "-".
/// @throws InputError for a missing or unreadable file, a directory, or more than 64 MiB
std::string ReadInput(const std::string& path);

/// Returns the text with every control character replaced by a space: foreign text can neither
/// break a line nor steer a terminal.
std::string SingleLine(std::string_view text);

}  // namespace halvorn::host

#endif
