#include "figure/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "base/text.h"

namespace halvorn::engine::figure {

namespace {

constexpr const char* kMinus = "\u2212";
constexpr const char* kEllipsis = "\u2026";

std::string Signed(int number) {
    return (number < 0 ? kMinus : "") + std::to_string(std::abs(number));
}

std::string Digits(double magnitude, int digits) {
    const int before = magnitude > 0.0 ? static_cast<int>(std::floor(std::log10(magnitude))) : 0;
    const int decimals = std::max(0, digits - 1 - before);
    std::array<char, 400> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, magnitude);
    std::string text = buffer.data();
    if (decimals > 0) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
    }
    return text;
}

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// Bytes of the character at the start of a text, 0 where there is none (RFC 3629: no overlong
// form, no surrogate, nothing beyond U+10FFFF; nor U+FFFE and U+FFFF, which XML excludes).
std::size_t CharacterLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    if (lead < 0x80U) return 1;
    if (lead < 0xC2U || lead > 0xF4U) return 0;
    const std::size_t length = lead < 0xE0U ? 2 : lead < 0xF0U ? 3 : 4;
    if (text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text[i])) return 0;
    }
    const bool isBad = (lead == 0xE0U && byte(1) < 0xA0U) || (lead == 0xEDU && byte(1) > 0x9FU) ||
                       (lead == 0xF0U && byte(1) < 0x90U) || (lead == 0xF4U && byte(1) > 0x8FU) ||
                       (lead == 0xEFU && byte(1) == 0xBFU && byte(2) >= 0xBEU);
    return isBad ? 0 : length;
}

}  // namespace

Runs Number(double value, int digits, double plainBelow) {
    constexpr double kPlainFrom = 1e-4;
    double magnitude = std::fabs(value);
    int exponent = 0;
    if (magnitude > 0.0 && (magnitude < kPlainFrom || magnitude >= plainBelow)) {
        constexpr int kLeast = -300;  // whose power of ten is a normal number
        exponent = std::max(kLeast, 3 * static_cast<int>(std::floor(std::log10(magnitude) / 3.0)));
        magnitude /= std::pow(10.0, exponent);
    }
    const std::string text = (value < 0.0 ? kMinus : "") + Digits(magnitude, digits);
    if (exponent == 0) return {{text}};
    return {{text + "\u00B710"}, {Signed(exponent), 1}};
}

Runs Symbol(const std::string& symbol) {
    if (symbol == "alpha") return {{"\u03B1"}};
    if (symbol.size() < 2 || CharacterLength(symbol) == symbol.size()) return {{symbol}};
    const std::size_t first = std::max<std::size_t>(1, CharacterLength(symbol));
    return {{symbol.substr(0, first)}, {symbol.substr(first), -1}};
}

Runs Unit(const std::string& unit) {
    const std::size_t power = unit.find('^');
    if (power == std::string::npos) return {{unit == "deg" ? "\u00B0" : unit}};
    return {{unit.substr(0, power)}, {unit.substr(power + 1), 1}};
}

Runs Joined(Runs first, const Runs& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

std::string PlainText(const Runs& runs) {
    std::string text;
    for (const Run& run : runs) text += (run.level > 0 ? "^" : "") + run.text;
    return text;
}

std::string ValidText(std::string_view text) {
    const std::string line = SingleLine(text);
    std::string valid;
    for (std::size_t i = 0; i < line.size();) {
        const std::size_t length = CharacterLength(std::string_view(line).substr(i));
        valid += length > 0 ? line.substr(i, length) : "\uFFFD";
        i += std::max<std::size_t>(length, 1);
    }
    return valid;
}

std::string Shortened(const std::string& text, double room, double size, bool isBold,
                      const MeasureText& measure) {
    if (measure(text, size, isBold) <= room) return text;
    // The longest start that fits, by halves: `fits` characters do, `tooMany` do not.
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!IsContinuation(text[i])) starts.push_back(i);
    }
    std::size_t fits = 0;
    std::size_t tooMany = starts.size();
    while (tooMany - fits > 1) {
        const std::size_t middle = (fits + tooMany) / 2;
        const std::string start = text.substr(0, starts[middle]) + kEllipsis;
        (measure(start, size, isBold) <= room ? fits : tooMany) = middle;
    }
    std::string start = text.substr(0, fits < starts.size() ? starts[fits] : 0);
    while (!start.empty() && start.back() == ' ') start.pop_back();
    return start + kEllipsis;
}

}  // namespace halvorn::engine::figure
