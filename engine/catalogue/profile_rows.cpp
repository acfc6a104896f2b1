#include "catalogue/profile_rows.h"

#include <utility>

#include "catalogue/profile_names.h"
#include "catalogue/profile_table.h"

namespace halvorn::engine {

bool ProfileRows::Add(CsvRecord row) {
    const std::string& name = row.Text("name");
    if (!byPlainName_.emplace(PlainProfileName(name), rows_.size()).second) return false;
    canonicalNames_.push_back(CanonicalProfileName(name));
    byCanonicalName_.emplace(canonicalNames_.back(), rows_.size());
    rows_.push_back(std::move(row));
    return true;
}

const CsvRecord* ProfileRows::Find(std::string_view name) const {
    const auto found = byPlainName_.find(PlainProfileName(name));
    return found == byPlainName_.end() ? nullptr : &rows_[found->second];
}

std::vector<const CsvRecord*> ProfileRows::FindLike(const std::string& canonicalName) const {
    std::vector<const CsvRecord*> rows;
    const auto [first, end] = byCanonicalName_.equal_range(canonicalName);
    for (auto each = first; each != end; ++each) rows.push_back(&rows_[each->second]);
    return rows;
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
