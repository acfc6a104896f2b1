#include "base/utf8.h"

#include <algorithm>

namespace halvorn::engine {

std::size_t CharacterCount(std::string_view text) {
    return text.size() -
           static_cast<std::size_t>(std::count_if(text.begin(), text.end(), IsContinuation));
}

std::size_t SequenceLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead < 0xC2U ? 1 : lead < 0xE0U ? 2 : lead < 0xF0U ? 3 : 4;
    for (std::size_t i = 1; i < length; ++i) {
        if (i >= text.size() || !IsContinuation(text[i])) return 1;
    }
    return length;
}

std::size_t CharacterLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    const std::size_t length = SequenceLength(text);
    if (length == 1) return lead < 0x80U ? 1 : 0;
    const bool isBad = (lead == 0xE0U && byte(1) < 0xA0U) || (lead == 0xEDU && byte(1) > 0x9FU) ||
                       (lead == 0xF0U && byte(1) < 0x90U) || (lead == 0xF4U && byte(1) > 0x8FU) ||
                       (lead == 0xEFU && byte(1) == 0xBFU && byte(2) >= 0xBEU) || lead > 0xF4U;
    return isBad ? 0 : length;
}

std::size_t LineOfForeignByte(std::string_view text) {
    std::size_t line = 1;
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 0) return line;
        if (text.front() == '\n') ++line;
        text.remove_prefix(length);
    }
    return 0;
}

std::uint32_t CodePoint(std::string_view text) {
    constexpr std::uint32_t kLeadBits[] = {0x7FU, 0x1FU, 0x0FU, 0x07U};
    const std::size_t length = SequenceLength(text);
    std::uint32_t point = static_cast<unsigned char>(text[0]) & kLeadBits[length - 1];
    for (std::size_t i = 1; i < length; ++i) {
        point = point << 6U | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    return point;
}

std::string_view WithoutByteOrderMark(std::string_view text) {
    return text.substr(text.starts_with("\xEF\xBB\xBF") ? 3 : 0);
}

}  // namespace halvorn::engine
