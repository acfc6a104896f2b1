/// @file points_columns.h
/// Which column of a table of points is what, by its title or by its contents.
#ifndef HALVORN_ENGINE_READ_CSV_POINTS_COLUMNS_H
#define HALVORN_ENGINE_READ_CSV_POINTS_COLUMNS_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace halvorn::engine {

enum class Column { Number, X, Y, Z, Contour, Kind, Nameless, Unknown };

/// A cell of a header: "x", "Y [cm]", "z (m)", "x/mm", "Contour", "Nr.".
struct Title {
    Column column = Column::Unknown;
    std::string unit;  ///< in small letters, empty where the cell states none
};

Title TitleIn(const std::string& cell);

/// Whether titles name x and y.
bool IsHeader(const std::vector<Title>& titles);

/// Returns what a comment states behind "unit" or "units", in small letters: the text behind a
/// colon or an equals sign, which may be no unit, or the rest of the comment when it is one.
std::optional<std::string> UnitInComment(const std::string& comment);

/// One line of cells, trimmed; the last one is not empty.
struct TableLine {
    std::size_t number{};  ///< in the file, from 1
    std::vector<std::string> cells;
    bool isAfterGap{};  ///< an empty line or row stands before it

    /// Returns the text of a cell, empty where there is none.
    const std::string& At(std::size_t column) const;
};

/// What the columns of a table hold.
/// @pre there is a line
class ColumnContents {
public:
    /// @param lines  must outlive this
    ColumnContents(const std::vector<TableLine>& lines, char separator)
        : lines_(lines), separator_(separator) {}

    bool IsEmpty(std::size_t column) const;
    /// Whether it holds 1, 2, 3 or 0, 1, 2 and so on, perhaps from the beginning again after a gap.
    bool Counts(std::size_t column) const;
    /// Returns the columns of a table without a header: x, y, contour, kind, or what else their
    /// contents allow without doubt. Empty columns before the points do not count.
    /// @throws std::invalid_argument saying what is in doubt
    std::vector<Column> Infer() const;

private:
    std::optional<double> NumberAt(const TableLine& line, std::size_t column) const;
    bool Varies(std::size_t column) const;
    bool IsZeros(std::size_t column) const;
    bool NamesContours(std::size_t column) const;

    const std::vector<TableLine>& lines_;
    char separator_;
};

}  // namespace halvorn::engine

#endif
