#include "warping/fields.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "warping/element_equations.h"
#include "warping/shape_functions.h"
#include "warping/sparse_system.h"

namespace halvorn::engine {

namespace {

// Where the unknowns of a system stand: of each vertex and edge the first; kNone: none.
struct Numbering {
    std::vector<Index> vertex;
    std::vector<Index> edge;
    std::vector<Index> ofVoid;  // by ring
    Index count = 0;
};

// Vertices in the order of elimination, each with the edges that no vertex before it ends.
struct Elimination {
    std::vector<Index> vertices;
    std::vector<std::vector<Index>> edges;  // by place in the order
};

Elimination EliminationOf(const FieldSpace& space) {
    Elimination elimination;
    elimination.vertices = OrderVertices(space.mesh.corners, space.mesh.vertices.size());
    std::vector<std::size_t> place(elimination.vertices.size());
    for (std::size_t i = 0; i < place.size(); ++i) place[Slot(elimination.vertices[i])] = i;
    elimination.edges.resize(place.size());
    std::vector<char> isPlaced(space.edgeOrders.size(), 0);
    for (std::size_t t = 0; t < space.TriangleCount(); ++t) {
        const auto& corners = space.mesh.corners[t];
        for (std::size_t i = 0; i < 3; ++i) {
            const Index edge = space.edges[t][i];
            if (std::exchange(isPlaced[Slot(edge)], static_cast<char>(1)) != 0) continue;
            const std::size_t first =
                std::min(place[Slot(corners[(i + 1) % 3])], place[Slot(corners[(i + 2) % 3])]);
            elimination.edges[first].push_back(edge);
        }
    }
    return elimination;
}

// Free functions: the constant is fixed at the last vertex. Held ones: none on the outline, one for
// each void.
Numbering Number(const FieldSpace& space, const Elimination& elimination, bool isHeld) {
    Numbering numbering;
    numbering.vertex.assign(space.mesh.vertices.size(), kNone);
    numbering.edge.assign(space.edgeOrders.size(), kNone);
    numbering.ofVoid.assign(space.rings.size(), kNone);
    std::vector<char> isOnRim(space.edgeOrders.size(), 0);
    for (const RimRing& ring : space.rings) {
        for (const EdgeRef& at : ring.edges) {
            isOnRim[Slot(space.edges[Slot(at.triangle)][Slot(at.edge)])] = 1;
        }
    }
    const auto take = [&](Index count) {
        return std::exchange(numbering.count, numbering.count + count);
    };
    for (std::size_t i = 0; i < elimination.vertices.size(); ++i) {
        for (const Index edge : elimination.edges[i]) {
            if (isHeld && isOnRim[Slot(edge)] != 0) continue;
            numbering.edge[Slot(edge)] = take(space.edgeOrders[Slot(edge)] - 1);
        }
        const Index vertex = elimination.vertices[i];
        const bool isFixed = !isHeld && i + 1 == elimination.vertices.size();
        const bool isGiven = isHeld && space.ringAt[Slot(vertex)] != kNone;
        if (!isFixed && !isGiven) numbering.vertex[Slot(vertex)] = take(1);
    }
    if (!isHeld) return numbering;
    for (std::size_t ring = 1; ring < space.rings.size(); ++ring) {
        numbering.ofVoid[ring] = take(1);
    }
    for (std::size_t v = 0; v < space.ringAt.size(); ++v) {
        const Index ring = space.ringAt[v];
        if (ring != kNone) numbering.vertex[v] = numbering.ofVoid[Slot(ring)];
    }
    return numbering;
}

// The place of `LateralX` among the held fields.
constexpr Eigen::Index kFirstLateral = 3;

// The fields of one system, those of Poisson's ratio last.
std::span<const Field> FieldsOf(bool isHeld, bool hasPoisson) {
    static constexpr std::array kFree{Warping, ShearX, ShearY, SwayX, SwayY};
    static constexpr std::array kHeld{Stress, StressX, StressY, LateralX, LateralY};
    constexpr std::size_t kPoisson = 2;
    return std::span(isHeld ? kHeld : kFree).first(kFree.size() - (hasPoisson ? 0 : kPoisson));
}

class Solver {
public:
    Solver(FieldSpace space, const LinearLoads& loads, bool hasPoisson)
        : rims_(RimDataOf(space, loads)) {
        fields_.space = std::move(space);
        fields_.loads = loads;
        if (!hasPoisson) fields_.count = kFieldsWithoutPoisson;
    }

    Fields Solve() {
        const FieldSpace& space = fields_.space;
        equations_.reserve(space.TriangleCount());
        for (std::size_t t = 0; t < space.TriangleCount(); ++t) {
            equations_.push_back(
                EquationsOf(space, fields_.loads, fields_.count, static_cast<Index>(t)));
            const int order = space.HighestOrderAt(static_cast<Index>(t));
            fields_.coefficients.emplace_back(
                Eigen::MatrixXd::Zero(FunctionCount(order), fields_.count));
        }
        const Elimination elimination = EliminationOf(space);
        SolveHalf(elimination, false);
        SolveHalf(elimination, true);
        AddInner();
        return std::move(fields_);
    }

private:
    struct Unknown {
        Index number = kNone;
        double sign = 1.0;
    };

    Unknown UnknownOf(const Numbering& numbering, Index triangle, const OuterFunction& f) const {
        const FieldSpace& space = fields_.space;
        if (f.edge < 0) {
            return {numbering.vertex[Slot(space.mesh.corners[Slot(triangle)][Slot(f.place)])], 1.0};
        }
        const Index first = numbering.edge[Slot(space.edges[Slot(triangle)][Slot(f.edge)])];
        if (first == kNone) return {};
        const bool isTurned = f.order % 2 == 1 && !space.RunsUp(triangle, f.edge);
        return {first + f.order - 2, isTurned ? -1.0 : 1.0};
    }

    // What is given of both stress functions of shear for an outer function.
    double Given(Index triangle, const OuterFunction& f, std::size_t load) const {
        const FieldSpace& space = fields_.space;
        if (f.edge < 0) {
            const Index vertex = space.mesh.corners[Slot(triangle)][Slot(f.place)];
            return rims_.atVertex[Slot(vertex)][load] + rims_.JumpAt(triangle, f.place, load);
        }
        if (f.order > 3 || space.mesh.neighbours[Slot(triangle)][Slot(f.edge)] != kNone) return 0.0;
        const Index edge = space.edges[Slot(triangle)][Slot(f.edge)];
        return rims_.atEdge[Slot(edge)][static_cast<std::size_t>(f.order - 2)][load];
    }

    void SolveHalf(const Elimination& elimination, bool isHeld) {
        const FieldSpace& space = fields_.space;
        const Numbering numbering = Number(space, elimination, isHeld);
        const std::span<const Field> solved = FieldsOf(isHeld, fields_.HavePoisson());
        fields_.unknowns = std::max(fields_.unknowns, Slot(numbering.count));
        SparseSystem system(numbering.count, solved.size(), EntryCount());
        for (std::size_t t = 0; t < equations_.size(); ++t) {
            Assemble(static_cast<Index>(t), numbering, solved, &system);
        }
        if (isHeld) AddVoids(numbering, &system);
        const Eigen::MatrixXd solution = system.Solve();
        if (isHeld) {
            for (std::size_t ring = 1; ring < space.rings.size(); ++ring) {
                fields_.voidStress.push_back(solution(numbering.ofVoid[ring], 0));
            }
        }
        for (std::size_t t = 0; t < equations_.size(); ++t) {
            const auto triangle = static_cast<Index>(t);
            for (const OuterFunction& f : equations_[t].outer) {
                const Unknown unknown = UnknownOf(numbering, triangle, f);
                if (unknown.number != kNone) {
                    for (std::size_t k = 0; k < solved.size(); ++k) {
                        fields_.coefficients[t](f.place, solved[k]) =
                            unknown.sign * solution(unknown.number, static_cast<Eigen::Index>(k));
                    }
                }
                if (!isHeld) continue;
                for (int load = 0; load < 2; ++load) {
                    fields_.coefficients[t](f.place, StressX + load) +=
                        Given(triangle, f, Slot(load));
                }
            }
        }
    }

    // Of all triangles, each pair of outer functions once.
    std::size_t EntryCount() const {
        std::size_t count = 0;
        for (const ElementEquations& e : equations_) {
            count += e.outer.size() * (e.outer.size() + 1) / 2;
        }
        return count;
    }

    // Adds the loads of what is given of both stress functions of shear.
    void AddGiven(Index triangle, SparseSystem* system) {
        const ElementEquations& equations = equations_[Slot(triangle)];
        Eigen::MatrixX2d given(equations.stiffness.rows(), 2);
        for (std::size_t i = 0; i < equations.outer.size(); ++i) {
            for (int load = 0; load < 2; ++load) {
                given(static_cast<Eigen::Index>(i), load) =
                    Given(triangle, equations.outer[i], Slot(load));
            }
        }
        if ((given.array() == 0.0).all()) return;  // it is far from the rings
        const Eigen::MatrixX2d loads = -equations.stiffness * given;
        for (std::size_t i = 0; i < unknowns_.size(); ++i) {
            const Unknown& row = unknowns_[i];
            if (row.number == kNone) continue;
            system->RightHandSides().row(row.number).segment<2>(StressX - Stress) +=
                row.sign * loads.row(static_cast<Eigen::Index>(i));
        }
    }

    void Assemble(Index triangle, const Numbering& numbering, std::span<const Field> solved,
                  SparseSystem* system) {
        const ElementEquations& equations = equations_[Slot(triangle)];
        Eigen::MatrixXd& to = system->RightHandSides();
        unknowns_.clear();
        for (const OuterFunction& f : equations.outer) {
            unknowns_.push_back(UnknownOf(numbering, triangle, f));
        }
        for (std::size_t i = 0; i < unknowns_.size(); ++i) {
            const Unknown& row = unknowns_[i];
            if (row.number == kNone) continue;
            const auto at = static_cast<Eigen::Index>(i);
            for (std::size_t k = 0; k < solved.size(); ++k) {
                to(row.number, static_cast<Eigen::Index>(k)) +=
                    row.sign * equations.loads(at, solved[k]);
            }
            for (std::size_t j = 0; j < unknowns_.size(); ++j) {
                const Unknown& column = unknowns_[j];
                if (column.number == kNone || column.number < row.number) continue;
                system->Add(
                    row.number, column.number,
                    row.sign * column.sign * equations.stiffness(at, static_cast<Eigen::Index>(j)));
            }
        }
        if (solved.front() == Stress) AddGiven(triangle, system);
    }

    // A void is loaded as if it were a plate without stiffness. Its ring runs clockwise: the
    // integrals over it are negative.
    void AddVoids(const Numbering& numbering, SparseSystem* system) const {
        for (std::size_t ring = 1; ring < fields_.space.rings.size(); ++ring) {
            const RimRing& rim = fields_.space.rings[ring];
            const Index row = numbering.ofVoid[ring];
            system->RightHandSides()(row, 0) -= 2.0 * rim.area;
            if (!fields_.HavePoisson()) continue;
            for (int load = 0; load < 2; ++load) {
                const Point& slopes = fields_.loads.slopes[Slot(load)];
                system->RightHandSides()(row, kFirstLateral + load) -=
                    slopes.y * rim.firstX - slopes.x * rim.firstY;
            }
        }
    }

    void AddInner() {
        for (std::size_t t = 0; t < equations_.size(); ++t) {
            const ElementEquations& equations = equations_[t];
            if (equations.inner.empty()) continue;
            Eigen::MatrixXd& coefficients = fields_.coefficients[t];
            Eigen::MatrixXd outer(equations.stiffness.rows(), fields_.count);
            Eigen::Index row = 0;
            for (const OuterFunction& f : equations.outer) {
                outer.row(row++) = coefficients.row(f.place);
            }
            const Eigen::MatrixXd inner = equations.innerLoads - equations.innerByOuter * outer;
            row = 0;
            for (const int place : equations.inner) coefficients.row(place) = inner.row(row++);
        }
    }

    Fields fields_;
    RimData rims_;
    std::vector<ElementEquations> equations_;
    std::vector<Unknown> unknowns_;  // of one triangle
};

}  // namespace

std::size_t UnknownsOf(const FieldSpace& space) {
    std::size_t count = space.mesh.vertices.size();
    for (const int order : space.edgeOrders) count += static_cast<std::size_t>(order) - 1;
    return count;
}

Fields SolveFields(FieldSpace space, const LinearLoads& loads, bool hasPoisson) {
    return Solver(std::move(space), loads, hasPoisson).Solve();
}

}  // namespace halvorn::engine
