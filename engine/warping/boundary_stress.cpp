#include "warping/boundary_stress.h"

#include <algorithm>
#include <cmath>

#include "warping/shape_functions.h"

namespace halvorn::engine {

namespace {

// Edges of the mesh belong to one side of the outline while they turn by less: rounding [radians].
constexpr double kStraight = 1e-6;
// A chord is no longer than so many times a neighbour of the same arc.
constexpr double kChordRatio = 3.0;
// Points at which each edge of the mesh is sampled, and those of a mean over a stretch of it.
constexpr int kSamples = 8;
constexpr int kMeanOrder = 4;

// A straight side of a ring: edges first to first + count of the ring, all round.
struct Side {
    std::size_t first = 0;
    std::size_t count = 0;
    double length = 0.0;
    double turnBefore = 0.0;  // at its start, positive out of the material's way: a convex corner
    double turnAfter = 0.0;
};

class RingStress {
public:
    RingStress(const Fields& fields, const FieldFactors& factors, const RimRing& ring,
               const Points& corners, double radius, std::vector<BoundaryStress>* to)
        : fields_(fields),
          factors_(factors),
          ring_(ring),
          corners_(corners),
          radius_(radius),
          to_(*to) {}

    void Add() {
        ListSides();
        for (std::size_t i = 0; i < sides_.size(); ++i) {
            const Side& before = sides_[(i + sides_.size() - 1) % sides_.size()];
            const Side& after = sides_[(i + 1) % sides_.size()];
            const Side& side = sides_[i];
            const bool startsSoftly = std::fabs(side.turnBefore) <= kSharpTurn;
            const bool endsSoftly = std::fabs(side.turnAfter) <= kSharpTurn;
            const bool isChord = (startsSoftly && side.length <= kChordRatio * before.length) ||
                                 (endsSoftly && side.length <= kChordRatio * after.length);
            if (isChord) {
                AddMean(side, 0.0, side.length);
                continue;
            }
            const double most = 0.5 * side.length;
            const double start = startsSoftly ? std::min(before.length, most) : 0.0;
            const double end = side.length - (endsSoftly ? std::min(after.length, most) : 0.0);
            if (start > 0.0) AddMean(side, 0.0, start);
            if (end < side.length) AddMean(side, end, side.length);
            AddPoints(side, start, end);
        }
    }

private:
    const EdgeRef& EdgeAt(std::size_t i) const { return ring_.edges[i % ring_.edges.size()]; }
    const Point& StartOf(std::size_t i) const {
        const EdgeRef& at = EdgeAt(i);
        return fields_.space.CornerAt(at.triangle, at.edge + 1);
    }
    double TurnAt(std::size_t i) const {
        const Point& a = StartOf(i + ring_.edges.size() - 1);
        return TurnBetween(StartOf(i) - a, StartOf(i + 1) - StartOf(i));
    }
    double LengthOf(std::size_t i) const {
        const Point d = StartOf(i + 1) - StartOf(i);
        return std::hypot(d.x, d.y);
    }

    void ListSides() {
        const std::size_t count = ring_.edges.size();
        std::size_t start = 0;
        while (start < count && std::fabs(TurnAt(start)) <= kStraight) ++start;
        for (std::size_t i = 0; i < count; ++i) {
            const double turn = TurnAt(start + i);
            if (std::fabs(turn) > kStraight) {
                if (!sides_.empty()) sides_.back().turnAfter = turn;
                sides_.push_back({start + i, 0, 0.0, turn, 0.0});
            }
            ++sides_.back().count;
            sides_.back().length += LengthOf(start + i);
        }
        sides_.back().turnAfter = sides_.front().turnBefore;
    }

    bool IsLeftOut(const Point& p) const {
        return std::any_of(corners_.begin(), corners_.end(), [&](const Point& corner) {
            return std::hypot(p.x - corner.x, p.y - corner.y) < radius_ * (1.0 - 1e-9);
        });
    }

    // The stress along an edge of the ring at a part s of it, 0 to 1.
    BoundaryStress At(std::size_t i, double s) const {
        const EdgeRef& at = EdgeAt(i);
        std::array<double, 3> l{};
        l[Slot((at.edge + 1) % 3)] = 1.0 - s;
        l[Slot((at.edge + 2) % 3)] = s;
        const ShearPair stress = ShearAt(fields_, factors_, at.triangle, l[1], l[2]);
        const Point d = StartOf(i + 1) - StartOf(i);
        const double length = std::hypot(d.x, d.y);
        const Point place = StartOf(i) + s * d;
        return {Dot(stress.free, d) / length, Dot(stress.held, d) / length, place, place};
    }

    // The mean between two distances from the start of a side.
    void AddMean(const Side& side, double from, double to) {
        BoundaryStress mean;
        double weights = 0.0;
        double along = 0.0;
        const Quadrature& rule = QuadratureOf(kMeanOrder);
        for (std::size_t i = side.first; i < side.first + side.count; ++i) {
            const double length = LengthOf(i);
            const double a = std::clamp((from - along) / length, 0.0, 1.0);
            const double b = std::clamp((to - along) / length, 0.0, 1.0);
            along += length;
            if (!(b > a)) continue;
            if (weights == 0.0) mean.from = StartOf(i) + a * (StartOf(i + 1) - StartOf(i));
            mean.to = StartOf(i) + b * (StartOf(i + 1) - StartOf(i));
            for (std::size_t k = 0; k < rule.linePoints.size(); ++k) {
                const BoundaryStress s = At(i, a + (b - a) * rule.linePoints[k]);
                const double weight = (b - a) * length * rule.lineWeights[k];
                mean.free += weight * s.free;
                mean.held += weight * s.held;
                weights += weight;
            }
        }
        if (weights == 0.0 || IsLeftOut(0.5 * (mean.from + mean.to))) return;
        mean.free /= weights;
        mean.held /= weights;
        to_.push_back(mean);
    }

    // Points between two distances from the start of a side, and where the circles end.
    void AddPoints(const Side& side, double from, double to) {
        std::vector<double> ends;
        const Point origin = StartOf(side.first);
        const Point d = StartOf(side.first + side.count) - origin;
        const Point along = 1.0 / std::hypot(d.x, d.y) * d;
        for (const Point& corner : corners_) {
            const double middle = Dot(corner - origin, along);
            const double off = Cross(along, corner - origin);
            if (std::fabs(off) > radius_) continue;
            const double half = std::sqrt(radius_ * radius_ - off * off);
            ends.push_back(middle - half);
            ends.push_back(middle + half);
        }
        double start = 0.0;
        for (std::size_t i = side.first; i < side.first + side.count; ++i) {
            const double length = LengthOf(i);
            const auto add = [&](double s) {
                const double distance = start + s * length;
                if (distance < from || distance > to) return;
                const BoundaryStress stress = At(i, s);
                if (!IsLeftOut(stress.from)) to_.push_back(stress);
            };
            for (int k = 0; k <= kSamples; ++k) add(static_cast<double>(k) / kSamples);
            for (const double end : ends) {
                const double s = (end - start) / length;
                if (s >= 0.0 && s <= 1.0) add(s);
            }
            start += length;
        }
    }

    const Fields& fields_;
    const FieldFactors& factors_;
    const RimRing& ring_;
    const Points& corners_;
    double radius_;
    std::vector<BoundaryStress>& to_;
    std::vector<Side> sides_;
};

}  // namespace

Points SharpCornersOf(const FieldSpace& space) {
    Points corners;
    const std::vector<double> turns = TurnsOf(space);
    for (std::size_t v = 0; v < turns.size(); ++v) {
        if (turns[v] < -kSharpTurn) corners.push_back(space.mesh.vertices[v]);
    }
    return corners;
}

std::vector<BoundaryStress> StressesAlongRings(const Fields& fields, const FieldFactors& factors,
                                               double radius) {
    std::vector<BoundaryStress> stresses;
    const Points corners = SharpCornersOf(fields.space);
    for (const RimRing& ring : fields.space.rings) {
        RingStress(fields, factors, ring, corners, radius, &stresses).Add();
    }
    return stresses;
}

}  // namespace halvorn::engine
