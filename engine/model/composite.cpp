#include "model/composite.h"

#include <algorithm>
#include <functional>

#include "geometry/box.h"
#include "geometry/lengths.h"
#include "geometry/simple_rings.h"

namespace halvorn::engine {

namespace {

int SignOf(const Element& element) {
    return element.isSolid ? 1 : -1;
}

// More than all solids together can weigh.
int Outweighing(const std::vector<Element>& elements) {
    return static_cast<int>(elements.size());
}

bool IsHoleInAll(const Element& element) {
    return element.actsOnAll && !element.isSolid;
}

// What a solid or the hole of a hollow one weighs: an island more than the holes that it lies in.
int WeightOf(const Element& element, const std::vector<Element>& elements) {
    if (element.actsOnAll) return SignOf(element) * Outweighing(elements);
    if (!element.isSolid) return -1;
    return 1 + Outweighing(elements) * static_cast<int>(HolesAround(element, elements).size());
}

// Whether a solid has no material wherever an island is, as it is none of the same holes.
bool IsTakenAround(const Element& solid, const Element& island,
                   const std::vector<Element>& elements) {
    const auto around = HolesAround(island, elements);
    const auto ofSolid = HolesAround(solid, elements);
    return std::any_of(around.begin(), around.end(), [&](const Element* hole) {
        return std::find(ofSolid.begin(), ofSolid.end(), hole) == ofSolid.end();
    });
}

}  // namespace

bool LiesWithin(const Points& inner, const Points& outer) {
    constexpr double kSlack = 1e-3;  // of the outer ring's diagonal
    const Box box(outer);
    const double slack = kSlack * box.Diagonal();
    const Box own(inner);
    if (own.left < box.left - slack || own.right > box.right + slack ||
        own.bottom < box.bottom - slack || own.top > box.top + slack) {
        return false;
    }
    return std::all_of(inner.begin(), inner.end(), [&](const Point& point) {
        if (WindingNumber(outer, point) != 0) return true;
        for (std::size_t i = 0; i < outer.size(); ++i) {
            const Point& next = outer[i + 1 < outer.size() ? i + 1 : 0];
            if (DistanceToSegment(point, outer[i], next) <= slack) return true;
        }
        return false;
    });
}

std::vector<const Element*> HolesAround(const Element& solid,
                                        const std::vector<Element>& elements) {
    constexpr double kTouch = 1e-9;  // of the solid's diagonal
    const Box box(solid.ring);
    std::vector<const Element*> holes;
    for (const Element& hole : elements) {
        if (!IsHoleInAll(hole)) continue;
        if (LiesWithin(solid.ring, hole.ring)) {
            holes.push_back(&hole);
        } else if (!Box(hole.ring).IsApartFrom(box, -kTouch * box.Diagonal())) {
            return {};
        }
    }
    return holes;
}

bool IsComposite(const std::vector<Element>& elements) {
    return std::any_of(elements.begin(), elements.end(),
                       [](const Element& element) { return element.modularRatio != 1.0; });
}

std::vector<double> ModularRatiosOf(const std::vector<Element>& elements) {
    std::vector<double> ratios;
    for (const Element& element : elements) {
        if (!element.actsOnAll) ratios.push_back(element.modularRatio);
    }
    std::sort(ratios.begin(), ratios.end(), std::greater<>());
    ratios.erase(std::unique(ratios.begin(), ratios.end()), ratios.end());
    return ratios;
}

std::vector<MaterialPart> MaterialPartsOf(const std::vector<Element>& elements) {
    std::vector<MaterialPart> parts;
    std::size_t last = 0;  // the part of the last solid, which the hole of a hollow one follows
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Element& element = elements[i];
        if (element.actsOnAll) continue;
        if (element.isSolid) {
            const std::string& name = element.row.empty() ? element.label : element.row;
            const auto part = std::find_if(parts.begin(), parts.end(), [&](const auto& other) {
                return other.name == name && other.modularRatio == element.modularRatio;
            });
            last = static_cast<std::size_t>(part - parts.begin());
            if (part == parts.end()) parts.push_back({name, element.modularRatio, {}});
        }
        parts[last].elements.push_back(i);
    }
    return parts;
}

std::vector<WeightedRing> OutlinesFrom(const std::vector<Element>& elements, double leastRatio) {
    std::vector<WeightedRing> outlines;
    for (const Element& element : elements) {
        if (element.actsOnAll || element.modularRatio >= leastRatio) {
            outlines.push_back({&element.ring, WeightOf(element, elements)});
        }
    }
    return outlines;
}

std::vector<WeightedRing> OutlinesOf(const std::vector<Element>& elements,
                                     const MaterialPart& part) {
    std::vector<WeightedRing> outlines;
    Box box(elements[part.elements.front()].ring);
    for (const std::size_t i : part.elements) {
        outlines.push_back({&elements[i].ring, WeightOf(elements[i], elements)});
        box.Add(Box(elements[i].ring));
    }
    for (const Element& element : elements) {
        const bool isStiffer = !element.actsOnAll && element.modularRatio > part.modularRatio;
        if (!(element.actsOnAll || isStiffer) || Box(element.ring).IsApartFrom(box, 0.0)) continue;
        const bool isElsewhere = std::all_of(
            part.elements.begin(), part.elements.end(),
            [&](const std::size_t own) { return IsTakenAround(element, elements[own], elements); });
        if (isStiffer && isElsewhere) continue;
        const int sign = isStiffer ? -SignOf(element) : SignOf(element);
        outlines.push_back({&element.ring, sign * Outweighing(elements)});
    }
    return outlines;
}

}  // namespace halvorn::engine
