#include "warping/stress_at.h"

#include <algorithm>
#include <utility>

#include "warping/shape_functions.h"

namespace halvorn::engine {

// In the frame, where lengths are 1 / unit of the section's.
FieldFactors FactorsUnder(const SectionForces& forces, const WarpingFields& fields) {
    const PartSolution& part = fields.parts.front();
    const double unit = fields.frame.LengthFromFrame(1.0);
    const PartMoments& m = part.moments;
    const Energies& e = part.energies;
    const Point moments{forces.my / unit, forces.mx / unit};  // integrals of stress times x, y
    const double torsion = 0.5 * (e.torsionLower + e.torsionUpper);
    FieldFactors factors;
    factors.axial = forces.n / m.area;
    const Point slopes = m.SlopesOf(moments);
    factors.bending = slopes.x * m.axes.directions[0] + slopes.y * m.axes.directions[1];
    factors.shear = {forces.vx, forces.vy};
    factors.twist = forces.t / unit / torsion;
    for (std::size_t load = 0; load < 2; ++load) {
        factors.lateral[load] = fields.poissonFactor * factors.shear[load];
        factors.twist -= factors.lateral[load] * e.torqueOfLateral[load] / torsion;
    }
    return factors;
}

FieldFactors FactorsOfTwist(double twist) {
    FieldFactors factors;
    factors.twist = twist;
    return factors;
}

Point PointIn(const FieldSpace& space, Index triangle, double xi, double eta) {
    return (1.0 - xi - eta) * space.CornerAt(triangle, 0) + xi * space.CornerAt(triangle, 1) +
           eta * space.CornerAt(triangle, 2);
}

ShapeSamples SamplesAt(int order, std::vector<std::array<double, 2>> places) {
    ShapeSamples samples;
    const auto count = static_cast<Eigen::Index>(places.size());
    samples.byXi.resize(FunctionCount(order), count);
    samples.byEta.resize(FunctionCount(order), count);
    for (Eigen::Index i = 0; i < count; ++i) {
        const auto& [xi, eta] = places[static_cast<std::size_t>(i)];
        const ShapeValues shapes = ShapesAt(order, xi, eta);
        samples.byXi.col(i) = shapes.byXi;
        samples.byEta.col(i) = shapes.byEta;
    }
    samples.places = std::move(places);
    return samples;
}

PeakOfSamples PeakAmong(std::span<const double> magnitudes) {
    const auto largest = std::max_element(magnitudes.begin(), magnitudes.end());
    const auto at = static_cast<std::size_t>(largest - magnitudes.begin());
    // At an end the parabola goes through the three samples there.
    const std::size_t k = std::clamp(at, std::size_t{1}, magnitudes.size() - 2);
    const double slope = 0.5 * (magnitudes[k + 1] - magnitudes[k - 1]);
    const double curvature = magnitudes[k - 1] - 2.0 * magnitudes[k] + magnitudes[k + 1];
    if (!(curvature < 0.0)) return {static_cast<double>(at), *largest};
    const double off = std::clamp(-slope / curvature, -1.0, 1.0);
    return {static_cast<double>(k) + off,
            std::max(*largest, magnitudes[k] + off * (slope + 0.5 * off * curvature))};
}

std::vector<ShearPair> ShearsAt(const Fields& fields, const FieldFactors& factors, Index triangle,
                                const ShapeSamples& samples) {
    const FieldSpace& space = fields.space;
    const TriangleMap map = MapOf(space, triangle);
    const Eigen::MatrixXd& c = fields.coefficients[Slot(triangle)];
    const Eigen::MatrixXd byXi = c.transpose() * samples.byXi;
    const Eigen::MatrixXd byEta = c.transpose() * samples.byEta;
    const Eigen::MatrixXd byX = map.byXi.x * byXi + map.byEta.x * byEta;
    const Eigen::MatrixXd byY = map.byXi.y * byXi + map.byEta.y * byEta;
    std::vector<ShearPair> shears;
    shears.reserve(samples.places.size());
    for (Eigen::Index i = 0; i < byX.cols(); ++i) {
        const auto& [xi, eta] = samples.places[static_cast<std::size_t>(i)];
        const FieldStresses s =
            StressesFrom(fields, PointIn(space, triangle, xi, eta), byX.col(i), byY.col(i));
        ShearPair sum{factors.twist * s.torsionFree, factors.twist * s.torsionHeld};
        for (std::size_t load = 0; load < 2; ++load) {
            sum.free = sum.free + factors.shear[load] * s.shearFree[load] +
                       factors.lateral[load] * s.lateralFree[load];
            sum.held = sum.held + factors.shear[load] * s.shearHeld[load] +
                       factors.lateral[load] * s.lateralHeld[load];
        }
        shears.push_back(sum);
    }
    return shears;
}

}  // namespace halvorn::engine
