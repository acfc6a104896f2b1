#include "write/columns.h"

#include <algorithm>

#include "base/utf8.h"

namespace halvorn::engine {

namespace {

std::size_t DigitsBeforePoint(const std::string& number) {
    return std::min(number.find_first_of(".e "), number.size());
}

// Numbers with bounds and exponents are long: they start where words do.
bool CanAlign(const std::string& number) {
    return number.find('e') == std::string::npos || number.find(' ') == std::string::npos;
}

}  // namespace

std::string Wrapped(const std::string& text, std::size_t indent, std::size_t width) {
    std::string lines;
    std::size_t column = indent;
    bool isFirst = true;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const std::string word = text.substr(at, end - at);
        at = end + 1;
        const std::size_t length = CharacterCount(word);
        if (!isFirst && column + 1 + length > width) {
            lines += '\n' + std::string(indent, ' ');
            column = indent;
        } else if (!isFirst) {
            lines += ' ';
            ++column;
        }
        lines += word;
        column += length;
        isFirst = false;
    }
    return lines + '\n';
}

std::string JoinColumns(const std::vector<TableRow>& rows) {
    std::vector<std::size_t> widths;
    for (const TableRow& row : rows) {
        widths.resize(std::max(widths.size(), row.cells.size()));
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            if (row.cells.size() == 1) continue;  // a title
            widths[i] = std::max(widths[i], CharacterCount(row.cells[i]));
        }
    }
    std::string lines;
    for (const TableRow& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            const std::size_t length = CharacterCount(row.cells[i]);
            line += row.cells[i] + std::string(std::max(widths[i], length) - length + 2, ' ');
        }
        if (row.text.empty()) {
            lines += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
        } else {
            lines += line + Wrapped(row.text, CharacterCount(line));
        }
    }
    return lines;
}

void AlignPoints(const std::vector<std::string*>& numbers) {
    constexpr std::size_t kWidest = 22;
    std::size_t before = 0;
    for (const std::string* const number : numbers) {
        if (CanAlign(*number)) before = std::max(before, DigitsBeforePoint(*number));
    }
    const auto shift = [&](const std::string& number) {
        return CanAlign(number) ? before - DigitsBeforePoint(number) : 0;
    };
    for (const std::string* const number : numbers) {
        if (shift(*number) + CharacterCount(*number) > kWidest) return;
    }
    for (std::string* const number : numbers) number->insert(0, shift(*number), ' ');
}

}  // namespace halvorn::engine
