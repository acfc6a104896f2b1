#include "write/csv.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <vector>

#include "values/values.h"

namespace halvorn::engine {

namespace {

// A cell in quotes where its text would break the line into other cells.
std::string Quoted(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
    std::string cell = "\"";
    for (const char c : text) {
        if (c == '"') cell += '"';
        cell += c;
    }
    return cell + '"';
}

// The shortest decimal that reads back as the same double.
std::string EveryDigit(double number) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return {buffer.data(), end};
}

std::string Joined(const std::vector<std::string>& texts, std::string_view separator) {
    std::string joined;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) joined += separator;
        joined += texts[i];
    }
    return joined;
}

// Sections and polylines share columns for what both have.
std::vector<std::string> CollectKeys() {
    std::vector<std::string> keys;
    keys.reserve(std::size(kSectionValues) + std::size(kPolylineValues) +
                 std::size(kDerivedValues));
    for (const ValueDescription& value : kSectionValues) keys.emplace_back(value.key);
    for (const ValueDescription& value : kPolylineValues) {
        if (std::find(keys.begin(), keys.end(), value.key) == keys.end()) {
            keys.emplace_back(value.key);
        }
    }
    for (const DerivedDescription& value : kDerivedValues) keys.emplace_back(value.key);
    return keys;
}

const std::vector<std::string>& Keys() {
    static const std::vector<std::string> keys = CollectKeys();
    return keys;
}

// What a reader must know, and every reason for an empty cell once.
std::vector<std::string> Notes(const Report& report) {
    std::vector<std::string> notes = report.section.remarks;
    notes.insert(notes.end(), report.notes.begin(), report.notes.end());
    for (const std::vector<Value>* const list : {&report.values, &report.derived}) {
        for (const Value& value : *list) {
            if (value.IsComputed()) continue;
            const std::string note = "not computed: " + value.whyMissing;
            if (std::find(notes.begin(), notes.end(), note) == notes.end()) notes.push_back(note);
        }
    }
    return notes;
}

}  // namespace

std::string CsvHeader() {
    std::vector<std::string> cells = {"source", "name", "unit"};
    cells.insert(cells.end(), Keys().begin(), Keys().end());
    cells.emplace_back("notes");
    return Joined(cells, ",") + '\n';
}

std::string CsvRow(const Report& report) {
    const SectionModel& section = report.section;
    std::vector<std::string> cells = {Quoted(section.source), Quoted(section.name),
                                      Quoted(section.unit)};
    for (const std::string& key : Keys()) {
        const Value* const value = report.Find(key);
        cells.push_back(value == nullptr ? "" : EveryDigit(value->number));
    }
    cells.push_back(Quoted(Joined(Notes(report), "; ")));
    return Joined(cells, ",") + '\n';
}

}  // namespace halvorn::engine
