/// @file box.h
/// Boxes along the axes.
#ifndef HALVORN_ENGINE_GEOMETRY_BOX_H
#define HALVORN_ENGINE_GEOMETRY_BOX_H

#include <algorithm>
#include <cmath>

#include "geometry/point.h"

namespace halvorn::engine {

/// The box around points [L]; y runs upwards.
struct Box {
    double left, bottom, right, top;

    /// Around two opposite corners.
    Box(const Point& a, const Point& b)
        : left(std::min(a.x, b.x)),
          bottom(std::min(a.y, b.y)),
          right(std::max(a.x, b.x)),
          top(std::max(a.y, b.y)) {}
    /// @pre there is a point
    explicit Box(const Points& points) : Box(points[0], points[0]) {
        for (const Point& point : points) Add(Box(point, point));
    }

    double Width() const { return right - left; }
    double Height() const { return top - bottom; }
    double Diagonal() const { return std::hypot(Width(), Height()); }
    Point Middle() const { return {0.5 * (left + right), 0.5 * (bottom + top)}; }
    bool Holds(const Box& other) const {
        return other.left >= left && other.right <= right && other.bottom >= bottom &&
               other.top <= top;
    }
    bool IsApartFrom(const Box& other, double distance) const {
        return left > other.right + distance || other.left > right + distance ||
               bottom > other.top + distance || other.bottom > top + distance;
    }

    /// Returns what two boxes have in common, or what is between them where they are apart.
    Box Common(const Box& other) const {
        return {{std::max(left, other.left), std::max(bottom, other.bottom)},
                {std::min(right, other.right), std::min(top, other.top)}};
    }

    /// Grows until it holds another box, too.
    void Add(const Box& other) {
        left = std::min(left, other.left);
        bottom = std::min(bottom, other.bottom);
        right = std::max(right, other.right);
        top = std::max(top, other.top);
    }
};

}  // namespace halvorn::engine

#endif
