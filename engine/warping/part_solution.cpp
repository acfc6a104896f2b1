#include "warping/part_solution.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "warping/adaptivity.h"
#include "warping/boundary_stress.h"
#include "warping/shape_functions.h"

namespace halvorn::engine {

namespace {

// The largest stress of torsion is wanted to so many times the tolerance, within limits.
constexpr double kStressTolerance = 5.0;
constexpr double kFinestStress = 1e-3;
constexpr double kCoarsestStress = 1e-2;
// So many solutions at most improve it when the brackets are narrow. A round that leaves more than
// this of its error was poor; after more poor ones than this it is left at that.
constexpr int kMostStressRounds = 4;
constexpr double kUseful = 0.7;
constexpr int kMostPoorRounds = 1;
// It may take so many times the unknowns that the brackets took, or so many that cost nothing.
constexpr std::size_t kMostGrowth = 2;
constexpr std::size_t kFewUnknowns = 2000;

LinearLoads LoadsOf(const PartMoments& m) {
    LinearLoads loads;
    loads.slopes = {Point{m.inverseXX, m.inverseXY}, Point{m.inverseXY, m.inverseYY}};
    for (std::size_t load = 0; load < 2; ++load) {
        const Point& slopes = loads.slopes[load];
        loads.directions[load] = 1.0 / std::hypot(slopes.x, slopes.y) * slopes;
    }
    return loads;
}

// Shares of the triangles in the widths of the brackets, 1 for all when they are as wide as
// allowed. Of the three the one that lacks most counts.
std::vector<double> SharesOf(const Energies& energies, double tolerance) {
    const std::array<double, 3> middles{
        0.5 * (energies.torsionUpper + energies.torsionLower),
        0.5 * (energies.shearUpper[0][0] + energies.shearLower[0][0]),
        0.5 * (energies.shearUpper[1][1] + energies.shearLower[1][1])};
    std::vector<double> shares;
    shares.reserve(energies.gaps.size());
    for (const auto& gaps : energies.gaps) {
        double share = 0.0;
        for (std::size_t k = 0; k < 3; ++k) {
            share = std::max(share, gaps[k] / (2.0 * tolerance * middles[k]));
        }
        shares.push_back(share);
    }
    return shares;
}

bool AreNarrow(const Energies& e, double tolerance) {
    const auto isNarrow = [&](double lower, double upper) {
        return upper - lower <= tolerance * (upper + lower);
    };
    return isNarrow(e.torsionLower, e.torsionUpper) &&
           isNarrow(e.shearLower[0][0], e.shearUpper[0][0]) &&
           isNarrow(e.shearLower[1][1], e.shearUpper[1][1]);
}

bool IsInterrupted(const WarpingOptions& options) {
    return options.isInterrupted && options.isInterrupted();
}

// Goes on for the largest stress of torsion when the brackets are narrow.
class StressRounds {
public:
    explicit StressRounds(double tolerance)
        : tolerance_(std::clamp(kStressTolerance * tolerance, kFinestStress, kCoarsestStress)) {}

    bool HaveBegun() const { return rounds_ > 0; }
    /// Returns whether so many unknowns are more than the stress is worth.
    bool AreTooMany(std::size_t unknowns) const { return HaveBegun() && unknowns > mostUnknowns_; }

    /// Makes the space richer. Returns false where nothing is to be done or the last round was of
    /// little use.
    bool Next(const PartSolution& part, Discretisation* to) {
        const FieldSpace& space = part.fields.space;
        const double radius = LeftOutRadius(part.moments.area, RimLength(space));
        const auto stresses = StressesAlongRings(part.fields, FactorsOfTwist(1.0), radius);
        const LargestOf largest = LargestAlongRings(stresses);
        const double error = largest.Error();
        if (error <= tolerance_ * largest.value || rounds_ == kMostStressRounds) return false;
        if (error > kUseful * lastError_ && ++poorRounds_ > kMostPoorRounds) return false;
        lastError_ = error;
        const auto shares = SharesInStress(space, stresses, tolerance_ * largest.value);
        if (shares.empty()) return false;
        // The shares do not compare with those in the brackets.
        if (rounds_++ == 0) {
            to->sharesBefore.assign(space.TriangleCount(), 0.0);
            mostUnknowns_ = std::max(kFewUnknowns, kMostGrowth * UnknownsOf(space));
        }
        Enrich(space, shares, to);
        return true;
    }

private:
    double tolerance_;
    double lastError_ = std::numeric_limits<double>::infinity();
    int rounds_ = 0;
    int poorRounds_ = 0;
    std::size_t mostUnknowns_ = 0;
};

// Calls with points and weights that integrate what is of degree 3 or 4 over a mesh.
template <typename Add>
void Integrate(const TriangleMesh& mesh, const Add& add) {
    const Quadrature& rule = QuadratureOf(2);
    for (const auto& corners : mesh.corners) {
        const Point& a = mesh.vertices[Slot(corners[0])];
        const Point& b = mesh.vertices[Slot(corners[1])];
        const Point& c = mesh.vertices[Slot(corners[2])];
        const double area = 0.5 * Cross(b - a, c - a);
        for (std::size_t i = 0; i < rule.corners.size(); ++i) {
            const auto& l = rule.corners[i];
            add(l[0] * a + l[1] * b + l[2] * c, area * rule.weights[static_cast<Eigen::Index>(i)]);
        }
    }
}

// By integrals along the principal axes, where nothing cancels.
void InvertSecondMoments(const TriangleMesh& mesh, PartMoments* m) {
    const double angle = 0.5 * std::atan2(2.0 * m->xy, m->xx - m->yy);
    const Point along{std::cos(angle), std::sin(angle)};
    const Point across{-along.y, along.x};
    double most = 0.0, mixed = 0.0, least = 0.0;
    Integrate(mesh, [&](const Point& p, double weight) {
        const double s = Dot(along, p);
        const double t = Dot(across, p);
        most += weight * s * s;
        mixed += weight * s * t;
        least += weight * t * t;
    });
    const double determinant = most * least - mixed * mixed;
    const double ofAlong = least / determinant;
    const double ofBoth = -mixed / determinant;
    const double ofAcross = most / determinant;
    const auto turned = [&](double a1, double a2, double b1, double b2) {
        return ofAlong * a1 * b1 + ofBoth * (a1 * b2 + a2 * b1) + ofAcross * a2 * b2;
    };
    m->inverseXX = turned(along.x, across.x, along.x, across.x);
    m->inverseXY = turned(along.x, across.x, along.y, across.y);
    m->inverseYY = turned(along.y, across.y, along.y, across.y);
}

}  // namespace

PartMoments CentreMesh(TriangleMesh* mesh) {
    PartMoments m;
    Point first;
    for (const auto& corners : mesh->corners) {
        const Point& a = mesh->vertices[Slot(corners[0])];
        const Point& b = mesh->vertices[Slot(corners[1])];
        const Point& c = mesh->vertices[Slot(corners[2])];
        const double area = 0.5 * Cross(b - a, c - a);
        m.area += area;
        first = first + area / 3.0 * (a + b + c);
    }
    m.centroid = 1.0 / m.area * first;
    for (Point& p : mesh->vertices) p = p - m.centroid;
    Integrate(*mesh, [&](const Point& p, double weight) {
        m.xx += weight * p.x * p.x;
        m.xy += weight * p.x * p.y;
        m.yy += weight * p.y * p.y;
        m.xxx += weight * p.x * p.x * p.x;
        m.xxy += weight * p.x * p.x * p.y;
        m.xyy += weight * p.x * p.y * p.y;
        m.yyy += weight * p.y * p.y * p.y;
    });
    InvertSecondMoments(*mesh, &m);
    return m;
}

PartSolution SolvePart(const Part& part, const WarpingOptions& options) {
    // Quadratic triangles have about four unknowns a vertex; the orders need room to rise.
    constexpr std::size_t kUnknownsPerVertex = 6;
    PartSolution solution;
    // Smaller than what suits low orders: fewer, larger triangles of higher order serve better.
    constexpr double kSmallestAngle = 15.0;
    MeshOptions meshOptions;
    meshOptions.smallestAngle = kSmallestAngle;
    meshOptions.largestCount = options.mostUnknowns / kUnknownsPerVertex;
    TriangleMesh mesh = MeshOf(part, meshOptions);
    solution.moments = CentreMesh(&mesh);
    const LinearLoads loads = LoadsOf(solution.moments);
    Discretisation discretisation = StartOf(std::move(mesh));
    std::size_t unknowns = 0;
    StressRounds stress(options.tolerance);
    for (;;) {
        FieldSpace space;
        space.mesh = discretisation.mesh;
        space.orders = discretisation.orders;
        CompleteSpace(&space);
        const std::size_t before = std::exchange(unknowns, UnknownsOf(space));
        // Triangles without room for another vertex, of the highest order: nothing is left to do.
        const bool isSpent = unknowns == before;
        if (before > 0 &&
            (isSpent || unknowns > options.mostUnknowns || stress.AreTooMany(unknowns))) {
            if (!stress.HaveBegun()) solution.status = WarpingStatus::TooMany;
            return solution;
        }
        try {
            Fields fields = SolveFields(std::move(space), loads, options.poisson > 0.0);
            solution.energies = EnergiesOf(fields);
            solution.fields = std::move(fields);
        } catch (const WarpingError&) {
            // Too rich for the digits of a double: what was found before holds.
            if (before == 0) throw;
            if (!stress.HaveBegun()) solution.status = WarpingStatus::TooMany;
            return solution;
        }
        const bool areNarrow = AreNarrow(solution.energies, options.tolerance);
        if (areNarrow) {
            if (IsInterrupted(options) || !stress.Next(solution, &discretisation)) return solution;
            continue;
        }
        if (IsInterrupted(options)) {
            solution.status = WarpingStatus::Interrupted;
            return solution;
        }
        Enrich(solution.fields.space, SharesOf(solution.energies, options.tolerance),
               &discretisation);
    }
}

}  // namespace halvorn::engine
