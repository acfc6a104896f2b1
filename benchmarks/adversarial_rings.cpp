#include "adversarial_rings.h"

#include <cmath>
#include <limits>
#include <random>
#include <utility>

namespace halvorn::benchmarks {

namespace {

using Ring = std::vector<point2D>;

constexpr double kTwoPi = 6.283185307179586;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A ring from the function of vertex number and count.
template <class VertexAt>
Ring Filled(std::size_t n, VertexAt&& vertexAt) {
    Ring ring;
    ring.reserve(n);
    const auto count = static_cast<double>(n);
    for (std::size_t i = 0; i < n; ++i) ring.push_back(vertexAt(static_cast<double>(i), count));
    return ring;
}

point2D Polar(double radius, double angle) {
    return {radius * std::cos(angle), radius * std::sin(angle)};
}

// Out along one arm and back along the other, a constant gap beside it.
Ring DoubleSpiral(std::size_t n, double verticesPerTurn) {
    return Filled(n, [verticesPerTurn](double i, double count) {
        const double half = count / 2.0;
        const bool isBack = i >= half;
        const double turns = (isBack ? count - 1.0 - i : i) / verticesPerTurn;
        return Polar(20.0 + 10.0 * turns + (isBack ? 4.0 : 0.0), kTwoPi * turns);
    });
}

// Teeth as long as the back, which runs along y = -n: every tooth crosses y = 0. `tip` is the
// length of tooth k over n.
template <class Tip>
Ring LongComb(std::size_t n, Tip&& tip) {
    Ring ring = Filled(n - 2, [&](double i, double count) {
        const double tooth = std::floor(i / 4.0);
        const auto corner = static_cast<int>(i - 4.0 * tooth);
        const bool isUp = corner == 1 || corner == 2;
        const double x = 4.0 * tooth + corner - 0.5 * count;
        return point2D{x, isUp ? count * tip(tooth) : -count};
    });
    const auto reach = static_cast<double>(n);
    ring.push_back({ring.back().x + 1.0, -reach - 5.0});
    ring.push_back({ring.front().x - 1.0, -reach - 5.0});
    return ring;
}

Ring LongTeeth(std::size_t n, unsigned int) {
    return LongComb(n, [](double k) { return 0.8 + 0.01 * std::fmod(7.0 * k, 20.0); });
}

// Turned by an eighth: the boxes of all teeth overlap.
Ring SlantedTeeth(std::size_t n, unsigned int) {
    Ring ring = LongTeeth(n, 0);
    for (point2D& p : ring) p = {p.x - p.y, p.x + p.y};
    return ring;
}

Ring NearlyEqualTeeth(std::size_t n, unsigned int) {
    return LongComb(n, [](double k) { return 0.8 + 1e-14 * std::fmod(k, 5.0); });
}

// Straight teeth that share one edge line: a tooth's right face is, but for 3e-10, the next's left.
Ring TouchingTeeth(std::size_t n, unsigned int) {
    Ring ring = LongTeeth(n, 0);
    for (std::size_t i = 0; i + 2 < n; ++i) {
        if (i % 4 == 0 && i > 0) ring[i].x = ring[i - 1].x + 3e-10;
        if (i % 4 == 1 && i > 1) ring[i].x = ring[i - 2].x + 3e-10;
    }
    return ring;
}

Ring Scallops(std::size_t n, unsigned int) {
    return Filled(n, [](double i, double count) {
        const double bite = std::fabs(std::sin(0.5 * kTwoPi * i / 16.0));
        return Polar(1000.0 + 0.2 * count - 1500.0 / count * 16.0 * bite, kTwoPi * i / count);
    });
}

// Groups of eight vertices 1e-9 to 1e-12 apart.
Ring Clusters(std::size_t n, unsigned int) {
    return Filled(n, [](double i, double count) {
        const double member = std::fmod(i, 8.0);
        const double offset = std::pow(10.0, -9.0 - 0.5 * member);
        const point2D p = Polar(700.0 + 100.0 * std::sin(i), kTwoPi * (i - member) / count);
        const point2D centre = Polar(700.0, kTwoPi * (i - member) / count);
        return member < 1.0 ? p : point2D{centre.x + offset, centre.y - offset};
    });
}

Ring RandomIn(std::size_t n, unsigned int seed, double extent) {
    std::mt19937 generator(seed);
    std::uniform_real_distribution<double> within(-extent, extent);
    return Filled(n, [&](double i, double) {
        if (i == 0.0) return point2D{0.0, 0.0};
        const double x = within(generator);
        return point2D{x, within(generator)};
    });
}

Ring Collinear(std::size_t n, double (*place)(double i, double count)) {
    return Filled(n, [place](double i, double count) {
        const double t = place(i, count);
        return point2D{3.0 * t, 0.75 * t};
    });
}

Ring CollinearAtRandom(std::size_t n, unsigned int seed) {
    Ring ring = RandomIn(n, seed, 10.0);
    for (point2D& p : ring) p.y = 0.25 * p.x;
    return ring;
}

// Every vertex is half the ring away from its neighbours: n^2 crossings, winding n / 2.
Ring Star(std::size_t n, unsigned int) {
    return Filled(n - n % 2 + 1, [](double i, double count) {
        return Polar(900.0 + std::fmod(i, 3.0), kTwoPi * i * std::floor(count / 2.0) / count);
    });
}

// Runs along y = 0 within the tolerance, now above, now below, and back around both sides.
Ring AlongTheLine(std::size_t n, double height) {
    Ring ring = Filled(n - 4, [height](double i, double count) {
        return point2D{i - 0.4 * count, std::fmod(i, 2.0) < 1.0 ? height : -height};
    });
    const double x = ring.back().x + 1.0, y = 1000.0;
    ring.insert(ring.end(), {{x, -y}, {2.0 * x, -y}, {2.0 * x, y}, {ring.front().x, y}});
    return ring;
}

Ring Petals(std::size_t n, unsigned int) {
    return Filled(n - n % 3, [](double i, double count) {
        const double part = std::fmod(i, 3.0);
        return part < 1.0 ? point2D{0.0, 0.0} : Polar(500.0 + part, kTwoPi * (i + 0.3) / count);
    });
}

// Every edge crosses the whole height, and rounding keeps the areas from ever balancing.
Ring TallZigzag(std::size_t n, double step) {
    return Filled(n, [step](double i, double count) {
        const bool isTop = std::fmod(i, 2.0) < 1.0;
        const double x = (i < count / 2.0 ? i : count - i + 0.3) - 0.25 * count;
        return point2D{step * x, (isTop ? 1e7 : -1e7) + 1e4 * std::sin(i)};
    });
}

// As above with edges of denormal width, beside a triangle.
Ring DenormalZigzag(std::size_t n, unsigned int) {
    Ring ring = TallZigzag(n - 2, 1e-320);
    ring.insert(ring.end(), {{1e7, 1e7 / 3.0}, {0.7e7, -1e7}});
    return ring;
}

Ring Wavy(std::size_t n, double scale) {
    return Filled(n, [scale](double i, double count) {
        const double angle = kTwoPi * i / count;
        return Polar(scale * (1.0 + 0.25 * std::sin(24.0 * angle + 1.0)), angle);
    });
}

Ring NotNumbers(std::size_t n, unsigned int) {
    Ring ring = Wavy(n, 1000.0);
    for (std::size_t i = 3; i < n; i += 7) {
        ring[i] =
            i % 3 == 0 ? point2D{kNaN, 1.0} : point2D{2.0, i % 3 == 1 ? kInfinity : -kInfinity};
    }
    return ring;
}

}  // namespace

const std::vector<RingFamily>& AdversarialRings() {
    static const std::vector<RingFamily> families = {
        {"spiral", [](std::size_t n, unsigned int) { return DoubleSpiral(n, 24.0); }},
        {"spiral, square", [](std::size_t n, unsigned int) { return DoubleSpiral(n, 4.0); }},
        {"comb", LongTeeth},
        {"comb on the slant", SlantedTeeth},
        {"comb, teeth nearly equal", NearlyEqualTeeth},
        {"comb, teeth nearly touching", TouchingTeeth},
        {"scallops", Scallops},
        {"clusters", Clusters},
        {"points within tolerance",
         [](std::size_t n, unsigned int seed) { return RandomIn(n, seed, 4e-11); }, true},
        {"points a tolerance apart",
         [](std::size_t n, unsigned int seed) { return RandomIn(n, seed, 1e-9); }, true},
        {"points equal",
         [](std::size_t n, unsigned int) {
             return Ring(n, {300.0, 200.0});
         }},
        {"collinear",
         [](std::size_t n, unsigned int) {
             return Collinear(n, [](double i, double m) { return i - m / 3.0; });
         }},
        {"collinear, back and forth",
         [](std::size_t n, unsigned int) {
             return Collinear(n,
                              [](double i, double) { return std::fmod(i, 2.0) * 7.0 + i / 64.0; });
         }},
        {"collinear, at random", CollinearAtRandom},
        {"star", Star},
        {"random points", [](std::size_t n, unsigned int seed) { return RandomIn(n, seed, 1e7); }},
        {"on the line", [](std::size_t n, unsigned int) { return AlongTheLine(n, 0.0); }},
        {"along the line within tolerance",
         [](std::size_t n, unsigned int) { return AlongTheLine(n, 9e-11); }},
        {"along the line beyond tolerance",
         [](std::size_t n, unsigned int) { return AlongTheLine(n, 2e-10); }},
        {"petals from one point", Petals, true},
        {"tall zigzag", [](std::size_t n, unsigned int) { return TallZigzag(n, 1e5); }},
        {"tall zigzag, denormal width", DenormalZigzag, true},
        {"NaN and infinity between", NotNumbers},
        {"infinity everywhere",
         [](std::size_t n, unsigned int) {
             return Ring(n, {kInfinity, kInfinity});
         }},
        {"1e300", [](std::size_t n, unsigned int) { return Wavy(n, 1e300); }},
        {"denormal", [](std::size_t n, unsigned int) { return Wavy(n, 1e-310); }},
        {"many triangles", [](std::size_t n, unsigned int) { return Wavy(n - n % 3, 1000.0); },
         false, false},
    };
    return families;
}

}  // namespace halvorn::benchmarks
