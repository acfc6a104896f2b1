#include "warping/stresses.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "warping/boundary_stress.h"
#include "warping/warping_fields.h"

namespace halvorn::engine {

namespace {

// Each side of a triangle is divided into so many: for pictures, and for the largest stress within.
constexpr int kDivisions = 3;

// Forces in the frame: lengths there are 1 / unit of the section's.
FieldFactors FactorsOf(const PartSolution& part, double unit, double poissonFactor,
                       const SectionForces& forces) {
    const PartMoments& m = part.moments;
    const Energies& e = part.energies;
    const double determinant = m.xx * m.yy - m.xy * m.xy;
    const Point moments{forces.my / unit, forces.mx / unit};  // integrals of stress times x, y
    const double torsion = 0.5 * (e.torsionLower + e.torsionUpper);
    FieldFactors factors;
    factors.axial = forces.n / m.area;
    factors.bending = {(m.yy * moments.x - m.xy * moments.y) / determinant,
                       (m.xx * moments.y - m.xy * moments.x) / determinant};
    factors.shear = {forces.vx, forces.vy};
    factors.twist = forces.t / unit / torsion;
    for (std::size_t load = 0; load < 2; ++load) {
        factors.lateral[load] = poissonFactor * factors.shear[load];
        factors.twist -= factors.lateral[load] * e.torqueOfLateral[load] / torsion;
    }
    return factors;
}

double Length(const Point& p) {
    return std::hypot(p.x, p.y);
}

double VonMises(double normal, double shear) {
    return std::sqrt(normal * normal + 3.0 * shear * shear);
}

class Largest {
public:
    Largest(const WarpingFields& fields, const SectionForces& forces)
        : part_(fields.parts.front()),
          frame_(fields.frame),
          radius_(fields.leftOutRadius),
          factors_(FactorsOf(part_, frame_.LengthFromFrame(1.0), fields.poissonFactor, forces)),
          corners_(SharpCornersOf(part_.fields.space)) {}

    Stresses Find() {
        FindNormal();
        for (const BoundaryStress& at : StressesAlongRings(part_.fields, factors_, radius_)) {
            AddShear(std::fabs(at.Middle()), std::fabs(at.free - at.held), 0.5 * (at.from + at.to));
            for (const Point& end : {at.from, at.to}) {
                AddVonMises(std::fabs(at.Middle()), std::fabs(at.free - at.held), end);
            }
        }
        FindWithin();
        const double unit = frame_.LengthFromFrame(1.0);
        for (PeakStress* peak : {&sum_.normal, &sum_.shear, &sum_.vonMises}) {
            peak->stress.value /= unit * unit;
            peak->stress.error /= unit * unit;
            peak->place = frame_.FromFrame(part_.moments.centroid + peak->place);
        }
        return sum_;
    }

private:
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
        if (shear <= sum_.shear.stress.value) return;
        sum_.shear = {{shear, error}, at};
    }

    void AddVonMises(double shear, double error, const Point& at) {
        const double normal = NormalAt(factors_, at);
        const double both = VonMises(normal, shear);
        if (both <= sum_.vonMises.stress.value) return;
        sum_.vonMises = {{both, 3.0 * shear * error / both}, at};
    }

    bool IsLeftOut(const Point& p) const {
        return std::any_of(corners_.begin(), corners_.end(), [&](const Point& corner) {
            return Length(p - corner) < radius_ * (1.0 - 1e-9);
        });
    }

    // Points within triangles, but next to the corners of an arc's chords: there the stress along
    // the rings counts.
    void FindWithin() {
        const FieldSpace& space = part_.fields.space;
        const std::vector<double> turns = TurnsOf(space);
        for (std::size_t t = 0; t < space.TriangleCount(); ++t) {
            const auto& corners = space.mesh.corners[t];
            const auto triangle = static_cast<Index>(t);
            if (std::any_of(corners.begin(), corners.end(),
                            [&](Index v) { return turns[Slot(v)] < 0.0; })) {
                continue;
            }
            for (int i = 0; i <= kDivisions; ++i) {
                for (int j = 0; i + j <= kDivisions; ++j) {
                    const double xi = static_cast<double>(i) / kDivisions;
                    const double eta = static_cast<double>(j) / kDivisions;
                    const Point at = PointIn(space, triangle, xi, eta);
                    if (IsLeftOut(at)) continue;
                    const ShearPair shear = ShearAt(part_.fields, factors_, triangle, xi, eta);
                    const double error = Length(shear.free - shear.held);
                    AddShear(Length(shear.Middle()), error, at);
                    AddVonMises(Length(shear.Middle()), error, at);
                }
            }
        }
    }

    const PartSolution& part_;
    const Frame& frame_;
    double radius_;
    FieldFactors factors_;
    Points corners_;
    Stresses sum_;
};

// Points of a lattice over the triangles, each once; the stress there is the mean of the
// triangles'.
class Sampling {
public:
    Sampling(const WarpingFields& fields, const SectionForces& forces)
        : part_(fields.parts.front()),
          frame_(fields.frame),
          factors_(FactorsOf(part_, frame_.LengthFromFrame(1.0), fields.poissonFactor, forces)) {}

    StressField Run() {
        const FieldSpace& space = part_.fields.space;
        vertexPoint_.assign(space.mesh.vertices.size(), kNone);
        edgePoints_.assign(space.edgeOrders.size(), kNone);
        for (std::size_t t = 0; t < space.TriangleCount(); ++t) AddTriangle(static_cast<Index>(t));
        const double unit = frame_.LengthFromFrame(1.0);
        for (std::size_t i = 0; i < shears_.size(); ++i) {
            const Point at = field_.points[i];
            const double normal = NormalAt(factors_, at) / (unit * unit);
            const double shear = Length(1.0 / counts_[i] * shears_[i]) / (unit * unit);
            field_.normal.push_back(normal);
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

    // The point of the lattice with barycentric coordinates l / kDivisions.
    Index PointAt(Index triangle, const std::array<int, 3>& l) {
        const FieldSpace& space = part_.fields.space;
        const Point at = PointIn(space, triangle, static_cast<double>(l[1]) / kDivisions,
                                 static_cast<double>(l[2]) / kDivisions);
        for (int corner = 0; corner < 3; ++corner) {
            if (l[Slot(corner)] != kDivisions) continue;
            Index& point = vertexPoint_[Slot(space.mesh.corners[Slot(triangle)][Slot(corner)])];
            if (point == kNone) point = AddPoint(at);
            return point;
        }
        for (int edge = 0; edge < 3; ++edge) {
            if (l[Slot(edge)] != 0) continue;
            Index& first = edgePoints_[Slot(space.edges[Slot(triangle)][Slot(edge)])];
            const bool runsUp = space.RunsUp(triangle, edge);
            if (first == kNone) {
                for (int k = 1; k < kDivisions; ++k) {
                    const double s = static_cast<double>(runsUp ? k : kDivisions - k) / kDivisions;
                    const Index point = AddPoint((1.0 - s) * space.CornerAt(triangle, edge + 1) +
                                                 s * space.CornerAt(triangle, edge + 2));
                    if (k == 1) first = point;
                }
            }
            const int along = l[Slot((edge + 2) % 3)];
            return first + (runsUp ? along : kDivisions - along) - 1;
        }
        return AddPoint(at);
    }

    void AddTriangle(Index triangle) {
        std::array<std::array<Index, kDivisions + 1>, kDivisions + 1> points{};
        for (int i = 0; i <= kDivisions; ++i) {
            for (int j = 0; i + j <= kDivisions; ++j) {
                const Index point = PointAt(triangle, {kDivisions - i - j, i, j});
                points[Slot(i)][Slot(j)] = point;
                const ShearPair shear =
                    ShearAt(part_.fields, factors_, triangle, static_cast<double>(i) / kDivisions,
                            static_cast<double>(j) / kDivisions);
                shears_[Slot(point)] = shears_[Slot(point)] + shear.Middle();
                counts_[Slot(point)] += 1.0;
            }
        }
        for (std::size_t i = 0; i < kDivisions; ++i) {
            for (std::size_t j = 0; i + j < kDivisions; ++j) {
                field_.triangles.push_back({points[i][j], points[i + 1][j], points[i][j + 1]});
                if (i + j + 1 == kDivisions) continue;
                field_.triangles.push_back(
                    {points[i + 1][j], points[i + 1][j + 1], points[i][j + 1]});
            }
        }
    }

    const PartSolution& part_;
    const Frame& frame_;
    FieldFactors factors_;
    StressField field_;
    std::vector<Point> shears_;
    std::vector<double> counts_;
    std::vector<Index> vertexPoint_, edgePoints_;
};

}  // namespace

Stresses LargestStresses(const WarpingSolution& solution, const SectionForces& forces) {
    return Largest(*solution.fields, forces).Find();
}

StressField StressFieldOf(const WarpingSolution& solution, const SectionForces& forces) {
    return Sampling(*solution.fields, forces).Run();
}

}  // namespace halvorn::engine
