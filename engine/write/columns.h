/// @file columns.h
/// Texts in columns, for people.
#ifndef HALVORN_ENGINE_WRITE_COLUMNS_H
#define HALVORN_ENGINE_WRITE_COLUMNS_H

#include <cstddef>
#include <string>
#include <vector>

namespace halvorn::engine {

/// The columns that a table for people has at most.
inline constexpr std::size_t kLineWidth = 100;

/// Returns a text in lines of at most so many columns, broken at blanks, with its line feeds; a
/// longer word has a line of its own.
/// @param indent  blanks before every line but the first, whose columns are taken as well
std::string Wrapped(const std::string& text, std::size_t indent, std::size_t width = kLineWidth);

/// One line of a table: its cells, and a text that runs from the end of the cells to the end of the
/// line, and on below.
struct TableRow {
    std::vector<std::string> cells;
    std::string text;
};

/// Returns rows as lines whose columns start one below the other, two blanks apart. Cells of rows
/// with a text do not widen the column in which the text starts.
std::string JoinColumns(const std::vector<TableRow>& rows);

/// Fills numbers with blanks so that their decimal points stand one below the other, unless that
/// makes them wider than a column of numbers should be. Texts with an exponent and a bound stay as
/// they are.
void AlignPoints(const std::vector<std::string*>& numbers);

}  // namespace halvorn::engine

#endif
