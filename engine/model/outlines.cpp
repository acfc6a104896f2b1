#include "model/outlines.h"

namespace halvorn::engine {

std::vector<WeightedRing> OutlinesOf(const std::vector<Element>& elements) {
    std::vector<WeightedRing> outlines;
    outlines.reserve(elements.size());
    for (const Element& element : elements) {
        outlines.push_back({&element.ring, element.isSolid ? 1 : -1});
    }
    return outlines;
}

std::vector<Element> ElementsOf(const shapes::Outline& outline) {
    std::vector<Element> elements(outline.hole.empty() ? 1 : 2);
    elements.front().ring = outline.solid;
    if (elements.size() == 2) {
        elements.back().ring = outline.hole;
        elements.back().isSolid = false;
        elements.back().insideOf = 0;
    }
    return elements;
}

}  // namespace halvorn::engine
