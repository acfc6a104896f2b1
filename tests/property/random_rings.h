/// @file random_rings.h
/// Rings that a cut can fail on, and the exact integrals of their halves. Knows nothing of the
/// library.
#ifndef HALVORN_TESTS_PROPERTY_RANDOM_RINGS_H
#define HALVORN_TESTS_PROPERTY_RANDOM_RINGS_H

#include <array>
#include <string>

#include "unit/support.h"

namespace test_support {

/// The outline of a random heap of unit squares, with a vertex at every grid point that it passes:
/// collinear runs and vertices level with others abound. Squares are added only where the outline
/// stays one simple ring, so a square may neither close a hole nor touch another at a corner alone.
inline Ring RandomGridRing(std::uint32_t seed, int squares) {
    constexpr int kSide = 9;
    std::mt19937 random(seed);
    std::array<std::array<bool, kSide>, kSide> filled{};
    const auto at = [&](int x, int y) {
        return x >= 0 && y >= 0 && x < kSide && y < kSide &&
               filled[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
    };
    filled[kSide / 2][kSide / 2] = true;
    for (int tries = 0, added = 1; added < squares && tries < 5000; ++tries) {
        const int x = Draw(random, kSide), y = Draw(random, kSide);
        if (at(x, y)) continue;
        // Around the square the filled neighbours must form one run that has a side in common.
        const int dx[] = {1, 1, 0, -1, -1, -1, 0, 1}, dy[] = {0, 1, 1, 1, 0, -1, -1, -1};
        int runs = 0, sides = 0, corners = 0;
        for (int k = 0; k < 8; ++k) {
            const bool here = at(x + dx[k], y + dy[k]);
            const bool next = at(x + dx[(k + 1) % 8], y + dy[(k + 1) % 8]);
            runs += !here && next;
            sides += here && k % 2 == 0;
            corners += here && k % 2 == 1 && !next && !at(x + dx[(k + 7) % 8], y + dy[(k + 7) % 8]);
        }
        if (runs != 1 || sides == 0 || corners > 0) continue;
        filled[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] = true;
        ++added;
    }
    int x = 0, y = 0;
    while (!at(x, y)) y = (x = (x + 1) % kSide) == 0 ? y + 1 : y;
    // Along the outline with the squares on the left, from the lower left corner of the first one.
    Ring ring;
    int px = x, py = y, ux = 1, uy = 0;
    do {
        ring.emplace_back(px, py);
        px += ux;
        py += uy;
        const auto squareAhead = [&](int side) {  // the square ahead to the left (+1) or right (-1)
            const int cx = 2 * px + ux - side * uy - 1, cy = 2 * py + uy + side * ux - 1;
            return at(cx / 2, cy / 2) && cx >= 0 && cy >= 0;
        };
        if (squareAhead(-1)) {
            const int turned = ux;
            ux = uy;
            uy = -turned;
        } else if (!squareAhead(1)) {
            const int turned = ux;
            ux = -uy;
            uy = turned;
        }
    } while (px != x || py != y);
    return ring;
}

/// A comb with teeth up and down from a back at mid-height; a line through the teeth of one side
/// crosses it twice for each.
inline Ring RandomComb(std::uint32_t seed, int teeth) {
    std::mt19937 random(seed);
    Ring ring;
    const auto tooth = [&](double x, double base, double tip, double width) {
        ring.insert(ring.end(), {{x, base}, {x, tip}, {x + width, tip}, {x + width, base}});
    };
    for (int i = 0; i < teeth; ++i) tooth(6 * i + 1, 0, -2 - Draw(random, 6), 2 + Draw(random, 3));
    ring.insert(ring.end(), {{6.0 * teeth, 0}, {6.0 * teeth, 3}});
    for (int i = teeth; i-- > 0;) tooth(6 * i + 5, 3, 5 + Draw(random, 6), -2 - Draw(random, 3));
    ring.insert(ring.end(), {{0, 3}, {0, 0}});
    return ring;
}

/// Rectangular tube b x h with walls of t as one contour: the outer outline, a bridge, the inner
/// outline the other way round, the same bridge back. The bridge joins the points at the fractions
/// `outer` and `inner` of the length of side 0 (bottom), 1 (right), 2 or 3 of the two outlines.
inline Ring KeyholeTube(double b, double h, double t, int side, double outer, double inner) {
    const auto startingOn = [side](const Ring& corners, double fraction) {
        Ring ring = StartingAt(corners, side);
        const auto [x, y] = ring[0];
        if (fraction == 0) return ring;
        ring.insert(ring.begin() + 1,
                    {x + fraction * (ring[1].first - x), y + fraction * (ring[1].second - y)});
        return StartingAt(ring, 1);
    };
    Ring ring = startingOn(Rectangle(0, 0, b, h), outer);
    const Ring hole = startingOn(Rectangle(t, t, b - t, h - t), inner);
    ring.push_back(ring[0]);
    ring.push_back(hole[0]);
    ring.insert(ring.end(), hole.rbegin(), hole.rend());
    return ring;
}

/// Area beyond an axis and its first moment about it.
struct HalfPlane {
    long double area = 0, moment = 0;
};

/// The part of a ring beyond the line across (nx, ny) at distance `pos`, by Green's theorem over
/// the clipped edges, in extended precision. Orientation does not matter.
inline HalfPlane Beyond(const Ring& ring, long double nx, long double ny, long double pos) {
    HalfPlane sum;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const auto& [px, py] = ring[i];
        const auto& [qx, qy] = ring[(i + 1) % ring.size()];
        // v is measured from the line, u along it.
        long double u0 = ny * px - nx * py, v0 = nx * px + ny * py - pos;
        long double u1 = ny * qx - nx * qy, v1 = nx * qx + ny * qy - pos;
        if (v0 <= 0 && v1 <= 0) continue;
        const long double crossing = v0 == v1 ? u0 : u0 + (u1 - u0) * (v0 / (v0 - v1));
        if (v0 < 0) u0 = crossing, v0 = 0;
        if (v1 < 0) u1 = crossing, v1 = 0;
        sum.area += (u1 - u0) * (v0 + v1) / 2;
        sum.moment += (u1 - u0) * (v0 * v0 + v0 * v1 + v1 * v1) / 6;
    }
    const long double whole = [&] {
        long double twice = 0;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const auto& [px, py] = ring[i];
            const auto& [qx, qy] = ring[(i + 1) % ring.size()];
            twice += (static_cast<long double>(qx) - px) * (static_cast<long double>(py) + qy);
        }
        return twice;
    }();
    if (whole < 0) sum = {-sum.area, -sum.moment};
    return sum;
}

/// The ring's exact plastic modulus about the axis across (nx, ny).
inline long double ExactPlasticModulus(const Ring& ring, long double nx, long double ny) {
    long double low = 1e300L, high = -1e300L;
    for (const auto& [x, y] : ring) {
        low = std::min(low, nx * x + ny * y);
        high = std::max(high, nx * x + ny * y);
    }
    const long double half = Beyond(ring, nx, ny, low).area / 2;
    for (int i = 0; i < 200; ++i) {
        const long double mid = (low + high) / 2;
        (Beyond(ring, nx, ny, mid).area > half ? low : high) = mid;
    }
    return Beyond(ring, nx, ny, low).moment + Beyond(ring, -nx, -ny, -low).moment;
}

}  // namespace test_support

#endif
