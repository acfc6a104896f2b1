#include "warping/energies.h"

#include <array>
#include <cmath>

#include "warping/shape_functions.h"
#include "warping/warping.h"

namespace halvorn::engine {

namespace {

double SquareOf(const Point& stress) {
    return Dot(stress, stress);
}

class Integration {
public:
    explicit Integration(const Fields& fields) : fields_(fields) {
        sums_.gaps.resize(fields.coefficients.size());
    }

    Energies Run() {
        for (std::size_t t = 0; t < sums_.gaps.size(); ++t) AddTriangle(static_cast<Index>(t));
        for (std::size_t ring = 1; ring < fields_.space.rings.size(); ++ring) {
            // Clockwise: the area is negative.
            sums_.torsionLower -=
                4.0 * fields_.voidStress[ring - 1] * fields_.space.rings[ring].area;
        }
        return std::move(sums_);
    }

private:
    void AddTriangle(Index triangle) {
        const FieldSpace& space = fields_.space;
        const Quadrature& rule = QuadratureOf(space.HighestOrderAt(triangle));
        const Eigen::MatrixXd& c = fields_.coefficients[Slot(triangle)];
        const TriangleMap map = MapOf(space, triangle);
        AddMoments(triangle, map.area, c);
        const Eigen::MatrixXd byXi = c.transpose().lazyProduct(rule.byXi);
        const Eigen::MatrixXd byEta = c.transpose().lazyProduct(rule.byEta);
        const Eigen::MatrixXd byX = map.byXi.x * byXi + map.byEta.x * byEta;
        const Eigen::MatrixXd byY = map.byXi.y * byXi + map.byEta.y * byEta;
        auto& gaps = sums_.gaps[Slot(triangle)];
        for (std::size_t i = 0; i < rule.corners.size(); ++i) {
            Point at;
            for (int corner = 0; corner < 3; ++corner) {
                at = at + rule.corners[i][Slot(corner)] * space.CornerAt(triangle, corner);
            }
            const auto column = static_cast<Eigen::Index>(i);
            const double weight = map.area * rule.weights[column];
            const FieldStresses s = StressesFrom(fields_, at, byX.col(column), byY.col(column));
            sums_.torsionUpper += weight * SquareOf(s.torsionFree);
            sums_.torsionLower -= weight * SquareOf(s.torsionHeld);
            AddShear(s, at, weight);
            if (fields_.HavePoisson()) AddLateral(s, at, weight);
            gaps[0] += weight * SquareOf(s.torsionFree - s.torsionHeld);
            gaps[1] += weight * SquareOf(s.shearFree[0] - s.shearHeld[0]);
            gaps[2] += weight * SquareOf(s.shearFree[1] - s.shearHeld[1]);
        }
    }

    // What is linear in a field, and the square of the warping function. Of a bound of shear twice
    // the work comes here, and the energy is taken off elsewhere.
    void AddMoments(Index triangle, double area, const Eigen::MatrixXd& c) {
        const ReferenceMeans& means = MeansOfReference();
        constexpr std::size_t kUpToStress = 4;
        static_assert(kUpToStress == Stress + 1);
        std::array<double, kUpToStress> first{};  // of each field
        LoadMatrix work{};                        // of each load on each potential
        for (int corner = 0; corner < 3; ++corner) {
            const Point& p = fields_.space.CornerAt(triangle, corner);
            const auto mean = means.values[Slot(corner)].head(c.rows());
            for (std::size_t k = 0; k < first.size(); ++k) {
                const double share = area * mean.dot(c.col(static_cast<Eigen::Index>(k)));
                first[k] += share;
                if (k == Warping) {
                    sums_.warpingX += share * p.x;
                    sums_.warpingY += share * p.y;
                }
                if (k != ShearX && k != ShearY) continue;
                for (std::size_t load = 0; load < 2; ++load) {
                    work[load][k - ShearX] += share * fields_.loads.At(p, load);
                }
            }
        }
        // J <= |grad w + (-y, x)|^2 and J >= 2 T - |grad f|^2, whose torque T is twice the integral
        // of f, voids included (docs/theory.md).
        sums_.torsionLower += 4.0 * first[Stress];
        sums_.warping += first[Warping];
        const auto w = c.col(Warping);
        sums_.warpingSquare += area * w.dot(means.products.topLeftCorner(c.rows(), c.rows()) * w);
        for (std::size_t a = 0; a < 2; ++a) {
            for (std::size_t b = 0; b < 2; ++b) sums_.shearLower[a][b] += work[a][b] + work[b][a];
        }
    }

    void AddShear(const FieldStresses& s, const Point& at, double weight) {
        for (std::size_t a = 0; a < 2; ++a) {
            sums_.torqueOfFree[a] += weight * Cross(at, s.shearFree[a]);
            sums_.torqueOfHeld[a] += weight * Cross(at, s.shearHeld[a]);
            for (std::size_t b = 0; b < 2; ++b) {
                sums_.shearLower[a][b] -= weight * Dot(s.shearFree[a], s.shearFree[b]);
                sums_.shearUpper[a][b] += weight * Dot(s.shearHeld[a], s.shearHeld[b]);
            }
        }
    }

    void AddLateral(const FieldStresses& s, const Point& at, double weight) {
        for (std::size_t a = 0; a < 2; ++a) {
            sums_.torqueOfLateral[a] +=
                0.5 * weight * (Cross(at, s.lateralFree[a]) + Cross(at, s.lateralHeld[a]));
            for (std::size_t b = 0; b < 2; ++b) {
                sums_.swayUpper[a][b] += weight * Dot(s.lateralFree[a], s.lateralFree[b]);
                sums_.lateralLower[a][b] += weight * Dot(s.lateralHeld[a], s.lateralHeld[b]);
            }
        }
    }

    const Fields& fields_;
    Energies sums_;
};

}  // namespace

FieldStresses StressesFrom(const Fields& fields, const Point& at,
                           const Eigen::Ref<const Eigen::VectorXd>& byX,
                           const Eigen::Ref<const Eigen::VectorXd>& byY) {
    FieldStresses s;
    s.torsionFree = {byX[Warping] - at.y, byY[Warping] + at.x};
    s.torsionHeld = {byY[Stress], -byX[Stress]};
    for (int load = 0; load < 2; ++load) {
        const std::size_t k = Slot(load);
        const Point& slopes = fields.loads.slopes[k];
        s.shearFree[k] = {byX[ShearX + load], byY[ShearX + load]};
        s.shearHeld[k] =
            fields.loads.StressAt(at, k) + Point{byY[StressX + load], -byX[StressX + load]};
        if (!fields.HavePoisson()) continue;
        s.lateralFree[k] = {byX[SwayX + load] + 0.5 * slopes.x * at.y * at.y,
                            byY[SwayX + load] + 0.5 * slopes.y * at.x * at.x};
        s.lateralHeld[k] = {byY[LateralX + load], -byX[LateralX + load]};
    }
    return s;
}

Energies EnergiesOf(const Fields& fields) {
    Energies energies = Integration(fields).Run();
    if (!std::isfinite(energies.torsionUpper + energies.torsionLower + energies.shearUpper[0][0] +
                       energies.shearUpper[1][1] + energies.warpingSquare)) {
        throw WarpingError("a part of the section is so thin that rounding leaves no solution");
    }
    return energies;
}

}  // namespace halvorn::engine
