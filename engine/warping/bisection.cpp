#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

#include "geometry/predicates.h"
#include "warping/mesh_places.h"
#include "warping/triangle_mesh.h"

namespace halvorn::engine {

namespace {

class Bisection {
public:
    explicit Bisection(TriangleMesh& mesh) : mesh_(mesh), parents_(mesh.corners.size()) {
        std::iota(parents_.begin(), parents_.end(), 0);
        isDivided_.assign(parents_.size(), false);
    }

    // Follows the longest edges from triangle to triangle, each edge longer than the one before, up
    // to one that is the longest of both its triangles; divides these, and so back to the first.
    void Divide(Index marked) {
        path_.assign(1, marked);
        while (!path_.empty() && !isDivided_[Slot(marked)]) {
            const Index triangle = path_.back();
            const std::size_t edge = LongestEdge(triangle);
            const Index beyond = mesh_.neighbours[Slot(triangle)][edge];
            if (beyond != kNone && LongestEdge(beyond) != EdgeBeyond(mesh_, triangle, edge)) {
                path_.push_back(beyond);
                continue;
            }
            // So small that rounding leaves no room for a vertex.
            if (!DivideAcross(triangle, edge)) return;
            path_.pop_back();
        }
    }

    std::vector<Index> TakeParents() { return std::move(parents_); }

private:
    // Edges in the order of their lengths, each seen the same from both its sides; no two are
    // equal.
    std::tuple<double, Index, Index> Rank(Index triangle, std::size_t edge) const {
        const auto& corners = mesh_.corners[Slot(triangle)];
        const Index a = std::min(corners[After(edge)], corners[Before(edge)]);
        const Index b = std::max(corners[After(edge)], corners[Before(edge)]);
        const Point along = mesh_.vertices[Slot(b)] - mesh_.vertices[Slot(a)];
        return {Dot(along, along), a, b};
    }

    std::size_t LongestEdge(Index triangle) const {
        std::size_t longest = 0;
        for (const std::size_t edge : {1U, 2U}) {
            if (Rank(triangle, edge) > Rank(triangle, longest)) longest = edge;
        }
        return longest;
    }

    bool IsRoomFor(const Point& middle, Index triangle, std::size_t edge) const {
        const Point& apex = CornerPoint(mesh_, triangle, edge);
        return Orientation(apex, CornerPoint(mesh_, triangle, After(edge)), middle) > 0 &&
               Orientation(apex, middle, CornerPoint(mesh_, triangle, Before(edge))) > 0;
    }

    bool DivideAcross(Index triangle, std::size_t edge) {
        const Index beyond = mesh_.neighbours[Slot(triangle)][edge];
        const std::size_t back = beyond == kNone ? 0 : EdgeBeyond(mesh_, triangle, edge);
        const Point middle = 0.5 * (CornerPoint(mesh_, triangle, After(edge)) +
                                    CornerPoint(mesh_, triangle, Before(edge)));
        if (!IsRoomFor(middle, triangle, edge)) return false;
        if (beyond != kNone && !IsRoomFor(middle, beyond, back)) return false;
        mesh_.vertices.push_back(middle);
        const Index other = Halve(triangle, edge);
        if (beyond == kNone) return true;
        const Index otherBeyond = Halve(beyond, back);
        // Each keeps the first half of the edge as it sees it.
        mesh_.neighbours[Slot(triangle)][edge] = otherBeyond;
        mesh_.neighbours[Slot(otherBeyond)][back] = triangle;
        mesh_.neighbours[Slot(other)][edge] = beyond;
        mesh_.neighbours[Slot(beyond)][back] = other;
        return true;
    }

    // The triangle keeps the first half of the edge, a new one with the same places of corners has
    // the second; the last vertex is the middle.
    Index Halve(Index triangle, std::size_t edge) {
        const auto middle = static_cast<Index>(mesh_.vertices.size() - 1);
        const auto other = static_cast<Index>(mesh_.corners.size());
        std::array<Index, 3> corners = mesh_.corners[Slot(triangle)];
        std::array<Index, 3> neighbours = mesh_.neighbours[Slot(triangle)];
        const Index outer = neighbours[After(edge)];
        if (outer != kNone) {
            const std::size_t entry = EdgeBeyond(mesh_, triangle, After(edge));
            mesh_.neighbours[Slot(outer)][entry] = other;
        }
        mesh_.corners[Slot(triangle)][Before(edge)] = middle;
        mesh_.neighbours[Slot(triangle)][After(edge)] = other;
        corners[After(edge)] = middle;
        neighbours[Before(edge)] = triangle;
        mesh_.corners.push_back(corners);
        mesh_.neighbours.push_back(neighbours);
        parents_.push_back(parents_[Slot(triangle)]);
        isDivided_.push_back(true);
        isDivided_[Slot(triangle)] = true;
        return other;
    }

    TriangleMesh& mesh_;
    std::vector<Index> parents_;
    std::vector<bool> isDivided_;
    std::vector<Index> path_;
};

}  // namespace

std::vector<Index> BisectTriangles(std::span<const Index> marked, TriangleMesh* mesh) {
    Bisection bisection(*mesh);
    for (const Index triangle : marked) bisection.Divide(triangle);
    return bisection.TakeParents();
}

}  // namespace halvorn::engine
