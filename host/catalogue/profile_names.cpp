#include "catalogue/profile_names.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <regex>
#include <vector>

namespace halvorn::host {

std::string CanonicalProfileName(std::string_view name) {
    constexpr std::string_view kTimes = "\xC3\x97";  // the multiplication sign in UTF-8
    std::string text;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name.substr(i, kTimes.size()) == kTimes) {
            text += 'X';
            i += kTimes.size() - 1;
            continue;
        }
        const auto c = static_cast<unsigned char>(name[i]);
        if (std::isspace(c) != 0 || c == '-' || c == '_') continue;
        text += c == '*' ? 'X' : c == ',' ? '.' : static_cast<char>(std::toupper(c));
    }
    static const std::regex zeros(R"((\.\d*?)0+(?=X|$))"), point(R"(\.(?=X|$))");
    static const std::regex wideFlange(R"(^HE(\d+)([ABM])$)");
    static const std::regex equalSides(R"(^(L|SHS)([\d.]+)X([\d.]+)$)");
    text = std::regex_replace(text, zeros, "$1");
    text = std::regex_replace(text, point, "");
    text = std::regex_replace(text, wideFlange, "HE$2$1");
    return std::regex_replace(text, equalSides, "$1$2X$2X$3");
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

}  // namespace halvorn::host
