#include "catalogue/csv_table.h"

#include <sstream>
#include <stdexcept>

#include "base/numbers.h"
#include "base/text.h"

namespace halvorn::engine {

std::vector<std::string> SplitCsvLine(const std::string& line, char separator) {
    std::vector<std::string> cells(1);
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '"' && quoted && i + 1 < line.size() && line[i + 1] == '"') {
            cells.back() += c;
            ++i;
        } else if (c == '"') {
            quoted = !quoted;
        } else if (c == separator && !quoted) {
            cells.emplace_back();
        } else {
            cells.back() += c;
        }
    }
    return cells;
}

char CsvSeparatorOf(const std::string& line) {
    if (line.find(';') != std::string::npos) return ';';
    return line.find('\t') != std::string::npos ? '\t' : ',';
}

CsvRecord::CsvRecord(const std::vector<std::string>& columns, std::vector<std::string> cells,
                     int line)
    : line_(line) {
    if (cells.size() != columns.size()) {
        throw std::runtime_error("line " + std::to_string(line) + " has " +
                                 std::to_string(cells.size()) + " cells instead of " +
                                 std::to_string(columns.size()));
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cells_.emplace_back(columns[i], std::move(cells[i]));
    }
}

const std::string& CsvRecord::Text(const std::string& column) const {
    static const std::string none;
    for (const auto& [name, text] : cells_) {
        if (name == column) return text;
    }
    return none;
}

std::optional<double> CsvRecord::Number(const std::string& column) const {
    const std::string& text = Text(column);
    if (text.empty()) return std::nullopt;
    const std::optional<double> value = FiniteNumberIn(text);
    if (!value) {
        throw std::runtime_error("line " + std::to_string(line_) + ", column " + column + ": '" +
                                 text + "' is not a number");
    }
    return value;
}

std::vector<CsvRecord> ParseCsv(const std::string& text) {
    std::istringstream stream(WithLineFeeds(text));
    std::vector<std::string> columns;
    std::vector<CsvRecord> rows;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        if (line.empty()) continue;
        std::vector<std::string> cells = SplitCsvLine(line);
        if (columns.empty()) {
            columns = std::move(cells);
        } else {
            rows.emplace_back(columns, std::move(cells), number);
        }
    }
    return rows;
}

}  // namespace halvorn::engine
