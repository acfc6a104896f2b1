#include "warping/refinement.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <utility>
#include <vector>

#include "base/heap.h"
#include "geometry/arrangement.h"
#include "geometry/box.h"
#include "geometry/predicates.h"
#include "warping/cavity.h"
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

// Edges shorter than this part of the size are not divided, and triangles lower than this are left:
// points nearer than this are one where outlines are arranged, so that what is thinner is rounding.
constexpr double kShortest = kMergeDistance;

// J. Ruppert, A Delaunay refinement algorithm for quality 2-dimensional mesh generation, 1995:
// edges of rings that are encroached are divided; else the centre of a bad triangle's circle
// becomes a vertex, unless it would encroach on an edge, which is divided instead.
class Refinement {
public:
    Refinement(const MeshOptions& options, TriangleMesh& mesh)
        : options_(options), mesh_(mesh), lines_(mesh), cavity_(mesh) {
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
                if (!IsStillThere(next)) continue;
                if (const auto edge = EncroachedEdge(next.triangle)) {
                    DivideRim(next.triangle, *edge);
                }
            } else if (!bad_.empty()) {
                const Candidate next = PopFromHeap(bad_, IsLater);
                if (!IsStillThere(next) || !Improve(next.triangle)) continue;
                // An edge of a ring was divided in its place.
                if (IsStillThere(next)) Judge(next.triangle);
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

    static bool IsLater(const Candidate& a, const Candidate& b) { return a.rank > b.rank; }

    bool IsStillThere(const Candidate& c) const {
        return mesh_.corners[Slot(c.triangle)] == c.corners;
    }

    // Whether a vertex is so near to an edge of a ring that this is divided.
    static bool IsEncroached(const Point& from, const Point& to, const Point& by) {
        const Point a = from - by;
        const Point b = to - by;
        const double product = Dot(a, b);
        return product < 0.0 && product * product > kLensSquaredCosine * Dot(a, a) * Dot(b, b);
    }

    // A triangle's edge on a ring that its other corner encroaches.
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

    // Leaves a triangle whose height is mere rounding; else asks what is to be done about it.
    void Look(Index t) {
        const std::array<double, 3> squares = SquaredLengths(t);
        const double longest = *std::max_element(squares.begin(), squares.end());
        const double twiceArea = TwiceArea(t);
        if (twiceArea * twiceArea < leastSquare_ * longest) return;
        if (EncroachedEdge(t)) rims_.push_back({0.0, t, mesh_.corners[Slot(t)]});
        Judge(t);
    }

    double TwiceArea(Index t) const {
        const Point& apex = CornerPoint(mesh_, t, 0);
        return Cross(CornerPoint(mesh_, t, 1) - apex, CornerPoint(mesh_, t, 2) - apex);
    }

    // Puts a triangle into the queue of bad ones if it is one, those with the shortest edges first.
    void Judge(Index t) {
        const std::array<double, 3> squares = SquaredLengths(t);
        if (!IsBad(t, squares)) return;
        const double shortest = *std::min_element(squares.begin(), squares.end());
        PushOnHeap(bad_, {shortest, t, mesh_.corners[Slot(t)]}, IsLater);
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
        const double twiceArea = TwiceArea(t);
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

    // The triangle in which a point lies that is in the circle of this one, and the edge of a ring
    // beyond which it lies, if one is in its way; 3 without one. In each triangle on the way the
    // point lies deeper in the circle, so that the way ends; and since it lies in the circle of the
    // last one, it or the corner opposite lies in the circle over such an edge.
    std::pair<Index, std::size_t> Locate(const Point& point, Index t) const {
        std::size_t exit = 3;
        // Bounded lest the rounding of vertices on rings makes a way that does not end.
        for (std::size_t steps = 0; steps < mesh_.corners.size(); ++steps) {
            exit = 3;
            for (std::size_t edge = 0; edge < 3; ++edge) {
                if (exit != 3 && mesh_.neighbours[Slot(t)][edge] == kNone) continue;
                const Point& from = CornerPoint(mesh_, t, After(edge));
                if (Orientation(from, CornerPoint(mesh_, t, Before(edge)), point) < 0) exit = edge;
            }
            if (exit == 3 || mesh_.neighbours[Slot(t)][exit] == kNone) break;
            t = mesh_.neighbours[Slot(t)][exit];
        }
        return {t, exit};
    }

    // Returns whether a vertex was added.
    bool Improve(Index t) {
        const Point target = Target(t);
        const auto [place, edgeBefore] = Locate(target, t);
        if (edgeBefore != 3) {
            return mesh_.neighbours[Slot(place)][edgeBefore] == kNone &&
                   DivideRim(place, edgeBefore);
        }
        cavity_.Dig(target, place);
        for (const Cavity::Edge& edge : cavity_.Edges()) {
            if (edge.beyond == kNone && IsEncroached(mesh_.vertices[Slot(edge.from)],
                                                     mesh_.vertices[Slot(edge.to)], target)) {
                return DivideRim(edge.within, edge.edgeWithin);
            }
        }
        if (!cavity_.Fill()) return false;
        lines_.AddVertexWithin();
        LookAtNew();
        return true;
    }

    bool DivideRim(Index t, std::size_t edge) {
        if (SquaredLengths(t)[edge] < leastSquare_) return false;
        const Index from = mesh_.corners[Slot(t)][After(edge)];
        const Index to = mesh_.corners[Slot(t)][Before(edge)];
        cavity_.Dig(lines_.Division(mesh_, from, to), t, from);
        if (!cavity_.Fill()) return false;
        lines_.AddVertexOnEdgeFrom(from);
        LookAtNew();
        return true;
    }

    void LookAtNew() {
        for (const Index t : cavity_.Triangles()) Look(t);
    }

    const MeshOptions& options_;
    TriangleMesh& mesh_;
    RimLines lines_;
    Cavity cavity_;
    double leastSquaredSine_ = 0.0;
    double mostHeight_ = 0.0;
    double leastSquare_ = 0.0;  // of the length of edges that are divided
    std::vector<Candidate> rims_;
    std::vector<Candidate> bad_;  // a heap
};

}  // namespace

void Refine(const MeshOptions& options, TriangleMesh* mesh) {
    Refinement(options, *mesh).Run();
}

}  // namespace halvorn::engine
