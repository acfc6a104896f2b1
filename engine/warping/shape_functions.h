/// @file shape_functions.h
/// The polynomials on a triangle that the fields of torsion and shear are sums of.
///
/// The functions are hierarchic: those of order p are those of order p - 1 and some more. By order:
/// one for each corner (1); for each order k from 2 on one for each edge, which vanishes on the
/// other edges, then k - 2 that vanish on all edges. An edge function of odd order changes its sign
/// when the edge is run along the other way.
/// Source: B. Szabo and I. Babuska, Finite Element Analysis, 1991, chapter 6.
#ifndef HALVORN_ENGINE_WARPING_SHAPE_FUNCTIONS_H
#define HALVORN_ENGINE_WARPING_SHAPE_FUNCTIONS_H

#include <Eigen/Dense>
#include <array>
#include <vector>

namespace halvorn::engine {

/// The highest order of a triangle.
inline constexpr int kHighestOrder = 8;

/// Returns the number of functions of a triangle of an order.
constexpr int FunctionCount(int order) {
    return (order + 1) * (order + 2) / 2;
}

/// Returns the place of the function of an edge among those of a triangle. @pre order >= 2
constexpr int EdgeFunction(int order, int edge) {
    return FunctionCount(order - 1) + edge;
}

/// Returns the place of the first function of an order that vanishes on all edges. @pre order >= 3
constexpr int FirstInnerFunction(int order) {
    return FunctionCount(order - 1) + 3;
}

/// Returns the factor of an edge function of order 2 or 3: along the edge, with s from -1 to 1, it
/// is (1 - s^2) / 4 times this, and times s for order 3.
double EdgeFactor(int order);

/// Values and derivatives of the functions at a point of the reference triangle, whose corners are
/// (0, 0), (1, 0) and (0, 1).
struct ShapeValues {
    Eigen::VectorXd values;
    Eigen::VectorXd byXi;
    Eigen::VectorXd byEta;
};

/// Returns the functions up to an order at (xi, eta). @pre 1 <= order <= kHighestOrder
ShapeValues ShapesAt(int order, double xi, double eta);

/// Points and weights that integrate polynomials over the reference triangle, with the functions at
/// the points. The weights sum to 1: integrals are means.
struct Quadrature {
    std::vector<std::array<double, 3>> corners;  ///< barycentric coordinates of each point
    Eigen::VectorXd weights;
    Eigen::MatrixXd values;  ///< function by point
    Eigen::MatrixXd byXi;
    Eigen::MatrixXd byEta;
    /// Gauss's points and weights on [0, 1], which these are made of.
    std::vector<double> linePoints, lineWeights;
};

/// Returns the points that integrate the square of a derivative of a function of an order exactly,
/// and at least polynomials of degree 4: on a line as many as the order says, 3 at least.
const Quadrature& QuadratureOf(int order);

/// Means over the reference triangle of products of two functions and of their derivatives, of a
/// function with a corner function, and of its derivative with the six functions up to order 2.
struct ReferenceMeans {
    Eigen::MatrixXd products;
    Eigen::MatrixXd xiXi, xiEta, etaEta;         ///< xiEta is made symmetric, both ways added
    std::array<Eigen::VectorXd, 3> values;       ///< by corner
    std::array<Eigen::VectorXd, 6> byXi, byEta;  ///< by corner, then by edge
};

/// Returns the means for all functions up to the highest order.
const ReferenceMeans& MeansOfReference();

}  // namespace halvorn::engine

#endif
