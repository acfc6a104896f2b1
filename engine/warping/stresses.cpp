#include "warping/stresses.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "warping/boundary_stress.h"
#include "warping/left_out_circles.h"
#include "warping/shape_functions.h"
#include "warping/warping_fields.h"

namespace halvorn::engine {

namespace {

// Each side of a triangle is divided into so many to find the largest stress within; even, so that
// the middle of a wall of one triangle is met.
constexpr int kDivisionsWithin = 6;
constexpr int kDivisionsAtLargest = 100;
// For pictures it is divided into as many of these as the points allow: even again.
constexpr std::array<int, 3> kDivisionsOfPicture{8, 4, 2};
constexpr std::size_t kMostPoints = 300000;

// Points of a lattice over a triangle that is divided into so many along each side, with the
// functions there: point (i, j), 0 <= i, j and i + j <= divisions, at (i, j) / divisions.
class Lattice {
public:
    explicit Lattice(int divisions) : divisions_(divisions) {
        std::vector<std::array<double, 2>> places;
        for (int i = 0; i <= divisions; ++i) {
            for (int j = 0; i + j <= divisions; ++j) {
                places.push_back(
                    {static_cast<double>(i) / divisions, static_cast<double>(j) / divisions});
            }
        }
        for (int order = 1; order <= kHighestOrder; ++order) {
            samples_.push_back(SamplesAt(order, places));
        }
    }

    int Divisions() const { return divisions_; }
    const ShapeSamples& Samples(int order) const { return samples_[Slot(order - 1)]; }
    /// Place of a point among the samples.
    std::size_t Place(int i, int j) const {
        return Slot(i * (divisions_ + 1) - i * (i - 1) / 2 + j);
    }

private:
    int divisions_;
    std::vector<ShapeSamples> samples_;  // by order
};

// The points of a lattice are about as many as half of its triangles.
int DivisionsFor(std::size_t triangles) {
    for (const int divisions : kDivisionsOfPicture) {
        const auto square = Slot(divisions) * Slot(divisions);
        if (triangles * square / 2 <= kMostPoints) return divisions;
    }
    return kDivisionsOfPicture.back();
}

class Largest {
public:
    Largest(const WarpingFields& fields, const SectionForces& forces)
        : part_(fields.parts.front()),
          frame_(fields.frame),
          factors_(FactorsUnder(forces, fields)),
          circles_(SharpCornersOf(part_.fields.space), fields.leftOutRadius) {}

    Stresses Find() {
        FindNormal();
        for (const BoundaryStress& at :
             StressesAlongRings(part_.fields, factors_, circles_.Radius())) {
            const double shear = std::fabs(at.Middle());
            AddShear(shear, at.error, 0.5 * (at.from + at.to));
            for (const Point& end : {at.from, at.to}) AddVonMises(shear, at.error, end);
        }
        FindWithin();
        sum_.shear.stress = {shear_.value, shear_.Error()};
        sum_.vonMises.stress = {vonMises_.value, vonMises_.Error()};
        const double unit = frame_.LengthFromFrame(1.0);
        for (PeakStress* peak : {&sum_.normal, &sum_.shear, &sum_.vonMises}) {
            peak->stress.value /= unit * unit;
            peak->stress.error /= unit * unit;
            peak->place = PlaceOf(peak->place);
        }
        return sum_;
    }

private:
    // In the section's coordinates. The frame makes rounding of what is 0.
    Point PlaceOf(const Point& inPart) const {
        constexpr double kRounding = 1e-12;  // of the size
        const Point place = frame_.FromFrame(part_.moments.centroid + inPart);
        const double least = kRounding * frame_.LengthFromFrame(1.0);
        return {std::fabs(place.x) < least ? 0.0 : place.x,
                std::fabs(place.y) < least ? 0.0 : place.y};
    }

    void FindNormal() {
        constexpr double kRounding = 1e-13;  // of exact integrals and a plane
        const FieldSpace& space = part_.fields.space;
        for (const RimRing& ring : space.rings) {
            for (const EdgeRef& at : ring.edges) {
                const Point& p = space.CornerAt(at.triangle, at.edge + 1);
                const double normal = NormalAt(factors_, p);
                if (std::fabs(normal) <= std::fabs(sum_.normal.stress.value)) continue;
                sum_.normal = {{normal, kRounding * std::fabs(normal)}, p};
            }
        }
    }

    void AddShear(double shear, double error, const Point& at) {
        if (shear_.Add(shear, error)) sum_.shear.place = at;
    }

    // The error is what the root can be off, which is steep where the shear is small.
    void AddVonMises(double shear, double error, const Point& at) {
        const double normal = NormalAt(factors_, at);
        const double both = VonMises(normal, shear);
        const double most = VonMises(normal, shear + error);
        if (vonMises_.Add(both, most - both)) sum_.vonMises.place = at;
    }

    // Points within triangles, but next to the corners of an arc's chords: there the stress along
    // the rings counts.
    void FindWithin() {
        const FieldSpace& space = part_.fields.space;
        const std::vector<double> turns = TurnsOf(space);
        const auto isNextToArc = [&](std::size_t t) {
            const auto& corners = space.mesh.corners[t];
            return std::any_of(corners.begin(), corners.end(),
                               [&](Index v) { return turns[Slot(v)] < -kNoCorner; });
        };
        double largest = 0.0;
        std::size_t at = space.TriangleCount();
        for (std::size_t t = 0; t < space.TriangleCount(); ++t) {
            const double most = isNextToArc(t) ? 0.0 : AddTriangle(t, lattice_);
            if (most <= largest) continue;
            largest = most;
            at = t;
        }
        // Between the points of a large triangle of high order the stress may be larger.
        if (at == space.TriangleCount()) return;
        const Lattice fine{kDivisionsAtLargest};
        AddTriangle(at, fine);
        for (const Index next : space.mesh.neighbours[at]) {
            if (next != kNone && !isNextToArc(Slot(next))) AddTriangle(Slot(next), fine);
        }
    }

    // Adds the stresses at the points of a lattice and returns the largest von Mises stress.
    double AddTriangle(std::size_t triangle, const Lattice& lattice) {
        const FieldSpace& space = part_.fields.space;
        const auto t = static_cast<Index>(triangle);
        const ShapeSamples& samples = lattice.Samples(space.HighestOrderAt(t));
        const auto shears = ShearsAt(part_.fields, factors_, t, samples);
        double largest = 0.0;
        for (std::size_t i = 0; i < shears.size(); ++i) {
            const auto& [xi, eta] = samples.places[i];
            const Point at = PointIn(space, t, xi, eta);
            if (circles_.Contain(at)) continue;
            const double shear = Length(shears[i].Middle());
            const double error = Length(shears[i].free - shears[i].held);
            AddShear(shear, error, at);
            AddVonMises(shear, error, at);
            largest = std::max(largest, VonMises(NormalAt(factors_, at), shear));
        }
        return largest;
    }

    const PartSolution& part_;
    const Frame& frame_;
    FieldFactors factors_;
    LeftOutCircles circles_;
    Lattice lattice_{kDivisionsWithin};
    LargestOf shear_, vonMises_;
    Stresses sum_;
};

// Points of a lattice over the triangles, each once; the stress there is the mean of the
// triangles'.
class Sampling {
public:
    Sampling(const WarpingFields& fields, const SectionForces& forces)
        : part_(fields.parts.front()),
          frame_(fields.frame),
          lattice_(DivisionsFor(part_.fields.space.TriangleCount())),
          factors_(FactorsUnder(forces, fields)) {}

    StressField Run() {
        const FieldSpace& space = part_.fields.space;
        vertexPoint_.assign(space.mesh.vertices.size(), kNone);
        edgePoints_.assign(space.edgeOrders.size(), kNone);
        for (std::size_t t = 0; t < space.TriangleCount(); ++t) AddTriangle(static_cast<Index>(t));
        const double unit = frame_.LengthFromFrame(1.0);
        for (std::size_t i = 0; i < shears_.size(); ++i) {
            const Point at = field_.points[i];
            const double normal = NormalAt(factors_, at) / (unit * unit);
            const Point shears = 1.0 / (counts_[i] * unit * unit) * shears_[i];
            const double shear = Length(shears);
            field_.normal.push_back(normal);
            field_.shears.push_back(shears);
            field_.shear.push_back(shear);
            field_.vonMises.push_back(VonMises(normal, shear));
            field_.points[i] = frame_.FromFrame(part_.moments.centroid + at);
        }
        return std::move(field_);
    }

private:
    Index AddPoint(const Point& at) {
        field_.points.push_back(at);
        shears_.emplace_back();
        counts_.push_back(0.0);
        return static_cast<Index>(field_.points.size() - 1);
    }

    // The point of the lattice with barycentric coordinates l / divisions.
    Index PointAt(Index triangle, const std::array<int, 3>& l) {
        const FieldSpace& space = part_.fields.space;
        const int n = lattice_.Divisions();
        const Point at =
            PointIn(space, triangle, static_cast<double>(l[1]) / n, static_cast<double>(l[2]) / n);
        for (int corner = 0; corner < 3; ++corner) {
            if (l[Slot(corner)] != n) continue;
            Index& point = vertexPoint_[Slot(space.mesh.corners[Slot(triangle)][Slot(corner)])];
            if (point == kNone) point = AddPoint(at);
            return point;
        }
        for (int edge = 0; edge < 3; ++edge) {
            if (l[Slot(edge)] != 0) continue;
            Index& first = edgePoints_[Slot(space.edges[Slot(triangle)][Slot(edge)])];
            const bool runsUp = space.RunsUp(triangle, edge);
            if (first == kNone) {
                for (int k = 1; k < n; ++k) {
                    const double s = static_cast<double>(runsUp ? k : n - k) / n;
                    const Index point = AddPoint((1.0 - s) * space.CornerAt(triangle, edge + 1) +
                                                 s * space.CornerAt(triangle, edge + 2));
                    if (k == 1) first = point;
                }
            }
            const int along = l[Slot((edge + 2) % 3)];
            return first + (runsUp ? along : n - along) - 1;
        }
        return AddPoint(at);
    }

    void AddTriangle(Index triangle) {
        const int n = lattice_.Divisions();
        const FieldSpace& space = part_.fields.space;
        const auto shears = ShearsAt(part_.fields, factors_, triangle,
                                     lattice_.Samples(space.HighestOrderAt(triangle)));
        std::vector<Index> points;
        for (int i = 0; i <= n; ++i) {
            for (int j = 0; i + j <= n; ++j) {
                const Index point = PointAt(triangle, {n - i - j, i, j});
                shears_[Slot(point)] = shears_[Slot(point)] + shears[points.size()].Middle();
                counts_[Slot(point)] += 1.0;
                points.push_back(point);
            }
        }
        const auto at = [&](int i, int j) { return points[lattice_.Place(i, j)]; };
        for (int i = 0; i < n; ++i) {
            for (int j = 0; i + j < n; ++j) {
                field_.triangles.push_back({at(i, j), at(i + 1, j), at(i, j + 1)});
                if (i + j + 1 == n) continue;
                field_.triangles.push_back({at(i + 1, j), at(i + 1, j + 1), at(i, j + 1)});
            }
        }
    }

    const PartSolution& part_;
    const Frame& frame_;
    Lattice lattice_;
    FieldFactors factors_;
    StressField field_;
    std::vector<Point> shears_;
    std::vector<double> counts_;
    std::vector<Index> vertexPoint_, edgePoints_;
};

}  // namespace

std::optional<NeutralLine> NeutralLineOf(const WarpingSolution& solution,
                                         const SectionForces& forces) {
    const WarpingFields& fields = *solution.fields;
    const FieldFactors factors = FactorsUnder(forces, fields);
    const double slope = Length(factors.bending);
    if (!(slope > 0.0)) return std::nullopt;
    const Point uphill = 1.0 / slope * factors.bending;
    const Point at = fields.parts.front().moments.centroid - factors.axial / slope * uphill;
    return NeutralLine{fields.frame.FromFrame(at), {-uphill.y, uphill.x}};
}

Stresses LargestStresses(const WarpingSolution& solution, const SectionForces& forces) {
    return Largest(*solution.fields, forces).Find();
}

StressField StressFieldOf(const WarpingSolution& solution, const SectionForces& forces) {
    return Sampling(*solution.fields, forces).Run();
}

}  // namespace halvorn::engine
