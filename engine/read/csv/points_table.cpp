#include "read/csv/points_table.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

#include "HalvornEngine.h"
#include "base/text.h"
#include "base/units.h"
#include "catalogue/csv_table.h"
#include "read/csv/points_columns.h"

namespace halvorn::engine {

namespace {

constexpr const char* kHeaderRemedy =
    "name the columns in the line above the points: x,y and perhaps number, z, contour, kind";

std::vector<std::string> CellsOf(const std::string& line, char separator) {
    std::vector<std::string> cells = SplitCsvLine(line, separator);
    for (std::string& cell : cells) cell = Trimmed(cell);
    while (!cells.empty() && cells.back().empty()) cells.pop_back();
    return cells;
}

std::vector<Title> TitlesIn(const std::vector<std::string>& cells) {
    std::vector<Title> titles;
    titles.reserve(cells.size());
    for (const std::string& cell : cells) titles.push_back(TitleIn(cell));
    return titles;
}

class TableReader {
public:
    explicit TableReader(const std::string& source) : source_(source) {}

    PointsTable Read(const std::string& text) {
        if (IsUtf16(text)) {
            throw InputError(source_, "it is UTF-16 text or no text at all", "save it as UTF-8");
        }
        for (const std::string& line : LinesOf(WithLineFeeds(text))) {
            ++lineNumber_;
            ReadLine(line);
        }
        if (!lines_.empty()) columns_ = titles_.empty() ? InferredColumns() : NamedColumns();
        for (const TableLine& row : lines_) ReadRow(row);
        return std::move(table_);
    }

private:
    [[noreturn]] void Fail(std::size_t line, const std::string& problem,
                           const std::string& remedy) const {
        throw InputError(source_, line, problem, remedy);
    }

    void ReadLine(const std::string& line) {
        const std::string comment = Trimmed(line, " \t\r\"");
        if (comment.starts_with('#')) return ReadComment(comment.substr(1));
        if (separator_ == 0 && DeclaredSeparator(line) != 0) {
            separator_ = DeclaredSeparator(line);  // for a spreadsheet that opens the file
            return;
        }
        // A spreadsheet writes an empty row as its separators alone.
        if (line.find_first_not_of(" ,;\t\r\"") == std::string::npos) {
            isAfterGap_ = true;
            return;
        }
        if (separator_ == 0) separator_ = CsvSeparatorOf(line);
        const std::vector<std::string> cells = CellsOf(line, separator_);
        if (lines_.empty() && (ReadHeader(cells) || ReadUnits(cells))) return;
        lines_.push_back({lineNumber_, cells, isAfterGap_});
        isAfterGap_ = false;
    }

    // Programs write a header as a comment too: "# x, y".
    void ReadComment(const std::string& comment) {
        const std::vector<Title> titles = TitlesIn(CellsOf(comment, CsvSeparatorOf(comment)));
        const bool isOfTitles = std::all_of(titles.begin(), titles.end(), [](const Title& title) {
            return title.column != Column::Unknown &&
                   (title.unit.empty() || IsLengthUnit(title.unit));
        });
        if (lines_.empty() && isOfTitles && IsHeader(titles)) return SetTitles(titles);
        if (const auto unit = UnitInComment(comment)) SetUnit(*unit);
    }

    // Whether the cells are a header; what is neither that nor a point is refused.
    bool ReadHeader(const std::vector<std::string>& cells) {
        const std::vector<Title> titles = TitlesIn(cells);
        const bool isHeader = IsHeader(titles);
        if (!isHeader && !titles_.empty()) return false;
        const auto isFaulty = [&](const std::string& cell) {
            return isHeader ? TitleIn(cell).column == Column::Unknown : !cell.empty();
        };
        const auto faulty = std::find_if(cells.begin(), cells.end(), isFaulty);
        // A letter begins a header; digits and signs begin a point.
        if (!isHeader && faulty->find_first_of("0123456789") != std::string::npos) return false;
        if (faulty != cells.end()) {
            const auto has = [&](const char* title) {
                return std::any_of(cells.begin(), cells.end(), [&](const std::string& cell) {
                    return InSmallLetters(Trimmed(cell, " \"")) == title;
                });
            };
            if (has("name") && has("type")) {
                Fail(lineNumber_, "it is a table of profiles, not of points",
                     "give it as --catalogue FILE beside the name of a profile");
            }
            Fail(lineNumber_,
                 (isHeader ? "the header names an unknown column: \""
                           : "neither a point nor a header: \"") +
                     Excerpt(*faulty) + "\"",
                 kHeaderRemedy);
        }
        SetTitles(titles);
        return true;
    }

    // Whether the cells are the units of the columns, under the header: "[mm]", "[mm]".
    bool ReadUnits(const std::vector<std::string>& cells) {
        if (titles_.empty()) return false;
        std::vector<std::string> units;
        for (const std::string& cell : cells) {
            if (!cell.empty()) units.push_back(Trimmed(InSmallLetters(cell), " []()"));
        }
        if (!std::all_of(units.begin(), units.end(), IsLengthUnit)) return false;
        for (const std::string& unit : units) SetUnit(unit);
        return true;
    }

    void SetTitles(const std::vector<Title>& titles) {
        for (const Title& title : titles) {
            const auto isSame = [&](const Title& other) { return other.column == title.column; };
            if (title.column != Column::Number && title.column != Column::Nameless &&
                std::count_if(titles.begin(), titles.end(), isSame) > 1) {
                Fail(lineNumber_, "the header names a column twice", kHeaderRemedy);
            }
            if (!title.unit.empty()) SetUnit(title.unit);
        }
        titles_ = titles;
        titleLine_ = lineNumber_;
    }

    void SetUnit(const std::string& unit) {
        if (!IsLengthUnit(unit)) {
            Fail(lineNumber_, "unknown unit \"" + Excerpt(unit) + "\"", "write mm, cm, m or in");
        }
        if (!table_.unit.empty() && table_.unit != unit) {
            Fail(lineNumber_,
                 "the unit is " + unit + " here and " + table_.unit + " in line " +
                     std::to_string(unitLine_),
                 "state one unit for the whole file");
        }
        if (table_.unit.empty()) unitLine_ = lineNumber_;
        table_.unit = unit;
    }

    std::vector<Column> InferredColumns() const {
        try {
            return ColumnContents(lines_, separator_).Infer();
        } catch (const std::invalid_argument& doubt) {
            Fail(lines_.front().number, doubt.what(), kHeaderRemedy);
        }
    }

    std::vector<Column> NamedColumns() const {
        for (const TableLine& line : lines_) {
            if (line.cells.size() <= titles_.size()) continue;
            Fail(line.number,
                 "found " + std::to_string(line.cells.size()) + " cells under a header of " +
                     std::to_string(titles_.size()),
                 "give every column a name, or remove what stands beside them");
        }
        const ColumnContents contents(lines_, separator_);
        std::vector<Column> columns;
        for (std::size_t i = 0; i < titles_.size(); ++i) {
            if (titles_[i].column == Column::Nameless && !contents.IsEmpty(i) &&
                !contents.Counts(i)) {
                Fail(titleLine_, "column " + std::to_string(i + 1) + " has no name", kHeaderRemedy);
            }
            columns.push_back(titles_[i].column);
        }
        return columns;
    }

    void ReadRow(const TableLine& line) {
        PointRow row;
        row.line = line.number;
        row.isAfterGap = line.isAfterGap;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const std::string& cell = line.At(i);
            const Column column = columns_[i];
            if (column == Column::X || column == Column::Y) {
                if (cell.empty()) {
                    Fail(line.number,
                         "expected x and y, found " + std::to_string(line.cells.size()) +
                             (line.cells.size() == 1 ? " cell" : " cells"),
                         "write both of them, and behind them perhaps the contour's name and kind");
                }
                (column == Column::X ? row.x : row.y) = Coordinate(cell, line.number);
            } else if (column == Column::Z && !cell.empty()) {
                RequirePlane(cell, line.number);
            } else if (column == Column::Contour) {
                row.contour = cell;
            } else if (column == Column::Kind) {
                row.kind = InSmallLetters(cell);
            }
        }
        table_.rows.push_back(row);
    }

    void RequirePlane(const std::string& cell, std::size_t line) {
        if (Coordinate(cell, line) == 0.0) return;
        Fail(line, "z is " + Excerpt(cell) + ", a section lies in the plane z = 0",
             "turn it into that plane, or leave z out");
    }

    double Coordinate(const std::string& text, std::size_t line) {
        if (!numbers_) numbers_.emplace(separator_);
        try {
            return numbers_->Read(text);
        } catch (const CsvNumberError& error) {
            Fail(line, error.what(), error.Mend());
        }
    }

    const std::string& source_;
    PointsTable table_;
    std::vector<Title> titles_;     // empty: no header
    std::vector<TableLine> lines_;  // of points
    std::vector<Column> columns_;
    char separator_ = 0;  // 0: no line was read that has one
    std::optional<CsvNumbers> numbers_;
    std::size_t lineNumber_ = 0;
    std::size_t titleLine_ = 0;
    std::size_t unitLine_ = 0;
    bool isAfterGap_ = true;
};

}  // namespace

PointsTable ReadPointsTable(const std::string& text, const std::string& source) {
    return TableReader(source).Read(text);
}

}  // namespace halvorn::engine
