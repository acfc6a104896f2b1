#include "warping/cavity.h"

#include <algorithm>

#include "geometry/predicates.h"
#include "warping/mesh_places.h"

namespace halvorn::engine {

void Cavity::Dig(const Point& point, Index triangle, Index onEdgeFrom) {
    point_ = point;
    onEdgeFrom_ = onEdgeFrom;
    numbers_.resize(mesh_.corners.size(), 0);
    ++number_;
    triangles_.assign(1, triangle);
    edges_.clear();
    numbers_[Slot(triangle)] = number_;
    for (std::size_t i = 0; i < triangles_.size(); ++i) AddNeighbours(triangles_[i]);
}

void Cavity::AddNeighbours(Index triangle) {
    const std::array<Index, 3> corners = mesh_.corners[Slot(triangle)];
    for (std::size_t edge = 0; edge < 3; ++edge) {
        const Index from = corners[After(edge)];
        const Index to = corners[Before(edge)];
        const Index beyond = mesh_.neighbours[Slot(triangle)][edge];
        if (beyond == kNone) {
            if (from != onEdgeFrom_) edges_.push_back({from, to, triangle, edge, kNone, 0});
            continue;
        }
        if (numbers_[Slot(beyond)] == number_) continue;
        if (InCircle(CornerPoint(mesh_, beyond, 0), CornerPoint(mesh_, beyond, 1),
                     CornerPoint(mesh_, beyond, 2), point_) > 0) {
            numbers_[Slot(beyond)] = number_;
            triangles_.push_back(beyond);
        } else {
            edges_.push_back({from, to, triangle, edge, beyond, EdgeBeyond(mesh_, triangle, edge)});
        }
    }
}

bool Cavity::SeesAllEdges() const {
    return std::all_of(edges_.begin(), edges_.end(), [&](const Edge& edge) {
        return Orientation(mesh_.vertices[Slot(edge.from)], mesh_.vertices[Slot(edge.to)], point_) >
               0;
    });
}

bool Cavity::Fill() {
    if (!SeesAllEdges()) return false;
    const auto vertex = static_cast<Index>(mesh_.vertices.size());
    mesh_.vertices.push_back(point_);
    leaving_.resize(mesh_.vertices.size(), kNone);
    while (triangles_.size() < edges_.size()) {
        triangles_.push_back(static_cast<Index>(mesh_.corners.size()));
        mesh_.corners.emplace_back();
        mesh_.neighbours.emplace_back();
    }
    for (std::size_t i = 0; i < edges_.size(); ++i) {
        const Edge& edge = edges_[i];
        const Index triangle = triangles_[i];
        mesh_.corners[Slot(triangle)] = {vertex, edge.from, edge.to};
        mesh_.neighbours[Slot(triangle)] = {edge.beyond, kNone, kNone};
        if (edge.beyond != kNone) mesh_.neighbours[Slot(edge.beyond)][edge.edgeBeyond] = triangle;
        leaving_[Slot(edge.from)] = triangle;
    }
    JoinTriangles();
    return true;
}

// Joins the new triangles to each other around the new vertex.
void Cavity::JoinTriangles() {
    for (const Index triangle : triangles_) {
        const Index next = leaving_[Slot(mesh_.corners[Slot(triangle)][2])];
        mesh_.neighbours[Slot(triangle)][1] = next;
        if (next != kNone) mesh_.neighbours[Slot(next)][2] = triangle;
    }
    for (const Edge& edge : edges_) leaving_[Slot(edge.from)] = kNone;
}

}  // namespace halvorn::engine
