#include "catalogue/profile_names.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "base/text.h"

namespace halvorn::engine {

namespace {

constexpr std::string_view kDigits = "0123456789";

// 114.30X5.0 becomes 114.3X5.
std::string WithoutEmptyDecimals(const std::string& text) {
    std::string shortened;
    bool hasPoint = false;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        const bool isDigit = i < text.size() && kDigits.find(text[i]) != std::string_view::npos;
        if (hasPoint && !isDigit) {
            while (shortened.back() == '0') shortened.pop_back();
            if (shortened.back() == '.') shortened.pop_back();
            hasPoint = false;
        }
        if (i == text.size()) break;
        hasPoint = hasPoint || text[i] == '.';
        shortened += text[i];
    }
    return shortened;
}

// Other orders and short forms in use: HE200B, equal sides written once, a square RHS.
std::string WithAllSides(const std::string& text) {
    const std::size_t first = std::min(text.find_first_of(kDigits), text.size());
    const std::string series = text.substr(0, first);
    const std::string size = text.substr(first);
    if (series == "HE" && !size.empty() && size.find_first_not_of(kDigits) + 1 == size.size() &&
        std::string_view("ABM").find(size.back()) != std::string_view::npos) {
        return series + size.back() + size.substr(0, size.size() - 1);
    }
    const std::size_t times = size.find('X');
    if (times == std::string::npos) return text;
    const std::string side = size.substr(0, times + 1), rest = size.substr(times + 1);
    const bool isShort = rest.find('X') == std::string::npos;
    if (isShort && (series == "L" || series == "SHS")) return series + side + side + rest;
    if (series == "RHS" && rest.starts_with(side)) return "SHS" + size;
    return text;
}

}  // namespace

std::string CanonicalProfileName(std::string_view name) {
    constexpr std::string_view kTimes = "\xC3\x97";  // the multiplication sign in UTF-8
    constexpr std::string_view kLeftOut = " \t\n\v\f\r-_";
    std::string text;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name.substr(i, kTimes.size()) == kTimes) {
            text += 'X';
            i += kTimes.size() - 1;
            continue;
        }
        const char c = name[i];
        if (kLeftOut.find(c) == std::string_view::npos) text += c == '*' ? 'X' : c == ',' ? '.' : c;
    }
    return WithAllSides(WithoutEmptyDecimals(InCapitals(text)));
}

std::string WithSidesSwapped(const std::string& canonicalName) {
    const std::size_t first = canonicalName.find_first_of(kDigits);
    const std::size_t second = canonicalName.find('X', first);
    if (second == std::string::npos) return canonicalName;
    const std::size_t third = canonicalName.find('X', second + 1);
    if (third == std::string::npos) return canonicalName;
    return canonicalName.substr(0, first) + canonicalName.substr(second + 1, third - second - 1) +
           "X" + canonicalName.substr(first, second - first) + canonicalName.substr(third);
}

std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t k = 0; k < b.size(); ++k) {
            const std::size_t changed = diagonal + (a[i] == b[k] ? 0 : 1);
            diagonal = row[k + 1];
            row[k + 1] = std::min({changed, row[k] + 1, row[k + 1] + 1});
        }
    }
    return row.back();
}

}  // namespace halvorn::engine
