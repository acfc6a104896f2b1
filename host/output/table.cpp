#include "output/table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "input/input_text.h"

namespace halvorn::host {

namespace {

using Row = std::array<std::string, 4>;  // name, symbol, value, unit

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

// `value` as the table shows it: 0 when it is no more than the rounding of sums that cancel, such
// as the product moment of a symmetric section. The area gives the scale.
double WithoutRounding(const Value& value, const Report& report) {
    constexpr double kRounding = 1e-13;
    const Value* const area = report.Find("area");
    if (area == nullptr || value.power == 0) return value.number;
    const double scale = std::pow(std::fabs(area->number), 0.5 * value.power);
    return std::fabs(value.number) < kRounding * scale ? 0.0 : value.number;
}

std::size_t DigitsBeforePoint(const std::string& number) {
    return std::min(number.find_first_of(".e"), number.size());
}

// Puts the decimal points one above the other. Words start where the longest number starts.
void AlignNumbers(std::vector<Row>& rows, const std::vector<Value>& values) {
    std::size_t widest = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i].IsComputed()) widest = std::max(widest, DigitsBeforePoint(rows[i][2]));
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!values[i].IsComputed()) continue;
        rows[i][2].insert(0, widest - DigitsBeforePoint(rows[i][2]), ' ');
    }
}

std::string JoinColumns(const std::vector<Row>& rows) {
    std::array<std::size_t, 4> widths{};
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

// Every reason and note once, in the order of the values.
std::vector<std::string> Footnotes(const Report& report) {
    std::vector<std::string> notes;
    for (const Value& value : report.values) {
        if (value.IsComputed()) continue;
        const std::string note = "Not computed: " + value.whyMissing;
        if (std::find(notes.begin(), notes.end(), note) == notes.end()) notes.push_back(note);
    }
    for (const std::string& note : report.notes) notes.push_back("Note: " + note);
    return notes;
}

}  // namespace

std::string TableText(const Report& report) {
    const SectionModel& section = report.section;
    std::string text = SingleLine(section.name.empty() ? section.source : section.name) + '\n';
    if (!section.description.empty()) text += SingleLine(section.description) + '\n';
    if (report.shift.dx != 0.0 || report.shift.dy != 0.0) {
        text += "Reference point of the elastic moduli: (xG + " + SevenDigits(report.shift.dx) +
                ", yG + " + SevenDigits(report.shift.dy) + ") " + section.unit + '\n';
    }
    std::vector<Row> rows;
    for (const Value& value : report.values) {
        rows.push_back(
            {value.name, value.symbol,
             value.IsComputed() ? SevenDigits(WithoutRounding(value, report)) : "not computed",
             value.unit});
    }
    AlignNumbers(rows, report.values);
    rows.insert(rows.begin(), Row{"Property", "Symbol", "Value", "Unit"});
    text += '\n' + JoinColumns(rows);
    for (const std::string& note : Footnotes(report)) text += '\n' + note + ".\n";
    return text;
}

}  // namespace halvorn::host
