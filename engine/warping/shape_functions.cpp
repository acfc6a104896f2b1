#include "warping/shape_functions.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace halvorn::engine {

namespace {

// A polynomial of one variable and its derivative.
struct Jet {
    double value = 0.0;
    double slope = 0.0;
};

// Legendre's polynomials from order 0 to n, with first and second derivatives.
struct Legendre {
    std::array<double, kHighestOrder + 1> value{};
    std::array<double, kHighestOrder + 1> slope{};
    std::array<double, kHighestOrder + 1> curvature{};

    explicit Legendre(double s) {
        value[0] = 1.0;
        value[1] = s;
        slope[1] = 1.0;
        for (std::size_t n = 2; n < value.size(); ++n) {
            const auto k = static_cast<double>(n);
            value[n] = ((2.0 * k - 1.0) * s * value[n - 1] - (k - 1.0) * value[n - 2]) / k;
            slope[n] = slope[n - 2] + (2.0 * k - 1.0) * value[n - 1];
            curvature[n] = curvature[n - 2] + (2.0 * k - 1.0) * slope[n - 1];
        }
    }
};

// The stiffness of all edge functions along their edge is the same with this factor.
double KernelFactor(int order) {
    const double k = order;
    return 4.0 * std::sqrt(0.5 * (2.0 * k - 1.0)) / (k * (k - 1.0));
}

// A function of the barycentric coordinates: value and derivatives by each.
struct Barycentric {
    double value = 0.0;
    std::array<double, 3> by{};
};

void Store(const Barycentric& f, int place, ShapeValues* shapes) {
    shapes->values[place] = f.value;
    shapes->byXi[place] = f.by[1] - f.by[0];
    shapes->byEta[place] = f.by[2] - f.by[0];
}

// Gauss points and weights on [0, 1]: Newton's method on Legendre's polynomial of order n.
void GaussPoints(int n, std::vector<double>* points, std::vector<double>* weights) {
    for (int i = 0; i < n; ++i) {
        double s = std::cos(std::numbers::pi * (i + 0.75) / (n + 0.5));
        double slope = 0.0;
        for (int step = 0; step < 50; ++step) {
            double before = 1.0;
            double value = s;
            for (int k = 2; k <= n; ++k) {
                const double next = ((2.0 * k - 1.0) * s * value - (k - 1.0) * before) / k;
                before = value;
                value = next;
            }
            slope = n * (s * value - before) / (s * s - 1.0);
            const double change = value / slope;
            s -= change;
            if (std::fabs(change) < 1e-16) break;
        }
        points->push_back(0.5 * (1.0 - s));
        weights->push_back(1.0 / ((1.0 - s * s) * slope * slope));
    }
}

// Gauss points on the unit square with one side drawn together to a corner of the triangle; with n
// by n points exact up to degree 2 n - 2.
Quadrature MakeQuadrature(int order, int n) {
    Quadrature rule;
    GaussPoints(n, &rule.linePoints, &rule.lineWeights);
    const std::vector<double>& points = rule.linePoints;
    const std::vector<double>& weights = rule.lineWeights;
    const int count = n * n;
    rule.weights.resize(count);
    rule.values.resize(FunctionCount(order), count);
    rule.byXi.resize(FunctionCount(order), count);
    rule.byEta.resize(FunctionCount(order), count);
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            const auto a = static_cast<std::size_t>(i);
            const auto b = static_cast<std::size_t>(j);
            const double eta = points[b];
            const double xi = points[a] * (1.0 - eta);
            const int place = i * n + j;
            rule.weights[place] = 2.0 * weights[a] * weights[b] * (1.0 - eta);
            rule.corners.push_back({1.0 - xi - eta, xi, eta});
            const ShapeValues shapes = ShapesAt(order, xi, eta);
            rule.values.col(place) = shapes.values;
            rule.byXi.col(place) = shapes.byXi;
            rule.byEta.col(place) = shapes.byEta;
        }
    }
    return rule;
}

ReferenceMeans MakeReferenceMeans() {
    const Quadrature rule = MakeQuadrature(kHighestOrder, kHighestOrder + 1);
    const Eigen::MatrixXd weightedXi = rule.byXi * rule.weights.asDiagonal();
    const Eigen::MatrixXd weightedEta = rule.byEta * rule.weights.asDiagonal();
    ReferenceMeans means;
    means.products = rule.values * rule.weights.asDiagonal() * rule.values.transpose();
    means.xiXi = weightedXi * rule.byXi.transpose();
    means.etaEta = weightedEta * rule.byEta.transpose();
    const Eigen::MatrixXd mixed = weightedXi * rule.byEta.transpose();
    means.xiEta = mixed + mixed.transpose();
    for (std::size_t corner = 0; corner < 3; ++corner) {
        Eigen::VectorXd weights = rule.weights;
        for (std::size_t i = 0; i < rule.corners.size(); ++i) {
            weights[static_cast<Eigen::Index>(i)] *= rule.corners[i][corner];
        }
        means.values[corner] = rule.values * weights;
    }
    for (std::size_t second = 0; second < means.byXi.size(); ++second) {
        const Eigen::VectorXd weights = rule.values.row(static_cast<Eigen::Index>(second))
                                            .transpose()
                                            .cwiseProduct(rule.weights);
        means.byXi[second] = rule.byXi * weights;
        means.byEta[second] = rule.byEta * weights;
    }
    return means;
}

}  // namespace

double EdgeFactor(int order) {
    // The kernel is the derivative of Legendre's polynomial: 1 for order 2, 3 s for order 3.
    return KernelFactor(order) * (order == 2 ? 1.0 : 3.0);
}

ShapeValues ShapesAt(int order, double xi, double eta) {
    const std::array<double, 3> l{1.0 - xi - eta, xi, eta};
    ShapeValues shapes;
    const int count = FunctionCount(order);
    shapes.values.resize(count);
    shapes.byXi.resize(count);
    shapes.byEta.resize(count);
    for (int corner = 0; corner < 3; ++corner) {
        Barycentric f;
        f.value = l[static_cast<std::size_t>(corner)];
        f.by[static_cast<std::size_t>(corner)] = 1.0;
        Store(f, corner, &shapes);
    }
    for (int edge = 0; edge < 3; ++edge) {
        const auto a = static_cast<std::size_t>((edge + 1) % 3);
        const auto b = static_cast<std::size_t>((edge + 2) % 3);
        const Legendre legendre(l[b] - l[a]);
        for (int k = 2; k <= order; ++k) {
            const double factor = KernelFactor(k);
            const Jet kernel{factor * legendre.slope[static_cast<std::size_t>(k - 1)],
                             factor * legendre.curvature[static_cast<std::size_t>(k - 1)]};
            Barycentric f;
            f.value = l[a] * l[b] * kernel.value;
            f.by[a] = l[b] * kernel.value - l[a] * l[b] * kernel.slope;
            f.by[b] = l[a] * kernel.value + l[a] * l[b] * kernel.slope;
            Store(f, EdgeFunction(k, edge), &shapes);
        }
    }
    const Legendre across(l[1] - l[0]);
    const Legendre up(2.0 * l[2] - 1.0);
    const double bubble = l[0] * l[1] * l[2];
    for (int k = 3; k <= order; ++k) {
        for (int i = 0; i <= k - 3; ++i) {
            const auto m = static_cast<std::size_t>(i);
            const auto n = static_cast<std::size_t>(k - 3 - i);
            const double product = across.value[m] * up.value[n];
            const double bySkew = across.slope[m] * up.value[n];
            const double byHeight = 2.0 * across.value[m] * up.slope[n];
            Barycentric f;
            f.value = bubble * product;
            f.by[0] = l[1] * l[2] * product - bubble * bySkew;
            f.by[1] = l[0] * l[2] * product + bubble * bySkew;
            f.by[2] = l[0] * l[1] * product + bubble * byHeight;
            Store(f, FirstInnerFunction(k) + i, &shapes);
        }
    }
    return shapes;
}

const Quadrature& QuadratureOf(int order) {
    static const std::vector<Quadrature> rules = [] {
        std::vector<Quadrature> all;
        for (int k = 1; k <= kHighestOrder; ++k) all.push_back(MakeQuadrature(k, std::max(k, 3)));
        return all;
    }();
    return rules[static_cast<std::size_t>(order - 1)];
}

const ReferenceMeans& MeansOfReference() {
    static const ReferenceMeans means = MakeReferenceMeans();
    return means;
}

}  // namespace halvorn::engine
