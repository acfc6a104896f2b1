#include "write/table.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "base/utf8.h"
#include "geometry/place_text.h"
#include "values/plastic_halves.h"
#include "values/stress_values.h"
#include "values/values.h"

namespace halvorn::engine {

namespace {

using Row = std::array<std::string, 5>;  // name, symbol, value, unit, method
constexpr std::size_t kMethod = 4;

constexpr int kDigits = 7;  // significant ones

std::string SevenDigits(double number) {
    return TableNumber(number, kDigits);
}

std::size_t DigitsBeforePoint(const std::string& number) {
    return std::min(number.find_first_of(".e "), number.size());
}

// Between two bounds the number is their middle.
std::string Number(const Value& value) {
    double error = value.error.value_or(0.0);
    if (value.lower && value.upper) {
        error = std::max(value.number - *value.lower, *value.upper - value.number);
    }
    return NumberWithin(value.number, error, kDigits);
}

// Numbers with bounds and exponents are long: they start where words do.
bool IsAligned(const Value& value, const std::string& number) {
    const bool hasExponentAndBound =
        number.find('e') != std::string::npos && number.find(' ') != std::string::npos;
    return value.IsComputed() && !hasExponentAndBound;
}

// The rows of a block of values, decimal points one above the other. Words start where the longest
// number starts.
std::vector<Row> Rows(const std::vector<Value>& values) {
    std::vector<std::string> numbers;
    std::size_t widest = 0;
    for (const Value& value : values) {
        numbers.push_back(value.IsComputed() ? Number(value) : "not computed");
        if (IsAligned(value, numbers.back())) {
            widest = std::max(widest, DigitsBeforePoint(numbers.back()));
        }
    }
    std::vector<Row> rows;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Value& value = values[i];
        if (IsAligned(value, numbers[i])) {
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
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], CharacterCount(row[i]));
        }
    }
    std::string text;
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i] + std::string(widths[i] - CharacterCount(row[i]) + 2, ' ');
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
        for (const Row& row : rows) width = std::max(width, CharacterCount(row[column]));
        start += width + 2;
    }
    std::vector<std::string> methods;
    for (Row& row : rows) {
        if (start + CharacterCount(row[kMethod]) <= kLongestLine) continue;
        const auto at = std::find(methods.begin(), methods.end(), row[kMethod]);
        const std::string number = std::to_string(at - methods.begin() + 1);
        if (at == methods.end()) methods.push_back(row[kMethod]);
        row[kMethod] = '[' + number + ']';
    }
    return methods;
}

// The halves as values.
std::vector<Value> HalfValues(const Report& report) {
    std::vector<Value> values;
    const auto add = [&](const std::string& name, const std::string& symbol, int power,
                         double number, const std::string& whyMissing) {
        Value value = DescribedValue({"", "", "", power}, report.section.unit);
        value.name = name;
        value.symbol = symbol;
        value.number = number;
        value.whyMissing = whyMissing;
        values.push_back(value);
    };
    for (std::size_t i = 0; i < report.halves.size(); ++i) {
        const bool isHorizontal = i == 0;
        const PlasticHalves& halves = report.halves[i];
        const auto sides =
            SidesOf(isHorizontal ? AxisDirection::Horizontal : AxisDirection::Vertical);
        for (std::size_t side = 0; side < 2; ++side) {
            const PlasticHalf& half = halves.sides[side];
            const std::string of =
                std::string(isHorizontal ? "Half " : "Half on the ") + sides[side] + ", ";
            const std::string index = std::string(",") + sides[side];
            add(of + "area", "A" + index, 2, half.area, halves.whyMissing);
            add(of + "centroid x", "xG" + index, 1, half.centroid.x, halves.whyMissing);
            add(of + "centroid y", "yG" + index, 1, half.centroid.y, halves.whyMissing);
            add(of + "lever arm", "z" + index, 1, half.leverArm, halves.whyMissing);
        }
    }
    return values;
}

// The largest stresses as values, with their places.
std::vector<Value> StressValues(const Report& report) {
    std::vector<Value> values;
    for (const LargestStress& stress : report.stresses) {
        values.push_back(stress.value);
        values.back().method = "at " + PlaceText(stress.place);
    }
    return values;
}

// The moduli of the parts of a composite section, named after them.
std::vector<Value> PartValues(const Report& report) {
    constexpr std::array kFibres = {"bottom", "top", "left", "right"};  // as the moduli
    std::vector<Value> values;
    for (const CompositePart& part : report.parts) {
        for (std::size_t i = 0; i < part.moduli.size(); ++i) {
            values.push_back(part.moduli[i]);
            values.back().name = Excerpt(part.name) + ", " + kFibres[i];
        }
    }
    return values;
}

std::string ForcesText(const Report& report) {
    std::string text = "Forces:";
    for (const ForceDescription& force : kForces) {
        text += std::string(&force == kForces.data() ? " " : ", ") + force.name + " = " +
                SevenDigits((*report.forces).*force.force) +
                (force.isMoment ? " F " + report.section.unit : " F");
    }
    return text + '\n';
}

// All blocks in the same columns, a line apart, and what stands for the numbers in them.
std::string Blocks(const Report& report) {
    std::vector<Row> rows = {{"Property", "Symbol", "Value", "Unit", "Method"}};
    const auto add = [&](const char* title, const std::vector<Value>& values) {
        if (values.empty()) return;
        if (title != nullptr) {
            rows.push_back({});
            rows.push_back({title});
        }
        const std::vector<Row> block = Rows(values);
        rows.insert(rows.end(), block.begin(), block.end());
    };
    add(nullptr, report.values);
    add("Elastic moduli of the parts", PartValues(report));
    add("Stresses", StressValues(report));
    add("Halves about the plastic axes", HalfValues(report));
    add("Published", report.published);
    add("Outputs of the class", report.classValues);
    const std::vector<std::string> methods = NumberLongMethods(rows);
    std::string text = JoinColumns(rows);
    for (std::size_t i = 0; i < methods.size(); ++i) {
        text += (i == 0 ? "\n[" : "[") + std::to_string(i + 1) + "] " + methods[i] + '\n';
    }
    return text;
}

// Every reason once in the order of the values, then what is found but for hints.
std::vector<std::string> Footnotes(const Report& report) {
    std::vector<std::string> notes;
    const std::vector<Value> parts = PartValues(report);
    const std::vector<Value> stresses = StressValues(report);
    for (const auto* const list : {&report.values, &parts, &stresses, &report.classValues}) {
        for (const Value& value : *list) {
            if (value.IsComputed()) continue;
            const std::string note = "Not computed: " + SingleLine(value.whyMissing);
            if (std::find(notes.begin(), notes.end(), note) == notes.end()) notes.push_back(note);
        }
    }
    for (const PlasticHalves& halves : report.halves) {
        const std::string note = "Not computed: " + SingleLine(halves.whyMissing);
        const bool isNew = std::find(notes.begin(), notes.end(), note) == notes.end();
        if (!halves.whyMissing.empty() && isNew) notes.push_back(note);
    }
    for (const Finding& finding : report.findings) {
        if (finding.severity == Severity::Hint) continue;
        std::string kind = SeverityName(finding.severity);
        kind[0] = static_cast<char>(kind[0] - 'a' + 'A');
        notes.push_back(kind + ": " + FindingText(finding));
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
    if (report.forces) text += ForcesText(report);
    text += '\n' + Blocks(report);
    for (const std::string& note : Footnotes(report)) text += '\n' + note + ".\n";
    return text;
}

}  // namespace halvorn::engine
