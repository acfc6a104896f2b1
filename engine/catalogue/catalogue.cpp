#include "catalogue/catalogue.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

#include "HalvornEngine.h"
#include "base/dimension_checks.h"
#include "catalogue/csv_table.h"
#include "catalogue/draw_profile.h"
#include "catalogue/profile_names.h"
#include "catalogue/profile_table.h"
#include "model/class_outputs.h"
#include "model/outlines.h"
#include "model/principal_inertias.h"
#include "model/push_element.h"

namespace halvorn::engine {

namespace {

struct Catalogue {
    std::vector<CsvRecord> rows;
    std::map<std::string, std::size_t> byName;  // canonical name to row

    Catalogue() : rows(ParseCsv(ProfileTableText())) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            byName.emplace(CanonicalProfileName(rows[i].Text("name")), i);
        }
    }
    const CsvRecord* Find(std::string_view name) const {
        const auto found = byName.find(CanonicalProfileName(name));
        return found == byName.end() ? nullptr : &rows[found->second];
    }
};

const Catalogue& TheCatalogue() {
    static const Catalogue catalogue;
    return catalogue;
}

// The published values of a row, in its unit. The table leaves out what its sources do; of I
// sections and tapered channels it has the elastic moduli, whose fibres are half the height and, of
// an I, half the width away.
GivenValues PublishedValues(const CsvRecord& row, const shapes::Outline& outline) {
    const ClassOutputs drawnOutputs = ClassOutputsOf(ElementsOf(outline));
    double inertiaX = drawnOutputs.inertiaX;
    double inertiaY = drawnOutputs.inertiaY;
    double inertiaXY = drawnOutputs.inertiaXY;
    GivenValues values;
    values.area = drawnOutputs.area;
    values.centroidX = drawnOutputs.centroid.x;
    values.centroidY = drawnOutputs.centroid.y;
    const auto take = [&](const char* column, double* value) {
        const std::optional<double> number = row.Number(column);
        if (number) *value = *number;
        return number.has_value();
    };
    const bool isSymmetric = row.Text("type") != "angle";
    std::string drawn;
    if (!take("area", &values.area)) drawn = "area";
    if (!take("Ix", &inertiaX)) {
        inertiaX = row.Number("Zx_min").value() * row.Number("h").value() / 2.0;
        const double side = row.Text("type") == "taper_channel"
                                ? row.Number("b").value() - values.centroidX
                                : row.Number("b").value() / 2.0;
        inertiaY = row.Number("Zy_min").value() * side;
    } else {
        take("Iy", &inertiaY);
    }
    if (isSymmetric) inertiaXY = 0.0;
    take("Ixy", &inertiaXY);
    take("cx", &values.centroidX);
    take("cy", &values.centroidY);
    take("Sx", &values.plasticModulusX);
    take("Sy", &values.plasticModulusY);
    const PrincipalInertias principal = PrincipalInertiasOf(inertiaX, inertiaY, inertiaXY);
    values.inertia1 = principal.first;
    values.inertia2 = principal.second;
    values.angle = principal.angle;
    values.method = drawn.empty() ? "published values"
                                  : "published moduli times fibre distance, area of the outline";
    return values;
}

void Scale(double factor, GivenValues* values) {
    values->centroidX *= factor;
    values->centroidY *= factor;
    values->area *= std::pow(factor, 2);
    for (double* inertia : {&values->inertia1, &values->inertia2}) *inertia *= std::pow(factor, 4);
    for (double* modulus : {&values->plasticModulusX, &values->plasticModulusY}) {
        *modulus *= std::pow(factor, 3);
    }
}

// @param division  in millimetres
shapes::Outline Draw(const CsvRecord& row, const shapes::ArcDivision& division) {
    try {
        return DrawProfile(row, division);
    } catch (const shapes::DimensionError& error) {
        throw InputError(row.Text("name"), error.what(), error.Remedy());
    }
}

}  // namespace

bool IsCatalogueProfile(std::string_view name) {
    return TheCatalogue().Find(name) != nullptr;
}

std::vector<std::string> SimilarProfiles(std::string_view name) {
    constexpr std::size_t kMost = 3;
    const std::string wanted = CanonicalProfileName(name);
    const std::string swapped = WithSidesSwapped(wanted);
    constexpr std::size_t kLongest = 40;  // no name with a slip or two is longer
    if (wanted.size() > kLongest) return {};
    std::vector<std::pair<std::size_t, std::size_t>> byDistance;  // distance, row
    const Catalogue& catalogue = TheCatalogue();
    for (const auto& [canonical, row] : catalogue.byName) {
        const std::size_t distance =
            std::min(EditDistance(wanted, canonical), EditDistance(swapped, canonical));
        if (distance <= std::max<std::size_t>(2, wanted.size() / 3)) {
            byDistance.emplace_back(distance, row);
        }
    }
    std::sort(byDistance.begin(), byDistance.end());
    std::vector<std::string> names;
    for (const auto& [distance, row] : byDistance) {
        if (names.size() < kMost) names.push_back(catalogue.rows[row].Text("name"));
    }
    return names;
}

std::vector<std::string> CatalogueNames() {
    std::vector<std::string> names;
    for (const CsvRecord& row : TheCatalogue().rows) names.push_back(row.Text("name"));
    return names;
}

std::vector<PublishedValue> PublishedValuesOf(std::string_view name, const std::string& unit) {
    constexpr struct {
        const char* column;
        const char* key;
        int power;
    } kColumns[] = {{"area", "area", 2},
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
                    {"Iw", "warping_constant", 6}};
    const CsvRecord* const row = TheCatalogue().Find(name);
    if (row == nullptr) throw std::out_of_range("unknown profile " + std::string(name));
    // A division by 10 or 1000 keeps the table's digits, a multiplication by 0.1 does not.
    const double divisor = MetresPer(unit) / MetresPer("mm");
    std::vector<PublishedValue> values;
    for (const auto& [column, key, power] : kColumns) {
        const std::optional<double> number = row->Number(column);
        if (number) values.push_back({key, *number / std::pow(divisor, power)});
    }
    return values;
}

std::vector<Element> CatalogueElements(std::string_view name, const std::string& unit,
                                       const shapes::ArcDivision& division,
                                       bool wantsPublishedValues) {
    const CsvRecord* const row = TheCatalogue().Find(name);
    if (row == nullptr) throw std::out_of_range("unknown profile " + std::string(name));
    const double factor = MetresPer("mm") / MetresPer(unit);
    const shapes::Outline drawn = Draw(*row, division.Scaled(1.0 / factor));
    std::vector<Element> elements = ElementsOf(drawn);
    if (wantsPublishedValues) {
        elements.resize(1);
        elements.front().ring = KeyholeRing(drawn);
        elements.front().given = PublishedValues(*row, drawn);
        Scale(factor, &*elements.front().given);
    }
    for (Element& element : elements) {
        element.label = row->Text("name");
        for (Point& point : element.ring) point = factor * point;
    }
    return elements;
}

}  // namespace halvorn::engine
