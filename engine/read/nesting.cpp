#include "read/nesting.h"

#include <algorithm>

#include "base/input_error.h"
#include "geometry/ring_sides.h"

namespace halvorn::engine {

namespace {

// Of the diagonal of the smaller ring's box [-]. Nearer than this, rings touch: two outlines that
// share an edge in a drawing of three or four decimals are no farther apart than that.
constexpr double kTouching = 1e-4;

}  // namespace

void ClassifyByNesting(std::vector<Element>* elements, const std::string& source) {
    const std::size_t count = elements->size();
    std::vector<StripedRing> rings;
    rings.reserve(count);
    for (const Element& element : *elements) rings.emplace_back(element.ring);
    std::vector<std::size_t> depths(count, 0);
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t k = i + 1; k < count; ++k) {
            const Box &first = rings[i].Bounds(), &second = rings[k].Bounds();
            const double touching = kTouching * std::min(first.Diagonal(), second.Diagonal());
            if (first.IsApartFrom(second, touching)) continue;
            const Sides ofFirst = SidesOf(rings[i], rings[k], touching);
            const Sides ofSecond = SidesOf(rings[k], rings[i], touching);
            const bool lieOn = ofFirst.LieOn() || ofSecond.LieOn();
            if (lieOn || ofFirst.Cross() || ofSecond.Cross()) {
                throw InputError((source.empty() ? "" : source + ": ") + (*elements)[k].label,
                                 std::string(lieOn ? "lies on" : "crosses") + " the outline of " +
                                     (*elements)[i].label + ", so nothing tells solid from hole",
                                 "draw outlines apart or one within the other");
            }
            if (ofFirst.inside) ++depths[i];
            if (ofSecond.inside) ++depths[k];
        }
    }
    for (std::size_t i = 0; i < count; ++i) (*elements)[i].isSolid = depths[i] % 2 == 0;
}

}  // namespace halvorn::engine
