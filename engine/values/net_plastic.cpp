#include "values/net_plastic.h"

#include <cmath>
#include <vector>

namespace halvorn::engine {

namespace {

std::vector<const Points*> RingsOf(const Region& region) {
    std::vector<const Points*> rings;
    for (const Part& part : region.parts) {
        rings.push_back(&part.outline);
        for (const Points& ring : part.voids) rings.push_back(&ring);
    }
    return rings;
}

}  // namespace

std::optional<double> PlasticAxis(const Region& region, AxisDirection direction) {
    return HalvingLine(RingsOf(region), direction);
}

PlasticModuli NetPlasticModuli(const Region& region) {
    const std::vector<const Points*> rings = RingsOf(region);
    const auto modulus = [&](AxisDirection direction) {
        const auto line = HalvingLine(rings, direction);
        double sum = 0.0;
        for (const Points* const ring : rings) {
            if (line) sum += DistanceIntegral(*ring, direction, *line);
        }
        return std::ldexp(sum, 3 * region.frame.exponent);
    };
    return {modulus(AxisDirection::Horizontal), modulus(AxisDirection::Vertical)};
}

}  // namespace halvorn::engine
