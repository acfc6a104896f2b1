#include "geometry/triangulation.h"

#include <algorithm>
#include <cmath>
#include <deque>

#include "geometry/predicates.h"

namespace halvorn::engine {

namespace {

// Far enough that every circle that matters stays inside; near enough that the exact predicates
// stay fast.
constexpr double kFar = 1024.0;

int Next(int i) {
    return i == 2 ? 0 : i + 1;
}

int Previous(int i) {
    return i == 0 ? 2 : i - 1;
}

Index VertexOf(const Triangle& triangle, int i) {
    return triangle.vertices[Slot(i)];
}

int PlaceOfVertex(const Triangle& triangle, Index vertex) {
    if (triangle.vertices[0] == vertex) return 0;
    return triangle.vertices[1] == vertex ? 1 : 2;
}

Constraint Reversed(const Constraint& constraint) {
    return {constraint.head, -constraint.step, -constraint.turn};
}

}  // namespace

Triangulation::Triangulation() {
    AddPoint({-kFar, -kFar});
    AddPoint({kFar, -kFar});
    AddPoint({0.0, kFar});
    Set(AddTriangle(), 0, 1, 2);
    Mutable(0).neighbours = {kNone, kNone, kNone};
}

Index Triangulation::AddPoint(const Point& point) {
    points_.push_back(point);
    incident_.push_back(kNone);
    return static_cast<Index>(points_.size() - 1);
}

Index Triangulation::AddTriangle() {
    triangles_.emplace_back();
    return static_cast<Index>(triangles_.size() - 1);
}

void Triangulation::Set(Index triangle, Index a, Index b, Index c) {
    Mutable(triangle).vertices = {a, b, c};
    for (const Index vertex : {a, b, c}) incident_[Slot(vertex)] = triangle;
}

// Gives an edge what an edge of the triangle before a change had behind it.
void Triangulation::Glue(Index triangle, int edge, const Triangle& old, int oldEdge) {
    const Index neighbour = old.neighbours[Slot(oldEdge)];
    Triangle& changed = Mutable(triangle);
    changed.neighbours[Slot(edge)] = neighbour;
    changed.edges[Slot(edge)] = old.edges[Slot(oldEdge)];
    if (neighbour == kNone) return;
    // The neighbour still names its vertices: the edge is the one without the vertex opposite.
    Triangle& beyond = Mutable(neighbour);
    const Index start = VertexOf(changed, Next(edge));
    beyond.neighbours[Slot(Next(PlaceOfVertex(beyond, start)))] = triangle;
}

void Triangulation::Join(Index a, int edgeOfA, Index b, int edgeOfB, const Constraint& constraint) {
    Mutable(a).neighbours[Slot(edgeOfA)] = b;
    Mutable(a).edges[Slot(edgeOfA)] = constraint;
    Mutable(b).neighbours[Slot(edgeOfB)] = a;
    Mutable(b).edges[Slot(edgeOfB)] = Reversed(constraint);
}

int Triangulation::PlaceOf(Index triangle, Index neighbour) const {
    const Triangle& at = At(triangle);
    if (at.neighbours[0] == neighbour) return 0;
    return at.neighbours[1] == neighbour ? 1 : 2;
}

// A walk that tries the edges of each triangle from a random one on, so that it cannot go in
// circles among constrained edges (O. Devillers, S. Pion, M. Teillaud 2002).
Triangulation::Location Triangulation::Locate(const Point& point) {
    Location location{last_};
    Index before = kNone;
    for (;;) {
        const Triangle& triangle = At(location.triangle);
        random_ = random_ * 1664525U + 1013904223U;
        int edge = static_cast<int>((random_ >> 16U) % 3U);
        bool moved = false;
        std::array<int, 3> sides{1, 1, 1};
        for (int k = 0; k < 3; ++k, edge = Next(edge)) {
            const Index neighbour = triangle.neighbours[Slot(edge)];
            if (neighbour == before && before != kNone) continue;
            sides[Slot(edge)] = Orientation(PointAt(VertexOf(triangle, Next(edge))),
                                            PointAt(VertexOf(triangle, Previous(edge))), point);
            if (sides[Slot(edge)] >= 0 || neighbour == kNone) continue;
            before = location.triangle;
            location.triangle = neighbour;
            moved = true;
            break;
        }
        if (moved) continue;
        last_ = location.triangle;
        for (int i = 0; i < 3; ++i) {
            if (sides[Slot(i)] != 0) continue;
            location.onEdge = i;
            if (PointAt(VertexOf(triangle, Next(i))) == point) location.atVertex = Next(i);
            if (PointAt(VertexOf(triangle, Previous(i))) == point) location.atVertex = Previous(i);
        }
        return location;
    }
}

Index Triangulation::Insert(const Point& point) {
    const Location location = Locate(point);
    if (location.atVertex >= 0) return VertexOf(At(location.triangle), location.atVertex);
    const Index vertex = AddPoint(point);
    if (location.onEdge >= 0) {
        SplitEdge(location.triangle, location.onEdge, vertex);
    } else {
        SplitTriangle(location.triangle, vertex);
    }
    return vertex;
}

Index Triangulation::NearVertex(const Point& point, double distance) {
    const Location location = Locate(point);
    Index nearest = kNone;
    double least = distance;
    const auto look = [&](Index vertex) {
        const Point offset = PointAt(vertex) - point;
        const double away = std::hypot(offset.x, offset.y);
        if (away > least || vertex < kOuterVertices) return;
        least = away;
        nearest = vertex;
    };
    const Triangle& triangle = At(location.triangle);
    for (int i = 0; i < 3; ++i) {
        look(VertexOf(triangle, i));
        const Index neighbour = triangle.neighbours[Slot(i)];
        if (neighbour == kNone) continue;
        look(VertexOf(At(neighbour), PlaceOf(neighbour, location.triangle)));
    }
    return nearest;
}

void Triangulation::SplitTriangle(Index triangle, Index vertex) {
    const Triangle old = At(triangle);
    const std::array<Index, 3> parts = {triangle, AddTriangle(), AddTriangle()};
    for (int i = 0; i < 3; ++i) {
        Set(parts[Slot(i)], vertex, VertexOf(old, Next(i)), VertexOf(old, Previous(i)));
        Glue(parts[Slot(i)], 0, old, i);
    }
    for (int i = 0; i < 3; ++i) Join(parts[Slot(i)], 1, parts[Slot(Next(i))], 2, {});
    Legalise({parts.begin(), parts.end()});
}

// The triangles (c, a, b) and (d, b, a) on both sides of the edge a b become four around a vertex
// on it: (p, c, a), (p, b, c), (p, a, d), (p, d, b).
void Triangulation::SplitEdge(Index triangle, int edge, Index vertex) {
    const Triangle left = At(triangle);
    const Index beyond = left.neighbours[Slot(edge)];
    const Triangle right = At(beyond);
    const int across = PlaceOf(beyond, triangle);
    const Index c = VertexOf(left, edge);
    const Index a = VertexOf(left, Next(edge));
    const Index b = VertexOf(left, Previous(edge));
    const Index d = VertexOf(right, across);
    const Index second = AddTriangle();
    const Index fourth = AddTriangle();
    Set(triangle, vertex, c, a);
    Set(second, vertex, b, c);
    Set(beyond, vertex, a, d);
    Set(fourth, vertex, d, b);
    Glue(triangle, 0, left, Previous(edge));
    Glue(second, 0, left, Next(edge));
    Glue(beyond, 0, right, Next(across));
    Glue(fourth, 0, right, Previous(across));
    const Constraint constraint = left.edges[Slot(edge)];
    Join(triangle, 1, beyond, 2, constraint);
    Join(second, 2, fourth, 1, constraint);
    Join(triangle, 2, second, 1, {});
    Join(beyond, 1, fourth, 2, {});
    Legalise({triangle, second, beyond, fourth});
}

// The triangles (p, a, b) and (d, b, a) become (p, a, d) and (p, d, b), p first in both.
void Triangulation::Flip(Index triangle, int edge) {
    const Triangle left = At(triangle);
    const Index beyond = left.neighbours[Slot(edge)];
    const Triangle right = At(beyond);
    const int across = PlaceOf(beyond, triangle);
    const Index p = VertexOf(left, edge);
    const Index a = VertexOf(left, Next(edge));
    const Index b = VertexOf(left, Previous(edge));
    const Index d = VertexOf(right, across);
    Set(triangle, p, a, d);
    Set(beyond, p, d, b);
    Glue(triangle, 0, right, Next(across));
    Glue(triangle, 2, left, Previous(edge));
    Glue(beyond, 0, right, Previous(across));
    Glue(beyond, 1, left, Next(edge));
    Join(triangle, 1, beyond, 2, {});
}

// Lawson's flips: the stack holds triangles whose first vertex is new, and whose first edge may
// not be Delaunay any more.
void Triangulation::Legalise(std::vector<Index> stack) {
    while (!stack.empty()) {
        const Index triangle = stack.back();
        stack.pop_back();
        const Triangle& at = At(triangle);
        const Index beyond = at.neighbours[0];
        if (beyond == kNone || at.edges[0].head != kNone) continue;
        const Index opposite = VertexOf(At(beyond), PlaceOf(beyond, triangle));
        if (InCircle(PointAt(at.vertices[0]), PointAt(at.vertices[1]), PointAt(at.vertices[2]),
                     PointAt(opposite)) <= 0) {
            continue;
        }
        Flip(triangle, 0);
        stack.push_back(triangle);
        stack.push_back(beyond);
    }
}

std::optional<EdgeRef> Triangulation::FindEdge(Index from, Index to) const {
    // The triangles around an outer vertex are no full turn.
    if (from < kOuterVertices && to >= kOuterVertices) {
        const auto reverse = FindEdge(to, from);
        if (!reverse) return std::nullopt;
        const Index beyond = At(reverse->triangle).neighbours[Slot(reverse->edge)];
        return EdgeRef{beyond, PlaceOf(beyond, reverse->triangle)};
    }
    const Index first = TriangleAt(from);
    Index triangle = first;
    do {
        const Triangle& at = At(triangle);
        const int place = PlaceOfVertex(at, from);
        if (VertexOf(at, Next(place)) == to) return EdgeRef{triangle, Previous(place)};
        triangle = at.neighbours[Slot(Next(place))];
    } while (triangle != first && triangle != kNone);
    return std::nullopt;
}

void Triangulation::AddConstraint(EdgeRef at, const Constraint& constraint) {
    Constraint& own = Mutable(at.triangle).edges[Slot(at.edge)];
    for (Index link = constraint.head; link != kNone;) {
        const OutlineLink outline = outlines_[Slot(link)];
        outlines_.push_back({outline.outline, own.head, outline.turn * constraint.turn * own.turn});
        own.head = static_cast<Index>(outlines_.size() - 1);
        link = outline.next;
    }
    own.step += constraint.step;
    const Index beyond = At(at.triangle).neighbours[Slot(at.edge)];
    Mutable(beyond).edges[Slot(PlaceOf(beyond, at.triangle))] = Reversed(own);
}

Constraint Triangulation::TakeConstraint(EdgeRef at) {
    const Constraint taken = At(at.triangle).edges[Slot(at.edge)];
    const Index beyond = At(at.triangle).neighbours[Slot(at.edge)];
    Mutable(at.triangle).edges[Slot(at.edge)] = {};
    Mutable(beyond).edges[Slot(PlaceOf(beyond, at.triangle))] = {};
    return taken;
}

Index Triangulation::MakeOutline(Index outline, int turn) {
    outlines_.push_back({outline, kNone, turn});
    return static_cast<Index>(outlines_.size() - 1);
}

// The edges (right end, left end) that the segment crosses before the first vertex on it, which the
// meeting names; nothing when a constrained edge comes first, which it names then.
std::optional<std::vector<std::pair<Index, Index>>> Triangulation::EdgesAcross(
    Index from, Index to, Meeting& meeting) const {
    const Point& start = PointAt(from);
    const Point& end = PointAt(to);
    const auto side = [&](Index vertex) { return Orientation(start, end, PointAt(vertex)); };
    const auto isAhead = [&](Index vertex) {
        return Dot(PointAt(vertex) - start, end - start) > 0.0;
    };
    // The triangle at `from` into which the segment runs, or the edge at `from` along which it
    // runs.
    Index triangle = TriangleAt(from);
    int place = PlaceOfVertex(At(triangle), from);
    for (;;) {
        const Triangle& at = At(triangle);
        const Index right = VertexOf(at, Next(place));
        const int rightSide = side(right);
        if (rightSide == 0 && isAhead(right)) {
            meeting.vertex = right;
            return std::vector<std::pair<Index, Index>>();
        }
        if (rightSide < 0 && side(VertexOf(at, Previous(place))) > 0) break;
        triangle = at.neighbours[Slot(Next(place))];
        place = PlaceOfVertex(At(triangle), from);
    }
    std::vector<std::pair<Index, Index>> across;
    int edge = place;
    for (;;) {
        const Triangle& at = At(triangle);
        if (at.edges[Slot(edge)].head != kNone) {
            meeting.crossed = {triangle, edge};
            return std::nullopt;
        }
        across.emplace_back(VertexOf(at, Next(edge)), VertexOf(at, Previous(edge)));
        const Index beyond = at.neighbours[Slot(edge)];
        const int back = PlaceOf(beyond, triangle);
        const Index opposite = VertexOf(At(beyond), back);
        const int oppositeSide = opposite == to ? 0 : side(opposite);
        if (oppositeSide == 0) {
            meeting.vertex = opposite;
            return across;
        }
        // The segment leaves through the edge whose ends lie on both sides of it. Seen from beyond,
        // the edge just crossed runs from left to right.
        triangle = beyond;
        edge = oppositeSide > 0 ? Next(back) : Previous(back);
    }
}

// S. W. Sloan 1993: flips the crossing edges that can be flipped until none crosses.
void Triangulation::MakeEdge(Index from, Index to,
                             const std::vector<std::pair<Index, Index>>& across) {
    std::deque<std::pair<Index, Index>> crossing(across.begin(), across.end());
    std::vector<std::pair<Index, Index>> made;
    const auto side = [&](Index vertex) {
        if (vertex == from || vertex == to) return 0;
        return Orientation(PointAt(from), PointAt(to), PointAt(vertex));
    };
    while (!crossing.empty()) {
        const auto [right, left] = crossing.front();
        crossing.pop_front();
        const EdgeRef at = *FindEdge(right, left);
        const Triangle& triangle = At(at.triangle);
        const Index beyond = triangle.neighbours[Slot(at.edge)];
        const Index c = VertexOf(triangle, at.edge);
        const Index d = VertexOf(At(beyond), PlaceOf(beyond, at.triangle));
        const bool isConvex = Orientation(PointAt(c), PointAt(d), PointAt(right)) *
                                  Orientation(PointAt(c), PointAt(d), PointAt(left)) <
                              0;
        if (!isConvex) {
            crossing.emplace_back(right, left);
            continue;
        }
        Flip(at.triangle, at.edge);
        const int sideOfC = side(c);
        const int sideOfD = side(d);
        if (sideOfC * sideOfD < 0) {
            crossing.emplace_back(sideOfC < 0 ? c : d, sideOfC < 0 ? d : c);
        } else {
            made.emplace_back(c, d);
        }
    }
    RestoreDelaunay(std::move(made), {from, to});
}

void Triangulation::RestoreDelaunay(std::vector<std::pair<Index, Index>> edges,
                                    const std::pair<Index, Index>& kept) {
    while (!edges.empty()) {
        const auto [a, b] = edges.back();
        edges.pop_back();
        if (std::minmax(a, b) == std::minmax(kept.first, kept.second)) continue;
        const auto found = FindEdge(a, b);
        if (!found) continue;
        const Triangle& at = At(found->triangle);
        const Index beyond = at.neighbours[Slot(found->edge)];
        if (beyond == kNone || at.edges[Slot(found->edge)].head != kNone) continue;
        const Index c = VertexOf(at, found->edge);
        const Index d = VertexOf(At(beyond), PlaceOf(beyond, found->triangle));
        if (InCircle(PointAt(at.vertices[0]), PointAt(at.vertices[1]), PointAt(at.vertices[2]),
                     PointAt(d)) <= 0) {
            continue;
        }
        Flip(found->triangle, found->edge);
        edges.insert(edges.end(), {{a, c}, {c, b}, {b, d}, {d, a}});
    }
}

Triangulation::Meeting Triangulation::Advance(Index from, Index to) {
    Meeting meeting;
    const auto across = EdgesAcross(from, to, meeting);
    if (across && !across->empty()) MakeEdge(from, meeting.vertex, *across);
    return meeting;
}

}  // namespace halvorn::engine
