#include "region/difference.h"

#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>

#include "geometry/box.h"
#include "model/composite.h"
#include "model/outlines.h"
#include "region/polygons.h"
#include "region/region.h"

namespace halvorn::engine {

namespace {

// A smaller part of an area is rounding.
constexpr double kNoArea = 1e-12;

// Pairs of boxes are looked at up to here; of more elements those that meet are taken for all.
constexpr std::size_t kMostPaired = 2000;

std::vector<WeightedRing> RingsOf(const std::vector<Polygon>& polygons, int weight) {
    std::vector<WeightedRing> rings;
    for (const Polygon& polygon : polygons) {
        rings.push_back({&polygon.outline, weight});
        for (const Points& hole : polygon.holes) rings.push_back({&hole, -weight});
    }
    return rings;
}

// [L^2]
double AreaOf(const Region& region) {
    return std::ldexp(region.area, 2 * region.frame.exponent);
}

// The elements whose boxes meet that of what is taken away, and those whose boxes meet theirs.
std::vector<bool> Reached(const std::vector<Element>& elements, const Box& taken) {
    std::vector<Box> boxes;
    boxes.reserve(elements.size());
    for (const Element& element : elements) boxes.emplace_back(element.ring);
    std::vector<bool> isReached(elements.size(), elements.size() > kMostPaired);
    std::vector<std::size_t> open;
    const auto reach = [&](const Box& from) {
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            if (isReached[i] || boxes[i].IsApartFrom(from, 0.0)) continue;
            isReached[i] = true;
            open.push_back(i);
        }
    };
    for (reach(taken); !open.empty();) {
        const Box box = boxes[open.back()];
        open.pop_back();
        reach(box);
    }
    return isReached;
}

// Elements of one material, and the outlines that they keep in a composite section.
struct Material {
    const Element* first = nullptr;
    std::vector<WeightedRing> outlines;
};

std::vector<Material> MaterialsOf(const std::vector<Element>& elements, bool isComposite) {
    if (!isComposite) return {{&elements.front(), OutlinesOf(elements)}};
    std::vector<Material> materials;
    for (const MaterialPart& part : MaterialPartsOf(elements)) {
        materials.push_back({&elements[part.elements.front()], OutlinesOf(elements, part)});
    }
    return materials;
}

void AddElements(const std::vector<Polygon>& polygons, const Element& like,
                 std::vector<Element>* elements) {
    for (const Polygon& polygon : polygons) {
        Element element;
        element.label = like.label;
        element.row = like.row;
        element.modularRatio = like.modularRatio;
        element.ring = polygon.outline;
        elements->push_back(element);
        element.isSolid = false;
        for (const Points& hole : polygon.holes) {
            element.ring = hole;
            elements->push_back(element);
        }
    }
}

}  // namespace

Difference DifferenceOf(const std::vector<Element>& elements, const std::vector<Element>& taken) {
    const std::vector<Polygon> cut = PolygonsOf(RegionOf(OutlinesOf(taken)));
    const std::vector<bool> isReached = Reached(elements, BoxOf(taken));
    std::vector<Element> kept, reached;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        (isReached[i] ? reached : kept).push_back(elements[i]);
    }
    if (reached.empty() || cut.empty()) return {elements, true};
    Difference difference;
    double before = 0.0, after = 0.0;
    for (const Material& material : MaterialsOf(reached, IsComposite(elements))) {
        const Region whole = RegionOf(material.outlines);
        const std::vector<Polygon> polygons = PolygonsOf(whole);
        std::vector<WeightedRing> rings = RingsOf(polygons, 1);
        const std::vector<WeightedRing> holes = RingsOf(cut, -1);
        rings.insert(rings.end(), holes.begin(), holes.end());
        const Region left = RegionOf(rings);
        before += AreaOf(whole);
        after += AreaOf(left);
        AddElements(PolygonsOf(left), *material.first, &difference.elements);
    }
    if (before - after <= kNoArea * before) return {elements, true};
    std::move(kept.begin(), kept.end(), std::back_inserter(difference.elements));
    return difference;
}

}  // namespace halvorn::engine
