#include "input/nesting.h"

#include <algorithm>
#include <cmath>

#include "input/input_error.h"

namespace halvorn::host {

namespace {

using Point = std::pair<double, double>;

// Of the diagonal of the smaller ring's box [-]. Nearer than this, rings touch: two outlines that
// share an edge in a drawing of three or four decimals are no farther apart than that.
constexpr double kTouching = 1e-4;

struct Box {
    double left, bottom, right, top;

    explicit Box(const Points& ring)
        : left(ring[0].first), bottom(ring[0].second), right(left), top(bottom) {
        for (const auto& [x, y] : ring) {
            left = std::min(left, x);
            right = std::max(right, x);
            bottom = std::min(bottom, y);
            top = std::max(top, y);
        }
    }
    double Diagonal() const { return std::hypot(right - left, top - bottom); }
    bool IsApartFrom(const Box& other, double distance) const {
        return left > other.right + distance || other.left > right + distance ||
               bottom > other.top + distance || other.bottom > top + distance;
    }
};

double DistanceToEdge(const Point& point, const Point& from, const Point& to) {
    const double dx = to.first - from.first, dy = to.second - from.second;
    const double ex = point.first - from.first, ey = point.second - from.second;
    const double square = dx * dx + dy * dy;
    const double t = square > 0.0 ? std::clamp((ex * dx + ey * dy) / square, 0.0, 1.0) : 0.0;
    return std::hypot(ex - t * dx, ey - t * dy);
}

enum class Location { Inside, Outside, On };

// A ring whose edges are sorted into horizontal strips, so that few of them are looked at to locate
// a point. Edge i runs from point i to the next.
class StripedRing {
public:
    explicit StripedRing(const Points& ring)
        : ring_(ring), box_(ring), strips_(StripCount(ring, box_)) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const auto [low, high] = std::minmax(From(i).second, To(i).second);
            for (std::size_t k = StripAt(low); k <= StripAt(high); ++k) strips_[k].push_back(i);
        }
    }

    const Points& Ring() const { return ring_; }
    const Box& Bounds() const { return box_; }
    const Point& From(std::size_t edge) const { return ring_[edge]; }
    const Point& To(std::size_t edge) const { return ring_[(edge + 1) % ring_.size()]; }

    // Calls back with every edge that reaches between two heights, and perhaps with others or
    // twice.
    template <typename Visit>
    void VisitEdges(double low, double high, const Visit& visit) const {
        const std::size_t last = StripAt(high);
        for (std::size_t k = StripAt(low); k <= last; ++k) {
            for (const std::size_t edge : strips_[k]) visit(edge);
        }
    }

    // Inside and outside by the even-odd rule, on the ring within a distance of it.
    Location Locate(const Point& point, double touching) const {
        const auto [x, y] = point;
        bool isOn = false;
        VisitEdges(y - touching, y + touching, [&](std::size_t edge) {
            isOn = isOn || DistanceToEdge(point, From(edge), To(edge)) <= touching;
        });
        if (isOn) return Location::On;
        bool isInside = false;
        for (const std::size_t edge : strips_[StripAt(y)]) {
            const auto& [x1, y1] = From(edge);
            const auto& [x2, y2] = To(edge);
            if ((y1 > y) == (y2 > y)) continue;
            if (x < x1 + (y - y1) / (y2 - y1) * (x2 - x1)) isInside = !isInside;
        }
        return isInside ? Location::Inside : Location::Outside;
    }

private:
    // As many strips as keep the edges in all of them to a few times those of the ring, however
    // often it runs up and down.
    static std::size_t StripCount(const Points& ring, const Box& box) {
        double travel = 0.0;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            travel += std::fabs(ring[(i + 1) % ring.size()].second - ring[i].second);
        }
        const auto points = static_cast<double>(ring.size());
        const double runs = travel / (box.top - box.bottom);
        return runs > 0.0 ? 1 + static_cast<std::size_t>(2.0 * points / std::max(runs, 1.0)) : 1;
    }

    std::size_t StripAt(double y) const {
        const double height = box_.top - box_.bottom;
        if (!(height > 0.0) || y <= box_.bottom) return 0;
        const auto count = static_cast<double>(strips_.size());
        return static_cast<std::size_t>(std::min((y - box_.bottom) / height * count, count - 1.0));
    }

    const Points& ring_;
    Box box_;
    std::vector<std::vector<std::size_t>> strips_;
};

// Parameters in (0, 1), in order and with both ends, at which an edge meets a ring. More than
// needed do no harm.
std::vector<double> Meetings(const Point& from, const Point& to, const StripedRing& ring,
                             double touching) {
    std::vector<double> meetings = {0.0, 1.0};
    const double dx = to.first - from.first, dy = to.second - from.second;
    const double square = dx * dx + dy * dy;
    if (!(square > 0.0)) return meetings;
    const auto add = [&](double t) {
        if (t > 0.0 && t < 1.0) meetings.push_back(t);
    };
    const double left = std::min(from.first, to.first), right = std::max(from.first, to.first);
    const double low = std::min(from.second, to.second), high = std::max(from.second, to.second);
    ring.VisitEdges(low - touching, high + touching, [&](std::size_t edge) {
        const Point &start = ring.From(edge), &end = ring.To(edge);
        if (std::max(start.first, end.first) < left - touching ||
            std::min(start.first, end.first) > right + touching) {
            return;
        }
        const double ex = start.first - from.first, ey = start.second - from.second;
        const double fx = end.first - start.first, fy = end.second - start.second;
        if (DistanceToEdge(start, from, to) <= touching) add((ex * dx + ey * dy) / square);
        const double cross = dx * fy - dy * fx;
        const double alongEdge = (ex * dy - ey * dx) / cross;
        if (cross != 0.0 && alongEdge >= 0.0 && alongEdge <= 1.0) add((ex * fy - ey * fx) / cross);
    });
    std::sort(meetings.begin(), meetings.end());
    return meetings;
}

// On which sides of a ring the outline of another one runs; on neither where it lies on it.
struct Sides {
    bool inside = false;
    bool outside = false;

    bool Cross() const { return inside && outside; }
    bool LieOn() const { return !inside && !outside; }
};

Sides SidesOf(const StripedRing& outline, const StripedRing& ring, double touching) {
    Sides sides;
    for (std::size_t i = 0; i < outline.Ring().size() && !sides.Cross(); ++i) {
        const Point &from = outline.From(i), &to = outline.To(i);
        const std::vector<double> meetings = Meetings(from, to, ring, touching);
        for (std::size_t k = 0; k + 1 < meetings.size(); ++k) {
            const double t = 0.5 * (meetings[k] + meetings[k + 1]);
            const Point middle = {from.first + t * (to.first - from.first),
                                  from.second + t * (to.second - from.second)};
            const Location location = ring.Locate(middle, touching);
            sides.inside = sides.inside || location == Location::Inside;
            sides.outside = sides.outside || location == Location::Outside;
        }
    }
    return sides;
}

}  // namespace

void ClassifyByNesting(std::vector<Element>* elements, const std::string& source) {
    const std::size_t count = elements->size();
    std::vector<StripedRing> rings;
    rings.reserve(count);
    for (const Element& element : *elements) rings.emplace_back(element.ring);
    std::vector<std::size_t> depths(count, 0);
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t k = i + 1; k < count; ++k) {
            const Box &first = rings[i].Bounds(), &second = rings[k].Bounds();
            const double touching = kTouching * std::min(first.Diagonal(), second.Diagonal());
            if (first.IsApartFrom(second, touching)) continue;
            const Sides ofFirst = SidesOf(rings[i], rings[k], touching);
            const Sides ofSecond = SidesOf(rings[k], rings[i], touching);
            const bool lieOn = ofFirst.LieOn() || ofSecond.LieOn();
            if (lieOn || ofFirst.Cross() || ofSecond.Cross()) {
                throw InputError((source.empty() ? "" : source + ": ") + (*elements)[k].label,
                                 std::string(lieOn ? "lies on" : "crosses") + " the outline of " +
                                     (*elements)[i].label + ", so nothing tells solid from hole",
                                 "draw outlines apart or one within the other");
            }
            if (ofFirst.inside) ++depths[i];
            if (ofSecond.inside) ++depths[k];
        }
    }
    for (std::size_t i = 0; i < count; ++i) (*elements)[i].isSolid = depths[i] % 2 == 0;
}

}  // namespace halvorn::host
