/// @file comparison.h
/// Differences between published and computed values, and the rounding that explains them.
#ifndef HALVORN_TESTS_PUBLISHED_COMPARISON_H
#define HALVORN_TESTS_PUBLISHED_COMPARISON_H

#include <string>
#include <vector>

#include "catalogue/csv_table.h"
#include "table_notes.h"

namespace halvorn::published {

/// Part of the published value allowed besides its rounding: the chords of the drawn arcs, which
/// keep areas and change a full circle's second moment by 7e-9, its plastic modulus by 1.2e-6.
inline constexpr double arcAllowance = 2e-6;

/// One published cell beside the computed value, both in the table's unit, and the range of
/// computed values that the published one may stand for.
struct Difference {
    std::string profile;
    std::string family;
    std::size_t property;  // index in `properties`
    double published;
    double computed;
    double lowest;
    double highest;
    bool roundedToNearest;  // whether rounding to the nearest step explains the value
    const TableNote* note;  // that widened the range, or null

    /// Absolute difference as a part of the published value's magnitude.
    double Relative() const;
    bool Agrees() const { return lowest <= computed && computed <= highest; }
};

/// Returns the power of ten of the last digit other than 0 that a number is written with: 1 for
/// "6810.0", -1 for "18.2". An empty text or zero gives a power above that of any number.
int LastDigitPower(const std::string& text);

/// Returns the power of ten to which a published value was rounded. That is the place of its last
/// digit other than 0, or of its third digit when it ends in zeros before that, for tables print
/// three digits or more; but never finer than `columnPower`.
/// @param columnPower the finest last digit of the same property in the whole family: small values
///                    of tables with a fixed number of decimals have fewer digits than three
int RoundingPower(const std::string& text, double value, int columnPower);

/// Evaluates every row, enlarged by `scale`, and returns one difference for each published cell, in
/// the order of the table. The differences refer to the notes.
/// @throws std::runtime_error naming the profile that cannot be drawn
std::vector<Difference> CompareTable(const std::vector<engine::CsvRecord>& rows,
                                     const std::vector<TableNote>& notes, double scale);

}  // namespace halvorn::published

#endif
