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

}  // namespace halvorn::engine
