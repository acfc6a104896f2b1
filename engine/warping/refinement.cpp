#include "warping/refinement.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <optional>

#include "geometry/arrangement.h"
#include "geometry/box.h"
#include "geometry/predicates.h"
#include "warping/mesh_places.h"
#include "warping/rim_lines.h"

namespace halvorn::engine {

namespace {
// Height over the shortest edge of a triangle, as a part of what gives the smallest angle, at which
// a new vertex comes at most (A. Uengoer, Off-centers, 2004). Below 1, so that the new angle clears
// the smallest by enough; of 0.8 to 1 this gave the fewest triangles over the catalogue.
constexpr double kOffCentre = 0.9;

// An edge of a ring is divided when it is seen from a vertex under more than 120 degrees, its
// square of the cosine; it keeps triangles of 30 degrees apart from it (L. P. Chew 1993). The right
// angle of Ruppert's circles takes a third more triangles in thin walls.
constexpr double kLensSquaredCosine = 0.25;

// Edges shorter than this part of the size are not divided, and triangles that have one are left:
// points nearer than this are one where outlines are arranged.
constexpr double kShortest = kMergeDistance;

class Refinement {
public:
    Refinement(const MeshOptions& options, TriangleMesh& mesh)
        : options_(options), mesh_(mesh), lines_(mesh) {
        const double angle = options.smallestAngle / 180.0 * std::numbers::pi;
        const double sine = std::sin(angle);
        leastSquaredSine_ = sine * sine;
        mostHeight_ = kOffCentre * 0.5 / std::tan(0.5 * angle);
        const Box box(mesh.vertices);
        const double shortest = kShortest * std::max(box.Width(), box.Height());
        leastSquare_ = shortest * shortest;
    }

    void Run() {
        for (Index t = 0; Slot(t) < mesh_.corners.size(); ++t) Look(t);
        while (mesh_.vertices.size() < options_.largestCount) {
            if (!rims_.empty()) {
                const Candidate next = rims_.back();
                rims_.pop_back();
                if (IsStillThere(next)) DivideEncroached(next.triangle);
            } else if (!bad_.empty()) {
                std::pop_heap(bad_.begin(), bad_.end(), IsLater);
                const Candidate next = bad_.back();
                bad_.pop_back();
                if (IsStillThere(next) && Improve(next.triangle)) Judge(next.triangle);
            } else {
                break;
            }
        }
    }

private:
    // A triangle as it was when it was looked at.
    struct Candidate {
        double rank;
        Index triangle;
        std::array<Index, 3> corners;
    };
    // An edge around the cavity that a new vertex makes, and what lies beyond.
    struct CavityEdge {
        Index from;
        Index to;
        Index beyond;
        std::size_t edgeBeyond;
    };

    static bool IsLater(const Candidate& a, const Candidate& b) { return a.rank > b.rank; }

    bool IsStillThere(const Candidate& c) const {
        return mesh_.corners[Slot(c.triangle)] == c.corners;
    }

    bool IsEncroached(const Point& from, const Point& to, const Point& by) const {
        const Point a = from - by;
        const Point b = to - by;
        const Point along = to - from;
        const double twiceArea = Cross(a, b);
        if (twiceArea * twiceArea < leastSquare_ * Dot(along, along)) return false;
        const double product = Dot(a, b);
        return product < 0.0 && product * product > kLensSquaredCosine * Dot(a, a) * Dot(b, b);
    }

    std::optional<std::size_t> EncroachedEdge(Index t) const {
        for (std::size_t edge = 0; edge < 3; ++edge) {
            if (mesh_.neighbours[Slot(t)][edge] == kNone &&
                IsEncroached(CornerPoint(mesh_, t, After(edge)),
                             CornerPoint(mesh_, t, Before(edge)), CornerPoint(mesh_, t, edge))) {
                return edge;
            }
        }
        return std::nullopt;
    }

    void Look(Index t) {
        if (EncroachedEdge(t)) rims_.push_back({0.0, t, mesh_.corners[Slot(t)]});
        Judge(t);
    }

    // Puts a triangle into the queue of bad ones if it is one, those with the shortest edges first.
    void Judge(Index t) {
        const std::array<double, 3> squares = SquaredLengths(t);
        const double shortest = std::min({squares[0], squares[1], squares[2]});
        if (shortest < leastSquare_ || !IsBad(t, squares)) return;
        bad_.push_back({shortest, t, mesh_.corners[Slot(t)]});
        std::push_heap(bad_.begin(), bad_.end(), IsLater);
    }

    std::array<double, 3> SquaredLengths(Index t) const {
        std::array<double, 3> squares{};
        for (std::size_t edge = 0; edge < 3; ++edge) {
            const Point along =
                CornerPoint(mesh_, t, Before(edge)) - CornerPoint(mesh_, t, After(edge));
            squares[edge] = Dot(along, along);
        }
        return squares;
    }

    // Whether a triangle is too large, or has an angle too small that can be mended.
    bool IsBad(Index t, const std::array<double, 3>& squares) const {
        const Point& apex = CornerPoint(mesh_, t, 0);
        const double twiceArea =
            Cross(CornerPoint(mesh_, t, 1) - apex, CornerPoint(mesh_, t, 2) - apex);
        if (0.5 * twiceArea > options_.largestArea) return true;
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const double sides = squares[After(corner)] * squares[Before(corner)];
            const bool isAcute = squares[corner] < squares[After(corner)] + squares[Before(corner)];
            if (isAcute && twiceArea * twiceArea < leastSquaredSine_ * sides &&
                !lines_.Impose(mesh_, t, corner)) {
                return true;
            }
        }
        return false;
    }

    void DivideEncroached(Index t) {
        if (const auto edge = EncroachedEdge(t)) DivideRim(t, *edge);
    }

    // The centre of the circle through the corners, or the point nearer to the shortest edge from
    // which the smallest angle that is allowed sees it.
    Point Target(Index t) const {
        const std::array<double, 3> squares = SquaredLengths(t);
        const auto shortest = static_cast<std::size_t>(
            std::min_element(squares.begin(), squares.end()) - squares.begin());
        const Point& start = CornerPoint(mesh_, t, After(shortest));
        const Point base = CornerPoint(mesh_, t, Before(shortest)) - start;
        const Point side = CornerPoint(mesh_, t, shortest) - start;
        // The centre lies above the middle of the base by `height` times the base's length.
        const double height = 0.5 * Dot(side, side - base) / Cross(base, side);
        // Of a triangle so flat that rounding leaves it no area the height may be no number.
        const double used = height < mostHeight_ ? height : mostHeight_;
        return start + 0.5 * base + used * Point(-base.y, base.x);
    }

    // Returns whether a vertex was added.
    bool Improve(Index t) {
        const Point target = Target(t);
        for (;;) {
            std::size_t exit = 3;
            for (std::size_t edge = 0; edge < 3; ++edge) {
                if (exit != 3 && mesh_.neighbours[Slot(t)][edge] == kNone) continue;
                if (Orientation(CornerPoint(mesh_, t, After(edge)),
                                CornerPoint(mesh_, t, Before(edge)), target) < 0) {
                    exit = edge;
                }
            }
            if (exit == 3) break;
            const Index beyond = mesh_.neighbours[Slot(t)][exit];
            if (beyond == kNone) return DivideRim(t, exit);
            t = beyond;
        }
        Dig(target, t);
        for (const CavityEdge& edge : cavityEdges_) {
            if (edge.beyond == kNone && IsEncroached(mesh_.vertices[Slot(edge.from)],
                                                     mesh_.vertices[Slot(edge.to)], target)) {
                return DivideRim(static_cast<Index>(edge.edgeBeyond / 3), edge.edgeBeyond % 3);
            }
        }
        if (!IsStar(target, kNone)) return false;
        lines_.AddVertexWithin();
        Fill(target, kNone);
        return true;
    }

    bool DivideRim(Index t, std::size_t edge) {
        if (SquaredLengths(t)[edge] < leastSquare_) return false;
        const Index from = mesh_.corners[Slot(t)][After(edge)];
        const Point division = lines_.Division(mesh_, from, mesh_.corners[Slot(t)][Before(edge)]);
        Dig(division, t);
        if (!IsStar(division, from)) return false;
        lines_.AddVertexOnEdgeFrom(from);
        Fill(division, from);
        return true;
    }

    // Finds the triangles in whose circles a point lies that hang together with one, and the edges
    // around them.
    void Dig(const Point& point, Index start) {
        inCavity_.resize(mesh_.corners.size(), 0);
        ++cavityNumber_;
        cavity_.assign(1, start);
        cavityEdges_.clear();
        inCavity_[Slot(start)] = cavityNumber_;
        for (std::size_t i = 0; i < cavity_.size(); ++i) {
            const Index t = cavity_[i];
            for (std::size_t edge = 0; edge < 3; ++edge) {
                const Index beyond = mesh_.neighbours[Slot(t)][edge];
                const Index from = mesh_.corners[Slot(t)][After(edge)];
                const Index to = mesh_.corners[Slot(t)][Before(edge)];
                if (beyond == kNone) {
                    cavityEdges_.push_back({from, to, kNone, 3 * Slot(t) + edge});
                    continue;
                }
                if (inCavity_[Slot(beyond)] == cavityNumber_) continue;
                if (InCircle(CornerPoint(mesh_, beyond, 0), CornerPoint(mesh_, beyond, 1),
                             CornerPoint(mesh_, beyond, 2), point) > 0) {
                    inCavity_[Slot(beyond)] = cavityNumber_;
                    cavity_.push_back(beyond);
                } else {
                    cavityEdges_.push_back({from, to, beyond, EdgeBeyond(mesh_, t, edge)});
                }
            }
        }
    }

    // Whether every edge around the cavity sees the point on its left, but for the edge of a ring
    // on which it lies, by the start of that.
    bool IsStar(const Point& point, Index onEdgeFrom) const {
        return std::all_of(cavityEdges_.begin(), cavityEdges_.end(), [&](const CavityEdge& e) {
            return (e.beyond == kNone && e.from == onEdgeFrom) ||
                   Orientation(mesh_.vertices[Slot(e.from)], mesh_.vertices[Slot(e.to)], point) > 0;
        });
    }

    void Fill(const Point& point, Index onEdgeFrom) {
        const auto vertex = static_cast<Index>(mesh_.vertices.size());
        mesh_.vertices.push_back(point);
        leaving_.resize(mesh_.vertices.size(), kNone);
        std::size_t used = 0;
        filled_.clear();
        for (const CavityEdge& edge : cavityEdges_) {
            if (edge.beyond == kNone && edge.from == onEdgeFrom) continue;
            if (used == cavity_.size()) {
                cavity_.push_back(static_cast<Index>(mesh_.corners.size()));
                mesh_.corners.emplace_back();
                mesh_.neighbours.emplace_back();
            }
            const Index t = cavity_[used++];
            mesh_.corners[Slot(t)] = {vertex, edge.from, edge.to};
            mesh_.neighbours[Slot(t)] = {edge.beyond, kNone, kNone};
            if (edge.beyond != kNone) mesh_.neighbours[Slot(edge.beyond)][edge.edgeBeyond] = t;
            leaving_[Slot(edge.from)] = t;
        }
        for (const Index t : cavity_) {
            const Index next = leaving_[Slot(mesh_.corners[Slot(t)][2])];
            mesh_.neighbours[Slot(t)][1] = next;
            if (next != kNone) mesh_.neighbours[Slot(next)][2] = t;
        }
        for (const Index t : cavity_) leaving_[Slot(mesh_.corners[Slot(t)][1])] = kNone;
        filled_ = cavity_;
        for (const Index t : filled_) Look(t);
    }

    const MeshOptions& options_;
    TriangleMesh& mesh_;
    RimLines lines_;
    double leastSquaredSine_ = 0.0;
    double mostHeight_ = 0.0;
    double leastSquare_ = 0.0;  // of the length of edges that are divided
    std::vector<Candidate> rims_;
    std::vector<Candidate> bad_;  // a heap
    std::vector<Index> cavity_, filled_;
    std::vector<CavityEdge> cavityEdges_;
    std::vector<std::uint32_t> inCavity_;
    std::uint32_t cavityNumber_ = 0;
    std::vector<Index> leaving_;  // of each vertex: the new triangle whose outer edge starts there
};

}  // namespace

void Refine(const MeshOptions& options, TriangleMesh* mesh) {
    Refinement(options, *mesh).Run();
}

}  // namespace halvorn::engine
