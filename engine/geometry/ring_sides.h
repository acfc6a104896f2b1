/// @file ring_sides.h
/// How two rings lie to each other.
#ifndef HALVORN_ENGINE_GEOMETRY_RING_SIDES_H
#define HALVORN_ENGINE_GEOMETRY_RING_SIDES_H

#include <cstddef>
#include <utility>
#include <vector>

#include "geometry/box.h"
#include "geometry/point.h"

namespace halvorn::engine {

/// A ring whose edges are sorted into horizontal strips, so that few of them are looked at to
/// locate a point. Edge i runs from point i to the next. It refers to the points and does not own
/// them.
class StripedRing {
public:
    enum class Location { Inside, Outside, On };

    explicit StripedRing(const Points& ring);

    const Points& Ring() const { return ring_; }
    const Box& Bounds() const { return box_; }
    const Point& From(std::size_t edge) const { return ring_[edge]; }
    const Point& To(std::size_t edge) const { return ring_[(edge + 1) % ring_.size()]; }

    /// Calls back with every edge that reaches between two heights, and perhaps with others or
    /// twice.
    template <typename Visit>
    void VisitEdges(double low, double high, const Visit& visit) const {
        const std::size_t last = StripAt(high);
        for (std::size_t k = StripAt(low); k <= last; ++k) {
            for (const std::size_t edge : strips_[k]) visit(edge);
        }
    }

    /// Inside and outside by the even-odd rule, on the ring within a distance of it.
    Location Locate(const Point& point, double touching) const;

private:
    std::size_t StripAt(double y) const;

    const Points& ring_;
    Box box_;
    std::vector<std::vector<std::size_t>> strips_;
};

/// On which sides of a ring the outline of another one runs; on neither where it lies on it.
struct Sides {
    bool inside = false;
    bool outside = false;
    bool touches = false;  ///< a point of the ring lies on the outline, or the two cross

    bool Cross() const { return inside && outside; }
    bool LieOn() const { return !inside && !outside; }
};

/// Returns the sides of `ring` on which `outline` runs. Nearer than `touching`, one lies on the
/// other. The search ends at the first edge that makes them cross.
Sides SidesOf(const StripedRing& outline, const StripedRing& ring, double touching);

}  // namespace halvorn::engine

#endif
