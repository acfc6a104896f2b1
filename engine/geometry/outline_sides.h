/// @file outline_sides.h
/// How outlines lie to each other: within, around, apart, across, or one on another.
#ifndef HALVORN_ENGINE_GEOMETRY_OUTLINE_SIDES_H
#define HALVORN_ENGINE_GEOMETRY_OUTLINE_SIDES_H

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "geometry/box.h"
#include "geometry/point.h"

namespace halvorn::engine {

/// On which sides of a ring an outline runs; on neither where it lies on it.
struct Sides {
    bool inside = false;
    bool outside = false;

    bool Cross() const { return inside && outside; }
    bool LieOn() const { return !inside && !outside; }
};

/// Rings in one plane, asked for the sides of each other on which they run. Inside is where a ring
/// winds an odd number of times, so that bridges of keyhole rings do not count and loops of rings
/// that cross themselves count as an even-odd filling shows them.
///
/// Up to 1e-4 of the diagonal of the smaller ring's box, one lies on the other: two outlines that
/// share an edge in a drawing of three or four decimals are no farther apart than that.
class OutlineSides {
public:
    /// Rings whose boxes lie apart in x or in y are arranged apart, and small ones within large
    /// ones once more among themselves: neither one far away nor a frame around all takes digits
    /// from the others. Cost: n log n for rings with few crossings.
    /// @param rings  of finite points; they must outlive this
    /// @throws ArrangementError, whose outlines are those of `rings`
    explicit OutlineSides(std::vector<const Points*> rings);
    ~OutlineSides();
    OutlineSides(const OutlineSides&) = delete;
    OutlineSides& operator=(const OutlineSides&) = delete;

    /// Returns the rings within which some of an outline runs or may run, in order.
    std::vector<std::size_t> Around(std::size_t outline) const;

    /// Returns the sides of `ring` on which `outline` runs.
    Sides Of(std::size_t outline, std::size_t ring) const;

private:
    class Group;
    struct Shape {
        Box box;
        double area;       // of the ring [L^2]
        double perimeter;  // [L]
        // The groups in which it is arranged, each part of the one before, and its place in them.
        std::vector<std::pair<const Group*, std::size_t>> places;
    };

    void Arrange(const std::vector<std::size_t>& members);
    std::vector<std::vector<std::size_t>> SplitAtGaps(std::vector<std::size_t> members,
                                                      double Box::*low, double Box::*high) const;
    void ArrangeTogether(const std::vector<std::size_t>& members);

    std::vector<const Points*> rings_;
    std::vector<Shape> shapes_;
    std::vector<std::unique_ptr<Group>> groups_;
};

}  // namespace halvorn::engine

#endif
