// Triangulations of valid rings, by what every one of them must have in common.
#include <set>

#include "kernel/classify_polygon.h"
#include "kernel/triangulate_polygon.h"
#include "numeric/constants.h"
#include "unit/support.h"

namespace {

using namespace halvorn;
using test_support::ExpectNear;
using test_support::Ring;

constexpr double kTol = 1e-10;

std::vector<KPoint> Points(const Ring& ring) {
    std::vector<KPoint> points;
    for (const auto& [x, y] : ring) points.push_back({x, y});
    return points;
}

double DrawnShare(std::mt19937& random) {
    return test_support::Draw(random, 1 << 20) / 1048576.0;
}

Ring RandomDoubleStar(std::mt19937& random, int n) {
    Ring ring;
    for (int k = 0; k < n; ++k) {
        const double angle = 2 * kPi * (k + DrawnShare(random)) / n;
        const double reach = 1 + 50 * DrawnShare(random);
        ring.emplace_back(reach * std::cos(angle), reach * std::sin(angle));
    }
    return ring;
}

// A band wound up with twelve points a turn, on the same twelve rays in every turn.
Ring RandomSpiral(std::mt19937& random, int n) {
    Ring outwards, back;
    for (int k = 0; k < n / 2; ++k) {
        const double angle = kPi * k / 6, reach = 3 + k + 2 * DrawnShare(random);
        outwards.emplace_back(reach * std::cos(angle), reach * std::sin(angle));
        const double inner = reach - 0.3 - 2 * DrawnShare(random);
        back.emplace_back(inner * std::cos(angle), inner * std::sin(angle));
    }
    outwards.insert(outwards.end(), back.rbegin(), back.rend());
    return outwards;
}

// Triangles that all turn like the ring, and whose edges are the ring's or run once in either
// direction, cover every point as often as the ring goes round it: the inside once. A ring that has
// straight corners, or gets them on the way, loses them first, and with them such edges.
void ExpectTriangulation(const Ring& ring, bool hasStraightCorners) {
    const int n = static_cast<int>(ring.size());
    const std::vector<KPoint> points = Points(ring);
    std::vector<int> triangles(3 * points.size());
    int count = -1;
    ASSERT_EQ(KTriangulatePolygon(points.data(), n, triangles.data(), &count, kTol), 0);
    ASSERT_LE(count, n - 2);
    const double area = test_support::ExactMoments(ring).area;
    double sum = 0;
    std::set<std::pair<int, int>> edges;
    for (int k = 0; k < count; ++k) {
        Ring triangle;
        for (int i = 0; i < 3; ++i) {
            const auto first = static_cast<std::size_t>(3 * k);
            const int from = triangles[first + static_cast<std::size_t>(i)];
            const int to = triangles[first + static_cast<std::size_t>((i + 1) % 3)];
            EXPECT_TRUE(edges.emplace(from, to).second) << from << " to " << to << " twice";
            triangle.push_back(ring.at(static_cast<std::size_t>(from)));
        }
        const double part = test_support::ExactMoments(triangle).area;
        EXPECT_GT(part * area, 0) << "a triangle turns the other way";
        sum += part;
    }
    ExpectNear(sum, area, 1e-12, "area of the triangles");
    if (hasStraightCorners) return;
    EXPECT_EQ(count, n - 2);
    for (const auto& [from, to] : edges) {
        EXPECT_TRUE(to == (from + 1) % n || edges.count({to, from}) == 1) << from << " to " << to;
    }
}

TEST(TriangulatePolygon, CoversValidRingsOnce) {
    int covered = 0;
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        const int n = 20 + 2 * test_support::Draw(random, 41);
        const std::pair<Ring, bool> drawn[] = {
            {RandomDoubleStar(random, n), false},
            {RandomSpiral(random, n), false},
            {test_support::RandomStar(seed, 1 + static_cast<int>(seed) / 2), true},
            {test_support::RandomSkyline(seed, 4), true}};
        for (const auto& [base, hasStraightCorners] : drawn) {
            for (const double scale : {1.0, 1e-3}) {
                const Ring ring = test_support::Affine{"", scale, 0, 0, scale, 0, 0} * base;
                // Of the integer rings some have a vertex in line with its neighbours: not valid.
                const int size = static_cast<int>(ring.size());
                if (KClassifyPolygon(Points(ring).data(), size, kTol) < 1) {
                    EXPECT_TRUE(hasStraightCorners) << "seed " << seed;
                    continue;
                }
                ++covered;
                for (const Ring& placed : {ring, test_support::Reversed(ring)}) {
                    SCOPED_TRACE("seed " + std::to_string(seed));
                    ExpectTriangulation(placed, hasStraightCorners);
                }
            }
        }
        if (HasFailure()) return;
    }
    EXPECT_GT(covered, 250);
}

TEST(TriangulatePolygon, EndsOnARingThatCrossesItself) {
    int triangles[6];
    int count = 7;
    const Ring bowTie = {{0, 0}, {4, 4}, {4, 0}, {0, 4}};
    EXPECT_EQ(KTriangulatePolygon(Points(bowTie).data(), 4, triangles, &count, kTol), -1);
    EXPECT_EQ(count, 0);
}

}  // namespace
