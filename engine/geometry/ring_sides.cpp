#include "geometry/ring_sides.h"

#include <algorithm>
#include <cmath>

namespace halvorn::engine {

namespace {

double DistanceToEdge(const Point& point, const Point& from, const Point& to) {
    const double dx = to.x - from.x, dy = to.y - from.y;
    const double ex = point.x - from.x, ey = point.y - from.y;
    const double square = dx * dx + dy * dy;
    const double t = square > 0.0 ? std::clamp((ex * dx + ey * dy) / square, 0.0, 1.0) : 0.0;
    return std::hypot(ex - t * dx, ey - t * dy);
}

// As many strips as keep the edges in all of them to a few times those of the ring, however
// often it runs up and down.
std::size_t StripCount(const Points& ring, const Box& box) {
    double travel = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        travel += std::fabs(ring[(i + 1) % ring.size()].y - ring[i].y);
    }
    const auto points = static_cast<double>(ring.size());
    const double runs = travel / (box.top - box.bottom);
    return runs > 0.0 ? 1 + static_cast<std::size_t>(2.0 * points / std::max(runs, 1.0)) : 1;
}

// Parameters in (0, 1), in order and with both ends, at which an edge meets a ring. More than
// needed do no harm. Sets `touches` when the edge crosses one of the ring or has a point of it.
std::vector<double> Meetings(const Point& from, const Point& to, const StripedRing& ring,
                             double touching, bool* touches) {
    std::vector<double> meetings = {0.0, 1.0};
    const double dx = to.x - from.x, dy = to.y - from.y;
    const double square = dx * dx + dy * dy;
    if (!(square > 0.0)) return meetings;
    const auto add = [&](double t) {
        *touches = *touches || (t >= 0.0 && t <= 1.0);
        if (t > 0.0 && t < 1.0) meetings.push_back(t);
    };
    const double left = std::min(from.x, to.x), right = std::max(from.x, to.x);
    const double low = std::min(from.y, to.y), high = std::max(from.y, to.y);
    ring.VisitEdges(low - touching, high + touching, [&](std::size_t edge) {
        const Point &start = ring.From(edge), &end = ring.To(edge);
        if (std::max(start.x, end.x) < left - touching ||
            std::min(start.x, end.x) > right + touching) {
            return;
        }
        const double ex = start.x - from.x, ey = start.y - from.y;
        const double fx = end.x - start.x, fy = end.y - start.y;
        if (DistanceToEdge(start, from, to) <= touching) {
            add(std::clamp((ex * dx + ey * dy) / square, 0.0, 1.0));
        }
        const double cross = dx * fy - dy * fx;
        const double alongEdge = (ex * dy - ey * dx) / cross;
        if (cross != 0.0 && alongEdge >= 0.0 && alongEdge <= 1.0) add((ex * fy - ey * fx) / cross);
    });
    std::sort(meetings.begin(), meetings.end());
    return meetings;
}

}  // namespace

StripedRing::StripedRing(const Points& ring)
    : ring_(ring), box_(ring), strips_(StripCount(ring, box_)) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const auto [low, high] = std::minmax(From(i).y, To(i).y);
        for (std::size_t k = StripAt(low); k <= StripAt(high); ++k) strips_[k].push_back(i);
    }
}

StripedRing::Location StripedRing::Locate(const Point& point, double touching) const {
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

std::size_t StripedRing::StripAt(double y) const {
    const double height = box_.top - box_.bottom;
    if (!(height > 0.0) || y <= box_.bottom) return 0;
    const auto count = static_cast<double>(strips_.size());
    return static_cast<std::size_t>(std::min((y - box_.bottom) / height * count, count - 1.0));
}

Sides SidesOf(const StripedRing& outline, const StripedRing& ring, double touching) {
    using Location = StripedRing::Location;
    Sides sides;
    for (std::size_t i = 0; i < outline.Ring().size() && !sides.Cross(); ++i) {
        const Point &from = outline.From(i), &to = outline.To(i);
        if (Box(from, to).IsApartFrom(ring.Bounds(), touching)) {
            sides.outside = true;
            continue;
        }
        const std::vector<double> meetings = Meetings(from, to, ring, touching, &sides.touches);
        for (std::size_t k = 0; k + 1 < meetings.size(); ++k) {
            const double t = 0.5 * (meetings[k] + meetings[k + 1]);
            const Point middle = {from.x + t * (to.x - from.x), from.y + t * (to.y - from.y)};
            const Location location = ring.Locate(middle, touching);
            sides.inside = sides.inside || location == Location::Inside;
            sides.outside = sides.outside || location == Location::Outside;
        }
    }
    return sides;
}

}  // namespace halvorn::engine
