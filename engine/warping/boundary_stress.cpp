#include "warping/boundary_stress.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "warping/left_out_circles.h"
#include "warping/shape_functions.h"

namespace halvorn::engine {

namespace {

// Edges of the mesh belong to one side of the outline while they turn by less: rounding [radians].
constexpr double kStraight = 1e-6;
// A chord is no longer than so many times a neighbour of the same arc.
constexpr double kChordRatio = 3.0;
// Points at which each edge of the mesh is sampled, and those of a mean over a stretch of it.
constexpr int kSamples = 8;
constexpr int kMeanOrder = 5;
// Of the largest stress of an edge: where its fields are compared.
constexpr double kComparable = 0.5;
// The mean stress of a chord is known well enough to this part of the largest stress: richer fields
// show more of the corners at its ends, which the arc does not have.
constexpr double kMeanAllowed = 1e-2;
// What triangles that need nothing have together of the error.
constexpr double kNoShare = 0.1;

// A straight side of a ring: edges first to first + count of the ring, all round.
struct Side {
    std::size_t first = 0;
    std::size_t count = 0;
    double length = 0.0;
    double turnBefore = 0.0;  // at its start, positive out of the material's way: a convex corner
    double turnAfter = 0.0;
};

// The part of an edge at a place of the reference triangle on it, 0 to 1.
double PartOf(int edge, const std::array<double, 2>& place) {
    const std::array<double, 3> l{1.0 - place[0] - place[1], place[0], place[1]};
    return l[Slot((edge + 2) % 3)];
}

ShapeSamples OnEdge(int order, int edge, const std::vector<double>& parts) {
    std::vector<std::array<double, 2>> places;
    for (const double s : parts) {
        std::array<double, 3> l{};
        l[Slot((edge + 1) % 3)] = 1.0 - s;
        l[Slot((edge + 2) % 3)] = s;
        places.push_back({l[1], l[2]});
    }
    return SamplesAt(order, std::move(places));
}

// What each edge of a ring is sampled at.
struct EdgeSamples {
    ShapeSamples points;
    ShapeSamples means;
};

const EdgeSamples& SamplesOf(int order, int edge) {
    static const std::vector<EdgeSamples> all = [] {
        std::vector<double> points;
        for (int k = 0; k <= kSamples; ++k) points.push_back(static_cast<double>(k) / kSamples);
        const std::vector<double>& means = QuadratureOf(kMeanOrder).linePoints;
        std::vector<EdgeSamples> samples;
        for (int p = 1; p <= kHighestOrder; ++p) {
            for (int i = 0; i < 3; ++i)
                samples.push_back({OnEdge(p, i, points), OnEdge(p, i, means)});
        }
        return samples;
    }();
    return all[3 * Slot(order - 1) + Slot(edge)];
}

class RingStress {
public:
    RingStress(const Fields& fields, const FieldFactors& factors, std::size_t ringNumber,
               const LeftOutCircles& circles, std::vector<BoundaryStress>* to)
        : fields_(fields),
          factors_(factors),
          ringNumber_(ringNumber),
          ring_(fields.space.rings[ringNumber]),
          circles_(circles),
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

    // The stresses along an edge of the ring at places of it, 0 to 1.
    std::vector<BoundaryStress> At(std::size_t i, const ShapeSamples& samples) const {
        const EdgeRef& at = EdgeAt(i);
        const Point start = StartOf(i);
        const Point d = StartOf(i + 1) - start;
        const double length = std::hypot(d.x, d.y);
        std::vector<BoundaryStress> stresses;
        const auto shears = ShearsAt(fields_, factors_, at.triangle, samples);
        for (std::size_t k = 0; k < shears.size(); ++k) {
            const Point place = start + PartOf(at.edge, samples.places[k]) * d;
            stresses.push_back({Dot(shears[k].free, d) / length, Dot(shears[k].held, d) / length,
                                0.0, place, place, ringNumber_, i % ring_.edges.size()});
        }
        return stresses;
    }
    BoundaryStress At(std::size_t i, double s) const {
        return At(i, OnEdge(OrderAt(i), EdgeAt(i).edge, {s})).front();
    }
    int OrderAt(std::size_t i) const { return fields_.space.HighestOrderAt(EdgeAt(i).triangle); }

    // The mean between two distances from the start of a side.
    void AddMean(const Side& side, double from, double to) {
        BoundaryStress mean;
        mean.ring = ringNumber_;
        mean.count = 0;
        double weights = 0.0;
        double along = 0.0;
        const Quadrature& rule = QuadratureOf(kMeanOrder);
        for (std::size_t i = side.first; i < side.first + side.count; ++i) {
            const double length = LengthOf(i);
            const double a = std::clamp((from - along) / length, 0.0, 1.0);
            const double b = std::clamp((to - along) / length, 0.0, 1.0);
            along += length;
            if (!(b > a)) continue;
            if (weights == 0.0) {
                mean.from = StartOf(i) + a * (StartOf(i + 1) - StartOf(i));
                mean.first = i % ring_.edges.size();
            }
            mean.to = StartOf(i) + b * (StartOf(i + 1) - StartOf(i));
            ++mean.count;
            const std::vector<BoundaryStress> stresses = OverPart(i, a, b);
            for (std::size_t k = 0; k < stresses.size(); ++k) {
                const double weight = (b - a) * length * rule.lineWeights[k];
                mean.free += weight * stresses[k].free;
                mean.held += weight * stresses[k].held;
                weights += weight;
            }
        }
        if (weights == 0.0 || circles_.Contain(0.5 * (mean.from + mean.to))) return;
        mean.free /= weights;
        mean.held /= weights;
        mean.error = std::fabs(mean.free - mean.held);
        to_.push_back(mean);
    }

    // At Gauss's points between two parts of an edge.
    std::vector<BoundaryStress> OverPart(std::size_t i, double a, double b) const {
        const int edge = EdgeAt(i).edge;
        if (a == 0.0 && b == 1.0) return At(i, SamplesOf(OrderAt(i), edge).means);
        std::vector<double> places = QuadratureOf(kMeanOrder).linePoints;
        for (double& s : places) s = a + (b - a) * s;
        return At(i, OnEdge(OrderAt(i), edge, places));
    }

    // Points between two distances from the start of a side, and where the circles end.
    void AddPoints(const Side& side, double from, double to) {
        const std::vector<double> ends = EndsOfCircles(side);
        double start = 0.0;
        for (std::size_t i = side.first; i < side.first + side.count; ++i) {
            const double length = LengthOf(i);
            const std::size_t before = to_.size();
            const auto add = [&](const BoundaryStress& stress, double s) {
                const double distance = start + s * length;
                if (distance < from || distance > to || circles_.Contain(stress.from)) return;
                to_.push_back(stress);
            };
            const auto stresses = At(i, SamplesOf(OrderAt(i), EdgeAt(i).edge).points);
            for (std::size_t k = 0; k < stresses.size(); ++k) {
                add(stresses[k], static_cast<double>(k) / kSamples);
            }
            const double peak = PeakOn(i, stresses);
            add(At(i, peak), peak);
            for (const double end : ends) {
                const double s = (end - start) / length;
                if (s >= 0.0 && s <= 1.0) add(At(i, s), s);
            }
            start += length;
            SetErrors(before);
        }
    }

    // Where along an edge the stress is largest, 0 to 1: the peak of the parabola through samples,
    // then that of a narrower one.
    double PeakOn(std::size_t i, const std::vector<BoundaryStress>& samples) const {
        constexpr double kNarrow = 1.0 / (4.0 * kSamples);
        const auto peakAmong = [](const std::vector<BoundaryStress>& stresses) {
            std::vector<double> magnitudes;
            magnitudes.reserve(stresses.size());
            for (const BoundaryStress& at : stresses) magnitudes.push_back(std::fabs(at.Middle()));
            return PeakAmong(magnitudes).at;
        };
        const double first = peakAmong(samples) / kSamples;
        const double low = std::clamp(first - kNarrow, 0.0, 1.0 - 2.0 * kNarrow);
        const std::vector<double> parts = {low, low + kNarrow, low + 2.0 * kNarrow};
        return low + kNarrow * peakAmong(At(i, OnEdge(OrderAt(i), EdgeAt(i).edge, parts)));
    }

    // Both fields may agree by chance at a point: they are compared all along its edge, wherever
    // the stress is about as large.
    void SetErrors(std::size_t first) {
        const auto points = std::span(to_).subspan(first);
        double largest = 0.0;
        for (const BoundaryStress& at : points) largest = std::max(largest, std::fabs(at.Middle()));
        double error = 0.0;
        for (const BoundaryStress& at : points) {
            if (std::fabs(at.Middle()) < kComparable * largest) continue;
            error = std::max(error, std::fabs(at.free - at.held));
        }
        for (BoundaryStress& at : points) at.error = error;
    }

    // Where the circles about sharp corners end on a side: distances from its start.
    std::vector<double> EndsOfCircles(const Side& side) const {
        std::vector<double> ends;
        const Point origin = StartOf(side.first);
        const Point d = StartOf(side.first + side.count) - origin;
        const Point along = 1.0 / std::hypot(d.x, d.y) * d;
        const double radius = circles_.Radius();
        const double right = origin.x + d.x;
        for (const Point& corner :
             circles_.Between(std::min(origin.x, right), std::max(origin.x, right))) {
            const double middle = Dot(corner - origin, along);
            const double off = Cross(along, corner - origin);
            if (std::fabs(off) > radius) continue;
            const double half = std::sqrt(radius * radius - off * off);
            ends.push_back(middle - half);
            ends.push_back(middle + half);
        }
        return ends;
    }

    const Fields& fields_;
    const FieldFactors& factors_;
    std::size_t ringNumber_;
    const RimRing& ring_;
    const LeftOutCircles& circles_;
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
    const LeftOutCircles circles(SharpCornersOf(fields.space), radius);
    for (std::size_t ring = 0; ring < fields.space.rings.size(); ++ring) {
        RingStress(fields, factors, ring, circles, &stresses).Add();
    }
    return stresses;
}

LargestOf LargestAlongRings(const std::vector<BoundaryStress>& stresses) {
    LargestOf largest;
    for (const BoundaryStress& at : stresses) largest.Add(std::fabs(at.Middle()), at.error);
    return largest;
}

double RimLength(const FieldSpace& space) {
    double length = 0.0;
    for (const RimRing& ring : space.rings) {
        for (const EdgeRef& at : ring.edges) {
            const Point d =
                space.CornerAt(at.triangle, at.edge + 2) - space.CornerAt(at.triangle, at.edge + 1);
            length += std::hypot(d.x, d.y);
        }
    }
    return length;
}

std::vector<double> SharesInStress(const FieldSpace& space,
                                   const std::vector<BoundaryStress>& stresses, double allowed) {
    const LargestOf largest = LargestAlongRings(stresses);
    const std::size_t count = space.TriangleCount();
    std::vector<double> shares(count, kNoShare / static_cast<double>(count));
    const double allowedOfMean = kMeanAllowed * largest.value;
    bool isEnough = true;
    for (const BoundaryStress& at : stresses) {
        const bool mayBeLargest =
            std::fabs(at.Middle()) + at.error >= largest.value - largest.error;
        const double itsAllowed = at.IsMean() ? std::max(allowed, allowedOfMean) : allowed;
        if (!mayBeLargest || at.error <= itsAllowed) continue;
        isEnough = false;
        const RimRing& ring = space.rings[at.ring];
        for (std::size_t i = at.first; i < at.first + at.count; ++i) {
            double& share = shares[Slot(ring.edges[i % ring.edges.size()].triangle)];
            share = std::max(share, at.error / itsAllowed);
        }
    }
    if (isEnough) shares.clear();
    return shares;
}

}  // namespace halvorn::engine
