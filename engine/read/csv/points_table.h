/// @file points_table.h
/// The rows of a table of points: which column is what, and in which unit.
#ifndef HALVORN_ENGINE_READ_CSV_POINTS_TABLE_H
#define HALVORN_ENGINE_READ_CSV_POINTS_TABLE_H

#include <cstddef>
#include <string>
#include <vector>

namespace halvorn::engine {

/// One point of a table.
struct PointRow {
    std::size_t line{};  ///< in the file, from 1
    double x{};
    double y{};
    std::string contour;  ///< its name, empty where none is given
    std::string kind;     ///< in small letters, likewise
    bool isAfterGap{};    ///< an empty line or row stands before it
};

struct PointsTable {
    std::string unit;  ///< as the file states it, empty where it does not
    std::vector<PointRow> rows;
};

/// Reads a text of lines that end in LF, CR LF or CR, with cells between commas, semicolons or
/// tabs. A header names the columns in any order; without one they are x, y, contour, kind, or what
/// else their contents allow without doubt: point numbers before x and y, zeros for z behind them.
/// @throws InputError naming the line
PointsTable ReadPointsTable(const std::string& text, const std::string& source);

}  // namespace halvorn::engine

#endif
