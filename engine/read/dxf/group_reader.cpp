#include "read/dxf/group_reader.h"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "base/input_error.h"
#include "base/text.h"

namespace halvorn::engine::dxf {

namespace {

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

template <class Number>
bool Read(std::string_view text, Number& number) {
    // std::from_chars takes no plus sign, some programs write one.
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

void Refuse(const std::string& source, int line, const std::string& problem,
            const std::string& remedy) {
    throw InputError(source + ": line " + std::to_string(line), problem, remedy);
}

std::string_view GroupReader::TakeLine() {
    const std::size_t end = rest_.find('\n');
    const std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    ++line_;
    return Trimmed(line);
}

bool GroupReader::Next(Group& group) {
    do {
        if (Trimmed(rest_.substr(0, rest_.find('\n'))).empty() &&
            rest_.find_first_not_of(" \t\r\n") == std::string_view::npos) {
            return false;
        }
        const std::string_view code = TakeLine();
        if (!Read(code, group.code)) {
            Refuse(*source_, line_ - 1, "expected a group code, found '" + Excerpt(code) + "'",
                   kExportAnew);
        }
        if (rest_.empty()) {
            Refuse(*source_, line_ - 1,
                   "the text ends after the group code " + std::to_string(group.code), kExportAnew);
        }
        group.line = line_;
        group.value = TakeLine();
    } while (group.code == 999);
    return true;
}

double RealValue(const Group& group, const std::string& source) {
    double value = 0.0;
    if (!Read(group.value, value) || !std::isfinite(value)) {
        Refuse(source, group.line,
               "'" + Excerpt(group.value) + "' (group " + std::to_string(group.code) +
                   ") is not a number",
               "write a plain decimal number");
    }
    return value;
}

int WholeValue(const Group& group, const std::string& source) {
    int value = 0;
    if (!Read(group.value, value)) {
        Refuse(source, group.line,
               "'" + Excerpt(group.value) + "' (group " + std::to_string(group.code) +
                   ") is not a whole number",
               kExportAnew);
    }
    return value;
}

std::string Shown(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", value);
    return text;
}

std::string ShownPoint(double x, double y) {
    return "(" + Shown(x) + ", " + Shown(y) + ")";
}

}  // namespace halvorn::engine::dxf
