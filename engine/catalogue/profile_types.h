/// @file profile_types.h
/// The types of profiles in a table of dimensions, and the columns that describe them.
#ifndef HALVORN_ENGINE_CATALOGUE_PROFILE_TYPES_H
#define HALVORN_ENGINE_CATALOGUE_PROFILE_TYPES_H

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/csv_table.h"

namespace halvorn::engine {

/// A column that holds a dimension of a type.
struct DimensionColumn {
    std::string_view name;
    std::string_view key;     ///< of the shape's dimension
    bool mayBeEmpty = false;  ///< then the shape does without
};

/// A type of the table: its shape, and where the table has its dimensions.
struct ProfileType {
    std::string_view name;
    std::string_view shape;
    std::vector<DimensionColumn> columns;

    /// Whether it is drawn from the dimension of a column.
    bool Draws(std::string_view column) const;
};

/// Returns every type: i, channel, tee, taper_i, taper_channel, taper_tee, angle, rhs, chs.
const std::vector<ProfileType>& ProfileTypes();

/// Returns the type of a name; null when there is none.
const ProfileType* FindProfileType(std::string_view name);

/// A column of published values.
struct PublishedColumn {
    std::string_view name;
    std::string_view key;  ///< of the report
    int power;             ///< of the unit of length
};

/// Returns every column of published values, in the order of the report.
std::span<const PublishedColumn> PublishedColumns();

/// Returns the columns of dimensions in reading order, whatever the type: lengths, but for `slope`.
std::span<const std::string_view> DimensionColumns();

/// Returns the unit of a row: that of its column `unit`, millimetres where it is empty.
std::string UnitOf(const CsvRecord& row);

/// Returns the unit that a cell means: mm, also where it is empty, or in, each spelled in any way
/// that tables have it, such as inches or mm.; another text as it is, in small letters.
std::string CatalogueUnit(const std::string& cell);

/// Returns the family of a row: that of its column `family`, else the letters that its name
/// begins with, else its type.
std::string FamilyOf(const CsvRecord& row);

}  // namespace halvorn::engine

#endif
