#include "figure/font_widths.h"

#include <optional>
#include <string_view>

#include "base/utf8.h"
#include "figure/font_table.h"

namespace halvorn::engine::figure {

namespace {

// Takes the first letter of a valid text.
std::uint32_t TakeLetter(std::string_view& text) {
    const std::uint32_t letter = CodePoint(text);
    text.remove_prefix(SequenceLength(text));
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
    for (std::string_view rest = text; !rest.empty();) {
        const std::uint32_t letter = TakeLetter(rest);
        width += KnownWidth(letter, isBold).value_or(EstimatedWidth(letter));
    }
    return width * size / 1000.0;
}

bool HasKnownWidth(const std::string& text) {
    for (std::string_view rest = text; !rest.empty();) {
        if (!KnownWidth(TakeLetter(rest), false)) return false;
    }
    return true;
}

}  // namespace halvorn::engine::figure
