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

std::string Cell(const Value* value) {
    return value == nullptr ? "" : EveryDigit(value->number);
}

}  // namespace

std::string CsvHeader() {
    std::vector<std::string> cells = {"source", "name", "unit"};
    for (const ValueDescription& value : kValues) cells.emplace_back(value.key);
    for (const std::string& key : ClassKeys()) cells.push_back("class_" + key);
    cells.emplace_back("notes");
    return Joined(cells, ",") + '\n';
}

std::string CsvRow(const Report& report) {
    const SectionModel& section = report.section;
    std::vector<std::string> cells = {QuotedCell(section.source), QuotedCell(section.name),
                                      QuotedCell(section.unit)};
    for (const ValueDescription& value : kValues) cells.push_back(Cell(report.Find(value.key)));
    for (const std::string& key : ClassKeys()) {
        cells.push_back(Cell(FindValue(report.classValues, key)));
    }
    cells.push_back(QuotedCell(Joined(Notes(report), "; ")));
    return Joined(cells, ",") + '\n';
}

}  // namespace halvorn::engine
