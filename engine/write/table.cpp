#include "write/table.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "base/utf8.h"
#include "geometry/place_text.h"
#include "values/class_values.h"
#include "values/plastic_halves.h"
#include "values/stress_values.h"
#include "values/values.h"
#include "write/columns.h"

namespace halvorn::engine {

namespace {

constexpr int kDigits = 7;  // significant ones

std::string SevenDigits(double number) {
    return TableNumber(number, kDigits);
}

// The same reason once more is short.
std::string WhyMissing(const Value& value, const std::string& lastReason) {
    return value.whyMissing == lastReason ? "not computed, as above"
                                          : "not computed: " + SingleLine(value.whyMissing);
}

// The rows of a block of values. A value that is missing says why.
std::vector<TableRow> Rows(const std::vector<Value>& values, bool hasPublished) {
    std::vector<TableRow> rows;
    std::string lastReason;
    for (const Value& value : values) {
        TableRow& row = rows.emplace_back();
        row.cells = {value.name, value.symbol};
        if (value.IsComputed()) {
            row.cells.push_back(ValueText(value));
            row.cells.push_back(value.unit);
            if (hasPublished)
                row.cells.insert(row.cells.end(), {PublishedText(value), DifferenceText(value)});
            row.cells.push_back(SingleLine(value.method));
        } else {
            row.text = WhyMissing(value, lastReason);
        }
        lastReason = value.whyMissing;
    }
    std::vector<std::string*> numbers;
    for (TableRow& row : rows) {
        if (row.text.empty()) numbers.push_back(&row.cells[2]);
    }
    AlignPoints(numbers);
    return rows;
}

void Append(const std::vector<TableRow>& block, std::vector<TableRow>* rows) {
    rows->insert(rows->end(), block.begin(), block.end());
}

const char* GroupTitle(ValueGroup group) {
    switch (group) {
        case ValueGroup::Bending:
            return "Bending, about axes through the centre of gravity: x horizontal, y vertical, 1 "
                   "and 2 principal";
        case ValueGroup::Plastic:
            return "Plastic, about the lines parallel to these axes that halve the area";
        case ValueGroup::Torsion:
            return "Torsion and warping; M is the shear centre";
        case ValueGroup::Shear:
            return "Shear: stiffness areas for a force along x and y; static moments of one side "
                   "of "
                   "the axis";
        case ValueGroup::Geometry:
            break;
    }
    return "Geometry";
}

// All groups in the same columns.
std::string ValuesText(const std::vector<Value>& values) {
    const bool hasPublished = std::any_of(values.begin(), values.end(), [](const Value& value) {
        return value.published.has_value();
    });
    std::vector<TableRow> rows;
    for (auto from = values.begin(); from != values.end();) {
        const ValueGroup group = from->group;
        const auto to = std::find_if(from, values.end(),
                                     [&](const Value& value) { return value.group != group; });
        if (from == values.begin()) {
            rows.push_back({{GroupTitle(group), "Symbol", "Value", "Unit"}, ""});
            std::vector<std::string>& head = rows.back().cells;
            if (hasPublished) head.insert(head.end(), {"Published", "Differs"});
            head.emplace_back("Method");
        } else {
            rows.push_back({});
            rows.push_back({{GroupTitle(group)}, ""});
        }
        Append(Rows({from, to}, hasPublished), &rows);
        from = to;
    }
    return JoinColumns(rows);
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
        values.back().method = stress.place ? "at " + PlaceText(*stress.place) : "";
    }
    return values;
}

// The moduli of the parts of a composite section, a line for each part.
std::string PartsText(const Report& report) {
    if (report.parts.empty()) return "";
    constexpr std::size_t kLongestName = 22;
    std::vector<TableRow> rows = {
        {{"Elastic moduli of the parts", "n", "Wel,bottom", "Wel,top", "Wel,left", "Wel,right", ""},
         ""}};
    for (const CompositePart& part : report.parts) {
        TableRow& row = rows.emplace_back();
        row.cells = {Excerpt(part.name, kLongestName), ShortNumber(part.modularRatio)};
        std::string whyMissing;
        for (const Value& value : part.moduli) {
            row.cells.push_back(value.IsComputed() ? SevenDigits(value.number) : "-");
            if (!value.IsComputed()) whyMissing = value.whyMissing;
        }
        row.cells.push_back(part.moduli.front().unit);
        if (!whyMissing.empty()) rows.push_back({{"  not computed: " + whyMissing}, ""});
    }
    return '\n' + JoinColumns(rows);
}

std::string ForcesText(const Report& report) {
    std::string text = "Forces:";
    for (const ForceDescription& force : kForces) {
        text += std::string(&force == kForces.data() ? " " : ", ") + force.name + " = " +
                SevenDigits((*report.forces).*force.force) +
                (force.isMoment ? " F " + report.section.unit : " F");
    }
    return Wrapped(text, 2);
}

// A block of its own columns.
std::string BlockText(const char* title, const std::vector<Value>& values) {
    if (values.empty()) return "";
    std::vector<TableRow> rows = {{{title, "Symbol", "Value", "Unit", ""}, ""}};
    Append(Rows(values, false), &rows);
    return '\n' + JoinColumns(rows);
}

// The outputs of the class, each with what it is.
std::string ClassText(const Report& report) {
    if (report.classValues.empty()) return "";
    std::vector<TableRow> rows = {{{"Symbol", "Value", "Unit", "What it is"}, ""}};
    std::string lastReason;
    for (const Value& value : report.classValues) {
        const std::string how =
            value.IsComputed() ? SingleLine(value.method) : WhyMissing(value, lastReason);
        rows.push_back({{value.symbol, ValueText(value), value.unit}, value.name + ": " + how});
        lastReason = value.whyMissing;
    }
    std::vector<std::string*> numbers;
    for (TableRow& row : rows) {
        if (!row.text.empty()) numbers.push_back(&row.cells[1]);
    }
    AlignPoints(numbers);
    const char* const are = report.section.polyline ? kPolylineValuesAre : kClassValuesAre;
    return '\n' + Wrapped("Outputs of the class: " + std::string(are), 0) + JoinColumns(rows);
}

// What is found but for hints.
std::string Remarks(const Report& report) {
    std::string text;
    for (const Finding& finding : report.findings) {
        if (finding.severity == Severity::Hint) continue;
        std::string kind = SeverityName(finding.severity);
        kind[0] = static_cast<char>(kind[0] - 'a' + 'A');
        constexpr std::size_t kIndent = 2;
        text += '\n' + Wrapped(kind + ": " + FindingText(finding) + '.', kIndent);
    }
    return text;
}

}  // namespace

std::string ValueText(const Value& value) {
    if (!value.IsComputed()) return "";
    double error = value.error.value_or(0.0);
    // Between two bounds the number is their middle.
    if (value.lower && value.upper) {
        error = std::max(value.number - *value.lower, *value.upper - value.number);
    }
    return NumberWithin(value.number, error, kDigits);
}

std::string PublishedText(const Value& value) {
    if (!value.published) return "";
    constexpr std::size_t kWidest = 10;  // of its column: what is longer has an exponent
    const std::string plain = SevenDigits(*value.published);
    return plain.size() <= kWidest ? plain : ShortNumber(*value.published, kDigits);
}

std::string DifferenceText(const Value& value) {
    const std::optional<double> difference = value.Difference();
    if (!difference) return "";
    constexpr int kDecimals = 2;
    const std::string number = FixedNumber(100.0 * *difference, kDecimals);
    const bool isMore = number[0] != '-' && number != "0";
    return (isMore ? "+" : "") + number + " %";
}

std::string TableText(const Report& report, const TableOptions& options) {
    const SectionModel& section = report.section;
    std::string text = Wrapped(SingleLine(section.name.empty() ? section.source : section.name), 0);
    if (!section.description.empty()) text += Wrapped(SingleLine(section.description), 0);
    if (report.shift.dx != 0.0 || report.shift.dy != 0.0) {
        const auto plus = [](double number) {
            return (number < 0.0 ? " - " : " + ") + SevenDigits(std::fabs(number));
        };
        text += "Reference point of the elastic moduli: (xG" + plus(report.shift.dx) + ", yG" +
                plus(report.shift.dy) + ") " + section.unit + '\n';
    }
    if (report.forces) text += ForcesText(report);
    text += '\n' + ValuesText(report.values);
    text += PartsText(report);
    text += BlockText("Stresses", StressValues(report));
    text += BlockText("Halves about the plastic axes", HalfValues(report));
    text += ClassText(report);
    if (options.wantsMethods) text += "\nMethods\n" + MethodsText();
    return text + Remarks(report);
}

std::string MethodsText() {
    std::vector<TableRow> rows;
    for (const MethodDescription& method : MethodDescriptions()) {
        rows.push_back({{method.word, ""}, method.sentence});
    }
    return JoinColumns(rows);
}

}  // namespace halvorn::engine
