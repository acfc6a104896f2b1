// The kernel's entries: whatever the coordinates, statuses and outputs agree; on sound rings the
// geometry holds.
#include "fuzz/byte_program.h"
#include "kernel/cut_polygon.h"
#include "kernel/intersections.h"
#include "kernel/point_tests.h"
#include "kernel/polygon_area.h"
#include "kernel/polygon_centroid.h"
#include "kernel/project_point.h"
#include "kernel/triangulate_polygon.h"
#include "kernel/vectors.h"

namespace {

using namespace halvorn;
using namespace fuzz;

// The library's cuts use 1e-10.
constexpr double kTol = 1e-10;

// Coordinates of a cut up to 1e14 of its tolerance: beyond them rounding comes near the tolerance.
constexpr double kLargestCut = 1e14 * kTol;

int Count(const Ring& ring) {
    return static_cast<int>(ring.size());
}

double Area(const Ring& ring) {
    return ring.empty() ? 0.0 : KPolygonArea(&ring[0].x, Count(ring));
}

double Perimeter(const Ring& ring) {
    double sum = 0;
    for (int i = 0; i < Count(ring); ++i) {
        sum += KDistance(&ring[static_cast<std::size_t>(i)],
                         &ring[static_cast<std::size_t>((i + 1) % Count(ring))]);
    }
    return sum;
}

std::vector<Ring> Pieces(int status, const KPieces& pieces) {
    Require((status > 0) == (pieces.count > 0), "a status above 0 comes with pieces");
    Require((status > 0) == (pieces.ranges != nullptr), "no pieces are null");
    if (status <= 0) Require(pieces.points == nullptr, "no points are null");
    std::vector<Ring> rings;
    for (int k = 0; k < pieces.count; ++k) {
        Require(pieces.ranges[k] < pieces.ranges[k + 1], "offsets ascend");
        rings.emplace_back(pieces.points + pieces.ranges[k], pieces.points + pieces.ranges[k + 1]);
    }
    if (status > 0) Require(pieces.ranges[0] == 0, "offsets begin with 0");
    return rings;
}

// Points within the tolerance of the line count as on it, and needles thinner than it are left out.
void RequireSameArea(const Ring& ring, const std::vector<Ring>& pieces, const char* property) {
    double sum = 0;
    for (const Ring& piece : pieces) sum += Area(piece);
    const double slack = 4 * kTol * Perimeter(ring) + 4 * Rounding(ring, 2);
    Require(std::abs(sum - Area(ring)) <= slack, property);
}

void CutByLine(const Ring& ring, const KPoint& p1, const KPoint& p2, bool isSound) {
    KPieces cut;
    const int status = KCutPolygonByLine(ring.data(), Count(ring), p1, p2, kTol, &cut.count,
                                         &cut.ranges, &cut.points);
    Require(status >= 0, "a cut by a line never fails");
    const std::vector<Ring> pieces = Pieces(status, cut);
    const double length = KDistance(&p1, &p2);
    // A line through two points close together is uncertain far away from them, and one through a
    // point at 1e100 cannot be intersected.
    if (!isSound || !(length >= 0.5)) return;
    if (!(Extent({p1, p2}) <= kLargestCut)) return;
    const auto sides = [&](const Ring& points) {
        double low = 0, high = 0;
        for (const KPoint& p : points) {
            const KPoint along{(p2.x - p1.x) / length, (p2.y - p1.y) / length};
            const KPoint toPoint{p.x - p1.x, p.y - p1.y};
            low = std::min(low, KCross(&along, &toPoint));
            high = std::max(high, KCross(&along, &toPoint));
        }
        return std::pair(low, high);
    };
    const double margin = 1e-9 + Rounding(ring, 1) * (1 + KDistance(&p1, &ring[0]) / length);
    const auto [low, high] = sides(ring);
    if (status == 0) {
        Require(low > -1e-6 || high < 1e-6, "a line through a sound ring cuts it");
        return;
    }
    for (const Ring& piece : pieces) {
        const auto [pieceLow, pieceHigh] = sides(piece);
        Require(pieceLow >= -margin || pieceHigh <= margin, "a piece lies on one side of the line");
    }
    RequireSameArea(ring, pieces, "the pieces of a cut add up to the ring");
}

void SplitByPolyline(const Ring& ring, const Ring& cut, bool isSound) {
    KPieces split;
    const int status = KSplitPolygonByPolyline(ring.data(), Count(ring), cut.data(), Count(cut),
                                               kTol, &split.count, &split.ranges, &split.points);
    if (cut.empty()) {
        Require(status == 1 && split.count == 2 && split.ranges[1] == Count(ring), "a copy");
        return;
    }
    const std::vector<Ring> pieces = Pieces(status, split);
    // Segments that cross or overlap give pieces that overlap; one alone does not. Along one that
    // comes from 1e16 no two crossings can be told apart.
    if (isSound && status == 1 && Count(cut) <= 3 && Extent(cut) <= kLargestCut) {
        RequireSameArea(ring, pieces, "the pieces of a split add up to the ring");
    }
}

void TriangulateAndCentroid(const Ring& ring, bool isSound) {
    const int n = Count(ring);
    std::vector<int> triangles(3 * ring.size());
    int count = -1;
    const int status = KTriangulatePolygon(ring.data(), n, triangles.data(), &count, kTol);
    Require(count >= 0 && count <= std::max(n - 2, 0), "no more than n - 2 triangles");
    Require(status == 0 || count == 0, "no triangles of a failure");
    double sum = 0;
    for (int k = 0; k < count; ++k) {
        Ring triangle;
        for (int i = 3 * k; i < 3 * k + 3; ++i) {
            const int vertex = triangles[static_cast<std::size_t>(i)];
            Require(vertex >= 0 && vertex < n, "a triangle's corners are vertices");
            triangle.push_back(ring[static_cast<std::size_t>(vertex)]);
        }
        sum += Area(triangle);
    }
    KPoint centroid{};
    KPolygonCentroid(&centroid, ring.data(), n, kTol);
    if (!isSound) return;
    Require(status == 0, "a sound ring has triangles");
    // A corner of which twice the area is below 1e-12 is straight.
    const double slack = 4 * Rounding(ring, 2) + 1e-12 * n;
    Require(std::abs(sum - Area(ring)) <= slack, "the triangles add up to the ring");
    // Triangles fanned out from a vertex: signed, so of any simple ring.
    long double area = 0, x = 0, y = 0;
    for (std::size_t i = 1; i + 1 < ring.size(); ++i) {
        const long double ax = ring[i].x - ring[0].x, ay = ring[i].y - ring[0].y;
        const long double bx = ring[i + 1].x - ring[0].x, by = ring[i + 1].y - ring[0].y;
        area += ax * by - ay * bx;
        x += (ax * by - ay * bx) * (ax + bx) / 3;
        y += (ax * by - ay * bx) * (ay + by) / 3;
    }
    const double margin = 4 * (Rounding(ring, 3) + slack * Extent(ring)) / Area(ring);
    Require(std::abs(ring[0].x + x / area - centroid.x) <= margin, "the centroid's abscissa");
    Require(std::abs(ring[0].y + y / area - centroid.y) <= margin, "the centroid's ordinate");
}

// Even-odd count of a ray to the right. A vector shorter than 1e-6 has no angle, so points that
// close to the boundary are left out.
void PointTests(const Ring& ring, const KPoint& p, bool isSound) {
    const int where = KPointInPolygon(p, ring.data(), Count(ring), kTol);
    Require(where >= -1 && where <= 1, "inside, on or outside");
    bool isInside = false, isNear = false;
    for (int i = 0; i < Count(ring); ++i) {
        const KPoint& a = ring[static_cast<std::size_t>(i)];
        const KPoint& b = ring[static_cast<std::size_t>((i + 1) % Count(ring))];
        const int on = KPointOnSegment(p, a, b, kTol);
        Require(on >= 0 && on <= 3, "a place on a segment");
        if (isSound && on > 0) Require(where == 0, "on an edge is on the boundary");
        isNear = isNear || KPointOnSegment(p, a, b, 1e-5) > 0;
        if ((a.y > p.y) == (b.y > p.y)) continue;
        isInside ^= p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x);
        KPoint foot{};
        unsigned int code = 9;
        double t = 0, distance = 0;
        const int status = KProjectPointOnLine(p, a, b, kTol, &foot, &code, &t, &distance);
        Require((status == 1) == (code >= 1 && code <= 5), "a projection says where it lies");
        Require(!(distance < 0), "a distance is never negative");
        const int meet = KIntersectSegments({p, a}, {a, b}, kTol);
        Require(meet >= 0 && meet <= 2, "none, one or an overlap");
    }
    if (isSound && !isNear) Require(where == (isInside ? 1 : -1), "inside by parity of a ray");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteProgram program(data, size);
    const Ring ring = program.Polygon();
    const bool isSound = IsSound(ring);
    for (int k = 0; k < 8 && !program.IsAtEnd(); ++k) {
        const int choice = program.Choose(5);
        const KPoint p = program.Point();
        if (choice == 0 || choice == 1) CutByLine(ring, p, program.Point(), isSound);
        if (choice == 2) {
            Ring cut;
            for (int i = program.Choose(7); i > 0; --i) cut.push_back(i % 2 ? p : program.Point());
            SplitByPolyline(ring, cut, isSound);
        }
        if (choice == 3) TriangulateAndCentroid(ring, isSound);
        if (choice == 4) PointTests(ring, p, isSound);
    }
    return 0;
}
