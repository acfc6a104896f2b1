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
/// @throws InputError for a missing or unreadable file, a directory, or more than 256 MiB
std::string ReadInput(const std::string& path);

/// Returns the text with every character that breaks a line, steers a terminal or turns the
/// direction of writing replaced by a space: foreign text can do none of it.
std::string SingleLine(std::string_view text);

/// Returns the start of a user's own text as a `SingleLine` of at most 40 bytes, never cut within a
/// UTF-8 character.
std::string Excerpt(std::string_view text);

}  // namespace halvorn::host

#endif
