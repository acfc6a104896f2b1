#include "read/nesting.h"

#include <algorithm>
#include <utility>

#include "HalvornEngine.h"
#include "geometry/arrangement.h"
#include "geometry/outline_sides.h"

namespace halvorn::engine {

namespace {

constexpr const char* kDrawApart = "draw outlines apart or one within the other";

OutlineSides SidesOfAll(const std::vector<Element>& elements, const std::string& source) {
    std::vector<const Points*> rings;
    rings.reserve(elements.size());
    for (const Element& element : elements) rings.push_back(&element.ring);
    try {
        return OutlineSides(std::move(rings));
    } catch (const ArrangementError& error) {
        if (error.First() == kNone) {
            throw InputError(source, error.what(), "check the coordinates of the outlines");
        }
        const std::string& first = elements[Slot(error.First())].label;
        const std::string& second = elements[Slot(error.Second())].label;
        const bool isOne = error.First() == error.Second();
        throw InputError(source, second,
                         "crosses " + (isOne ? "itself" : "the outline of " + first) +
                             ", and together " + error.what(),
                         isOne ? "draw it without crossings" : kDrawApart);
    }
}

}  // namespace

std::optional<std::size_t> ClassifyByNesting(std::vector<Element>* elements,
                                             const std::string& source) {
    const std::size_t count = elements->size();
    const OutlineSides sides = SidesOfAll(*elements, source);
    std::vector<std::size_t> depths(count, 0);
    std::vector<std::size_t> held(count, 0);
    for (std::size_t i = 0; i < count; ++i) {
        for (const std::size_t k : sides.Around(i)) {
            const Sides own = sides.Of(i, k);
            const Sides other = sides.Of(k, i);
            const bool lieOn = own.LieOn() || other.LieOn();
            if (lieOn || own.Cross() || other.Cross()) {
                const auto [first, second] = std::minmax({i, k});
                throw InputError(source, (*elements)[second].label,
                                 std::string(lieOn ? "lies on" : "crosses") + " the outline of " +
                                     (*elements)[first].label +
                                     ", so nothing tells solid from hole",
                                 kDrawApart);
            }
            if (!own.inside) continue;
            ++depths[i];
            ++held[k];
        }
    }
    for (std::size_t i = 0; i < count; ++i) (*elements)[i].isSolid = depths[i] % 2 == 0;
    const auto holder = std::find(held.begin(), held.end(), count - 1);
    if (count < 2 || holder == held.end()) return std::nullopt;
    return static_cast<std::size_t>(holder - held.begin());
}

}  // namespace halvorn::engine
