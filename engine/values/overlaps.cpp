#include "values/overlaps.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "geometry/crossings.h"
#include "geometry/faces.h"
#include "model/outlines.h"

namespace halvorn::engine {

namespace {

constexpr double kNegligible = 1e-9;  // part of the smaller area [-]

// Areas within single elements and within pairs of them, by an even-odd filling.
class Overlay {
public:
    explicit Overlay(const std::vector<Element>& elements)
        : elements_(elements), areas_(elements.size(), 0.0), outside_(elements.size(), 0.0) {
        const Arrangement arrangement(OutlinesOf(elements));
        exponent_ = arrangement.Coordinates().exponent;
        for (const Face& face : FacesOf(arrangement)) Add(face);
    }

    Overlaps Find() const {
        Overlaps overlaps;
        for (const auto& [pair, area] : amiss_) {
            const auto [first, second] = pair;
            if (area <= kNegligible * std::min(areas_[first], areas_[second])) continue;
            (elements_[first].isSolid ? overlaps.solids : overlaps.holes)
                .push_back({first, second, Told(area)});
        }
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            if (!elements_[i].isSolid && outside_[i] > kNegligible * areas_[i]) {
                overlaps.outsideHoles.push_back({i, i, Told(outside_[i])});
            }
            // Without turns in the same sense an even-odd filling has what the integrals count.
            const double counted = 0.5 * std::fabs(TwiceArea(elements_[i].ring));
            const double excess = counted - Told(areas_[i]);
            if (excess > kNegligible * counted) overlaps.turns.push_back({i, i, excess});
        }
        return overlaps;
    }

private:
    double Told(double area) const { return std::ldexp(area, 2 * exponent_); }

    void Add(const Face& face) {
        std::vector<std::size_t> around;
        int count = 0;  // solids less holes
        bool isInSolid = false;
        for (const auto& [outline, winding] : face.windings) {
            if (winding % 2 == 0) continue;
            const std::size_t element = Slot(outline);
            around.push_back(element);
            areas_[element] += face.area;
            count += elements_[element].isSolid ? 1 : -1;
            isInSolid = isInSolid || elements_[element].isSolid;
        }
        const bool isAmiss = count < 0 || count > 1;
        for (std::size_t i = 0; i < around.size(); ++i) {
            if (!isInSolid) outside_[around[i]] += face.area;
            for (std::size_t k = i + 1; isAmiss && k < around.size(); ++k) {
                if (elements_[around[i]].isSolid != elements_[around[k]].isSolid) continue;
                amiss_[{around[i], around[k]}] += face.area;
            }
        }
    }

    const std::vector<Element>& elements_;
    int exponent_ = 0;
    std::vector<double> areas_;    // of each element, in the frame
    std::vector<double> outside_;  // of each hole: outside of all solids
    // Of pairs of one kind: the area that both have and where all together count other than 0
    // and 1.
    std::map<std::pair<std::size_t, std::size_t>, double> amiss_;
};

}  // namespace

Overlaps FindOverlaps(const std::vector<Element>& elements) {
    return Overlay(elements).Find();
}

}  // namespace halvorn::engine
