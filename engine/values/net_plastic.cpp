#include "values/net_plastic.h"

#include <cmath>
#include <vector>

namespace halvorn::engine {

std::vector<const Points*> RingsOf(const Region& region) {
    std::vector<const Points*> rings;
    for (const Part& part : region.parts) {
        rings.push_back(&part.outline);
        for (const Points& ring : part.voids) rings.push_back(&ring);
    }
    return rings;
}

std::optional<double> PlasticAxis(const Region& region, AxisDirection direction) {
    return HalvingLine(RingsOf(region), direction);
}

PlasticModuli NetPlasticModuli(const std::vector<const Points*>& rings, const Frame& frame) {
    const auto modulus = [&](AxisDirection direction) {
        const auto line = HalvingLine(rings, direction);
        double sum = 0.0;
        for (const Points* const ring : rings) {
            if (line) sum += DistanceIntegral(*ring, direction, *line);
        }
        return std::ldexp(sum, 3 * frame.exponent);
    };
    return {modulus(AxisDirection::Horizontal), modulus(AxisDirection::Vertical)};
}

PlasticModuli NetPlasticModuli(const Region& region) {
    return NetPlasticModuli(RingsOf(region), region.frame);
}

PlasticModuli StaticMoments(const Region& region, const Point& centroid) {
    const Point centre = region.frame.ToFrame(centroid);
    double x = 0.0;
    double y = 0.0;
    for (const Points* const ring : RingsOf(region)) {
        x += DistanceIntegral(*ring, AxisDirection::Horizontal, centre.y);
        y += DistanceIntegral(*ring, AxisDirection::Vertical, centre.x);
    }
    const int cube = 3 * region.frame.exponent;
    return {0.5 * std::ldexp(x, cube), 0.5 * std::ldexp(y, cube)};
}

}  // namespace halvorn::engine
