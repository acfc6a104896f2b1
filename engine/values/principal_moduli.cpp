#include "values/principal_moduli.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "values/net_plastic.h"

namespace halvorn::engine {

PrincipalModuli PrincipalModuliOf(const Region& region, const Point& centroid, double angle) {
    constexpr double kNothing = 1e-15;  // of a cosine that is meant to be 0
    const auto clean = [](double part) { return std::fabs(part) < kNothing ? 0.0 : part; };
    const double along = clean(std::cos(angle));
    const double across = clean(std::sin(angle));
    const auto turned = [&](const Point& p) {
        return Point(along * p.x + across * p.y, along * p.y - across * p.x);
    };
    const Point centre = turned(region.frame.ToFrame(centroid));
    PrincipalModuli moduli;
    std::vector<Points> rings;
    for (const Points* const ring : RingsOf(region)) {
        Points& copy = rings.emplace_back();
        copy.reserve(ring->size());
        for (const Point& point : *ring) {
            const Point p = copy.emplace_back(turned(point));
            moduli.fibre1 = std::max(moduli.fibre1, std::fabs(p.y - centre.y));
            moduli.fibre2 = std::max(moduli.fibre2, std::fabs(p.x - centre.x));
        }
    }
    std::vector<const Points*> all;
    all.reserve(rings.size());
    for (const Points& ring : rings) all.push_back(&ring);
    const PlasticModuli plastic = NetPlasticModuli(all, region.frame);
    moduli.fibre1 = region.frame.LengthFromFrame(moduli.fibre1);
    moduli.fibre2 = region.frame.LengthFromFrame(moduli.fibre2);
    moduli.plastic1 = plastic.x;
    moduli.plastic2 = plastic.y;
    return moduli;
}

}  // namespace halvorn::engine
