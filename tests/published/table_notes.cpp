#include "table_notes.h"

#include <stdexcept>

#include "base/text.h"
#include "catalogue/csv_table.h"

namespace halvorn::published {
namespace {

Rounding RoundingNamed(const std::string& name) {
    if (name.empty()) return Rounding::Nearest;
    if (name == "truncated") return Rounding::Truncated;
    if (name == "truncated or rounded") return Rounding::TruncatedOrRounded;
    if (name == "rounded twice") return Rounding::Twice;
    throw std::runtime_error("unknown rounding '" + name + "' in a note");
}

int Particularity(const TableNote& note) {
    return (note.profile.empty() ? 0 : 2) + (note.property.empty() ? 0 : 1);
}

}  // namespace

std::vector<TableNote> ReadNotes(const std::string& path) {
    std::vector<TableNote> notes;
    for (const engine::CsvRecord& row : engine::ParseCsv(engine::ReadInput(path))) {
        notes.push_back({row.Text("family"), row.Text("property"), row.Text("name"),
                         RoundingNamed(row.Text("rounding")), row.Number("accuracy").value_or(0.0),
                         row.Text("reason")});
        if (notes.back().reason.empty()) throw std::runtime_error("a note gives no reason");
    }
    return notes;
}

const TableNote* FindNote(const std::vector<TableNote>& notes, const std::string& family,
                          const std::string& property, const std::string& profile) {
    const TableNote* found = nullptr;
    for (const TableNote& note : notes) {
        const bool applies = note.family == family &&
                             (note.property.empty() || note.property == property) &&
                             (note.profile.empty() || note.profile == profile);
        if (applies && (!found || Particularity(note) > Particularity(*found))) found = &note;
    }
    return found;
}

}  // namespace halvorn::published
