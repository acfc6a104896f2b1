#include "catalogue/csv_table.h"

#include <algorithm>
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

std::string QuotedCell(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
    return '"' + WithReplaced(text, {{'"', "\"\""}}) + '"';
}

char CsvSeparatorOf(const std::string& line) {
    if (line.find(';') != std::string::npos) return ';';
    return line.find('\t') != std::string::npos ? '\t' : ',';
}

char DeclaredSeparator(const std::string& line) {
    const std::string bare = Trimmed(line, " \r\"");
    const bool isDeclared = bare.size() == 5 && InSmallLetters(bare).starts_with("sep=") &&
                            std::string_view(",;\t").find(bare[4]) != std::string_view::npos;
    return isDeclared ? bare.back() : '\0';
}

bool IsUtf16(const std::string& text) {
    // A byte order mark, or a zero beside every digit.
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") ||
           text.find('\0') != std::string::npos;
}

std::string CsvNumbers::WithPoint(const std::string& text) {
    std::string number = text;
    if (separator_ != ',') {
        const char mark = text.find(',') != std::string::npos   ? ','
                          : text.find('.') != std::string::npos ? '.'
                                                                : decimalMark_;
        if (decimalMark_ != 0 && mark != decimalMark_) {
            throw CsvNumberError("\"" + Excerpt(text) + "\" has a decimal " +
                                     (mark == ',' ? "comma, numbers above have a point"
                                                  : "point, numbers above have a comma"),
                                 "write all numbers in one way, without marks between thousands");
        }
        decimalMark_ = mark;
        if (mark == ',') std::replace(number.begin(), number.end(), ',', '.');
    }
    if (FiniteNumberIn(number)) return number;
    if (separator_ == ',' && text.find(',') != std::string::npos) {
        throw CsvNumberError("\"" + Excerpt(text) + "\" has a comma, and commas separate the cells",
                             "write a decimal point, or separate the cells by semicolons");
    }
    throw CsvNumberError("\"" + Excerpt(text) + "\" is not a finite number",
                         "write plain numbers such as 12.5");
}

double CsvNumbers::Read(const std::string& text) {
    return *FiniteNumberIn(WithPoint(text));
}

CsvRecord::CsvRecord(CsvColumns columns, std::vector<std::string> cells, std::size_t line)
    : columns_(std::move(columns)), cells_(std::move(cells)), line_(line) {
    if (cells_.size() != columns_->size()) {
        throw std::runtime_error("line " + std::to_string(line) + " has " +
                                 std::to_string(cells_.size()) + " cells instead of " +
                                 std::to_string(columns_->size()));
    }
}

const std::string& CsvRecord::Text(std::string_view column) const {
    static const std::string none;
    const auto found = std::find(columns_->begin(), columns_->end(), column);
    return found == columns_->end() ? none
                                    : cells_[static_cast<std::size_t>(found - columns_->begin())];
}

std::optional<double> CsvRecord::Number(std::string_view column) const {
    const std::string& text = Text(column);
    if (text.empty()) return std::nullopt;
    const std::optional<double> value = FiniteNumberIn(text);
    if (!value) {
        throw std::runtime_error("line " + std::to_string(line_) + ", column " +
                                 std::string(column) + ": '" + text + "' is not a number");
    }
    return value;
}

std::vector<CsvRecord> ParseCsv(const std::string& text) {
    CsvColumns columns;
    std::vector<CsvRecord> rows;
    std::size_t number = 0;
    for (const std::string& line : LinesOf(WithLineFeeds(text))) {
        ++number;
        if (line.empty()) continue;
        std::vector<std::string> cells = SplitCsvLine(line);
        if (columns == nullptr) {
            columns = std::make_shared<const std::vector<std::string>>(std::move(cells));
        } else {
            rows.emplace_back(columns, std::move(cells), number);
        }
    }
    return rows;
}

}  // namespace halvorn::engine
