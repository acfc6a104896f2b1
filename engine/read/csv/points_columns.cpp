#include "read/csv/points_columns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <stdexcept>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"
#include "base/units.h"

namespace halvorn::engine {

namespace {

// A contour's points are three or more.
constexpr std::size_t kFewestOfOneName = 3;

// Point numbers by their title.
constexpr std::array kNumberTitles = {"#",    "n",      "n.", "nr",    "nr.", "no",
                                      "no.",  "num",    "id", "index", "pt",  "point",
                                      "node", "vertex", "i",  "number"};

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

}  // namespace

Title TitleIn(const std::string& cell) {
    const std::string text = InSmallLetters(cell);
    if (text.empty()) return {Column::Nameless, ""};
    if (text == "contour") return {Column::Contour, ""};
    if (text == "kind") return {Column::Kind, ""};
    if (std::find(kNumberTitles.begin(), kNumberTitles.end(), text) != kNumberTitles.end()) {
        return {Column::Number, ""};
    }
    const Column column = text[0] == 'x'   ? Column::X
                          : text[0] == 'y' ? Column::Y
                          : text[0] == 'z' ? Column::Z
                                           : Column::Unknown;
    const bool isAlone =
        text.size() == 1 || std::string_view(" \t[(/").find(text[1]) != std::string_view::npos;
    if (column == Column::Unknown || !isAlone) return {};
    return {column, Trimmed(text.substr(1), " \t[]()/")};
}

bool IsHeader(const std::vector<Title>& titles) {
    const auto has = [&](Column column) {
        return std::any_of(titles.begin(), titles.end(),
                           [&](const Title& title) { return title.column == column; });
    };
    return has(Column::X) && has(Column::Y);
}

std::optional<std::string> UnitInComment(const std::string& comment) {
    constexpr const char* kAround = " \t\r,;\"'[]().";
    const std::string text = InSmallLetters(comment);
    for (std::size_t at = text.find("unit"); at != std::string::npos; at = text.find("unit", at)) {
        const bool isWord = at == 0 || !IsLetter(text[at - 1]);
        at += 4;
        if (at < text.size() && text[at] == 's') ++at;
        if (!isWord || (at < text.size() && IsLetter(text[at]))) continue;
        // A spreadsheet may have the unit in the next cell.
        const std::string rest = Trimmed(text.substr(at), " \t\r,;\"");
        const std::size_t mark = rest.find_first_of(":=");
        const std::string behind =
            Trimmed(mark == std::string::npos ? rest : rest.substr(mark + 1), kAround);
        const std::string unit = Trimmed(behind.substr(0, behind.find_first_of(",;([\t")), kAround);
        if (mark == 0 || IsLengthUnit(unit)) return unit;
    }
    return std::nullopt;
}

const std::string& TableLine::At(std::size_t column) const {
    static const std::string none;
    return column < cells.size() ? cells[column] : none;
}

bool ColumnContents::IsEmpty(std::size_t column) const {
    return std::all_of(lines_.begin(), lines_.end(),
                       [&](const TableLine& line) { return line.At(column).empty(); });
}

std::optional<double> ColumnContents::NumberAt(const TableLine& line, std::size_t column) const {
    std::string text = line.At(column);
    if (separator_ != ',') std::replace(text.begin(), text.end(), ',', '.');
    return FiniteNumberIn(text);
}

// Whether it holds numbers of which not all are equal.
bool ColumnContents::Varies(std::size_t column) const {
    const auto first = NumberAt(lines_.front(), column);
    bool varies = false;
    for (const TableLine& line : lines_) {
        const auto number = NumberAt(line, column);
        if (!number) return false;
        varies = varies || *number != *first;
    }
    return varies;
}

bool ColumnContents::IsZeros(std::size_t column) const {
    return std::all_of(lines_.begin(), lines_.end(),
                       [&](const TableLine& line) { return NumberAt(line, column) == 0.0; });
}

bool ColumnContents::Counts(std::size_t column) const {
    const auto first = NumberAt(lines_.front(), column);
    std::optional<double> last;
    for (const TableLine& line : lines_) {
        const auto number = NumberAt(line, column);
        if (!number || *number != std::floor(*number)) return false;
        const bool isNext = !last || *number == *last + 1.0;
        if (!isNext && !(line.isAfterGap && *number == *first)) return false;
        last = number;
    }
    return true;
}

// Whether equal names stand together.
bool ColumnContents::NamesContours(std::size_t column) const {
    std::set<std::string> names;
    std::string last;
    std::size_t points = 0;
    for (const TableLine& line : lines_) {
        const std::string& name = line.At(column);
        if (points > 0 && name == last) {
            ++points;
            continue;
        }
        if (points > 0 && points < kFewestOfOneName) return false;
        if (!names.insert(name).second) return false;
        last = name;
        points = 1;
    }
    return points >= kFewestOfOneName;
}

std::vector<Column> ColumnContents::Infer() const {
    std::size_t from = 0;
    while (IsEmpty(from)) ++from;
    std::size_t count = 0;
    for (const TableLine& line : lines_) count = std::max(count, line.cells.size() - from);
    std::vector<Column> columns(from, Column::Nameless);
    const auto with = [&](std::initializer_list<Column> more) {
        columns.insert(columns.end(), more);
        return columns;
    };
    const bool isNumbered = count > 2 && Counts(from) && Varies(from + 1) && Varies(from + 2);
    // Between commas the four cells could be two numbers with decimal commas: 1,5,2,0.
    if (count == 4 && separator_ != ',' && isNumbered && IsZeros(from + 3)) {
        return with({Column::Number, Column::X, Column::Y, Column::Z});
    }
    if (count == 3 && IsZeros(from + 2)) return with({Column::X, Column::Y, Column::Z});
    if (count == 3 && isNumbered) {
        if (NamesContours(from + 2)) {
            throw std::invalid_argument(
                "the first column may be point numbers or x, the last one y or contours");
        }
        return with({Column::Number, Column::X, Column::Y});
    }
    if (count > 4) {
        throw std::invalid_argument("nothing says which of " + std::to_string(count) +
                                    " columns are x and y");
    }
    return with({Column::X, Column::Y, Column::Contour, Column::Kind});
}

}  // namespace halvorn::engine
