// Point tests, classification, centroids and the cut's edge cases.
#include "kernel/classify_polygon.h"
#include "kernel/cut_polygon.h"
#include "kernel/edge_list.h"
#include "kernel/intersections.h"
#include "kernel/point_tests.h"
#include "kernel/polygon_area.h"
#include "kernel/polygon_centroid.h"
#include "kernel/project_point.h"
#include "kernel/vectors.h"
#include "numeric/tolerance.h"
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

const Ring kSquare = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
const Ring kEll = {{0, 0}, {4, 0}, {4, 1}, {1, 1}, {1, 4}, {0, 4}};
const Ring kMidSide = {{0, 0}, {2, 0}, {4, 0}, {4, 4}, {0, 4}};
const Ring kBowTie = {{0, 0}, {4, 4}, {4, 0}, {0, 4}};

TEST(PointOnSegment, TellsEndsInteriorAndNeither) {
    const KPoint a{0, 0}, b{4, 2};
    const std::tuple<KPoint, int> cases[] = {
        {{0, 0}, 1},         {{1e-11, -1e-11}, 1}, {{4, 2}, 2}, {{2, 1}, 3}, {{2, 1 + 5e-11}, 3},
        {{2, 1 + 5e-10}, 0}, {{-2, -1}, 0},        {{6, 3}, 0}, {{2, 0}, 0}};
    for (const auto& [p, expected] : cases) {
        EXPECT_EQ(KPointOnSegment(p, a, b, kTol), expected) << p.x << ", " << p.y;
    }
    EXPECT_EQ(KPointOnSegment({1, 1}, {1, 1}, {1, 1}, kTol), 1) << "a point segment has its end";
    EXPECT_EQ(KPointOnSegment({5e-8, 0}, {0, 0}, {1e-7, 0}, kTol), 0)
        << "too short for a direction";
}

TEST(PointInPolygon, TellsInsideBoundaryAndOutsideForBothOrientations) {
    for (const Ring& ring : {kEll, test_support::Reversed(kEll)}) {
        const std::vector<KPoint> points = Points(ring);
        const std::tuple<KPoint, int> cases[] = {
            {{0.5, 0.5}, 1}, {{0.5, 3}, 1}, {{2, 2}, -1},          {{5, 0}, -1},
            {{2, 1}, 0},     {{1, 1}, 0},   {{0.5, 4 + 5e-11}, 0}, {{0.5, 4 + 5e-10}, -1}};
        for (const auto& [p, expected] : cases) {
            EXPECT_EQ(KPointInPolygon(p, points.data(), 6, kTol), expected) << p.x << ", " << p.y;
        }
    }
    EXPECT_EQ(KPointInPolygon({0, 0}, nullptr, 0, kTol), -1);
}

TEST(IntersectSegments, CountsCommonPoints) {
    const test_support::Affine turn = test_support::Turn("", 0.3);
    const std::tuple<const char*, Ring, int> cases[] = {
        {"crossing", {{0, 0}, {4, 4}, {0, 4}, {4, 0}}, 1},
        {"apart", {{0, 0}, {1, 0}, {0, 1}, {1, 1}}, 0},
        {"tee", {{0, 0}, {4, 0}, {2, 0}, {2, 3}}, 1},
        {"joined at an end", {{0, 0}, {4, 0}, {4, 0}, {4, 3}}, 1},
        {"overlapping", {{0, 0}, {4, 0}, {2, 0}, {6, 0}}, 2},
        {"equal", {{0, 0}, {4, 0}, {4, 0}, {0, 0}}, 2},
        {"collinear and apart", {{0, 0}, {1, 0}, {2, 0}, {3, 0}}, 0},
        {"collinear and touching", {{0, 0}, {1, 0}, {1, 0}, {3, 0}}, 1}};
    for (const auto& [name, ring, expected] : cases) {
        for (const Ring& placed : {ring, turn * ring}) {
            const std::vector<KPoint> p = Points(placed);
            EXPECT_EQ(KIntersectSegments({p[0], p[1]}, {p[2], p[3]}, kTol), expected) << name;
            EXPECT_EQ(KIntersectSegments({p[3], p[2]}, {p[1], p[0]}, kTol), expected) << name;
        }
    }
}

TEST(ProjectPointOnLine, GivesFootPositionAndDistance) {
    const KPoint a{1, 1}, b{5, 1};
    const std::tuple<KPoint, unsigned, double, double> cases[] = {{{1, 4}, 1, 0, 3},
                                                                  {{5, -2}, 2, 4, 3},
                                                                  {{3, 2}, 3, 2, 1},
                                                                  {{0, 1}, 4, -1, 0},
                                                                  {{9, 0}, 5, 8, 1}};
    for (const auto& [p, expectedCode, expectedT, expectedDist] : cases) {
        KPoint foot;
        unsigned code = 99;
        double t = -99, dist = -99;
        EXPECT_EQ(KProjectPointOnLine(p, a, b, kTol, &foot, &code, &t, &dist), 1);
        EXPECT_EQ(code, expectedCode);
        EXPECT_DOUBLE_EQ(t, expectedT);
        EXPECT_DOUBLE_EQ(dist, expectedDist);
        EXPECT_DOUBLE_EQ(foot.x, p.x);
    }
    KPoint foot{1, 1};
    double dist = 5;
    EXPECT_EQ(KProjectPointOnLine({1, 4}, a, a, kTol, &foot, nullptr, nullptr, &dist), 0);
    EXPECT_TRUE(IsInvalidValue(foot.x) && dist == 0.0);
}

TEST(ClassifyPolygon, TellsValidRingsAndTheFirstFaultOfOthers) {
    Ring spiked = kSquare;
    spiked[1] = {4, 1e-11};
    const std::tuple<const char*, Ring, int> cases[] = {
        {"empty", {}, 2},
        {"point", {{1, 1}}, 2},
        {"two points", {{0, 0}, {1, 0}}, -1},
        {"square", kSquare, 2},
        {"almost square", spiked, 2},
        {"ell", kEll, 1},
        {"mid-side vertex", kMidSide, -3},
        {"bow tie", kBowTie, -1},
        {"repeated point", {{0, 0}, {4, 0}, {4, 4}, {4, 4}, {0, 4}}, -4},
        {"not a number", {{0, 0}, {INVALID_VALUE, 0}, {1, 1}, {0, 1}}, -1},
        {"touching itself", {{0, 0}, {4, 0}, {4, 4}, {2, 0}, {0, 4}}, -1},
        {"pinched", {{0, 0}, {2, 2}, {4, 0}, {4, 4}, {2, 2}, {0, 4}}, -4}};
    for (const auto& [name, ring, expected] : cases) {
        for (const Ring& placed :
             {ring, test_support::Reversed(ring), test_support::Turn("", 1) * ring}) {
            EXPECT_EQ(KClassifyPolygon(Points(placed).data(), static_cast<int>(ring.size()), kTol),
                      expected)
                << name;
        }
    }
}

TEST(PolygonCentroid, IsTheAreasForValidRingsAndTheVertexAverageForOthers) {
    // The ell: 4 x 1 and 1 x 3 about (2, 0.5) and (0.5, 2.5).
    const std::tuple<const char*, Ring, KPoint> cases[] = {
        {"empty", {}, {0, 0}},
        {"point", {{3, 5}}, {3, 5}},
        {"two points", {{3, 5}, {5, 9}}, {4, 7}},
        {"triangle", {{0, 0}, {3, 0}, {0, 6}}, {1, 2}},
        {"ell", kEll, {(4 * 2 + 3 * 0.5) / 7, (4 * 0.5 + 3 * 2.5) / 7}},
        {"mid-side vertex", kMidSide, {2, 1.6}},
        {"bow tie", kBowTie, {2, 2}},
        {"too small to triangulate: triangles below 1e-12 have no area",
         {{0, 0}, {1e-7, 0}, {1e-7, 1e-7}, {0, 2e-7}},
         {0.5e-7, 0.75e-7}}};
    for (const auto& [name, ring, expected] : cases) {
        KPoint centroid{-1, -1};
        EXPECT_EQ(
            KPolygonCentroid(&centroid, Points(ring).data(), static_cast<int>(ring.size()), kTol),
            &centroid);
        EXPECT_NEAR(centroid.x, expected.x, 1e-14) << name;
        EXPECT_NEAR(centroid.y, expected.y, 1e-14) << name;
    }
}

TEST(FindDanglingEdge, FindsTheFirstFreeEnd) {
    // A triangle, an edge that hangs on it, and a removed edge that would match its free end.
    const double removed = UNDEFINED_VALUE;
    const std::vector<KPoint> edges = {{0, 0},
                                       {2, 0},
                                       {2, 0},
                                       {0, 2},
                                       {0, 2},
                                       {0, 0},
                                       {2, 0},
                                       {5, 5},
                                       {removed, removed},
                                       {removed, removed}};
    EXPECT_EQ(KFindDanglingEdge({edges.data(), 10}, kTol), 6);
    EXPECT_EQ(KFindDanglingEdge({edges.data(), 6}, kTol), -1);
    EXPECT_EQ(KFindDanglingEdge({nullptr, 0}, kTol), -1);
}

struct Cut : KPieces {
    int status;
    Cut(const Ring& ring, KPoint p1, KPoint p2)
        : status(KCutPolygonByLine(Points(ring).data(), static_cast<int>(ring.size()), p1, p2, kTol,
                                   &count, &ranges, &points)) {}
    Cut(const Ring& ring, const Ring& polyline)
        : status(KSplitPolygonByPolyline(Points(ring).data(), static_cast<int>(ring.size()),
                                         Points(polyline).data(), static_cast<int>(polyline.size()),
                                         kTol, &count, &ranges, &points)) {}
    double Area(int k) const {
        return KPolygonArea(&points[ranges[k]].x, ranges[k + 1] - ranges[k]);
    }
    bool IsEmpty() const { return status == 0 && count == 0 && !ranges && !points; }
};

TEST(CutPolygonByLine, LeavesNothingWhereNothingIsCut) {
    const double inf = UNDEFINED_VALUE;
    EXPECT_TRUE(Cut(kSquare, {0, 9}, {1, 9}).IsEmpty()) << "the line misses";
    EXPECT_TRUE(Cut(kSquare, {0, 4}, {1, 4}).IsEmpty()) << "the line runs along a side";
    EXPECT_TRUE(Cut(kSquare, {0, 8}, {8, 0}).IsEmpty()) << "the line touches a corner";
    EXPECT_TRUE(Cut(kSquare, {1, 1}, {1, 1}).IsEmpty()) << "no line";
    EXPECT_TRUE(Cut({}, {0, 1}, {1, 1}).IsEmpty()) << "no ring";
    EXPECT_TRUE(Cut({{0, 0}, {4, 0}}, {2, 1}, {2, -1}).IsEmpty()) << "no area";
    EXPECT_TRUE(Cut({{0, 0}, {inf, 0}, {0, 4}}, {0, 1}, {1, 1}).IsEmpty()) << "not finite";
}

TEST(CutPolygonByLine, KeepsTheOrientationAndDropsStraightVertices) {
    for (const Ring& ring : {kMidSide, test_support::Reversed(kMidSide)}) {
        const Cut cut(ring, {0, 1}, {1, 1});
        ASSERT_EQ(cut.count, 2);
        EXPECT_EQ(cut.ranges[2], 8) << "the mid-side vertex is gone";
        const double orientation = KPolygonSignedArea(&Points(ring)[0].x, 5);
        for (const int k : {0, 1})
            EXPECT_GT(KPolygonSignedArea(&cut.points[4 * k].x, 4) * orientation, 0);
    }
}

// Edges nearly parallel to the line, sloping by less than any angle tolerance, still bound pieces
// on two sides; and a last edge shorter than the tolerance still bounds area.
TEST(CutPolygonByLine, SeparatesSidesAlongEdgesNearlyParallelToTheLine) {
    const std::tuple<Ring, double, double> cases[] = {
        {{{3, 1.5e-10}, {0, 0}, {4, -1}, {3, 1}}, 0.25, 1.75},
        {{{2, -2}, {1, -3e-10}, {0, 0}, {2, 1}}, 0, 0},
        {{{-100, 100}, {200, 100}, {200, -100}, {100, -100}, {100, -9e-8}, {-100, 9e-8}},
         30000,
         10000},
        {{{-100, 100}, {200, 100}, {200, -100}, {100, -100}, {100, -1e-8}, {-100, 1e-8}},
         30000,
         10000},
        {{{0, -50}, {1000, -50}, {1000, 0.99e-10 - 50}, {0, 50}}, 0, 0}};
    for (const auto& [ring, high, low] : cases) {
        for (const Ring& placed : {ring, test_support::Reversed(ring)}) {
            const Cut cut(placed, {-10, 0}, {10, 0});
            double areaHigh = 0, areaLow = 0;
            for (int k = 0; k < cut.count; ++k) {
                double top = 0, bottom = 0;
                for (int i = cut.ranges[k]; i < cut.ranges[k + 1]; ++i) {
                    top = std::max(top, cut.points[i].y);
                    bottom = std::min(bottom, cut.points[i].y);
                }
                EXPECT_LE(std::min(top, -bottom), 1.01 * kTol) << "piece " << k;
                (top > -bottom ? areaHigh : areaLow) += cut.Area(k);
            }
            const double whole = KPolygonArea(&Points(ring)[0].x, static_cast<int>(ring.size()));
            ExpectNear(areaHigh + areaLow, whole, 1e-12, "sum of the areas");
            if (high > 0) ExpectNear(areaHigh, high, 1e-8, "high");
            if (low > 0) ExpectNear(areaLow, low, 1e-8, "low");
        }
    }
}

// A spike that goes out and back on the same line encloses nothing: beyond the cut it is left out.
// A slit into the ring parts what it cuts.
TEST(CutPolygonByLine, CutsSpikesAndSlits) {
    const Ring spiked = {{0, 0}, {4, 0}, {4, 4}, {2, 4}, {2, 9}, {2, 4}, {0, 4}};
    const Ring slit = {{0, 0}, {4, 0}, {4, 4}, {2, 4}, {2, 1}, {2, 4}, {0, 4}};
    const std::tuple<const char*, Ring, Ring, std::vector<double>> cases[] = {
        {"below the spike", spiked, {{0, 2}, {1, 2}}, {8, 8}},
        {"through the spike alone", spiked, {{0, 6}, {1, 6}}, {16}},
        {"through its foot", spiked, {{2, 4}, {4, 0}}, {4, 12}},
        {"along the spike", spiked, {{2, 0}, {2, 1}}, {8, 8}},
        {"through spike and corner", spiked, {{2, 5}, {3, 3}}, {2.25, 13.75}},
        {"below the slit", slit, {{0, 0.5}, {1, 0.5}}, {2, 14}},
        {"across the slit", slit, {{0, 2}, {1, 2}}, {4, 4, 8}},
        {"along the slit", slit, {{2, 0}, {2, 1}}, {8, 8}},
        {"on the slant", slit, {{1, 1}, {3, 3}}, {2, 6, 8}}};
    for (const auto& [name, ring, line, areas] : cases) {
        for (const double angle : {0.0, 0.7, 2.1}) {
            const test_support::Affine turn = test_support::Turn("", angle);
            const std::vector<KPoint> p = Points(turn * line);
            for (const Ring& placed : {turn * ring, turn * test_support::Reversed(ring)}) {
                SCOPED_TRACE(std::string(name) + ", turned by " + std::to_string(angle));
                const Cut cut(placed, p[0], p[1]);
                std::vector<double> found;
                for (int k = 0; k < cut.count; ++k) {
                    found.push_back(cut.Area(k));
                    double left = 0, right = 0;
                    for (int i = cut.ranges[k]; i < cut.ranges[k + 1]; ++i) {
                        const KPoint a{p[1].x - p[0].x, p[1].y - p[0].y};
                        const KPoint b{cut.points[i].x - p[0].x, cut.points[i].y - p[0].y};
                        left = std::max(left, KCross(&a, &b));
                        right = std::max(right, -KCross(&a, &b));
                    }
                    EXPECT_LT(std::min(left, right), 1e-9) << "piece " << k;
                }
                std::sort(found.begin(), found.end());
                ASSERT_EQ(found.size(), areas.size());
                for (std::size_t k = 0; k < areas.size(); ++k) {
                    EXPECT_NEAR(found[k], areas[k], 1e-12);
                }
            }
        }
    }
}

TEST(SplitPolygonByPolyline, FollowsSegmentsWithinTheRing) {
    const Cut copy(kSquare, Ring{});
    EXPECT_TRUE(copy.status == 1 && copy.count == 2 && copy.ranges[0] == 0 && copy.ranges[1] == 4);
    EXPECT_TRUE(Cut(kSquare, Ring{{1, 2}}).IsEmpty()) << "half a segment";
    EXPECT_TRUE(Cut(kSquare, Ring{{1, 2}, {3, 2}}).IsEmpty()) << "ends inside on both sides";
    EXPECT_TRUE(Cut(kSquare, Ring{{-1, 2}, {3, 2}}).IsEmpty()) << "ends inside";
    const Cut corner(kSquare, Ring{{3, 0}, {3, 1}, {3, 1}, {4, 1}, {7, 7}});
    ASSERT_EQ(corner.count, 2) << "a corner cut out along a bent line, its odd last point unread";
    EXPECT_DOUBLE_EQ(std::min(corner.Area(0), corner.Area(1)), 1);
    EXPECT_DOUBLE_EQ(std::max(corner.Area(0), corner.Area(1)), 15);
    const Cut strips(kSquare, Ring{{-1, 1}, {5, 1}, {-1, 2}, {5, 2}});
    EXPECT_EQ(strips.count, 3);
    const Ring chain{{-1, 1}, {2, 1}, {2, 1}, {2, 2}, {2, 2}, {3, 3}};
    EXPECT_TRUE(Cut(kSquare, chain).IsEmpty()) << "a chain that ends inside";
    Ring both = chain;
    both.insert(both.end(), {{2, 2}, {2, 5}});
    EXPECT_EQ(Cut(kSquare, both).count, 2) << "only the chain's branch ends inside";
    const double near = 3 + 5e-11;
    Ring bent{{-1, 1}, {3, 1}, {3, 1}, {near, 1}};
    EXPECT_TRUE(Cut(kSquare, bent).IsEmpty()) << "a segment below the tolerance carries nothing on";
    bent.insert(bent.end(), {{near, 1}, {near, 5}});
    EXPECT_EQ(Cut(kSquare, bent).count, 2) << "nor does it stop what goes on";
}

}  // namespace
