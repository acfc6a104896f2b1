/// @file support.h
/// Rings, their transformations and exact integrals for the tests. Knows nothing of the library.
#ifndef HALVORN_TESTS_UNIT_SUPPORT_H
#define HALVORN_TESTS_UNIT_SUPPORT_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace test_support {

inline constexpr double kPi = 3.141592653589793238;

using Ring = std::vector<std::pair<double, double>>;

inline std::vector<double> Coords(const Ring& ring) {
    std::vector<double> coords;
    for (const auto& [x, y] : ring) coords.insert(coords.end(), {x, y});
    return coords;
}

inline Ring Reversed(Ring ring) {
    std::reverse(ring.begin(), ring.end());
    return ring;
}

inline Ring StartingAt(Ring ring, std::ptrdiff_t first) {
    std::rotate(ring.begin(), ring.begin() + first, ring.end());
    return ring;
}

inline Ring Rectangle(double x0, double y0, double x1, double y1) {
    return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}

/// Area and moments of a region about the origin: integrals of 1, x, y, y^2, x^2 and x y.
struct Moments {
    double area, x, y, yy, xx, xy;
};

/// Moments of a counter-clockwise ring, by triangles to the origin in 113 bits: exact for integer
/// coordinates, for which 24 times each integral is an integer, and rounded once at the end.
inline Moments ExactMoments(const Ring& ring) {
#if LDBL_MANT_DIG == 113
    using Real = long double;
#else
    __extension__ using Real = __float128;
#endif
    Real a = 0, sx = 0, sy = 0, yy = 0, xx = 0, xy = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Real x0 = ring[i].first, y0 = ring[i].second;
        const Real x1 = ring[(i + 1) % ring.size()].first, y1 = ring[(i + 1) % ring.size()].second;
        const Real cross = x0 * y1 - x1 * y0;
        a += cross;
        sx += cross * (x0 + x1);
        sy += cross * (y0 + y1);
        yy += cross * (y0 * y0 + y0 * y1 + y1 * y1);
        xx += cross * (x0 * x0 + x0 * x1 + x1 * x1);
        xy += cross * (x0 * y1 + 2 * x0 * y0 + 2 * x1 * y1 + x1 * y0);
    }
    const auto over = [](Real sum, int divisor) { return static_cast<double>(sum / divisor); };
    return {over(a, 2), over(sx, 6), over(sy, 6), over(yy, 12), over(xx, 12), over(xy, 24)};
}

/// x' = a x + b y + e, y' = c x + d y + f.
struct Affine {
    const char* name;
    double a, b, c, d, e, f;
    double Scale() const { return std::sqrt(std::abs(a * d - b * c)); }
};

inline Affine Turn(const char* name, double angle) {
    return {name, std::cos(angle), -std::sin(angle), std::sin(angle), std::cos(angle), 0, 0};
}

inline Ring operator*(const Affine& m, Ring ring) {
    for (auto& [x, y] : ring) {
        const double oldX = x;
        x = m.a * oldX + m.b * y + m.e;
        y = m.c * oldX + m.d * y + m.f;
    }
    // Counter-clockwise rings stay so in a mirror.
    return m.a * m.d < m.b * m.c ? Reversed(ring) : ring;
}

/// Similarities every fixture is seen through; the far one is a million times a fixture's size
/// away.
inline const std::vector<Affine>& Placements() {
    static const std::vector<Affine> all = {{"as given", 1, 0, 0, 1, 0, 0},
                                            {"far away", 1, 0, 0, 1, 3.0e7, -5.0e7},
                                            {"quarter turn", 0, -1, 1, 0, -7, 11},
                                            {"mirrored", -1, 0, 0, 1, 5, 0},
                                            {"tripled", 3, 0, 0, 3, 0, 0},
                                            {"a tenth", 0.1, 0, 0, 0.1, 0, 0},
                                            Turn("turned by 0.3", 0.3),
                                            Turn("turned by pi", kPi)};
    return all;
}

/// |actual - expected| <= relative * scale; the scale is |expected| unless one is given.
inline void ExpectNear(double actual, double expected, double relative, const char* what,
                       double scale = -1.0) {
    EXPECT_NEAR(actual, expected, relative * (scale < 0.0 ? std::abs(expected) : scale)) << what;
}

/// Compares all six, the sign-changing ones on the scale of the region's distance from the axes.
inline void ExpectMoments(const Moments& actual, const Moments& expected, double relative) {
    ExpectNear(actual.area, expected.area, relative, "area");
    ExpectNear(actual.x, expected.x, relative, "x dA", std::sqrt(expected.area * expected.xx));
    ExpectNear(actual.y, expected.y, relative, "y dA", std::sqrt(expected.area * expected.yy));
    ExpectNear(actual.yy, expected.yy, relative, "y^2 dA");
    ExpectNear(actual.xx, expected.xx, relative, "x^2 dA");
    ExpectNear(actual.xy, expected.xy, relative, "xy dA", std::sqrt(expected.xx * expected.yy));
}

/// 0, 1, ..., below - 1; the engine alone is the same everywhere.
inline int Draw(std::mt19937& random, int below) {
    return static_cast<int>(random() % static_cast<unsigned>(below));
}

inline constexpr std::pair<double, double> kStarCentre{31, -17};

/// A counter-clockwise ring of integer coordinates, star-shaped about kStarCentre: fixed directions
/// in turning order, random distances.
inline Ring RandomStar(std::uint32_t seed, int perQuadrant) {
    std::mt19937 random(seed);
    Ring ring;
    for (int quadrant = 0; quadrant < 4; ++quadrant) {
        for (int k = 0; k < perQuadrant; ++k) {
            const double reach = 1 + Draw(random, 20);
            const double u = reach * (perQuadrant - k), v = reach * k;
            const double x[] = {u, -v, -u, v}, y[] = {v, u, -v, -u};
            ring.emplace_back(kStarCentre.first + x[quadrant], kStarCentre.second + y[quadrant]);
        }
    }
    return ring;
}

/// A counter-clockwise skyline of integer coordinates: horizontal and vertical edges only.
inline Ring RandomSkyline(std::uint32_t seed, int columns) {
    std::mt19937 random(seed);
    double x = Draw(random, 50) - 25;
    const double base = Draw(random, 50) - 25;
    Ring ring = {{x, base}};
    for (int i = 0; i < columns; ++i) {
        const double top = base + 1 + Draw(random, 30);
        ring.emplace_back(x, top);
        x += 1 + Draw(random, 9);
        ring.emplace_back(x, top);
    }
    ring.emplace_back(x, base);
    return Reversed(ring);
}

}  // namespace test_support

#endif
