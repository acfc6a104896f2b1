#include "write/csv.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "catalogue/csv_table.h"
#include "values/values.h"

namespace halvorn::engine {

namespace {

std::string Joined(const std::vector<std::string>& texts, std::string_view separator) {
    std::string joined;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) joined += separator;
        joined += texts[i];
    }
    return joined;
}

template <typename Descriptions>
void CollectKeys(const Descriptions& table, std::vector<std::string>& keys) {
    for (const auto& [description, get] : table) {
        if (std::find(keys.begin(), keys.end(), description.key) == keys.end()) {
            keys.emplace_back(description.key);
        }
    }
}

// Sections and polylines share columns for what both have.
const std::vector<std::string>& ClassKeys() {
    static const std::vector<std::string> keys = [] {
        std::vector<std::string> collected;
        CollectKeys(kClassValues, collected);
        CollectKeys(kPolylineValues, collected);
        return collected;
    }();
    return keys;
}

// What a reader must know, and every reason for an empty cell once.
std::vector<std::string> Notes(const Report& report) {
    std::vector<std::string> notes;
    for (const Finding& finding : report.findings) {
        if (finding.severity == Severity::Hint) continue;
        notes.push_back(SeverityName(finding.severity) + (": " + FindingText(finding)));
    }
    for (const auto* const list : {&report.values, &report.classValues}) {
        for (const Value& value : *list) {
            if (value.IsComputed()) continue;
            const std::string note = "not computed: " + value.whyMissing;
            if (std::find(notes.begin(), notes.end(), note) == notes.end()) notes.push_back(note);
        }
    }
    return notes;
}

std::string Cell(const std::optional<double>& number) {
    return number ? EveryDigit(*number) : "";
}

std::string Cell(const Value* value) {
    return value == nullptr ? "" : EveryDigit(value->number);
}

// The columns of a value: the number, what says how certain it is, and what is published of it.
struct Column {
    const char* suffix;
    bool (*isOf)(const ValueDescription&);
    std::optional<double> Value::*member;
};

constexpr Column kColumns[] = {
    {"_lower", [](const ValueDescription& d) { return d.certainty == Certainty::Bounds; },
     &Value::lower},
    {"_upper", [](const ValueDescription& d) { return d.certainty == Certainty::Bounds; },
     &Value::upper},
    // With a Poisson's ratio above 0 shear areas have an error in the place of bounds.
    {"_error",
     [](const ValueDescription& d) {
         const bool isShearArea = d.certainty == Certainty::Bounds && d.group == ValueGroup::Shear;
         return d.certainty == Certainty::Error || isShearArea;
     },
     &Value::error},
    {"_published", [](const ValueDescription& d) { return d.published != nullptr; },
     &Value::published}};

}  // namespace

std::string CsvHeader(const CsvOptions& options) {
    std::vector<std::string> cells = {"source", "name", "unit"};
    for (const ValueDescription& value : kValues) {
        cells.emplace_back(value.key);
        for (const Column& column : kColumns) {
            if (column.isOf(value)) cells.push_back(value.key + std::string(column.suffix));
        }
    }
    if (options.wantsClassValues) {
        for (const std::string& key : ClassKeys()) cells.push_back("class_" + key);
    }
    cells.emplace_back("notes");
    return Joined(cells, ",") + '\n';
}

std::string CsvRow(const Report& report, const CsvOptions& options) {
    const SectionModel& section = report.section;
    std::vector<std::string> cells = {QuotedCell(section.source), QuotedCell(section.name),
                                      QuotedCell(section.unit)};
    for (const ValueDescription& description : kValues) {
        const Value* const value = report.Find(description.key);
        cells.push_back(Cell(value));
        for (const Column& column : kColumns) {
            if (!column.isOf(description)) continue;
            cells.push_back(value == nullptr ? "" : Cell(value->*column.member));
        }
    }
    if (options.wantsClassValues) {
        for (const std::string& key : ClassKeys()) {
            cells.push_back(Cell(FindValue(report.classValues, key)));
        }
    }
    cells.push_back(QuotedCell(Joined(Notes(report), "; ")));
    return Joined(cells, ",") + '\n';
}

}  // namespace halvorn::engine
