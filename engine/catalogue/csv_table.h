/// @file csv_table.h
/// Tables of comma-separated values.
#ifndef HALVORN_ENGINE_CATALOGUE_CSV_TABLE_H
#define HALVORN_ENGINE_CATALOGUE_CSV_TABLE_H

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace halvorn::engine {

/// The names of a table's columns in their order, shared by its records.
using CsvColumns = std::shared_ptr<const std::vector<std::string>>;

/// One line of a table: its cells in the order of the columns, as written.
class CsvRecord {
public:
    /// @throws std::runtime_error when the numbers of cells and columns differ
    CsvRecord(CsvColumns columns, std::vector<std::string> cells, std::size_t line);

    /// Returns the cell's text, empty where the table has none or lacks the column.
    const std::string& Text(std::string_view column) const;

    /// Returns the cell's number, nothing for an empty cell.
    /// @throws std::runtime_error naming line and column when the text is not a finite number
    std::optional<double> Number(std::string_view column) const;

    /// Returns where it stands in the text, from 1.
    std::size_t Line() const { return line_; }

private:
    CsvColumns columns_;
    std::vector<std::string> cells_;
    std::size_t line_;
};

/// Returns the cells of one line. A cell in double quotes may hold separators; a quote in it is
/// doubled.
std::vector<std::string> SplitCsvLine(const std::string& line, char separator = ',');

/// Returns a text as a cell: in quotes where it would break the line into other cells.
std::string QuotedCell(std::string_view text);

/// Returns what separates the cells of a line: a semicolon or a tab where there is one.
char CsvSeparatorOf(const std::string& line);

/// Returns the separator that a line such as "sep=;" declares to spreadsheets; 0 for other lines.
char DeclaredSeparator(const std::string& line);

/// Returns whether a text is UTF-16, as spreadsheets write "Unicode text", or no text at all.
bool IsUtf16(const std::string& text);

/// A number that a table does not say clearly.
class CsvNumberError : public std::invalid_argument {
public:
    CsvNumberError(const std::string& problem, std::string mend)
        : std::invalid_argument(problem), mend_(std::move(mend)) {}

    const std::string& Mend() const { return mend_; }

private:
    std::string mend_;
};

/// Reads the numbers of one table. A comma is a decimal mark only where other characters separate
/// the cells and no number of the table has a point: 1,234 beside 2.5 could be a thousand.
class CsvNumbers {
public:
    explicit CsvNumbers(char separator) : separator_(separator) {}

    /// Returns the number with a decimal point.
    /// @throws CsvNumberError for what is not a finite number or has the other decimal mark
    std::string WithPoint(const std::string& text);

    /// Returns the number itself, likewise.
    double Read(const std::string& text);

private:
    char separator_;
    char decimalMark_ = 0;  // 0: no number was read that has one
};

/// Returns the rows of a text whose first line names the columns; empty lines are skipped.
/// @throws std::runtime_error when a line has another number of cells than the first
std::vector<CsvRecord> ParseCsv(const std::string& text);

}  // namespace halvorn::engine

#endif
