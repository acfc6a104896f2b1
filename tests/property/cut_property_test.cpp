// What must hold for every simple ring, at any position of the line: each piece lies on one side,
// the areas and first moments are those of the half-planes, and the pieces are as many as a general
// geometry library finds.
#include <geos_c.h>

#include <set>

#include "kernel/cut_polygon.h"
#include "kernel/polygon_area.h"
#include "kernel/vectors.h"
#include "plastic/axis_direction.h"
#include "plastic/equal_area_axis.h"
#include "plastic/lever_arms.h"
#include "plastic/plastic_pieces.h"
#include "property/random_rings.h"

namespace {

using namespace halvorn;
using namespace test_support;

struct Case {
    std::string name;
    Ring ring;
    bool isOnGrid = false;  // coordinates so simple that another library's rounding does not matter
};

std::vector<KPoint> Points(const Ring& ring) {
    std::vector<KPoint> points;
    for (const auto& [x, y] : ring) points.push_back({x, y});
    return points;
}

// Every fixture as drawn, and turned, mirrored, in thousandths, reversed and begun elsewhere.
std::vector<Case> Cases() {
    std::vector<Case> drawn = {
        {"channel", {{0, 0}, {8, 0}, {8, 1}, {1, 1}, {1, 9}, {8, 9}, {8, 10}, {0, 10}}, true},
        {"zigzag", {{2, 2}, {3, 1}, {2, 3}, {1, 2}, {0, 3}, {1, 0}}, true},
        {"tee with mid-side vertices",
         {{0, 8}, {4, 8}, {4, 0}, {5, 0}, {5, 4}, {5, 8}, {9, 8}, {9, 9}, {4.5, 9}, {0, 9}},
         true},
        {"triangle", {{0, 0}, {7, 2}, {3, 9}}, true},
        {"two squares that meet at a corner",
         {{0, 0}, {1, 0}, {1, 1}, {2, 1}, {2, 2}, {1, 2}, {1, 1}, {0, 1}}}};
    for (int side = 0; side < 4; ++side) {
        for (const double outer : {0.0, 0.3, 0.5}) {
            const std::string bridge = std::to_string(side) + " from " + std::to_string(outer);
            drawn.push_back({"keyhole " + bridge, KeyholeTube(10, 8, 1, side, outer, 0.5)});
        }
    }
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        const std::string suffix = " " + std::to_string(seed);
        drawn.push_back({"star" + suffix, RandomStar(seed, 2 + static_cast<int>(seed)), true});
        drawn.push_back(
            {"skyline" + suffix, RandomSkyline(seed, 3 + static_cast<int>(seed)), true});
        drawn.push_back(
            {"grid" + suffix, RandomGridRing(seed, 4 + 3 * static_cast<int>(seed)), true});
        drawn.push_back({"comb" + suffix, RandomComb(seed, 1 + static_cast<int>(seed) % 8), true});
    }
    std::vector<Case> all;
    for (const Case& c : drawn) {
        all.push_back(c);
        all.push_back({c.name + ", reversed", Reversed(c.ring), c.isOnGrid});
        const Affine turned = Turn("turned", 0.1 + static_cast<double>(all.size()));
        all.push_back({c.name + ", turned", StartingAt(turned * c.ring, 2)});
        const Affine metres{"", -1e-3, 0, 0, 1e-3, 0.2, -0.1};
        all.push_back({c.name + ", mirrored in metres", metres * c.ring});
    }
    return all;
}

// Coordinates of the axis: through every vertex, just beside some, between neighbours.
std::vector<double> Positions(const Ring& ring, int iDir) {
    std::set<double> levels;
    for (const auto& [x, y] : ring) levels.insert(iDir == kVerticalAxis ? x : y);
    std::vector<double> positions(levels.begin(), levels.end());
    for (auto low = levels.begin(), high = std::next(low); high != levels.end(); ++low, ++high) {
        positions.insert(positions.end(), {(*low + *high) / 2, *low + 0.237 * (*high - *low),
                                           *low + 0.5e-10, *high - 5e-10});
    }
    return positions;
}

struct Geos {
    GEOSContextHandle_t context = GEOS_init_r();
    ~Geos() { GEOS_finish_r(context); }

    // Number of polygons that the box leaves of the ring.
    int PiecesIn(const Ring& ring, double x0, double y0, double x1, double y1) const {
        const auto polygon = [this](const Ring& points) {
            const auto n = static_cast<unsigned>(points.size());
            GEOSCoordSequence* coords = GEOSCoordSeq_create_r(context, n + 1, 2);
            for (unsigned i = 0; i <= n; ++i) {
                GEOSCoordSeq_setXY_r(context, coords, i, points[i % n].first, points[i % n].second);
            }
            return GEOSGeom_createPolygon_r(context, GEOSGeom_createLinearRing_r(context, coords),
                                            nullptr, 0);
        };
        GEOSGeometry* const whole = polygon(ring);
        GEOSGeometry* const box = polygon(Rectangle(x0, y0, x1, y1));
        GEOSGeometry* const part = GEOSIntersection_r(context, whole, box);
        int polygons = 0;
        for (int i = 0; i < GEOSGetNumGeometries_r(context, part); ++i) {
            polygons +=
                GEOSGeomTypeId_r(context, GEOSGetGeometryN_r(context, part, i)) == GEOS_POLYGON;
        }
        for (GEOSGeometry* g : {whole, box, part}) GEOSGeom_destroy_r(context, g);
        return polygons;
    }
};

double Extent(const Ring& ring) {
    double extent = 0;
    for (const auto& [x, y] : ring) extent = std::max({extent, std::abs(x), std::abs(y)});
    return extent;
}

double MomentOf(const std::list<PlasticPiece>& pieces, int iDir, double pos) {
    double moment = 0;
    for (const PlasticPiece& piece : pieces) {
        Ring ring;
        for (const point2D& p : piece.points) ring.emplace_back(p.x, p.y);
        const long double nx = iDir == kVerticalAxis, ny = 1 - nx;
        moment += static_cast<double>(Beyond(ring, nx, ny, pos).moment +
                                      Beyond(ring, -nx, -ny, -pos).moment);
    }
    return moment;
}

double Reach(const std::list<PlasticPiece>& pieces, int iDir, double pos, double towards) {
    double reach = 0;
    for (const PlasticPiece& piece : pieces) {
        for (const point2D& p : piece.points) {
            reach = std::max(reach, towards * (CutCoordinate(p, iDir) - pos));
        }
    }
    return reach;
}

void CheckSplit(const Case& c, int iDir, double pos) {
    SCOPED_TRACE(c.name + (iDir == kVerticalAxis ? " at x = " : " at y = ") + std::to_string(pos));
    const long double nx = iDir == kVerticalAxis, ny = 1 - nx;
    const HalfPlane above = Beyond(c.ring, nx, ny, pos), below = Beyond(c.ring, -nx, -ny, -pos);
    const double whole = static_cast<double>(above.area + below.area), size = Extent(c.ring);
    double areaHigh = -1, areaLow = -1;
    std::list<PlasticPiece> high, low;
    SplitSectionAtAxis({ContourRecord{1, Points(c.ring)}}, iDir, pos, &areaHigh, &areaLow, high,
                       low);
    // The line within 1e-10 of a vertex runs through it: a strip of that height may change sides.
    const double strip = 2e-10 * size;
    ExpectNear(areaHigh, static_cast<double>(above.area), 1, "area above", 1e-12 * whole + strip);
    ExpectNear(areaLow, static_cast<double>(below.area), 1, "area below", 1e-12 * whole + strip);
    ExpectNear(areaHigh + areaLow, whole, 1e-12, "sum of the areas");
    EXPECT_LE(Reach(high, iDir, pos, -1), 1.01e-10);
    EXPECT_LE(Reach(low, iDir, pos, 1), 1.01e-10);
    const double moment = static_cast<double>(above.moment + below.moment);
    ExpectNear(MomentOf(high, iDir, pos) + MomentOf(low, iDir, pos), moment, 1e-9, "lever arms");
    // The search knows no pieces, only edges; it must see the same section.
    const std::list<ContourRecord> contours = {{1, Points(c.ring)}};
    EqualAreaBracket bracket(contours, iDir, {0, 0});
    const SideAreas areas = bracket.AreasAt(pos);
    ExpectNear(areas.high, areaHigh, 1, "area of the search, high", 1e-12 * whole + strip);
    ExpectNear(areas.low, areaLow, 1, "area of the search, low", 1e-12 * whole + strip);
    const double pieces = LeverArmsOfPieces(high, iDir, pos) + LeverArmsOfPieces(low, iDir, pos);
    ExpectNear(SumOfLeverArms(contours, iDir, {0, 0}, pos), pieces, 1e-9, "lever arms of edges");
    const bool isThroughVertex = [&] {
        for (const auto& [x, y] : c.ring) {
            const double away = std::abs((iDir == kVerticalAxis ? x : y) - pos);
            if (away > 0 && away < 1e-8) return true;
        }
        return false;
    }();
    if (!c.isOnGrid || isThroughVertex) return;
    static const Geos geos;
    const double far = 10 * size;
    const bool v = iDir == kVerticalAxis;
    EXPECT_EQ(high.size(), static_cast<std::size_t>(
                               geos.PiecesIn(c.ring, v ? pos : -far, v ? -far : pos, far, far)));
    EXPECT_EQ(low.size(), static_cast<std::size_t>(
                              geos.PiecesIn(c.ring, -far, -far, v ? pos : far, v ? far : pos)));
}

TEST(CutProperty, PiecesOfASimpleRingAreItsHalves) {
    for (const Case& c : Cases()) {
        for (const int iDir : {kHorizontalAxis, kVerticalAxis}) {
            for (const double pos : Positions(c.ring, iDir)) {
                CheckSplit(c, iDir, pos);
                if (HasFailure()) return;
            }
        }
    }
}

// Cuts along the line through two points, and compares with the exact halves. Returns whether the
// line cuts more off than a sliver.
bool CheckLine(const Ring& ring, const KPoint& p1, const KPoint& p2, double tol) {
    // Seen from p1: so near to each other, doubles are subtracted exactly.
    const auto local = [&](double x, double y) { return std::pair{x - p1.x, y - p1.y}; };
    Ring near;
    for (const auto& [x, y] : ring) near.push_back(local(x, y));
    const auto [dx, dy] = local(p2.x, p2.y);
    const long double length = std::hypot<long double>(dx, dy), nx = -dy / length, ny = dx / length;
    const HalfPlane left = Beyond(near, nx, ny, 0), right = Beyond(near, -nx, -ny, 0);
    const auto whole = static_cast<double>(left.area + right.area);
    const double size = Extent(near);
    if (std::min(left.area, right.area) < 10 * tol * size) return false;

    const std::vector<KPoint> points = Points(ring);
    KPieces pieces;
    const int status = KCutPolygonByLine(points.data(), static_cast<int>(points.size()), p1, p2,
                                         tol, &pieces.count, &pieces.ranges, &pieces.points);
    EXPECT_GT(status, 0);
    double areaLeft = 0, areaRight = 0;
    for (int i = 0; i < pieces.count; ++i) {
        double reachLeft = 0, reachRight = 0;
        std::vector<KPoint> piece;
        for (int j = pieces.ranges[i]; j < pieces.ranges[i + 1]; ++j) {
            const auto [x, y] = local(pieces.points[j].x, pieces.points[j].y);
            reachLeft = std::max(reachLeft, static_cast<double>(nx * x + ny * y));
            reachRight = std::max(reachRight, static_cast<double>(-nx * x - ny * y));
            piece.push_back({x, y});
        }
        EXPECT_LE(std::min(reachLeft, reachRight), 1.1 * tol) << "piece " << i;
        (reachLeft > reachRight ? areaLeft : areaRight) +=
            KPolygonArea(&piece[0].x, static_cast<int>(piece.size()));
    }
    const double slack = 3 * tol * size + 1e-12 * whole;
    ExpectNear(areaLeft, static_cast<double>(left.area), 1, "left", slack);
    ExpectNear(areaRight, static_cast<double>(right.area), 1, "right", slack);
    return true;
}

// The same for lines in any direction, 45 and 135 degrees among them, given by two points of either
// order.
TEST(CutProperty, SlantedLinesCutAlike) {
    int cuts = 0;
    for (const Case& c : Cases()) {
        for (int k = 0; k < 16; ++k) {
            const double angle = k * test_support::kPi / 8;
            const auto [x, y] = c.ring[static_cast<std::size_t>(k) % c.ring.size()];
            const auto& [x2, y2] = c.ring[static_cast<std::size_t>(k + 3) % c.ring.size()];
            const KPoint through =
                k % 3 == 0 ? KPoint{x, y} : KPoint{(x + 2 * x2) / 3, (y + 2 * y2) / 3};
            KPoint along{std::cos(angle), std::sin(angle)};
            if (k % 4 == 2) along = {along.x > 0 ? 1.0 : -1.0, along.y > 0 ? 1.0 : -1.0};
            SCOPED_TRACE(c.name + ", direction " + std::to_string(k));
            cuts += CheckLine(c.ring, through, KTranslatePoint(through, along), 1e-10);
            if (HasFailure()) return;
        }
    }
    EXPECT_GT(cuts, 1000);
}

// Rings at the end of the range that the header names, cut through two vertices and past them by up
// to a few tolerances: there rounding comes nearest to the tolerance.
TEST(CutProperty, HoldsUpToTheLargestCoordinatesOfItsRange) {
    std::mt19937 random(11);
    const auto share = [&random] { return Draw(random, 2001) / 1000.0 - 1; };  // of -1 to 1
    int cuts = 0;
    for (const Case& c : Cases()) {
        for (const double tol : {1e-10, 1e-8}) {
            const double size = Extent(c.ring), far = 1e14 * tol - size;
            const Affine place{"", 1, 0, 0, 1, share() < 0 ? -far : far, share() < 0 ? -far : far};
            const Ring ring = place * c.ring;
            for (std::size_t i = 0; i < ring.size(); ++i) {
                const auto& [x, y] = ring[i];
                const auto& [u, v] =
                    ring[(i + 1 + static_cast<std::size_t>(Draw(random, 5))) % ring.size()];
                const double length = std::hypot(u - x, v - y), past = 5 * tol * length / size;
                if (length < 1e-3 * size) continue;
                SCOPED_TRACE(c.name + ", vertex " + std::to_string(i));
                const KPoint p2{u + past * share(), v + past * share()};
                cuts += CheckLine(ring, {x, y}, p2, tol);
                if (HasFailure()) return;
            }
        }
    }
    EXPECT_GT(cuts, 5000);
}

}  // namespace
