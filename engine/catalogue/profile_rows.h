/// @file profile_rows.h
/// The rows of one table of profiles, found by name.
#ifndef HALVORN_ENGINE_CATALOGUE_PROFILE_ROWS_H
#define HALVORN_ENGINE_CATALOGUE_PROFILE_ROWS_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/csv_table.h"

namespace halvorn::engine {

/// Rows that can all be drawn, in the order of their table.
class ProfileRows {
public:
    /// @param source  how messages call the table; empty: the built-in one
    explicit ProfileRows(std::string source) : source_(std::move(source)) {}

    /// Adds a row.
    /// @returns whether its name was free
    bool Add(CsvRecord row);

    /// Returns the row that is called so but for case and blanks; null when there is none.
    const CsvRecord* Find(std::string_view name) const;

    /// Returns every row of a canonical name, in the order of the table.
    std::vector<const CsvRecord*> FindLike(const std::string& canonicalName) const;

    const std::string& Source() const { return source_; }
    const std::vector<CsvRecord>& Rows() const { return rows_; }
    /// Returns the canonical name of each row.
    const std::vector<std::string>& CanonicalNames() const { return canonicalNames_; }

private:
    std::string source_;
    std::vector<CsvRecord> rows_;
    std::vector<std::string> canonicalNames_;
    std::map<std::string, std::size_t> byPlainName_;
    std::multimap<std::string, std::size_t> byCanonicalName_;
};

/// Returns the table that is compiled in.
const ProfileRows& BuiltInRows();

}  // namespace halvorn::engine

#endif
