/// @file table_notes.h
/// What is known of a table of published values besides its digits.
#ifndef HALVORN_TESTS_PUBLISHED_TABLE_NOTES_H
#define HALVORN_TESTS_PUBLISHED_TABLE_NOTES_H

#include <string>
#include <vector>

namespace halvorn::published {

/// How a table came to its last digit.
enum class Rounding {
    Nearest,             ///< within half a step
    TruncatedOrRounded,  ///< either, cell by cell
    Truncated,           ///< the rest cut off: from 0 to one step below the exact magnitude
    Twice,  ///< to the nearest tenth of a step first, then to the nearest step: within 0.55 steps
};

/// A note on a family, one of its properties, or one value, with the evidence for it.
struct TableNote {
    std::string family;
    std::string property;  ///< empty: all
    std::string profile;   ///< empty: all of the family
    Rounding rounding;
    double accuracy;  ///< relative; at least so much is allowed whatever the rounding, where the
                      ///< published value rests on other dimensions or approximate formulas
    std::string reason;
};

/// Reads notes from a table of comma-separated values with the columns family, property, name,
/// rounding (empty, "truncated", "truncated or rounded" or "rounded twice"), accuracy and reason.
/// @throws std::runtime_error for an unknown rounding or a note without a reason
std::vector<TableNote> ReadNotes(const std::string& path);

/// Returns the most particular note on a value, one on its profile before one on its property
/// before one on its family, or null.
const TableNote* FindNote(const std::vector<TableNote>& notes, const std::string& family,
                          const std::string& property, const std::string& profile);

}  // namespace halvorn::published

#endif
