/// @file stress_at.h
/// The stress of a combination of fields at a point.
#ifndef HALVORN_ENGINE_WARPING_STRESS_AT_H
#define HALVORN_ENGINE_WARPING_STRESS_AT_H

#include <Eigen/Dense>
#include <array>
#include <cmath>
#include <span>
#include <vector>

#include "warping/part_solution.h"
#include "warping/warping_fields.h"

namespace halvorn::engine {

/// Forces on a part in the units of its mesh; moments about its centre of gravity, the torque about
/// its shear centre.
struct FieldFactors {
    double axial = 0.0;               ///< normal stress at the centre of gravity
    Point bending;                    ///< slopes of the normal stress
    double twist = 0.0;               ///< of the fields of torsion
    std::array<double, 2> shear{};    ///< of those of a shear force along x, along y
    std::array<double, 2> lateral{};  ///< of what Poisson's ratio adds to them
};

/// Returns the factors for forces on the one part of a section, in the section's unit of length.
FieldFactors FactorsUnder(const SectionForces& forces, const WarpingFields& fields);

/// Returns the factors for a torque alone.
FieldFactors FactorsOfTwist(double twist);

/// A shear stress, once by the fields that are continuous and once by those in equilibrium. The
/// truth is near their mean, to about half of their difference.
struct ShearPair {
    Point free;
    Point held;

    Point Middle() const { return 0.5 * (free + held); }
};

/// Points of the reference triangle, with the derivatives of the functions up to an order there.
struct ShapeSamples {
    std::vector<std::array<double, 2>> places;  ///< xi, eta
    Eigen::MatrixXd byXi;                       ///< function by point
    Eigen::MatrixXd byEta;
};

/// Returns the functions up to an order at points of the reference triangle.
ShapeSamples SamplesAt(int order, std::vector<std::array<double, 2>> places);

/// Returns the shear stresses at points of a triangle.
/// @pre the samples are of the highest order at the triangle
std::vector<ShearPair> ShearsAt(const Fields& fields, const FieldFactors& factors, Index triangle,
                                const ShapeSamples& samples);

/// Returns the point of a triangle at a place in the reference triangle, about the centre of
/// gravity.
Point PointIn(const FieldSpace& space, Index triangle, double xi, double eta);

/// The largest of what magnitudes are samples of.
struct PeakOfSamples {
    double at = 0.0;  ///< in steps from the first sample
    double height = 0.0;
};

/// Returns the peak of the parabola through the largest of equidistant samples and those beside it,
/// or that sample itself.
/// @pre there are three samples or more
PeakOfSamples PeakAmong(std::span<const double> magnitudes);

/// Returns the normal stress at a point.
inline double NormalAt(const FieldFactors& factors, const Point& at) {
    return factors.axial + Dot(factors.bending, at);
}

/// Returns the length of a vector.
inline double Length(const Point& p) {
    return std::hypot(p.x, p.y);
}

/// Returns sqrt(normal^2 + 3 shear^2).
inline double VonMises(double normal, double shear) {
    return std::hypot(normal, std::sqrt(3.0) * shear);
}

}  // namespace halvorn::engine

#endif
