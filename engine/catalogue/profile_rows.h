/// @file profile_rows.h
/// The rows of one table of profiles, found by name.
#ifndef HALVORN_ENGINE_CATALOGUE_PROFILE_ROWS_H
#define HALVORN_ENGINE_CATALOGUE_PROFILE_ROWS_H

#include <cstddef>
#include <map>
#include <string>
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

    /// Returns the row of a canonical name; null when there is none.
    const CsvRecord* Find(const std::string& canonicalName) const;

    const std::string& Source() const { return source_; }
    const std::vector<CsvRecord>& Rows() const { return rows_; }
    /// Returns canonical names and the places of their rows.
    const std::map<std::string, std::size_t>& ByName() const { return byName_; }

private:
    std::string source_;
    std::vector<CsvRecord> rows_;
    std::map<std::string, std::size_t> byName_;
};

/// Returns the table that is compiled in.
const ProfileRows& BuiltInRows();

}  // namespace halvorn::engine

#endif
