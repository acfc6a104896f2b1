#include "warping/sheets.h"

#include <algorithm>
#include <deque>

#include "warping/shape_functions.h"
#include "warping/warping.h"

namespace halvorn::engine {

namespace {

using Pair = std::array<double, 2>;

// The stress function along an edge of a ring for both loads: its change from end to end, and the
// coefficients of the edge functions.
struct EdgeTrace {
    Pair change{};
    std::array<Pair, 2> curved{};  // order 2, order 3
};

// Along the edge p + s d, with the normal (dy, -dx), the flux of t must be undone: d psi / d s is
// (c u^2 n_u + d v^2 n_v) / 2, a polynomial q0 + q1 s + q2 s^2.
EdgeTrace TraceOf(const Point& a, const Point& b, const LinearLoads& loads) {
    const Point d = b - a;
    const Point start = loads.axes.From(a);
    const Point step = loads.axes.From(b) - start;
    const std::array<double, 2> starts{start.x, start.y}, steps{step.x, step.y};
    EdgeTrace trace;
    for (std::size_t load = 0; load < 2; ++load) {
        const std::array<double, 2> amounts{loads.amounts[load].x, loads.amounts[load].y};
        double q0 = 0.0, q1 = 0.0, q2 = 0.0;
        for (std::size_t k = 0; k < 2; ++k) {
            const double flux = 0.5 * amounts[k] * Cross(loads.axes.directions[k], d);
            q0 += flux * starts[k] * starts[k];
            q1 += 2.0 * flux * starts[k] * steps[k];
            q2 += flux * steps[k] * steps[k];
        }
        trace.change[load] = q0 + q1 / 2.0 + q2 / 3.0;
        // What is left beside the straight line is -s (1 - s) ((q1 + q2) / 2 + q2 S / 6), where
        // S is 2 s - 1.
        trace.curved[0][load] = -(q1 + q2) / (2.0 * EdgeFactor(2));
        trace.curved[1][load] = -q2 / (6.0 * EdgeFactor(3));
    }
    return trace;
}

class Cuts {
public:
    Cuts(const FieldSpace& space, const std::vector<Pair>& closing, RimData* data)
        : space_(space), closing_(closing), data_(data) {}

    // Joins every void to the rings that are joined already, the nearest first.
    void Make() {
        const TriangleMesh& mesh = space_.mesh;
        data_->jumps.assign(mesh.corners.size(), {});
        triangleAt_.assign(mesh.vertices.size(), kNone);
        for (std::size_t t = 0; t < mesh.corners.size(); ++t) {
            for (const Index v : mesh.corners[t]) triangleAt_[Slot(v)] = static_cast<Index>(t);
        }
        parent_.assign(space_.rings.size(), kNone);
        std::vector<std::vector<Index>> paths(space_.rings.size());
        std::vector<Index> order;
        FindPaths(&paths, &order);
        // A cut carries what its void and all that hang on it need.
        std::vector<Pair> total = closing_;
        for (auto at = order.rbegin(); at != order.rend(); ++at) {
            const std::size_t ring = Slot(*at);
            Jump(paths[ring], total[ring]);
            for (std::size_t load = 0; load < 2; ++load) {
                total[Slot(parent_[ring])][load] += total[ring][load];
            }
        }
    }

private:
    // Breadth first from the outline; a void that is reached goes on from all its vertices. Inner
    // vertices of a path lie on no ring.
    void FindPaths(std::vector<std::vector<Index>>* paths, std::vector<Index>* order) {
        const std::vector<std::vector<Index>> adjacent = AdjacentVertices();
        std::vector<Index> before(adjacent.size(), kNone);
        std::vector<char> isSeen(adjacent.size(), 0);
        std::deque<Index> queue;
        const auto addRing = [&](std::size_t ring) {
            for (const EdgeRef& at : space_.rings[ring].edges) {
                const Index v = space_.mesh.corners[Slot(at.triangle)][Slot((at.edge + 1) % 3)];
                isSeen[Slot(v)] = 1;
                queue.push_back(v);
            }
        };
        addRing(0);
        while (!queue.empty()) {
            const Index v = queue.front();
            queue.pop_front();
            for (const Index next : adjacent[Slot(v)]) {
                if (isSeen[Slot(next)] != 0) continue;
                isSeen[Slot(next)] = 1;
                before[Slot(next)] = v;
                const Index ring = space_.ringAt[Slot(next)];
                if (ring == kNone) {
                    queue.push_back(next);
                    continue;
                }
                std::vector<Index>& path = (*paths)[Slot(ring)];
                for (Index at = next; at != kNone; at = before[Slot(at)]) {
                    path.push_back(at);
                    if (path.size() > 1 && space_.ringAt[Slot(at)] != kNone) break;
                }
                parent_[Slot(ring)] = space_.ringAt[Slot(path.back())];
                order->push_back(ring);
                addRing(Slot(ring));
            }
        }
        if (order->size() + 1 != space_.rings.size()) {
            throw WarpingError("a void of the part could not be reached from its outline");
        }
    }

    std::vector<std::vector<Index>> AdjacentVertices() const {
        std::vector<std::vector<Index>> adjacent(space_.mesh.vertices.size());
        for (const auto& corners : space_.mesh.corners) {
            for (std::size_t i = 0; i < 3; ++i) {
                const Index a = corners[i];
                const Index b = corners[(i + 1) % 3];
                adjacent[Slot(a)].push_back(b);
                adjacent[Slot(b)].push_back(a);
            }
        }
        return adjacent;
    }

    // The place of a vertex in a triangle.
    int PlaceOf(Index triangle, Index vertex) const {
        const auto& corners = space_.mesh.corners[Slot(triangle)];
        return static_cast<int>(std::find(corners.begin(), corners.end(), vertex) -
                                corners.begin());
    }

    // The triangle on the left of the edge from one vertex to another; kNone on the rim.
    Index LeftOf(Index from, Index to) const {
        const Index start = triangleAt_[Slot(from)];
        Index t = start;
        do {  // clockwise to the rim or all round, so that no triangle of the fan is missed
            const int place = PlaceOf(t, from);
            const Index next = space_.mesh.neighbours[Slot(t)][Slot((place + 2) % 3)];
            if (next == kNone) break;
            t = next;
        } while (t != start);
        const Index first = t;
        while (t != kNone) {
            const int place = PlaceOf(t, from);
            if (space_.mesh.corners[Slot(t)][Slot((place + 1) % 3)] == to) return t;
            t = space_.mesh.neighbours[Slot(t)][Slot((place + 1) % 3)];
            if (t == first) break;
        }
        return kNone;
    }

    void AddAt(Index triangle, int place, const Pair& amount) {
        for (std::size_t load = 0; load < 2; ++load) {
            data_->jumps[Slot(triangle)][Slot(place)][load] += amount[load];
        }
    }

    // Adds an amount on the left of a path of vertices.
    void Jump(const std::vector<Index>& path, const Pair& amount) {
        for (std::size_t i = 0; i < path.size(); ++i) {
            const Index v = path[i];
            const bool isLast = i + 1 == path.size();
            // Counter-clockwise from the edge ahead to the edge behind, or to the rim; at the end,
            // clockwise from the edge behind to the rim.
            const Index behind = i > 0 ? path[i - 1] : kNone;
            Index t = isLast ? LeftOf(behind, v) : LeftOf(v, path[i + 1]);
            while (t != kNone) {
                const int place = PlaceOf(t, v);
                AddAt(t, place, amount);
                const auto& corners = space_.mesh.corners[Slot(t)];
                if (!isLast && behind != kNone && corners[Slot((place + 2) % 3)] == behind) break;
                t = space_.mesh.neighbours[Slot(t)][Slot((place + (isLast ? 2 : 1)) % 3)];
            }
        }
    }

    const FieldSpace& space_;
    const std::vector<Pair>& closing_;
    RimData* data_;
    std::vector<Index> triangleAt_;
    std::vector<Index> parent_;
};

}  // namespace

RimData RimDataOf(const FieldSpace& space, const LinearLoads& loads) {
    RimData data;
    data.atVertex.assign(space.mesh.vertices.size(), Pair{});
    data.atEdge.assign(space.edgeOrders.size(), {});
    std::vector<EdgeTrace> traces(space.edgeOrders.size());
    std::vector<Pair> closing(space.rings.size(), Pair{});
    for (std::size_t r = 0; r < space.rings.size(); ++r) {
        for (const EdgeRef& at : space.rings[r].edges) {
            const std::size_t edge = Slot(space.edges[Slot(at.triangle)][Slot(at.edge)]);
            traces[edge] = TraceOf(space.CornerAt(at.triangle, at.edge + 1),
                                   space.CornerAt(at.triangle, at.edge + 2), loads);
            data.atEdge[edge] = traces[edge].curved;
            for (std::size_t load = 0; load < 2; ++load) {
                closing[r][load] += traces[edge].change[load];
            }
        }
    }
    if (space.rings.size() > 1) Cuts(space, closing, &data).Make();
    for (const RimRing& ring : space.rings) {
        Pair value{};
        for (const EdgeRef& at : ring.edges) {
            const std::size_t edge = Slot(space.edges[Slot(at.triangle)][Slot(at.edge)]);
            const int from = (at.edge + 1) % 3;
            const int to = (at.edge + 2) % 3;
            const Index start = space.mesh.corners[Slot(at.triangle)][Slot(from)];
            data.atVertex[Slot(start)] = value;
            for (std::size_t load = 0; load < 2; ++load) {
                value[load] += data.JumpAt(at.triangle, from, load) -
                               data.JumpAt(at.triangle, to, load) + traces[edge].change[load];
            }
        }
    }
    return data;
}

}  // namespace halvorn::engine
