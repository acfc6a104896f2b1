#include "catalogue/draw_profile.h"

#include <algorithm>
#include <stdexcept>

namespace halvorn::engine {

namespace {

struct Column {
    const char* name;
    const char* key;  // of the shape's dimension
};

// A type of the table: its shape, and where the table has its dimensions.
struct ProfileType {
    std::string_view name;
    std::string_view shape;
    std::vector<Column> columns;
};

const ProfileType& TypeOf(const CsvRecord& row) {
    static const std::vector<Column> kFlanged = {
        {"h", "height"}, {"b", "width"}, {"tw", "web"}, {"tf", "flange"}, {"r", "root_radius"}};
    static const std::vector<Column> kTapered = {{"h", "height"},
                                                 {"b", "width"},
                                                 {"tw", "web"},
                                                 {"tf", "flange"},
                                                 {"r_root", "root_radius"},
                                                 {"slope", "flange_slope"},
                                                 {"tf_at_from_toe", "flange_at_from_toe"},
                                                 {"r_toe", "toe_radius"}};
    static const std::vector<ProfileType> kTypes = {
        {"i", "i", kFlanged},
        {"channel", "channel", kFlanged},
        {"taper_i", "i", kTapered},
        {"taper_channel", "channel", kTapered},
        {"angle",
         "angle",
         {{"h", "height"},
          {"b", "width"},
          {"t", "thickness"},
          {"r_root", "root_radius"},
          {"r_toe", "toe_radius"}}},
        {"rhs",
         "rhs",
         {{"h", "height"},
          {"b", "width"},
          {"t", "thickness"},
          {"r_out", "outer_radius"},
          {"r_in", "inner_radius"}}},
        {"chs", "chs", {{"h", "diameter"}, {"t", "thickness"}}},
    };
    const std::string& type = row.Text("type");
    const auto found = std::find_if(kTypes.begin(), kTypes.end(),
                                    [&](const ProfileType& known) { return known.name == type; });
    if (found == kTypes.end()) throw std::runtime_error("unknown profile type '" + type + "'");
    return *found;
}

}  // namespace

shapes::Outline DrawProfile(const CsvRecord& row, const shapes::ArcDivision& division) {
    const ProfileType& type = TypeOf(row);
    shapes::Dimensions dimensions;
    for (const auto& [column, key] : type.columns) {
        const std::optional<double> value = row.Number(column);
        if (!value) {
            throw std::runtime_error(std::string("the dimension ") + column + " is missing");
        }
        dimensions.Set(key, *value);
    }
    return shapes::ShapeKindOf(type.shape).draw(dimensions, division);
}

}  // namespace halvorn::engine
