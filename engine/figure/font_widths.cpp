#include "figure/font_widths.h"

#include <optional>

#include "figure/font_table.h"

namespace halvorn::engine::figure {

namespace {

// Takes the letter at a place of valid UTF-8, and moves the place behind it.
std::uint32_t NextLetter(const std::string& text, std::size_t& place) {
    const auto byte = [&] {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(text[place]));
    };
    std::uint32_t letter = byte();
    ++place;
    if (letter >= 0xF0U) {
        letter &= 0x07U;
    } else if (letter >= 0xE0U) {
        letter &= 0x0FU;
    } else if (letter >= 0xC0U) {
        letter &= 0x1FU;
    }
    for (; place < text.size() && (byte() & 0xC0U) == 0x80U; ++place) {
        letter = letter << 6U | (byte() & 0x3FU);
    }
    return letter;
}

std::optional<double> KnownWidth(std::uint32_t letter, bool isBold) {
    for (const LetterRange& range : LetterRanges()) {
        if (letter < range.first) break;
        const std::size_t place = letter - range.first;
        if (place < range.regular.size()) return (isBold ? range.bold : range.regular)[place];
    }
    return std::nullopt;
}

// Thousandths of the size: marks on the letter before take no room, ideographs a square, emoji
// somewhat more, all others about as much as a capital.
double EstimatedWidth(std::uint32_t letter) {
    const auto isIn = [letter](std::uint32_t first, std::uint32_t last) {
        return first <= letter && letter <= last;
    };
    if (isIn(0x0300, 0x036F) || isIn(0x200B, 0x200F) || isIn(0xFE00, 0xFE0F)) return 0.0;
    if (isIn(0x1F000, 0x1FAFF)) return 1300.0;
    return isIn(0x1100, 0x115F) || letter >= 0x2E80U ? 1000.0 : 700.0;
}

}  // namespace

double TextWidth(const std::string& text, double size, bool isBold) {
    double width = 0.0;
    for (std::size_t place = 0; place < text.size();) {
        const std::uint32_t letter = NextLetter(text, place);
        width += KnownWidth(letter, isBold).value_or(EstimatedWidth(letter));
    }
    return width * size / 1000.0;
}

bool HasKnownWidth(const std::string& text) {
    for (std::size_t place = 0; place < text.size();) {
        if (!KnownWidth(NextLetter(text, place), false)) return false;
    }
    return true;
}

}  // namespace halvorn::engine::figure
