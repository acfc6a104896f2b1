/// @file left_out_circles.h
/// Circles about the sharp corners of a part, which the largest stress leaves out.
#ifndef HALVORN_ENGINE_WARPING_LEFT_OUT_CIRCLES_H
#define HALVORN_ENGINE_WARPING_LEFT_OUT_CIRCLES_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <utility>

#include "geometry/point.h"

namespace halvorn::engine {

/// Circles of one radius, found by their places.
class LeftOutCircles {
public:
    LeftOutCircles(Points centres, double radius) : centres_(std::move(centres)), radius_(radius) {
        std::sort(centres_.begin(), centres_.end());
    }

    double Radius() const { return radius_; }
    const Points& Centres() const { return centres_; }

    /// Returns whether a point lies within a circle, by more than rounding.
    bool Contain(const Point& p) const {
        constexpr double kRounding = 1e-9;  // of the radius
        const auto near = Between(p.x, p.x);
        return std::any_of(near.begin(), near.end(), [&](const Point& centre) {
            return std::hypot(p.x - centre.x, p.y - centre.y) < radius_ * (1.0 - kRounding);
        });
    }

    /// Returns the centres of the circles that reach into a strip, and maybe more.
    /// @param left, right  x of its sides, left <= right
    std::span<const Point> Between(double left, double right) const {
        const auto isLeft = [](const Point& p, double x) { return p.x < x; };
        const auto isRight = [](double x, const Point& p) { return x < p.x; };
        const auto first =
            std::lower_bound(centres_.begin(), centres_.end(), left - radius_, isLeft);
        const auto last = std::upper_bound(first, centres_.end(), right + radius_, isRight);
        const auto index = [&](auto place) {
            return static_cast<std::size_t>(place - centres_.begin());
        };
        return std::span(centres_).subspan(index(first), index(last) - index(first));
    }

private:
    Points centres_;  // by x
    double radius_;
};

}  // namespace halvorn::engine

#endif
