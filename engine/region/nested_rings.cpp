#include "region/nested_rings.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

#include "geometry/ring_area.h"
#include "geometry/simple_rings.h"
#include "kernel/box_tree.h"

namespace halvorn::engine {

namespace {

// Each ring is compared with each; more of them take the long way.
constexpr std::size_t kMostRings = 256;

constexpr std::size_t kNoRing = static_cast<std::size_t>(-1);

struct NestedRing {
    int weight = 0;
    int outside = 0;  // winding sum beyond the ring
    double area = 0.0;
    std::size_t around = kNoRing;  // the innermost ring that it lies in
    KBox box;

    // Whether it leads from nothing into one solid, or back.
    bool IsPlain() const { return (weight == 1 && outside == 0) || (weight == -1 && outside == 1); }
};

// Turns solids counter-clockwise and holes clockwise.
NestedRing Directed(Points& ring, int weight) {
    NestedRing nested;
    const double area = 0.5 * TwiceArea(ring);
    if ((area < 0.0) == (weight > 0)) std::reverse(ring.begin(), ring.end());
    nested.weight = weight;
    nested.area = std::fabs(area);
    nested.box = {{ring[0].x, ring[0].y}, {ring[0].x, ring[0].y}};
    for (const Point& p : ring) nested.box = KBoxAround(nested.box, {{p.x, p.y}, {p.x, p.y}});
    return nested;
}

void Nest(const std::vector<Points>& rings, std::vector<NestedRing>& nested) {
    for (std::size_t i = 0; i < rings.size(); ++i) {
        NestedRing& ring = nested[i];
        for (std::size_t k = 0; k < rings.size(); ++k) {
            const NestedRing& other = nested[k];
            if (k == i || !KBoxesMeet(ring.box, other.box)) continue;
            if (WindingNumber(rings[k], rings[i][0]) == 0) continue;
            ring.outside += other.weight;
            const bool isInner = ring.around == kNoRing || other.area < nested[ring.around].area;
            if (isInner) ring.around = k;
        }
    }
}

void MakeParts(std::vector<Points>& rings, const std::vector<NestedRing>& nested, Region& region) {
    region.partsOf.resize(rings.size());
    for (std::size_t i = 0; i < rings.size(); ++i) {
        if (nested[i].weight < 0) continue;
        region.partsOf[i] = {region.parts.size()};
        Part& part = region.parts.emplace_back();
        part.area = nested[i].area;
        part.outline = std::move(rings[i]);
    }
    for (std::size_t i = 0; i < rings.size(); ++i) {
        if (nested[i].weight > 0) continue;
        region.partsOf[i] = region.partsOf[nested[i].around];
        Part& part = region.parts[region.partsOf[i][0]];
        part.area -= nested[i].area;
        part.voids.push_back(std::move(rings[i]));
    }
}

void DropRepeatedPoints(Points& ring) {
    ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
    while (ring.size() > 1 && ring.front() == ring.back()) ring.pop_back();
}

}  // namespace

std::optional<Region> RegionOfNestedRings(std::span<const WeightedRing> outlines,
                                          FramedOutlines framed) {
    std::vector<Points>& rings = framed.rings;
    if (rings.size() > kMostRings) return std::nullopt;
    for (Points& ring : rings) DropRepeatedPoints(ring);
    if (!AreSimpleAndApart(rings, framed.size)) return std::nullopt;
    std::vector<NestedRing> nested;
    for (std::size_t i = 0; i < rings.size(); ++i) {
        nested.push_back(Directed(rings[i], outlines[i].weight));
    }
    Nest(rings, nested);
    const auto isPlain = [](const NestedRing& ring) { return ring.IsPlain(); };
    if (!std::all_of(nested.begin(), nested.end(), isPlain)) return std::nullopt;
    Region region;
    region.frame = framed.frame;
    region.size = framed.size;
    MakeParts(rings, nested, region);
    return region;
}

}  // namespace halvorn::engine
