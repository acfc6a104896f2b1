#include "warping/triangle_mesh.h"

#include <utility>

#include "geometry/arrangement.h"
#include "warping/mesh_places.h"
#include "warping/refinement.h"

namespace halvorn::engine {

namespace {

// The triangles of the material, with their vertices still to be numbered.
TriangleMesh MaterialOf(const Arrangement& arrangement) {
    const std::vector<Triangle>& all = arrangement.Mesh().Triangles();
    std::vector<Index> places(all.size(), kNone);
    Index count = 0;
    for (Index t = 0; Slot(t) < all.size(); ++t) {
        if (arrangement.SumAt(t) >= 1) places[Slot(t)] = count++;
    }
    TriangleMesh mesh;
    mesh.corners.assign(Slot(count), {kNone, kNone, kNone});
    mesh.neighbours.assign(Slot(count), {kNone, kNone, kNone});
    for (std::size_t t = 0; t < all.size(); ++t) {
        if (places[t] == kNone) continue;
        for (std::size_t edge = 0; edge < 3; ++edge) {
            const Index beyond = all[t].neighbours[edge];
            if (beyond != kNone) mesh.neighbours[Slot(places[t])][edge] = places[Slot(beyond)];
        }
    }
    return mesh;
}

// Gives one vertex to the triangles around a corner that follow each other across edges.
void NumberFan(TriangleMesh& mesh, Index triangle, std::size_t corner, Index vertex) {
    for (const bool isForward : {true, false}) {
        Index at = triangle;
        std::size_t place = corner;
        for (;;) {
            mesh.corners[Slot(at)][place] = vertex;
            // Counter-clockwise round the vertex the next triangle lies across the edge after it.
            const std::size_t edge = isForward ? After(place) : Before(place);
            const Index beyond = mesh.neighbours[Slot(at)][edge];
            if (beyond == kNone) break;
            const auto& back = mesh.neighbours[Slot(beyond)];
            const std::size_t entry = back[0] == at ? 0 : back[1] == at ? 1 : 2;
            place = isForward ? After(entry) : Before(entry);
            at = beyond;
            if (mesh.corners[Slot(at)][place] != kNone) break;
        }
    }
}

TriangleMesh CoarsestMesh(const Part& part) {
    std::vector<const Points*> rings = {&part.outline};
    for (const Points& ring : part.voids) rings.push_back(&ring);
    const Arrangement arrangement = Arrangement::OfTouchingRings(rings);
    TriangleMesh mesh = MaterialOf(arrangement);
    std::size_t next = 0;
    for (Index t = 0; Slot(t) < arrangement.Mesh().Triangles().size(); ++t) {
        if (arrangement.SumAt(t) < 1) continue;
        for (std::size_t corner = 0; corner < 3; ++corner) {
            if (mesh.corners[next][corner] != kNone) continue;
            const Index vertex = arrangement.Mesh().At(t).vertices[corner];
            NumberFan(mesh, static_cast<Index>(next), corner,
                      static_cast<Index>(mesh.vertices.size()));
            mesh.vertices.push_back(arrangement.Mesh().PointAt(vertex));
        }
        ++next;
    }
    return mesh;
}

}  // namespace

TriangleMesh MeshOf(const Part& part, const MeshOptions& options) {
    TriangleMesh mesh = CoarsestMesh(part);
    Refine(options, &mesh);
    return mesh;
}

}  // namespace halvorn::engine
