#include "warping/stress_at.h"

#include "warping/shape_functions.h"

namespace halvorn::engine {

FieldFactors FactorsOfTwist(double twist) {
    FieldFactors factors;
    factors.twist = twist;
    return factors;
}

Point PointIn(const FieldSpace& space, Index triangle, double xi, double eta) {
    return (1.0 - xi - eta) * space.CornerAt(triangle, 0) + xi * space.CornerAt(triangle, 1) +
           eta * space.CornerAt(triangle, 2);
}

ShearPair ShearAt(const Fields& fields, const FieldFactors& factors, Index triangle, double xi,
                  double eta) {
    const FieldSpace& space = fields.space;
    const TriangleMap map = MapOf(space, triangle);
    const ShapeValues shapes = ShapesAt(space.HighestOrderAt(triangle), xi, eta);
    const Eigen::MatrixXd& c = fields.coefficients[Slot(triangle)];
    const Eigen::VectorXd byXi = c.transpose() * shapes.byXi;
    const Eigen::VectorXd byEta = c.transpose() * shapes.byEta;
    const FieldStresses s = StressesFrom(fields, PointIn(space, triangle, xi, eta),
                                         map.byXi.x * byXi + map.byEta.x * byEta,
                                         map.byXi.y * byXi + map.byEta.y * byEta);
    ShearPair sum{factors.twist * s.torsionFree, factors.twist * s.torsionHeld};
    for (std::size_t load = 0; load < 2; ++load) {
        const Point lateral = factors.lateral[load] * s.lateral[load];
        sum.free = sum.free + factors.shear[load] * s.shearFree[load] + lateral;
        sum.held = sum.held + factors.shear[load] * s.shearHeld[load] + lateral;
    }
    return sum;
}

}  // namespace halvorn::engine
