/// @file text.h
/// Whole text files in, safe single lines out.
#ifndef HALVORN_ENGINE_BASE_TEXT_H
#define HALVORN_ENGINE_BASE_TEXT_H

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace halvorn::engine {

/// Returns a text without the mark that spreadsheets put before UTF-8, its lines ending in LF where
/// they ended in CR LF or CR.
std::string WithLineFeeds(std::string_view text);

/// Returns the lines of such a text without their LF, which the last may lack.
std::vector<std::string> LinesOf(std::string_view text);

/// Returns a text without the characters of `what` at its start and end.
std::string Trimmed(std::string_view text, std::string_view what = " \t\r");

/// Returns the same as a part of the text, which must outlive it.
std::string_view TrimmedView(std::string_view text, std::string_view what = " \t\r");

/// Returns a text with A to Z as a to z.
std::string InSmallLetters(std::string_view text);

/// Returns a text with a to z as A to Z.
std::string InCapitals(std::string_view text);

/// Returns a text with some of its characters written in another way, as `&` is in XML.
std::string WithReplaced(std::string_view text,
                         std::initializer_list<std::pair<char, std::string_view>> replacements);

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
std::string Excerpt(std::string_view text, std::size_t mostLength = 40);

}  // namespace halvorn::engine

#endif
