#include "warping/rim_lines.h"

#include <cmath>

#include "warping/mesh_places.h"

namespace halvorn::engine {

namespace {

// Angles of rings below 60 degrees take shells; wider ones do no harm (Ruppert).
constexpr double kSharpCosine = 0.5;

// Distances from a corner that differ by less, relative, are those of one shell: powers of two
// apart but for rounding.
constexpr double kShellTolerance = 1e-3;

double DistanceBetween(const Point& a, const Point& b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

}  // namespace

RimLines::RimLines(const TriangleMesh& mesh)
    : lineFrom_(mesh.vertices.size(), kNone),
      lineOf_(mesh.vertices.size(), kNone),
      endOf_(mesh.vertices.size(), kNone),
      isSharp_(mesh.vertices.size(), false) {
    std::vector<Index> before(mesh.vertices.size(), kNone);
    for (std::size_t t = 0; t < mesh.corners.size(); ++t) {
        for (std::size_t edge = 0; edge < 3; ++edge) {
            if (mesh.neighbours[t][edge] != kNone) continue;
            const Index from = mesh.corners[t][After(edge)];
            const Index to = mesh.corners[t][Before(edge)];
            lineFrom_[Slot(from)] = from;
            endOf_[Slot(from)] = to;
            before[Slot(to)] = from;
        }
    }
    for (std::size_t v = 0; v < mesh.vertices.size(); ++v) {
        const Point ahead = mesh.vertices[Slot(endOf_[v])] - mesh.vertices[v];
        const Point back = mesh.vertices[Slot(before[v])] - mesh.vertices[v];
        const double lengths = std::sqrt(Dot(ahead, ahead) * Dot(back, back));
        isSharp_[v] = Cross(ahead, back) > 0.0 && Dot(ahead, back) > kSharpCosine * lengths;
    }
}

Point RimLines::Division(const TriangleMesh& mesh, Index from, Index to) const {
    const Point& start = mesh.vertices[Slot(from)];
    const Point& end = mesh.vertices[Slot(to)];
    if (!IsSharp(from) && !IsSharp(to)) return 0.5 * (start + end);
    // The power of two between a third and two thirds of the length.
    const double length = DistanceBetween(start, end);
    int exponent = 0;
    std::frexp(2.0 / 3.0 * length, &exponent);
    const double share = std::ldexp(0.5, exponent) / length;
    return IsSharp(from) ? start + share * (end - start) : end + share * (start - end);
}

bool RimLines::Impose(const TriangleMesh& mesh, Index triangle, std::size_t corner) const {
    const auto& neighbours = mesh.neighbours[Slot(triangle)];
    if (neighbours[After(corner)] == kNone && neighbours[Before(corner)] == kNone) return true;
    const Index a = mesh.corners[Slot(triangle)][After(corner)];
    const Index b = mesh.corners[Slot(triangle)][Before(corner)];
    const Index lineOfA = lineOf_[Slot(a)];
    const Index lineOfB = lineOf_[Slot(b)];
    if (lineOfA == kNone || lineOfB == kNone) return false;
    const bool meetAtA = endOf_[Slot(lineOfB)] == lineOfA;
    if (!meetAtA && endOf_[Slot(lineOfA)] != lineOfB) return false;
    const Index common = meetAtA ? lineOfA : lineOfB;
    if (!IsSharp(common)) return false;
    const Point& centre = mesh.vertices[Slot(common)];
    const double toA = DistanceBetween(centre, mesh.vertices[Slot(a)]);
    const double toB = DistanceBetween(centre, mesh.vertices[Slot(b)]);
    return std::fabs(toA - toB) < kShellTolerance * toA;
}

}  // namespace halvorn::engine
