#include "warping/boundary_stress.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <utility>

#include "warping/left_out_circles.h"
#include "warping/ring_sides.h"
#include "warping/shape_functions.h"

namespace halvorn::engine {

namespace {

// Points at which each edge of the mesh is sampled, and those of a mean over a stretch of it.
constexpr int kSamples = 8;
constexpr int kMeanOrder = 5;
// Of the largest stress of an edge: where its fields are compared.
constexpr double kComparable = 0.5;
// The mean stress of a chord is known well enough to this part of the largest stress: richer fields
// show more of the corners at its ends, which the arc does not have.
constexpr double kMeanAllowed = 1e-2;
// The stress along a stretch may be bent by so much more than the soft corners at its ends bend it,
// of that, before its points count, and by twice as much before they count in full. Along a ring of
// equal chords the corners farther off add a tenth.
constexpr double kBentOtherwise = 0.15;
// What triangles that need nothing have together of the error.
constexpr double kNoShare = 0.1;

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

// How much of what the stress at points of a stretch differs from the mean is no work of the soft
// corners at its ends, from 0 to 1. With u from 0 to 1 along it they give the stress the factor
// 1 + (turnFrom ln(e u) + turnTo ln(e (1 - u))) / pi,
// whose mean is 1 and which has -5/6 of the turns over pi of Legendre's 6 u^2 - 6 u + 1. Fields of
// low order show less of it, down to nothing.
// @param bend  of that polynomial in the stress
double PartOfPoints(const Stretch& stretch, double mean, double bend) {
    constexpr double kBend = 5.0 / 6.0 / std::numbers::pi;
    const double ofCorners = -kBend * (stretch.from.turn + stretch.to.turn) * mean;
    const double most =
        kBend * (std::fabs(stretch.from.turn) + std::fabs(stretch.to.turn)) * std::fabs(mean);
    const double allowed = kBentOtherwise * most;
    const double other = std::max(bend - std::max(ofCorners, 0.0), std::min(ofCorners, 0.0) - bend);
    return other >= 2.0 * allowed ? 1.0 : std::max(0.0, other / allowed - 1.0);
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
        // The radius is a quarter of a wall's thickness.
        const double reach = 4.0 * circles_.Radius();
        for (const Stretch& stretch : StretchesOf(fields_.space, ring_, reach)) {
            if (stretch.HasSoftCorner()) {
                AddBeside(stretch);
            } else {
                AddPoints(stretch, nullptr, 1.0);
            }
        }
    }

private:
    const EdgeRef& EdgeAt(std::size_t i) const { return ring_.edges[i % ring_.edges.size()]; }
    const Point& StartOf(std::size_t i) const {
        const EdgeRef& at = EdgeAt(i);
        return fields_.space.CornerAt(at.triangle, at.edge + 1);
    }
    double LengthAt(std::size_t i) const { return LengthOf(fields_.space, EdgeAt(i)); }

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

    // The mean of a stretch beside soft corners, and the stress at its points as far as it varies
    // by more than they make it.
    void AddBeside(const Stretch& stretch) {
        double bend = 0.0;
        const BoundaryStress mean = MeanOver(stretch, &bend);
        if (mean.count == 0 || circles_.Contain(0.5 * (mean.from + mean.to))) return;
        to_.push_back(mean);
        const double part = PartOfPoints(stretch, mean.Middle(), bend);
        if (part > 0.0) AddPoints(stretch, &mean, part);
    }

    // The mean over a stretch, and how much of Legendre's polynomial of second degree it has.
    BoundaryStress MeanOver(const Stretch& stretch, double* bend) const {
        BoundaryStress mean;
        mean.ring = ringNumber_;
        mean.count = 0;
        double along = 0.0;
        const Quadrature& rule = QuadratureOf(kMeanOrder);
        for (std::size_t i = stretch.first; i < stretch.first + stretch.count; ++i) {
            const double length = LengthAt(i);
            const double start = std::exchange(along, along + length);
            const double a = std::clamp((stretch.from.distance - start) / length, 0.0, 1.0);
            const double b = std::clamp((stretch.to.distance - start) / length, 0.0, 1.0);
            if (!(b > a)) continue;
            if (mean.count++ == 0) {
                mean.from = StartOf(i) + a * (StartOf(i + 1) - StartOf(i));
                mean.first = i % ring_.edges.size();
            }
            mean.to = StartOf(i) + b * (StartOf(i + 1) - StartOf(i));
            const std::vector<BoundaryStress> stresses = OverPart(i, a, b);
            const double part = (b - a) * length / stretch.Length();
            for (std::size_t k = 0; k < stresses.size(); ++k) {
                const double weight = part * rule.lineWeights[k];
                const double distance = start + (a + (b - a) * rule.linePoints[k]) * length;
                const double u = (distance - stretch.from.distance) / stretch.Length();
                mean.free += weight * stresses[k].free;
                mean.held += weight * stresses[k].held;
                *bend += 5.0 * weight * (6.0 * u * (u - 1.0) + 1.0) * stresses[k].Middle();
            }
        }
        mean.error = std::fabs(mean.free - mean.held);
        return mean;
    }

    // At Gauss's points between two parts of an edge.
    std::vector<BoundaryStress> OverPart(std::size_t i, double a, double b) const {
        const int edge = EdgeAt(i).edge;
        if (a == 0.0 && b == 1.0) return At(i, SamplesOf(OrderAt(i), edge).means);
        std::vector<double> places = QuadratureOf(kMeanOrder).linePoints;
        for (double& s : places) s = a + (b - a) * s;
        return At(i, OnEdge(OrderAt(i), edge, places));
    }

    // The stress at the points of a stretch, and where the circles end.
    // @param mean  of the stretch; null of one without soft corners
    // @param part  of what the points differ from the mean
    void AddPoints(const Stretch& stretch, const BoundaryStress* mean, double part) {
        const std::vector<double> ends = EndsOfCircles(stretch);
        const double from = stretch.from.distance + stretch.from.leftOut;
        const double to = stretch.to.distance - stretch.to.leftOut;
        double start = 0.0;
        for (std::size_t i = stretch.first; i < stretch.first + stretch.count; ++i) {
            const double length = LengthAt(i);
            const std::size_t before = to_.size();
            const auto add = [&](BoundaryStress stress, double s) {
                const double distance = start + s * length;
                if (distance < from || distance > to || circles_.Contain(stress.from)) return;
                if (mean != nullptr) {
                    stress.free = mean->free + part * (stress.free - mean->free);
                    stress.held = mean->held + part * (stress.held - mean->held);
                }
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
    std::vector<double> EndsOfCircles(const Stretch& side) const {
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
        for (const EdgeRef& at : ring.edges) length += LengthOf(space, at);
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
