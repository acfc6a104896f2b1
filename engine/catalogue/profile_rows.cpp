#include "catalogue/profile_rows.h"

#include <utility>

#include "catalogue/profile_names.h"
#include "catalogue/profile_table.h"

namespace halvorn::engine {

bool ProfileRows::Add(CsvRecord row) {
    const bool isFree =
        byName_.emplace(CanonicalProfileName(row.Text("name")), rows_.size()).second;
    if (isFree) rows_.push_back(std::move(row));
    return isFree;
}

const CsvRecord* ProfileRows::Find(const std::string& canonicalName) const {
    const auto found = byName_.find(canonicalName);
    return found == byName_.end() ? nullptr : &rows_[found->second];
}

const ProfileRows& BuiltInRows() {
    static const ProfileRows rows = [] {
        ProfileRows table("");
        for (CsvRecord& row : ParseCsv(ProfileTableText())) table.Add(std::move(row));
        return table;
    }();
    return rows;
}

}  // namespace halvorn::engine
