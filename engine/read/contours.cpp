#include "read/contours.h"

#include <cmath>
#include <cstddef>

#include "base/units.h"

namespace halvorn::engine {

namespace {

constexpr std::size_t kFewestPoints = 3;

void CheckUnit(const std::string& unit, const std::string& source) {
    if (IsLengthUnit(unit)) return;
    std::string names;
    for (const LengthUnit& known : kLengthUnits) {
        names += (names.empty() ? "\"" : ", \"") + std::string(known.name) + "\"";
    }
    throw InputError(source, "unit", "unknown value \"" + unit + "\"", "write one of " + names);
}

void CheckPoints(const Points& points, const std::string& label, const std::string& source) {
    if (points.size() < kFewestPoints) {
        throw InputError(source, label,
                         "at least 3 points are needed, found " + std::to_string(points.size()),
                         "add the missing points");
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (std::isfinite(points[i].x) && std::isfinite(points[i].y)) continue;
        throw InputError(source, label + "/points/" + std::to_string(i),
                         "a coordinate is not a finite number", "write plain numbers");
    }
}

}  // namespace

SectionModel SectionOfContours(const std::vector<Contour>& contours, const std::string& unit,
                               const std::string& name, const std::string& source) {
    CheckUnit(unit, source);
    if (contours.empty()) throw InputError(source, "the section is empty", "give it an outline");
    SectionModel section;
    section.source = source;
    section.name = name;
    section.unit = unit;
    section.elements.reserve(contours.size());
    for (const Contour& contour : contours) {
        Element& element = section.elements.emplace_back();
        element.label = "/contours/" + std::to_string(section.elements.size() - 1);
        CheckPoints(contour.points, element.label, source);
        element.isSolid = contour.isSolid;
        element.ring = contour.points;
        element.actsOnAll = !contour.isSolid;
    }
    return section;
}

}  // namespace halvorn::engine
