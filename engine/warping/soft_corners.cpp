#include "warping/soft_corners.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>
#include <numbers>
#include <utility>

#include "geometry/lengths.h"
#include "warping/boundary_stress.h"

namespace halvorn::engine {

namespace {

// Corners that turn by less have no circle: rounding, or points beside a straight side [radians].
constexpr double kLeastTurn = 1e-5;
// The stress at the circle of a corner that hardly turns is what the corner makes of it, to so
// much of it: the circle shrinks with the turn.
constexpr double kUnchanged = 1e-4;

// Of a side: what its mean leaves out reaches about half as deep into the material as it is long.
constexpr double kPartOfSide = 0.75;

// Of the circle about a corner between two sides, the shorter one of a length.
double RadiusAt(double turn, double length) {
    return kPartOfSide * length * std::exp(-std::numbers::pi * kUnchanged / std::fabs(turn));
}

}  // namespace

SoftCorners::SoftCorners(const FieldSpace& space, double farthest) {
    const std::vector<double> turns = TurnsOf(space);
    for (const RimRing& ring : space.rings) ListRing(space, ring, turns, farthest);
    if (!circles_.empty()) BuildTree();
}

void SoftCorners::ListRing(const FieldSpace& space, const RimRing& ring,
                           const std::vector<double>& turns, double farthest) {
    struct Corner {
        Point place;
        double turn;
        double before = 0.0;  // length of the side that ends here
    };
    std::vector<Corner> corners;
    double rest = 0.0;  // of the last side, before the first corner
    for (const EdgeRef& at : ring.edges) {
        const Index vertex = space.mesh.corners[Slot(at.triangle)][Slot((at.edge + 1) % 3)];
        const Point& place = space.mesh.vertices[Slot(vertex)];
        const double turn = turns[Slot(vertex)];
        if (std::fabs(turn) > kLeastTurn)
            corners.push_back({place, turn, std::exchange(rest, 0.0)});
        rest += Distance(place, space.CornerAt(at.triangle, at.edge + 2));
    }
    if (corners.empty()) return;
    corners.front().before += rest;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const auto& [place, turn, before] = corners[i];
        if (std::fabs(turn) > kSharpTurn) continue;
        const double after = corners[(i + 1) % corners.size()].before;
        circles_.push_back({place, std::min(RadiusAt(turn, std::min(before, after)), farthest)});
    }
}

void SoftCorners::BuildTree() {
    const std::size_t n = circles_.size();
    CArray<KBox> boxes(static_cast<KBox*>(std::calloc(n, sizeof(KBox))));
    if (!boxes) throw std::bad_alloc();
    for (std::size_t i = 0; i < n; ++i) {
        const KPoint centre{circles_[i].centre.x, circles_[i].centre.y};
        boxes[i] = KBoxOfSegment(centre, centre, circles_[i].radius);
    }
    if (KBuildBoxTree(&tree_, std::move(boxes), static_cast<int>(n)) != 0) throw std::bad_alloc();
}

bool SoftCorners::Contain(const Point& p) const {
    if (circles_.empty()) return false;
    const KBox here{{p.x, p.y}, {p.x, p.y}};
    return KVisitBoxTree(
        tree_, [&](const KBox& box) { return KBoxesMeet(box, here); },
        [&](int i) {
            const auto& [centre, radius] = circles_[Slot(i)];
            return Distance(p, centre) < radius;
        });
}

}  // namespace halvorn::engine
