#include "figure/text.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "base/utf8.h"

namespace halvorn::engine::figure {

namespace {

constexpr const char* kMinus = "\u2212";
constexpr const char* kEllipsis = "\u2026";

std::string Signed(int number) {
    return (number < 0 ? kMinus : "") + std::to_string(std::abs(number));
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
    const std::string text = (value < 0.0 ? kMinus : "") + PlainNumber(magnitude, digits);
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
