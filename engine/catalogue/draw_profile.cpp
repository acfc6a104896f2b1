#include "catalogue/draw_profile.h"

#include <stdexcept>
#include <string_view>

#include "catalogue/profile_types.h"
#include "geometry/rounded_polygon.h"

namespace halvorn::engine {

namespace {

const ProfileType& TypeOf(const CsvRecord& row) {
    const std::string& type = row.Text("type");
    const ProfileType* const found = FindProfileType(type);
    if (found == nullptr) throw std::runtime_error("unknown profile type '" + type + "'");
    return *found;
}

// Nothing when a dimension is missing, whose column is then named.
std::optional<shapes::Dimensions> DimensionsOf(const CsvRecord& row, const ProfileType& type,
                                               std::string* missing) {
    shapes::Dimensions dimensions;
    for (const auto& [column, key, mayBeEmpty] : type.columns) {
        const std::optional<double> value = row.Number(column);
        if (value) {
            dimensions.Set(key, *value);
        } else if (!mayBeEmpty) {
            *missing = column;
            return std::nullopt;
        }
    }
    return dimensions;
}

std::string ColumnOf(const ProfileType& type, std::string_view key) {
    for (const DimensionColumn& column : type.columns) {
        if (column.key == key) return std::string(column.name);
    }
    return "";
}

// Shapes quote the keys of their dimensions, a table has columns.
std::string WithColumns(std::string text, const ProfileType& type) {
    for (const DimensionColumn& column : type.columns) {
        const std::string quoted = '"' + std::string(column.key) + '"';
        for (std::size_t at = text.find(quoted); at != std::string::npos; at = text.find(quoted)) {
            text.replace(at, quoted.size(), column.name);
        }
    }
    return text;
}

}  // namespace

shapes::Outline DrawProfile(const CsvRecord& row, const shapes::ArcDivision& division) {
    const ProfileType& type = TypeOf(row);
    std::string missing;
    const std::optional<shapes::Dimensions> dimensions = DimensionsOf(row, type, &missing);
    if (!dimensions) throw std::runtime_error("the dimension " + missing + " is missing");
    return shapes::ShapeKindOf(type.shape).draw(*dimensions, division);
}

std::optional<ProfileFault> FindProfileFault(const CsvRecord& row) {
    const ProfileType& type = TypeOf(row);
    std::string missing;
    const std::optional<shapes::Dimensions> dimensions = DimensionsOf(row, type, &missing);
    if (!dimensions) {
        const bool isRadius = missing.starts_with('r');
        return ProfileFault{missing, "the cell is empty",
                            "fill it in" + std::string(isRadius ? "; a sharp corner has 0" : "")};
    }
    try {
        // How finely arcs are divided decides nothing here.
        shapes::ShapeKindOf(type.shape).draw(*dimensions, shapes::ArcDivision::StepsPerQuarter(1));
    } catch (const shapes::RadiusError& error) {
        const std::string column = ColumnOf(type, dimensions->KeyOfRadius(error.Radius()));
        return ProfileFault{column, error.what(),
                            column.empty() ? error.Remedy() : "make " + column + " smaller"};
    } catch (const shapes::DimensionError& error) {
        return ProfileFault{ColumnOf(type, error.Field()), error.what(),
                            WithColumns(error.Remedy(), type)};
    } catch (const std::invalid_argument& error) {
        return ProfileFault{"", error.what(), "correct the dimensions"};
    }
    return std::nullopt;
}

}  // namespace halvorn::engine
