#include "catalogue/profile_types.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "catalogue/profile_names.h"

namespace halvorn::engine {

bool ProfileType::Draws(std::string_view column) const {
    return std::any_of(columns.begin(), columns.end(),
                       [&](const DimensionColumn& drawn) { return drawn.name == column; });
}

const std::vector<ProfileType>& ProfileTypes() {
    static const std::vector<DimensionColumn> kFlanged = {
        {"h", "height"}, {"b", "width"}, {"tw", "web"}, {"tf", "flange"}, {"r", "root_radius"}};
    static const std::vector<DimensionColumn> kTapered = {{"h", "height"},
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
        {"tee", "tee", kFlanged},
        {"taper_i", "i", kTapered},
        {"taper_channel", "channel", kTapered},
        {"taper_tee", "tee", kTapered},
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
          {"r_in", "inner_radius", true}}},
        {"chs", "chs", {{"h", "diameter"}, {"t", "thickness"}}},
    };
    return kTypes;
}

const ProfileType* FindProfileType(std::string_view name) {
    const std::vector<ProfileType>& types = ProfileTypes();
    const auto found = std::find_if(types.begin(), types.end(),
                                    [&](const ProfileType& known) { return known.name == name; });
    return found == types.end() ? nullptr : &*found;
}

std::span<const PublishedColumn> PublishedColumns() {
    static constexpr std::array<PublishedColumn, 12> kColumns = {
        {{"area", "area", 2},
         {"cx", "centroid_x", 1},
         {"cy", "centroid_y", 1},
         {"Ix", "inertia_x", 4},
         {"Iy", "inertia_y", 4},
         {"Ixy", "inertia_xy", 4},
         {"Zx_min", "elastic_modulus_x_min", 3},
         {"Zy_min", "elastic_modulus_y_min", 3},
         {"Sx", "plastic_modulus_x", 3},
         {"Sy", "plastic_modulus_y", 3},
         {"It", "torsion_constant", 4},
         {"Iw", "warping_constant", 6}}};
    return kColumns;
}

std::span<const std::string_view> DimensionColumns() {
    static constexpr std::array<std::string_view, 13> kColumns = {
        "h",      "b",     "t",     "tw",   "tf",    "r",
        "r_root", "r_toe", "r_out", "r_in", "slope", "tf_at_from_toe",
        "t_nom"};
    return kColumns;
}

std::string UnitOf(const CsvRecord& row) {
    const std::string& unit = row.Text("unit");
    return unit.empty() ? "mm" : unit;
}

std::string CatalogueUnit(const std::string& cell) {
    constexpr std::pair<std::string_view, std::string_view> kSpellings[] = {
        {"", "mm"},           {"mm.", "mm"},         {"millimetre", "mm"}, {"millimetres", "mm"},
        {"millimeter", "mm"}, {"millimeters", "mm"}, {"in.", "in"},        {"inch", "in"},
        {"inches", "in"},     {"\"", "in"},          {"\u2033", "in"}};
    std::string small = InSmallLetters(cell);
    for (const auto& [spelling, unit] : kSpellings) {
        if (small == spelling) return std::string(unit);
    }
    return small;
}

std::string FamilyOf(const CsvRecord& row) {
    const std::string& family = row.Text("family");
    if (!family.empty()) return family;
    const std::string letters = FirstLettersOf(row.Text("name"));
    return letters.empty() ? row.Text("type") : letters;
}

}  // namespace halvorn::engine
