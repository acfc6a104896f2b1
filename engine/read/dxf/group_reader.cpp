#include "read/dxf/group_reader.h"

#include "HalvornEngine.h"
#include "base/numbers.h"
#include "base/text.h"

namespace halvorn::engine::dxf {

namespace {

constexpr int kShownDigits = 9;

[[noreturn]] void RefuseValue(const Group& group, const std::string& source, const char* expected,
                              const char* remedy) {
    Refuse(source, group.line,
           "'" + Excerpt(group.value) + "' (group " + std::to_string(group.code) + ") is not " +
               expected,
           remedy);
}

}  // namespace

void Refuse(const std::string& source, int line, const std::string& problem,
            const std::string& remedy) {
    throw InputError(source, static_cast<std::size_t>(line), problem, remedy);
}

std::string_view GroupReader::TakeLine() {
    const std::size_t end = rest_.find('\n');
    const std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    ++line_;
    return TrimmedView(line);
}

bool GroupReader::Next(Group& group) {
    do {
        if (TrimmedView(rest_.substr(0, rest_.find('\n'))).empty() &&
            TrimmedView(rest_, " \t\r\n").empty()) {
            return false;
        }
        const std::string_view code = TakeLine();
        const std::optional<int> number = WholeNumberIn(code);
        if (!number) {
            Refuse(*source_, line_ - 1, "expected a group code, found '" + Excerpt(code) + "'",
                   kExportAnew);
        }
        group.code = *number;
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
    const std::optional<double> value = FiniteNumberIn(group.value);
    if (!value) RefuseValue(group, source, "a number", "write a plain decimal number");
    return *value;
}

int WholeValue(const Group& group, const std::string& source) {
    const std::optional<int> value = WholeNumberIn(group.value);
    if (!value) RefuseValue(group, source, "a whole number", kExportAnew);
    return *value;
}

std::string Shown(double value) {
    return ShortNumber(value, kShownDigits);
}

std::string ShownPoint(double x, double y) {
    return PlaceText(x, y, kShownDigits);
}

}  // namespace halvorn::engine::dxf
