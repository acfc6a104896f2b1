#include "catalogue/published_values.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "HalvornEngine.h"
#include "base/units.h"
#include "catalogue/profile_types.h"
#include "geometry/box.h"
#include "model/class_outputs.h"
#include "model/outlines.h"
#include "model/principal_inertias.h"

namespace halvorn::engine {

namespace {

void Scale(double factor, GivenValues* values) {
    values->centroidX *= factor;
    values->centroidY *= factor;
    values->area *= std::pow(factor, 2);
    for (double* inertia : {&values->inertia1, &values->inertia2}) *inertia *= std::pow(factor, 4);
    if (values->torsionConstant) *values->torsionConstant *= std::pow(factor, 4);
    for (double* modulus : {&values->plasticModulusX, &values->plasticModulusY}) {
        *modulus *= std::pow(factor, 3);
    }
}

// The distance of the farther of two fibres.
double FartherFibre(double low, double high, double centroid) {
    return std::max(centroid - low, high - centroid);
}

}  // namespace

std::vector<PublishedValue> PublishedValuesOf(const CsvRecord& row, const std::string& unit) {
    // A division by 10 or 1000 keeps the table's digits, a multiplication by 0.1 does not.
    const double divisor = MetresPer(unit) / MetresPer(UnitOf(row));
    std::vector<PublishedValue> values;
    for (const PublishedColumn& column : PublishedColumns()) {
        const std::optional<double> number = row.Number(column.name);
        if (!number) continue;
        values.push_back({std::string(column.key), *number / std::pow(divisor, column.power)});
    }
    return values;
}

GivenValues PublishedStandIn(const CsvRecord& row, const shapes::Outline& outline,
                             const std::string& unit) {
    if (PublishedValuesOf(row, unit).empty()) {
        throw InputError(row.Text("name"), "its catalogue publishes no values of it",
                         "leave out --published, or take the values as drawn");
    }
    const ClassOutputs drawn = ClassOutputsOf(ElementsOf(outline));
    const Box box(outline.solid);
    GivenValues values;
    values.area = drawn.area;
    values.centroidX = drawn.centroid.x;
    values.centroidY = drawn.centroid.y;
    double inertiaX = drawn.inertiaX, inertiaY = drawn.inertiaY, inertiaXY = drawn.inertiaXY;
    bool isOfModuli = false, isOfOutline = false;
    const auto take = [&](const char* column, double* value) {
        const std::optional<double> number = row.Number(column);
        if (number) *value = *number;
        return number.has_value();
    };
    // The table leaves out what its sources do; of some families it has elastic moduli alone.
    const auto takeInertia = [&](const char* column, const char* modulus, double fibre,
                                 double* inertia) {
        if (take(column, inertia)) return;
        const std::optional<double> number = row.Number(modulus);
        isOfModuli = isOfModuli || number;
        isOfOutline = isOfOutline || !number;
        if (number) *inertia = *number * fibre;
    };
    isOfOutline = !take("area", &values.area);
    takeInertia("Ix", "Zx_min", FartherFibre(box.bottom, box.top, values.centroidY), &inertiaX);
    takeInertia("Iy", "Zy_min", FartherFibre(box.left, box.right, values.centroidX), &inertiaY);
    if (row.Text("type") != "angle") inertiaXY = 0.0;
    take("Ixy", &inertiaXY);
    take("cx", &values.centroidX);
    take("cy", &values.centroidY);
    take("Sx", &values.plasticModulusX);
    take("Sy", &values.plasticModulusY);
    values.torsionConstant = row.Number("It");
    const PrincipalInertias principal = PrincipalInertiasOf(inertiaX, inertiaY, inertiaXY);
    values.inertia1 = principal.first;
    values.inertia2 = principal.second;
    values.angle = principal.angle;
    values.method = isOfModuli    ? "published moduli times fibre distance"
                    : isOfOutline ? "published values, the others of the outline"
                                  : "published values";
    if (isOfModuli && isOfOutline) values.method += ", area of the outline";
    Scale(MetresPer(UnitOf(row)) / MetresPer(unit), &values);
    return values;
}

}  // namespace halvorn::engine
