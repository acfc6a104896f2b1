#include "values/class_numbers.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "geometry/box.h"
#include "geometry/rings.h"
#include "geometry/simple_rings.h"
#include "model/outlines.h"
#include "model/principal_inertias.h"
#include "values/class_rounding.h"
#include "values/digits.h"
#include "values/values.h"

namespace halvorn::engine {

namespace {

// Each hole is compared with each.
constexpr std::size_t kMostRings = 16;

// Sections nearer to a doubt than these get a report. All are far on the safe side of what a report
// goes by.
constexpr double kLeastRing = 1e-9;         // area of a ring over the square of the size [-]
constexpr double kFarthest = 1e3;           // of a coordinate from the origin, in sizes [-]
constexpr double kLeastSize = 1e-100;       // [L], so that no product of lengths underflows
constexpr double kGreatestSize = 1e60;      // [L], so that none overflows
constexpr double kLeastClassArea = 1e-9;    // [L^2], above the fixed tolerances of the class
constexpr double kFewRoundings = 1e-8;      // error of a moment of the region over the moment [-]
constexpr double kSlenderest = 1e-6;        // smaller principal second moment over their sum [-]
constexpr double kCoordinateError = 1e-15;  // of a coordinate, over the largest one [-]

bool IsPlainElement(const Element& element) {
    return !element.given && !element.isWall && element.modularRatio == 1.0;
}

bool AreHolesInTheirSolid(std::span<const Points> rings, std::span<const Element> elements) {
    for (std::size_t i = 0; i < rings.size(); ++i) {
        for (std::size_t k = 0; k < rings.size(); ++k) {
            if (k == i || WindingNumber(rings[k], rings[i][0]) == 0) continue;
            if (elements[i].isSolid || !elements[k].isSolid) return false;
        }
        const bool isInSolid =
            elements[i].isSolid || std::any_of(rings.begin(), rings.end(), [&](const Points& ring) {
                const auto k = static_cast<std::size_t>(&ring - rings.data());
                return elements[k].isSolid && WindingNumber(ring, rings[i][0]) != 0;
            });
        if (!isInSolid) return false;
    }
    return true;
}

// Whether the outlines mean what the class sums: one solid less the holes in it.
bool IsSolidLessHoles(std::span<const Element> elements, double size) {
    const auto isSolid = [](const Element& element) { return element.isSolid; };
    if (std::count_if(elements.begin(), elements.end(), isSolid) != 1) return false;
    const Points& first = elements.front().ring;
    if (elements.size() == 1 && !(first.front() == first.back())) {
        return AreSimpleAndApart({&first, 1}, size);
    }
    std::vector<Points> rings;
    for (const Element& element : elements) DropRepeatedPoints(rings.emplace_back(element.ring));
    return AreSimpleAndApart(rings, size) && AreHolesInTheirSolid(rings, elements);
}

// What the points allow to be said before the class is asked.
struct Extents {
    Box box;
    double farthest = 0.0;      // coordinate from the origin [L]
    double path = 0.0;          // length of all outlines, along x and along y [L]
    double areaRounding = 0.0;  // of all rings [L^2]
    bool areRingsLarge = true;

    explicit Extents(const std::vector<Element>& elements) : box(BoxOf(elements)) {
        farthest = std::max(
            {std::fabs(box.left), std::fabs(box.right), std::fabs(box.bottom), std::fabs(box.top)});
        const double least = std::max(kLeastClassArea, kLeastRing * Size() * Size());
        for (const Element& element : elements) {
            const double rounding = AreaRounding(element.ring);
            areRingsLarge = areRingsLarge && AreaOf(element.ring) > std::max(least, rounding);
            areaRounding += rounding;
            const Point* before = &element.ring.back();
            for (const Point& point : element.ring) {
                path += std::fabs(point.x - before->x) + std::fabs(point.y - before->y);
                before = &point;
            }
        }
    }

    double Size() const { return std::max(box.Width(), box.Height()); }
    // Written so that NaN is out of bounds.
    bool AreOrdinary() const {
        return kLeastSize < Size() && Size() < kGreatestSize && farthest <= kFarthest * Size() &&
               areRingsLarge;
    }
};

bool HasEveryOutput(const ClassOutputs& out) {
    const auto isFinite = [&](const auto& output) { return std::isfinite(output.get(out)); };
    return !out.isStopped && out.torsionConstant != 0.0 &&
           std::all_of(kClassValues.begin(), kClassValues.end(), isFinite);
}

// Whether neither the class's sums nor the region's moments lose digits that a table shows.
bool HasEveryDigit(const Extents& extents, const SumRounding& rounding, const ClassOutputs& out) {
    const auto isNegligible = [](double error, double value) {
        return error <= kTooFewDigits * std::fabs(value);
    };
    const double size = extents.Size();
    const double plastic = 0.5 * size * extents.areaRounding;
    const bool isOfClass =
        isNegligible(extents.areaRounding, out.area) &&
        isNegligible(rounding.inertiaX, out.inertiaX) &&
        isNegligible(rounding.inertiaY, out.inertiaY) &&
        (out.inertiaXY == 0.0 || isNegligible(rounding.inertiaXY, out.inertiaXY)) &&
        isNegligible(plastic, out.plasticX) && isNegligible(plastic, out.plasticY);
    const PrincipalInertias principal =
        PrincipalInertiasOf(out.inertiaX, out.inertiaY, out.inertiaXY);
    const double swept = kCoordinateError * extents.farthest * extents.path;
    return isOfClass && out.area > 0.0 && swept <= kFewRoundings * out.area &&
           2.0 * swept * size * size <= kFewRoundings * principal.second &&
           principal.second >= kSlenderest * (out.inertiaX + out.inertiaY);
}

}  // namespace

std::optional<std::array<double, kClassValueCount>> ClassNumbersOf(const SectionModel& section,
                                                                   const Shift& shift) {
    const std::vector<Element>& elements = section.elements;
    if (section.polyline || elements.empty() || elements.size() > kMostRings ||
        !std::all_of(elements.begin(), elements.end(), IsPlainElement)) {
        return std::nullopt;
    }
    const Extents extents(elements);
    if (!extents.AreOrdinary() || !IsSolidLessHoles(elements, extents.Size())) return std::nullopt;
    ClassOutputs out = ClassOutputsOf(elements, shift.dx, shift.dy);
    if (!HasEveryOutput(out)) return std::nullopt;
    const SumRounding rounding = RoundingOf(elements);
    ClearRounding(rounding, &out);
    if (!HasEveryDigit(extents, rounding, out)) return std::nullopt;
    std::array<double, kClassValueCount> numbers{};
    std::transform(kClassValues.begin(), kClassValues.end(), numbers.begin(),
                   [&](const auto& output) { return output.get(out) + 0.0; });  // no value is -0
    return numbers;
}

}  // namespace halvorn::engine
