#include "region/material_rings.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "base/disjoint_sets.h"
namespace halvorn::engine {

namespace {

std::size_t NextSlot(std::size_t i) {
    return i == 2 ? 0 : i + 1;
}

std::size_t PreviousSlot(std::size_t i) {
    return i == 0 ? 2 : i - 1;
}

// An edge within the material between what lies at its ends: a ring or a vertex off all rings.
struct Span {
    double cost;
    Index triangle;
    std::size_t edge;
    std::size_t from;
    std::size_t to;
};

// Drops the branches of a tree that end at a vertex off all rings.
void PruneBranches(std::vector<Span>& tree, std::size_t rings, std::size_t nodes) {
    for (bool changed = true; changed;) {
        std::vector<int> degree(nodes, 0);
        for (const Span& span : tree) {
            ++degree[span.from];
            ++degree[span.to];
        }
        changed = std::erase_if(tree, [&](const Span& span) {
                      return (span.from >= rings && degree[span.from] == 1) ||
                             (span.to >= rings && degree[span.to] == 1);
                  }) > 0;
    }
}

}  // namespace

MaterialRings::MaterialRings(const Arrangement& arrangement)
    : arrangement_(arrangement), mesh_(arrangement.Mesh()) {
    cornerRing_.assign(mesh_.Triangles().size(), {kNone, kNone, kNone});
    std::vector<int> passes(mesh_.Vertices().size(), 0);
    rings_ = Trace(Flags(mesh_.Triangles().size()), &cornerRing_, &passes);
    for (std::size_t v = 0; v < passes.size(); ++v) {
        if (passes[v] > 1) pinches_.push_back(static_cast<Index>(v));
    }
}

bool MaterialRings::IsMaterial(Index triangle) const {
    return triangle != kNone && arrangement_.SumAt(triangle) >= 1;
}

// Whether a walk follows this side of a triangle of material.
bool MaterialRings::IsWall(const Side& side, const Flags& bridges) const {
    return IsMaterial(side.triangle) &&
           (bridges[Slot(side.triangle)][side.edge] ||
            !IsMaterial(mesh_.At(side.triangle).neighbours[side.edge]));
}

MaterialRings::Side MaterialRings::Beyond(const Side& side) const {
    const Index beyond = mesh_.At(side.triangle).neighbours[side.edge];
    const auto& neighbours = mesh_.At(beyond).neighbours;
    const auto* const back = std::find(neighbours.begin(), neighbours.end(), side.triangle);
    return {beyond, static_cast<std::size_t>(back - neighbours.begin())};
}

void MaterialRings::NoteOutlines(const Side& side, MaterialRing& ring) const {
    for (Index link = mesh_.At(side.triangle).edges[side.edge].head; link != kNone;) {
        const OutlineLink& outline = mesh_.Outlines()[Slot(link)];
        if (ring.edges.empty() || ring.edges.back() != outline.outline) {
            ring.edges.push_back(outline.outline);
        }
        link = outline.next;
    }
}

// Follows walls with the material on the left; at the end of one, round the vertex through the
// material to the next, so that walks never change sides where material meets in a point.
std::vector<MaterialRing> MaterialRings::Trace(const Flags& bridges,
                                               std::vector<std::array<Index, 3>>* corners,
                                               std::vector<int>* passes) const {
    std::vector<MaterialRing> rings;
    Flags isTraced(mesh_.Triangles().size());
    for (Index t = 0; Slot(t) < isTraced.size(); ++t) {
        for (std::size_t edge = 0; edge < 3; ++edge) {
            if (isTraced[Slot(t)][edge] || !IsWall({t, edge}, bridges)) continue;
            const auto number = static_cast<Index>(rings.size());
            MaterialRing& ring = rings.emplace_back();
            ring.triangle = t;
            Side at = {t, edge};
            do {
                isTraced[Slot(at.triangle)][at.edge] = true;
                NoteOutlines(at, ring);
                const Index end = mesh_.At(at.triangle).vertices[PreviousSlot(at.edge)];
                ring.points.push_back(mesh_.PointAt(end));
                if (passes != nullptr) ++(*passes)[Slot(end)];
                for (;;) {
                    if (corners != nullptr)
                        (*corners)[Slot(at.triangle)][PreviousSlot(at.edge)] = number;
                    at.edge = NextSlot(at.edge);
                    if (IsWall(at, bridges)) break;
                    at = Beyond(at);
                }
            } while (at.triangle != t || at.edge != edge);
            std::sort(ring.edges.begin(), ring.edges.end());
            ring.edges.erase(std::unique(ring.edges.begin(), ring.edges.end()), ring.edges.end());
        }
    }
    return rings;
}

// The cheapest edges that join all rings of each piece of material (J. B. Kruskal 1956).
MaterialRings::Flags MaterialRings::Bridges() const {
    std::vector<Span> spans;
    const auto node = [&](Index triangle, std::size_t corner) {
        const Index ring = cornerRing_[Slot(triangle)][corner];
        return ring != kNone ? Slot(ring)
                             : rings_.size() + Slot(mesh_.At(triangle).vertices[corner]);
    };
    for (Index t = 0; Slot(t) < mesh_.Triangles().size(); ++t) {
        if (!IsMaterial(t)) continue;
        const Triangle& triangle = mesh_.At(t);
        for (std::size_t edge = 0; edge < 3; ++edge) {
            const Index beyond = triangle.neighbours[edge];
            if (beyond < t || !IsMaterial(beyond)) continue;
            const std::size_t from = node(t, NextSlot(edge));
            const std::size_t to = node(t, PreviousSlot(edge));
            if (from == to) continue;
            spans.push_back({BridgeCost(mesh_.PointAt(triangle.vertices[NextSlot(edge)]),
                                        mesh_.PointAt(triangle.vertices[PreviousSlot(edge)])),
                             t, edge, from, to});
        }
    }
    std::sort(spans.begin(), spans.end(), [](const Span& a, const Span& b) {
        return std::tie(a.cost, a.triangle, a.edge) < std::tie(b.cost, b.triangle, b.edge);
    });
    const std::size_t nodes = rings_.size() + mesh_.Vertices().size();
    DisjointSets sets(nodes);
    std::erase_if(spans, [&](const Span& span) { return !sets.Join(span.from, span.to); });
    PruneBranches(spans, rings_.size(), nodes);
    Flags bridges(mesh_.Triangles().size());
    for (const Span& span : spans) {
        bridges[Slot(span.triangle)][span.edge] = true;
        const Side beyond = Beyond({span.triangle, span.edge});
        bridges[Slot(beyond.triangle)][beyond.edge] = true;
    }
    return bridges;
}

std::vector<MaterialRing> MaterialRings::Joined() const {
    return Trace(Bridges(), nullptr, nullptr);
}

}  // namespace halvorn::engine
