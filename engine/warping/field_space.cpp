#include "warping/field_space.h"

#include <algorithm>

#include "warping/shape_functions.h"
#include "warping/warping.h"

namespace halvorn::engine {

namespace {

// Height over longest side of the flattest triangle. A vertex within rounding of the edge across
// makes it flatter, or turns it over, and its stiffness would leave no digits to the rest; a
// triangle of this height adds no more than that to the section.
constexpr double kFlattest = 1e-11;

void NumberEdges(FieldSpace* space) {
    const TriangleMesh& mesh = space->mesh;
    space->edges.assign(mesh.corners.size(), {kNone, kNone, kNone});
    space->edgeOrders.clear();
    for (std::size_t t = 0; t < mesh.corners.size(); ++t) {
        for (std::size_t i = 0; i < 3; ++i) {
            const Index across = mesh.neighbours[t][i];
            const int order = space->orders[t];
            if (across != kNone && across < static_cast<Index>(t)) {
                const auto& back = mesh.neighbours[Slot(across)];
                const auto place = static_cast<std::size_t>(
                    std::find(back.begin(), back.end(), static_cast<Index>(t)) - back.begin());
                const Index edge = space->edges[Slot(across)][place];
                space->edges[t][i] = edge;
                int& both = space->edgeOrders[Slot(edge)];
                both = std::max(both, order);
            } else {
                space->edges[t][i] = static_cast<Index>(space->edgeOrders.size());
                space->edgeOrders.push_back(across == kNone ? std::max(order, 3) : order);
            }
        }
    }
}

// Green's theorem along the ring.
void IntegrateEnclosed(const FieldSpace& space, RimRing* ring) {
    for (const EdgeRef& at : ring->edges) {
        const Point& a = space.CornerAt(at.triangle, at.edge + 1);
        const Point& b = space.CornerAt(at.triangle, at.edge + 2);
        const double cross = Cross(a, b);
        ring->area += cross / 2.0;
        ring->firstX += cross * (a.x + b.x) / 6.0;
        ring->firstY += cross * (a.y + b.y) / 6.0;
    }
}

void FindRings(FieldSpace* space) {
    const TriangleMesh& mesh = space->mesh;
    std::vector<EdgeRef> from(mesh.vertices.size());  // the edge of a ring that starts at a vertex
    for (std::size_t t = 0; t < mesh.corners.size(); ++t) {
        for (int i = 0; i < 3; ++i) {
            if (mesh.neighbours[t][Slot(i)] != kNone) continue;
            from[Slot(mesh.corners[t][Slot((i + 1) % 3)])] = {static_cast<Index>(t), i};
        }
    }
    space->rings.clear();
    space->ringAt.assign(mesh.vertices.size(), kNone);
    for (std::size_t v = 0; v < from.size(); ++v) {
        if (from[v].triangle == kNone || space->ringAt[v] != kNone) continue;
        RimRing ring;
        for (std::size_t at = v; space->ringAt[at] == kNone;) {
            const EdgeRef edge = from[at];
            space->ringAt[at] = static_cast<Index>(space->rings.size());
            ring.edges.push_back(edge);
            at = Slot(mesh.corners[Slot(edge.triangle)][Slot((edge.edge + 2) % 3)]);
        }
        IntegrateEnclosed(*space, &ring);
        space->rings.push_back(std::move(ring));
    }
    const auto outline =
        std::max_element(space->rings.begin(), space->rings.end(),
                         [](const RimRing& a, const RimRing& b) { return a.area < b.area; });
    if (outline == space->rings.end() || !(outline->area > 0.0)) {
        throw WarpingError("the part has no outline");
    }
    const auto place = static_cast<Index>(outline - space->rings.begin());
    std::swap(space->rings.front(), *outline);
    for (Index& ring : space->ringAt) {
        if (ring == place) {
            ring = 0;
        } else if (ring == 0) {
            ring = place;
        }
    }
}

}  // namespace

int FieldSpace::HighestOrderAt(Index triangle) const {
    int highest = orders[Slot(triangle)];
    for (const Index edge : edges[Slot(triangle)]) {
        highest = std::max(highest, edgeOrders[Slot(edge)]);
    }
    return highest;
}

bool FieldSpace::RunsUp(Index triangle, int edge) const {
    const auto& corners = mesh.corners[Slot(triangle)];
    return corners[Slot((edge + 1) % 3)] < corners[Slot((edge + 2) % 3)];
}

void CompleteSpace(FieldSpace* space) {
    NumberEdges(space);
    FindRings(space);
}

std::vector<double> TurnsOf(const FieldSpace& space) {
    std::vector<double> turns(space.mesh.vertices.size(), 0.0);
    for (const RimRing& ring : space.rings) {
        const EdgeRef* in = &ring.edges.back();
        for (const EdgeRef& out : ring.edges) {
            const Point& a = space.CornerAt(in->triangle, in->edge + 1);
            const Point& b = space.CornerAt(out.triangle, out.edge + 1);
            const Point& c = space.CornerAt(out.triangle, out.edge + 2);
            const Index vertex = space.mesh.corners[Slot(out.triangle)][Slot((out.edge + 1) % 3)];
            turns[Slot(vertex)] = TurnBetween(b - a, c - b);
            in = &out;
        }
    }
    return turns;
}

TriangleMap MapOf(const FieldSpace& space, Index triangle) {
    const Point& origin = space.CornerAt(triangle, 0);
    const Point u = space.CornerAt(triangle, 1) - origin;
    const Point v = space.CornerAt(triangle, 2) - origin;
    const double longest = std::max({Dot(u, u), Dot(v, v), Dot(v - u, v - u)});
    const double twice = std::max(Cross(u, v), kFlattest * longest);
    return {0.5 * twice, {v.y / twice, -v.x / twice}, {-u.y / twice, u.x / twice}};
}

}  // namespace halvorn::engine
