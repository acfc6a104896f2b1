/// @file csv_table.h
/// Tables of comma-separated values.
#ifndef HALVORN_ENGINE_CATALOGUE_CSV_TABLE_H
#define HALVORN_ENGINE_CATALOGUE_CSV_TABLE_H

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace halvorn::engine {

/// One line of a table: its cells in the order of the columns, as written.
class CsvRecord {
public:
    CsvRecord(const std::vector<std::string>& columns, std::vector<std::string> cells, int line);

    /// Returns the cell's text, empty where the table has none or lacks the column.
    const std::string& Text(const std::string& column) const;

    /// Returns the cell's number, nothing for an empty cell.
    /// @throws std::runtime_error naming line and column when the text is not a finite number
    std::optional<double> Number(const std::string& column) const;

private:
    std::vector<std::pair<std::string, std::string>> cells_;  // column, text
    int line_;
};

/// Returns the cells of one line. A cell in double quotes may hold separators; a quote in it is
/// doubled.
std::vector<std::string> SplitCsvLine(const std::string& line, char separator = ',');

/// Returns what separates the cells of a line: a semicolon or a tab where there is one.
char CsvSeparatorOf(const std::string& line);

/// Returns the rows of a text whose first line names the columns; empty lines are skipped.
/// @throws std::runtime_error when a line has another number of cells than the first
std::vector<CsvRecord> ParseCsv(const std::string& text);

}  // namespace halvorn::engine

#endif
