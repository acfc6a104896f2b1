#include "region/region.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "geometry/faces.h"
#include "geometry/predicates.h"
#include "geometry/rings.h"
#include "geometry/simple_rings.h"
#include "region/material_rings.h"
#include "region/nested_rings.h"

namespace halvorn::engine {

namespace {

// Odd places smaller than this part of the size squared are what merged and moved points leave.
constexpr double kLeastOddArea = 1e-12;

// Parts smaller than this part of the size squared are slivers of rounding where outlines cross.
constexpr double kLeastPart = 1e-15;

bool IsLower(const Point& a, const Point& b) {
    return a.y < b.y || (a.y == b.y && a.x < b.x);
}

const Point& LowestOf(const Points& ring) {
    return *std::min_element(ring.begin(), ring.end(), IsLower);
}

// Drops slivers, and puts the parts into an order that does not depend on the triangulation.
void SortParts(Region& region) {
    const double least = kLeastPart * region.size * region.size;
    std::vector<std::pair<Point, std::size_t>> order;
    for (std::size_t i = 0; i < region.parts.size(); ++i) {
        const Part& part = region.parts[i];
        if (part.area <= least || part.outline.size() < 3) continue;
        order.emplace_back(*std::min_element(part.outline.begin(), part.outline.end(), IsLower), i);
    }
    std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) {
        return IsLower(a.first, b.first) || (!IsLower(b.first, a.first) && a.second < b.second);
    });
    std::vector<Part> sorted;
    std::vector<std::size_t> places(region.parts.size(), order.size());
    for (const auto& [point, i] : order) {
        places[i] = sorted.size();
        region.area += region.parts[i].area;
        sorted.push_back(std::move(region.parts[i]));
    }
    region.parts = std::move(sorted);
    for (std::vector<std::size_t>& parts : region.partsOf) {
        for (std::size_t& part : parts) part = places[part];
        std::erase(parts, order.size());
        std::sort(parts.begin(), parts.end());
        parts.erase(std::unique(parts.begin(), parts.end()), parts.end());
    }
}

class RegionBuilder {
public:
    explicit RegionBuilder(std::span<const WeightedRing> outlines)
        : outlines_(outlines), arrangement_(outlines), mesh_(arrangement_.Mesh()) {
        region_.frame = arrangement_.Coordinates();
        region_.size = arrangement_.Size();
        region_.crossings = arrangement_.Crossings();
        region_.moved = arrangement_.Moved();
        FindParts();
        TraceRings();
        FindOddPlaces();
        for (const OutlineContact& miss : arrangement_.NearMisses()) {
            if (IsGap(miss)) region_.nearMisses.push_back(miss);
        }
    }

    Region Take() { return std::move(region_); }

private:
    bool IsMaterial(Index triangle) const {
        return triangle != kNone && arrangement_.SumAt(triangle) >= 1;
    }
    double AreaOf(Index triangle) const {
        const auto& [a, b, c] = mesh_.At(triangle).vertices;
        return 0.5 *
               Cross(mesh_.PointAt(b) - mesh_.PointAt(a), mesh_.PointAt(c) - mesh_.PointAt(a));
    }

    // Calls back with every triangle that hangs together with this one by edges between triangles
    // of one kind, and marks it.
    template <typename IsOfKind, typename Visit>
    void Flood(Index start, std::vector<Index>& marks, Index mark, const IsOfKind& isOfKind,
               const Visit& visit) const {
        std::vector<Index> stack = {start};
        marks[Slot(start)] = mark;
        while (!stack.empty()) {
            const Index triangle = stack.back();
            stack.pop_back();
            visit(triangle);
            for (const Index beyond : mesh_.At(triangle).neighbours) {
                if (beyond == kNone || marks[Slot(beyond)] != kNone || !isOfKind(beyond)) continue;
                marks[Slot(beyond)] = mark;
                stack.push_back(beyond);
            }
        }
    }

    void FindParts() {
        partOf_.assign(mesh_.Triangles().size(), kNone);
        for (Index t = 0; Slot(t) < partOf_.size(); ++t) {
            if (!IsMaterial(t) || partOf_[Slot(t)] != kNone) continue;
            const auto part = static_cast<Index>(region_.parts.size());
            double area = 0.0;
            Flood(
                t, partOf_, part, [&](Index other) { return IsMaterial(other); },
                [&](Index triangle) { area += AreaOf(triangle); });
            region_.parts.emplace_back().area = area;
        }
    }

    void TraceRings() {
        const MaterialRings rings(arrangement_);
        region_.partsOf.resize(outlines_.size());
        for (const MaterialRing& ring : rings.Rings()) {
            const std::size_t number = Slot(partOf_[Slot(ring.triangle)]);
            Part& part = region_.parts[number];
            for (const Index outline : ring.edges) region_.partsOf[Slot(outline)].push_back(number);
            // The outline is the ring with the lowest point; slivers have no area to tell by.
            if (part.outline.empty()) {
                part.outline = ring.points;
            } else {
                const bool isLower = IsLower(LowestOf(ring.points), LowestOf(part.outline));
                part.voids.push_back(isLower ? std::exchange(part.outline, ring.points)
                                             : ring.points);
            }
        }
        for (const Index vertex : rings.Pinches()) {
            region_.pinches.push_back(region_.frame.FromFrame(mesh_.PointAt(vertex)));
        }
    }

    // Whether nothing but the two outlines says what is between them, which do not cross: of solids
    // there is a gap, of holes there is material.
    bool IsGap(const OutlineContact& miss) const {
        const auto of = Slot(miss.vertexOf);
        const auto to = Slot(miss.edgeOf);
        for (const OutlineCrossing& crossing : region_.crossings) {
            const bool isOfBoth =
                std::minmax(Slot(crossing.first), Slot(crossing.second)) == std::minmax(of, to);
            if (isOfBoth) return false;
        }
        if ((outlines_[of].weight > 0) != (outlines_[to].weight > 0)) return true;
        // Beside the middle too: a third outline may end there.
        const Point across = miss.foot - miss.place;
        const Point middle = 0.5 * (miss.place + miss.foot);
        bool isMaterial = false;
        for (const double shift : {-1.0, 0.0, 1.0}) {
            isMaterial = isMaterial || SumAt(middle + shift * Point(-across.y, across.x)) >= 1;
        }
        return isMaterial == (outlines_[of].weight < 0);
    }

    int SumAt(const Point& point) const {
        int sum = 0;
        for (const WeightedRing& outline : outlines_) {
            if (WindingNumber(*outline.ring, point) != 0) sum += outline.weight;
        }
        return sum;
    }

    static bool IsOdd(const Face& face) {
        const auto isOdd = [](const auto& winding) { return winding.second != 1; };
        return (face.sum != 0 && face.sum != 1) ||
               std::any_of(face.windings.begin(), face.windings.end(), isOdd);
    }

    // Whether a hole lies in solids that overlap. Solid, hole and solid, each smaller than the one
    // before, are an island.
    bool IsHoleInLap(const Face& face) const {
        if (face.sum != 1 || face.windings.size() < 3) return false;
        std::vector<std::pair<double, int>> weights;  // by area
        for (const auto& [outline, winding] : face.windings) {
            const WeightedRing& ring = outlines_[Slot(outline)];
            weights.emplace_back(-std::fabs(TwiceArea(*ring.ring)), ring.weight);
        }
        std::sort(weights.begin(), weights.end());
        for (std::size_t i = 1; i < weights.size(); ++i) {
            if ((weights[i].second > 0) == (weights[i - 1].second > 0)) return true;
        }
        return false;
    }

    void FindOddPlaces() {
        for (const Face& face : FacesOf(arrangement_)) {
            if (!IsOdd(face) && !IsHoleInLap(face)) continue;
            if (face.area <= kLeastOddArea * region_.size * region_.size) continue;
            OddPlace odd{face.sum,
                         std::ldexp(face.area, 2 * region_.frame.exponent),
                         region_.frame.FromFrame(face.place),
                         {}};
            for (const auto& [outline, winding] : face.windings) {
                odd.windings.emplace_back(Slot(outline), winding);
            }
            region_.oddPlaces.push_back(std::move(odd));
        }
    }

    std::span<const WeightedRing> outlines_;
    Arrangement arrangement_;
    const Triangulation& mesh_;
    Region region_;
    std::vector<Index> partOf_;  // of each triangle
};

// Whether a segment between two vertices meets an edge of a ring other than at their ends.
bool Meets(const Point& from, const Point& to, const Points& ring) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Point& a = ring[i];
        const Point& b = ring[i + 1 == ring.size() ? 0 : i + 1];
        if (a == from || a == to || b == from || b == to) continue;
        const int first = Orientation(from, to, a) * Orientation(from, to, b);
        const int second = Orientation(a, b, from) * Orientation(a, b, to);
        if (first <= 0 && second <= 0) return true;
    }
    return false;
}

// The rings of a part with one void, joined by the cheapest bridge between their vertices; nothing
// when that is no bridge or costs too much to find.
std::optional<Points> JoinedToOneVoid(const Part& part) {
    constexpr std::size_t kMostPairs = 1000000;
    if (part.voids.size() != 1) return std::nullopt;
    const Points& outline = part.outline;
    const Points& hole = part.voids[0];
    if (outline.size() * hole.size() > kMostPairs) return std::nullopt;
    double least = std::numeric_limits<double>::infinity();
    std::size_t from = 0;
    std::size_t to = 0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        for (std::size_t k = 0; k < hole.size(); ++k) {
            const double cost = BridgeCost(outline[i], hole[k]);
            if (cost >= least) continue;
            least = cost;
            from = i;
            to = k;
        }
    }
    // Rings that touch have no bridge between different points.
    if (!(least > 0.0) || Meets(outline[from], hole[to], outline) ||
        Meets(outline[from], hole[to], hole)) {
        return std::nullopt;
    }
    Points joined;
    joined.reserve(outline.size() + hole.size() + 2);
    for (std::size_t i = 0; i <= outline.size(); ++i) {
        joined.push_back(outline[(from + i) % outline.size()]);
    }
    for (std::size_t k = 0; k <= hole.size(); ++k) joined.push_back(hole[(to + k) % hole.size()]);
    return joined;
}

}  // namespace

Region RegionOf(std::span<const WeightedRing> outlines) {
    std::optional<Region> region = RegionOfNestedRings(outlines, FrameOutlines(outlines));
    if (!region) return RegionOfArrangement(outlines);
    SortParts(*region);
    return std::move(*region);
}

Region RegionOfArrangement(std::span<const WeightedRing> outlines) {
    Region region = RegionBuilder(outlines).Take();
    SortParts(region);
    return region;
}

Points JoinedRing(const Part& part) {
    if (part.voids.empty()) return part.outline;
    if (std::optional<Points> joined = JoinedToOneVoid(part)) return std::move(*joined);
    std::vector<const Points*> rings = {&part.outline};
    for (const Points& ring : part.voids) rings.push_back(&ring);
    const Arrangement arrangement = Arrangement::OfTouchingRings(rings);
    std::vector<MaterialRing> joined = MaterialRings(arrangement).Joined();
    if (joined.empty()) return part.outline;
    return std::move(joined.front().points);
}

}  // namespace halvorn::engine
