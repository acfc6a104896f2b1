/// @file font_table.h
/// How wide the letters of a plain sans-serif font are.
#ifndef HALVORN_ENGINE_FIGURE_FONT_TABLE_H
#define HALVORN_ENGINE_FIGURE_FONT_TABLE_H

#include <cstdint>
#include <span>

namespace halvorn::engine::figure {

/// Letters of Unicode one behind the other, with their widths in thousandths of the font's size.
struct LetterRange {
    std::uint32_t first;
    std::span<const std::uint16_t> regular;
    std::span<const std::uint16_t> bold;  ///< as many
};

/// Returns all that the table has, in rising order.
std::span<const LetterRange> LetterRanges();

}  // namespace halvorn::engine::figure

#endif
