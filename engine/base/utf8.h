/// @file utf8.h
/// Characters in UTF-8 texts.
#ifndef HALVORN_ENGINE_BASE_UTF8_H
#define HALVORN_ENGINE_BASE_UTF8_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace halvorn::engine {

/// Whether a byte is the second to fourth of a character.
inline bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Returns the characters of a text.
std::size_t CharacterCount(std::string_view text);

/// Returns the bytes at the start of a text, not empty, that belong together by their leading bits,
/// whether they are a character or not; 1 for a byte that starts nothing.
std::size_t SequenceLength(std::string_view text);

/// Returns the bytes of the character at the start of a text that is not empty; 0 where there is
/// none (RFC 3629: no overlong form, no surrogate, nothing beyond U+10FFFF; nor U+FFFE and U+FFFF,
/// which XML excludes).
std::size_t CharacterLength(std::string_view text);

/// Returns the line, from 1, of the first byte that is no UTF-8; 0 where there is none.
std::size_t LineOfForeignByte(std::string_view text);

/// Returns the code point of the character at the start of a text.
/// @pre `CharacterLength` of the text is not 0
std::uint32_t CodePoint(std::string_view text);

/// Returns a text without the mark U+FEFF that some programs put before UTF-8.
std::string_view WithoutByteOrderMark(std::string_view text);

}  // namespace halvorn::engine

#endif
