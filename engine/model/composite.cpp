#include "model/composite.h"

#include <algorithm>
#include <functional>

#include "geometry/box.h"

namespace halvorn::engine {

namespace {

int SignOf(const Element& element) {
    return element.isSolid ? 1 : -1;
}

// More than all solids together can weigh.
int Outweighing(const std::vector<Element>& elements) {
    return static_cast<int>(elements.size());
}

}  // namespace

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
            const auto part = std::find_if(parts.begin(), parts.end(), [&](const auto& other) {
                return other.name == element.label && other.modularRatio == element.modularRatio;
            });
            last = static_cast<std::size_t>(part - parts.begin());
            if (part == parts.end()) parts.push_back({element.label, element.modularRatio, {}});
        }
        parts[last].elements.push_back(i);
    }
    return parts;
}

std::vector<WeightedRing> OutlinesFrom(const std::vector<Element>& elements, double leastRatio) {
    std::vector<WeightedRing> outlines;
    for (const Element& element : elements) {
        if (element.actsOnAll) {
            outlines.push_back({&element.ring, SignOf(element) * Outweighing(elements)});
        } else if (element.modularRatio >= leastRatio) {
            outlines.push_back({&element.ring, SignOf(element)});
        }
    }
    return outlines;
}

std::vector<WeightedRing> OutlinesOf(const std::vector<Element>& elements,
                                     const MaterialPart& part) {
    std::vector<WeightedRing> outlines;
    Box box(elements[part.elements.front()].ring);
    for (const std::size_t i : part.elements) {
        outlines.push_back({&elements[i].ring, SignOf(elements[i])});
        box.Add(Box(elements[i].ring));
    }
    for (const Element& element : elements) {
        const bool isStiffer = !element.actsOnAll && element.modularRatio > part.modularRatio;
        if (!(element.actsOnAll || isStiffer) || Box(element.ring).IsApartFrom(box, 0.0)) continue;
        const int sign = isStiffer ? -SignOf(element) : SignOf(element);
        outlines.push_back({&element.ring, sign * Outweighing(elements)});
    }
    return outlines;
}

}  // namespace halvorn::engine
