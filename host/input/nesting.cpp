#include "input/nesting.h"

#include <algorithm>
#include <cmath>

namespace halvorn::host {

namespace {

using Point = Points::value_type;

enum class Side { Inside, Outside, On };

// Where a ring lies, for a first look at a pair.
struct Extent {
    double left, right, bottom, top;
    double area;
    double onLine;  // a point this near to an edge counts as lying on it [L]
};

double CrossProduct(const Point& origin, const Point& p, const Point& q) {
    return (p.first - origin.first) * (q.second - origin.second) -
           (q.first - origin.first) * (p.second - origin.second);
}

Extent ExtentOf(const Points& ring) {
    // Touching drawn with coordinates of nine digits or more.
    constexpr double touching = 1e-9;
    Extent extent{ring[0].first, ring[0].first, ring[0].second, ring[0].second, 0.0, 0.0};
    double doubleArea = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        extent.left = std::min(extent.left, ring[i].first);
        extent.right = std::max(extent.right, ring[i].first);
        extent.bottom = std::min(extent.bottom, ring[i].second);
        extent.top = std::max(extent.top, ring[i].second);
        if (i > 0) doubleArea += CrossProduct(ring[0], ring[i - 1], ring[i]);
    }
    extent.area = 0.5 * std::abs(doubleArea);
    extent.onLine = touching * std::max(extent.right - extent.left, extent.top - extent.bottom);
    return extent;
}

bool IsOnEdge(const Point& p, const Point& from, const Point& to, double onLine) {
    const double x = to.first - from.first, y = to.second - from.second;
    const double length2 = x * x + y * y;
    if (length2 == 0.0) return std::hypot(p.first - from.first, p.second - from.second) <= onLine;
    const double at =
        std::clamp(((p.first - from.first) * x + (p.second - from.second) * y) / length2, 0.0, 1.0);
    return std::hypot(p.first - from.first - at * x, p.second - from.second - at * y) <= onLine;
}

// Counts the edges that a ray to the right crosses; half-open in y, so a vertex on it counts once.
Side SideOf(const Point& p, const Points& ring, double onLine) {
    bool isInside = false;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Point &from = ring[i], &to = ring[(i + 1) % ring.size()];
        if (IsOnEdge(p, from, to, onLine)) return Side::On;
        const bool rises = from.second <= p.second && to.second > p.second;
        const bool falls = to.second <= p.second && from.second > p.second;
        const double turn = CrossProduct(from, to, p);
        if ((rises && turn > 0.0) || (falls && turn < 0.0)) isInside = !isInside;
    }
    return isInside ? Side::Inside : Side::Outside;
}

bool IsAround(const Points& outer, const Extent& outerExtent, const Points& inner,
              const Extent& innerExtent) {
    const double margin = outerExtent.onLine;
    if (!(outerExtent.area > innerExtent.area) || innerExtent.left < outerExtent.left - margin ||
        innerExtent.right > outerExtent.right + margin ||
        innerExtent.bottom < outerExtent.bottom - margin ||
        innerExtent.top > outerExtent.top + margin) {
        return false;
    }
    for (std::size_t i = 0; i < inner.size(); ++i) {
        const Point &p = inner[i], &q = inner[(i + 1) % inner.size()];
        const Point middle{0.5 * (p.first + q.first), 0.5 * (p.second + q.second)};
        for (const Point& point : {p, middle}) {
            const Side side = SideOf(point, outer, margin);
            if (side != Side::On) return side == Side::Inside;
        }
    }
    return false;
}

}  // namespace

void ClassifyByNesting(std::vector<Element>* elements) {
    std::vector<Extent> extents;
    extents.reserve(elements->size());
    for (const Element& element : *elements) extents.push_back(ExtentOf(element.ring));
    for (std::size_t i = 0; i < elements->size(); ++i) {
        bool isSolid = true;
        for (std::size_t j = 0; j < elements->size(); ++j) {
            if (j != i &&
                IsAround((*elements)[j].ring, extents[j], (*elements)[i].ring, extents[i])) {
                isSolid = !isSolid;
            }
        }
        (*elements)[i].isSolid = isSolid;
    }
}

}  // namespace halvorn::host
