#include "warping/stresses.h"

#include <cmath>
#include <utility>

#include "warping/lattice.h"
#include "warping/stress_at.h"
#include "warping/warping_fields.h"

namespace halvorn::engine {

namespace {

// For pictures each side of a triangle is divided into as many of these as the points allow: even,
// so that the middle of a wall of one triangle is met.
constexpr std::array<int, 3> kDivisionsOfPicture{8, 4, 2};
constexpr std::size_t kMostPoints = 300000;

// The points of a lattice are about as many as half of its triangles.
int DivisionsFor(std::size_t triangles) {
    for (const int divisions : kDivisionsOfPicture) {
        const auto square = Slot(divisions) * Slot(divisions);
        if (triangles * square / 2 <= kMostPoints) return divisions;
    }
    return kDivisionsOfPicture.back();
}

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

StressField StressFieldOf(const WarpingSolution& solution, const SectionForces& forces) {
    return Sampling(*solution.fields, forces).Run();
}

}  // namespace halvorn::engine
