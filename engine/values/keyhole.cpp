#include "values/keyhole.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "geometry/crossings.h"
#include "geometry/ring_sides.h"

namespace halvorn::engine {

namespace {

// Twice the area of a triangle, positive when it runs counter-clockwise.
double Turn(const Point& a, const Point& b, const Point& c) {
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
}

Points Oriented(const Points& ring, bool isCounterClockwise) {
    const bool keeps = (TwiceArea(ring) > 0.0) == isCounterClockwise;
    return keeps ? ring : Points(ring.rbegin(), ring.rend());
}

// Whether the way from vertex i to a point begins inside a counter-clockwise ring.
bool IsInCone(const Points& ring, std::size_t i, const Point& point) {
    const Point& previous = ring[(i + ring.size() - 1) % ring.size()];
    const Point& vertex = ring[i];
    const Point& next = ring[(i + 1) % ring.size()];
    if (Turn(previous, vertex, next) >= 0.0) {
        return Turn(vertex, point, previous) > 0.0 && Turn(point, vertex, next) > 0.0;
    }
    return Turn(vertex, point, next) < 0.0 || Turn(point, vertex, previous) < 0.0;
}

// The edge of a counter-clockwise ring that a ray to the right from a point inside meets first: it
// runs upwards. The number of the edge and the abscissa.
std::optional<std::pair<std::size_t, double>> EdgeToTheRight(const Points& ring,
                                                             const Point& from) {
    std::optional<std::pair<std::size_t, double>> nearest;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Point &a = ring[i], &b = ring[(i + 1) % ring.size()];
        if (a.y > from.y || from.y >= b.y) continue;
        const double x = a.x + (from.y - a.y) / (b.y - a.y) * (b.x - a.x);
        if (x >= from.x && (!nearest || x < nearest->second)) nearest = {i, x};
    }
    return nearest;
}

// The vertex that sees a point inside the ring across the triangle between the point, the edge to
// its right and the end of that edge which lies farther right.
std::optional<Point> VisibleVertex(const Points& ring, const Point& from) {
    const auto hit = EdgeToTheRight(ring, from);
    if (!hit) return std::nullopt;
    const Point &low = ring[hit->first], &high = ring[(hit->first + 1) % ring.size()];
    const Point corner = high.x > low.x ? high : low;
    const double side = corner.y > from.y ? 1.0 : -1.0;
    Point best = corner;
    for (const Point& vertex : ring) {
        const double dx = vertex.x - from.x, dy = side * (vertex.y - from.y);
        const bool isInTriangle = dx > 0.0 && dy >= 0.0 &&
                                  side * Turn(from, corner, vertex) <= 0.0 &&
                                  Turn(low, high, vertex) >= 0.0;
        if (!isInTriangle) continue;
        const double bestX = best.x - from.x, bestY = side * (best.y - from.y);
        const double steeper = dy * bestX - bestY * dx;
        if (steeper < 0.0 || (steeper == 0.0 && dx < bestX)) best = vertex;
    }
    return best;
}

// Bridges a clockwise hole into a counter-clockwise ring that has all holes farther to the right.
bool JoinHole(const Points& hole, Points* ring) {
    const auto start = std::max_element(hole.begin(), hole.end());
    const std::optional<Point> end = VisibleVertex(*ring, *start);
    if (!end) return false;
    // The ring passes a vertex with bridges several times; the hole lies beside one of them.
    std::size_t at = ring->size();
    for (std::size_t i = 0; i < ring->size(); ++i) {
        if ((*ring)[i] != *end) continue;
        const bool isBeside = IsInCone(*ring, i, *start);
        if (at == ring->size() || isBeside) at = i;
        if (isBeside) break;
    }
    Points detour(start, hole.end());
    detour.insert(detour.end(), hole.begin(), start);
    detour.push_back(*start);
    detour.push_back(*end);
    ring->insert(ring->begin() + static_cast<std::ptrdiff_t>(at) + 1, detour.begin(), detour.end());
    return true;
}

// What lies in what.
struct Nesting {
    std::vector<std::vector<std::size_t>> around;  // of each element: the elements it lies in
    std::string fault;
};

std::string PairFault(const Element& a, const Element& b, const Sides& ofA, const Sides& ofB) {
    const std::string names = a.label + " and " + b.label;
    const bool meet = ofA.touches || ofB.touches;
    const bool coincide = ofA.LieOn() && ofB.LieOn();
    // A solid may fill a hole.
    if (coincide && a.isSolid != b.isSolid) return "";
    const bool overlap = ofA.Cross() || ofB.Cross() || ofA.LieOn() || ofB.LieOn();
    if (a.isSolid && b.isSolid) return overlap ? "the solids " + names + " overlap" : "";
    if (!a.isSolid && !b.isSolid) {
        return overlap || meet ? "the holes " + names + " touch or overlap: draw them as one" : "";
    }
    const Element &hole = a.isSolid ? b : a, &solid = a.isSolid ? a : b;
    const bool isWithin = a.isSolid ? ofB.inside : ofA.inside;
    if (!overlap && !(meet && isWithin)) return "";
    return "the hole " + hole.label + " reaches the outline of " + solid.label +
           ": draw the outline without it";
}

Nesting NestingOf(const std::vector<Element>& elements) {
    constexpr double kTouching = 1e-6;  // of the diagonal of the smaller ring's box [-]
    constexpr std::size_t kMostTouches = 64;
    Nesting nesting{std::vector<std::vector<std::size_t>>(elements.size()), ""};
    std::vector<StripedRing> rings;
    rings.reserve(elements.size());
    for (const Element& element : elements) {
        rings.emplace_back(element.ring);
        for (const Crossing& crossing : FindCrossings(element.ring, false, kMostTouches)) {
            if (!crossing.isProper) continue;
            nesting.fault = "the outline of " + element.label + " crosses itself";
            return nesting;
        }
    }
    for (std::size_t i = 0; i < rings.size(); ++i) {
        for (std::size_t k = i + 1; k < rings.size(); ++k) {
            const Box &first = rings[i].Bounds(), &second = rings[k].Bounds();
            const double touching = kTouching * std::min(first.Diagonal(), second.Diagonal());
            if (first.IsApartFrom(second, touching)) continue;
            const Sides ofFirst = SidesOf(rings[i], rings[k], touching);
            const Sides ofSecond = SidesOf(rings[k], rings[i], touching);
            nesting.fault = PairFault(elements[i], elements[k], ofFirst, ofSecond);
            if (!nesting.fault.empty()) return nesting;
            // Coinciding, a hole counts as around the solid that fills it.
            const bool coincide = ofFirst.LieOn() && ofSecond.LieOn();
            if (ofFirst.inside || (coincide && elements[i].isSolid)) nesting.around[i].push_back(k);
            if (ofSecond.inside || (coincide && elements[k].isSolid)) {
                nesting.around[k].push_back(i);
            }
        }
    }
    return nesting;
}

// Solids and holes must alternate from the outside inwards.
std::string DepthFault(const std::vector<Element>& elements, const Nesting& nesting) {
    for (const bool ofSolids : {false, true}) {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            if (elements[i].isSolid != ofSolids) continue;
            int depth = ofSolids ? 1 : 0;
            for (const std::size_t k : nesting.around[i]) depth += elements[k].isSolid ? 1 : -1;
            if (depth == 1) continue;
            return ofSolids ? "the solid " + elements[i].label + " overlaps another one"
                            : "the hole " + elements[i].label + " does not lie in one solid";
        }
    }
    return "";
}

}  // namespace

NetRings JoinHoles(const std::vector<Element>& elements) {
    const Nesting nesting = NestingOf(elements);
    NetRings net;
    net.whyMissing = nesting.fault.empty() ? DepthFault(elements, nesting) : nesting.fault;
    if (!net.whyMissing.empty()) return net;
    std::vector<std::vector<Points>> holes(elements.size());  // of each solid
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (elements[i].isSolid) continue;
        // The innermost of the solids around lies in the most of the others.
        std::size_t parent = elements.size();
        for (const std::size_t k : nesting.around[i]) {
            if (!elements[k].isSolid) continue;
            if (parent == elements.size() ||
                nesting.around[k].size() > nesting.around[parent].size()) {
                parent = k;
            }
        }
        holes[parent].push_back(Oriented(elements[i].ring, false));
    }
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (!elements[i].isSolid) continue;
        Points ring = Oriented(elements[i].ring, true);
        // From right to left, so that no bridge meets a hole that is still to be joined.
        const auto right = [](const Points& hole) {
            return std::max_element(hole.begin(), hole.end())->x;
        };
        std::sort(holes[i].begin(), holes[i].end(),
                  [&](const Points& a, const Points& b) { return right(a) > right(b); });
        for (const Points& hole : holes[i]) {
            if (JoinHole(hole, &ring)) continue;
            return {{}, "a hole of " + elements[i].label + " cannot be joined to its outline"};
        }
        net.rings.push_back(std::move(ring));
    }
    return net;
}

}  // namespace halvorn::engine
