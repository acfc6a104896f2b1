#include "write/table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "base/text.h"

namespace halvorn::engine {

namespace {

using Row = std::array<std::string, 5>;  // name, symbol, value, unit, method
constexpr std::size_t kMethod = 4;

// Seven significant digits, all digits before the point, no zeros at the end.
std::string SevenDigits(double number) {
    constexpr double kFixedFrom = 1e-4;
    constexpr double kFixedBelow = 1e15;
    const double magnitude = std::fabs(number);
    if (magnitude == 0.0) return "0";
    std::array<char, 64> buffer{};
    if (magnitude < kFixedFrom || magnitude >= kFixedBelow) {
        std::snprintf(buffer.data(), buffer.size(), "%.6e", number);
        return buffer.data();
    }
    const int decimals = std::max(0, 6 - static_cast<int>(std::floor(std::log10(magnitude))));
    std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, number);
    std::string text = buffer.data();
    if (decimals > 0) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
    }
    return text;
}

std::size_t DigitsBeforePoint(const std::string& number) {
    return std::min(number.find_first_of(".e"), number.size());
}

// The rows of a block of values, decimal points one above the other. Words start where the longest
// number starts.
std::vector<Row> Rows(const std::vector<Value>& values) {
    std::vector<std::string> numbers;
    std::size_t widest = 0;
    for (const Value& value : values) {
        const bool isThere = value.IsComputed();
        numbers.push_back(isThere ? SevenDigits(value.number) : "not computed");
        if (isThere) widest = std::max(widest, DigitsBeforePoint(numbers.back()));
    }
    std::vector<Row> rows;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Value& value = values[i];
        if (value.IsComputed()) {
            numbers[i].insert(0, widest - DigitsBeforePoint(numbers[i]), ' ');
        }
        rows.push_back({value.name, value.symbol, numbers[i], value.unit,
                        value.IsComputed() ? SingleLine(value.method) : ""});
    }
    return rows;
}

std::string JoinColumns(const std::vector<Row>& rows) {
    std::array<std::size_t, 5> widths{};
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    }
    std::string text;
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i] + std::string(widths[i] - row[i].size() + 2, ' ');
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    }
    return text;
}

// Puts a number in the place of each method that would make its line too long, and returns the
// methods under their numbers.
std::vector<std::string> NumberLongMethods(std::vector<Row>& rows) {
    constexpr std::size_t kLongestLine = 115;
    std::size_t start = 0;
    for (std::size_t column = 0; column < kMethod; ++column) {
        std::size_t width = 0;
        for (const Row& row : rows) width = std::max(width, row[column].size());
        start += width + 2;
    }
    std::vector<std::string> methods;
    for (Row& row : rows) {
        if (start + row[kMethod].size() <= kLongestLine) continue;
        const auto at = std::find(methods.begin(), methods.end(), row[kMethod]);
        const std::string number = std::to_string(at - methods.begin() + 1);
        if (at == methods.end()) methods.push_back(row[kMethod]);
        row[kMethod] = '[' + number + ']';
    }
    return methods;
}

// Both blocks in the same columns, a line apart, and what stands for the numbers in them.
std::string Blocks(const Report& report) {
    std::vector<Row> rows = {{"Property", "Symbol", "Value", "Unit", "Method"}};
    const std::vector<Row> values = Rows(report.values);
    const std::vector<Row> derived = Rows(report.derived);
    rows.insert(rows.end(), values.begin(), values.end());
    if (!derived.empty()) {
        rows.push_back({});
        rows.push_back({"Derived"});
        rows.insert(rows.end(), derived.begin(), derived.end());
    }
    const std::vector<std::string> methods = NumberLongMethods(rows);
    std::string text = JoinColumns(rows);
    for (std::size_t i = 0; i < methods.size(); ++i) {
        text += (i == 0 ? "\n[" : "[") + std::to_string(i + 1) + "] " + methods[i] + '\n';
    }
    return text;
}

// Every reason, note and remark once, in the order of the values.
std::vector<std::string> Footnotes(const Report& report) {
    std::vector<std::string> notes;
    for (const std::vector<Value>* const list : {&report.values, &report.derived}) {
        for (const Value& value : *list) {
            if (value.IsComputed()) continue;
            const std::string note = "Not computed: " + SingleLine(value.whyMissing);
            if (std::find(notes.begin(), notes.end(), note) == notes.end()) notes.push_back(note);
        }
    }
    for (const std::string& note : report.notes) notes.push_back("Note: " + note);
    for (const std::string& remark : report.section.remarks) {
        notes.push_back("Remark: " + SingleLine(remark));
    }
    return notes;
}

}  // namespace

std::string TableText(const Report& report) {
    const SectionModel& section = report.section;
    std::string text = SingleLine(section.name.empty() ? section.source : section.name) + '\n';
    if (!section.description.empty()) text += SingleLine(section.description) + '\n';
    if (report.shift.dx != 0.0 || report.shift.dy != 0.0) {
        const auto plus = [](double number) {
            return (number < 0.0 ? " - " : " + ") + SevenDigits(std::fabs(number));
        };
        text += "Reference point of the elastic moduli: (xG" + plus(report.shift.dx) + ", yG" +
                plus(report.shift.dy) + ") " + section.unit + '\n';
    }
    text += '\n' + Blocks(report);
    for (const std::string& note : Footnotes(report)) text += '\n' + note + ".\n";
    return text;
}

}  // namespace halvorn::engine
