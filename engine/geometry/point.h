/// @file point.h
/// What is computed with points.
#ifndef HALVORN_ENGINE_GEOMETRY_POINT_H
#define HALVORN_ENGINE_GEOMETRY_POINT_H

#include <cmath>

#include "HalvornEngine.h"

namespace halvorn::engine {

inline bool operator==(const Point& a, const Point& b) {
    return a.x == b.x && a.y == b.y;
}

/// The order is that of x, then of y.
inline bool operator<(const Point& a, const Point& b) {
    return a.x < b.x || (a.x == b.x && a.y < b.y);
}

inline Point operator+(const Point& a, const Point& b) {
    return {a.x + b.x, a.y + b.y};
}

inline Point operator-(const Point& a, const Point& b) {
    return {a.x - b.x, a.y - b.y};
}

inline Point operator*(double factor, const Point& p) {
    return {factor * p.x, factor * p.y};
}

/// Returns the z component of a x b: positive when b lies counter-clockwise of a [L^2].
inline double Cross(const Point& a, const Point& b) {
    return a.x * b.y - a.y * b.x;
}

/// Returns the scalar product [L^2].
inline double Dot(const Point& a, const Point& b) {
    return a.x * b.x + a.y * b.y;
}

/// Returns the angle from one direction to another, counter-clockwise positive, in (-pi, pi].
inline double TurnBetween(const Point& from, const Point& to) {
    return std::atan2(Cross(from, to), Dot(from, to));
}

}  // namespace halvorn::engine

#endif
