/// @file fields.h
/// The fields of torsion and shear over one part: their equations solved on a space.
///
/// Shear modulus 1, rate of twist 1, shear forces 1, all about the centre of gravity of the part.
/// - `Warping` w, of torsion: the stress (w_x - y, w_y + x) has the least energy.
/// - `ShearX`, `ShearY` c: the stress (c_x, c_y) is in equilibrium on the average with the load
///   g = a x + b y of a shear force of 1 along x, along y.
/// - `Stress` f, of torsion: the stress (f_y, -f_x); f is 0 on the outline, constant on each void.
/// - `StressX`, `StressY` h: the stress t + (h_y, -h_x) with t of `LinearLoads` is in
///   equilibrium with g at each point.
/// - `SwayX`, `SwayY` s: the stress (s_x + a y^2 / 2, s_y + b x^2 / 2) has the least energy; it is
///   what Poisson's ratio adds, times nu / (1 + nu): without load, with curl b x - a y.
/// - `LateralX`, `LateralY` l: the stress (l_y, -l_x), the same as that of the sways, has no load.
///
/// `Warping`, `ShearX`, `ShearY` and the sways are free: minimised over all functions, up to a
/// constant. The others are held: given on the rings, up to the constants of the voids.
/// Source: S. P. Timoshenko and J. N. Goodier, Theory of Elasticity, 1970, sections 104 to 109,
/// 118.
#ifndef HALVORN_ENGINE_WARPING_FIELDS_H
#define HALVORN_ENGINE_WARPING_FIELDS_H

#include <Eigen/Dense>
#include <cstddef>
#include <vector>

#include "warping/field_space.h"
#include "warping/sheets.h"

namespace halvorn::engine {

/// The columns of coefficients.
enum Field {
    Warping,
    ShearX,
    ShearY,
    Stress,
    StressX,
    StressY,
    SwayX,
    SwayY,
    LateralX,
    LateralY,
    FieldCount
};

/// The fields that Poisson's ratio has no part in; the rest are solved when they are asked for.
inline constexpr int kFieldsWithoutPoisson = SwayX;

/// Solved fields.
struct Fields {
    FieldSpace space;
    LinearLoads loads;
    int count = FieldCount;  ///< of fields: all, or `kFieldsWithoutPoisson`
    /// Of each triangle: function by field, of the functions up to `HighestOrderAt`.
    std::vector<Eigen::MatrixXd> coefficients;
    std::vector<double> voidStress;  ///< of `Stress` on each void
    std::size_t unknowns = 0;        ///< of the larger system

    bool HavePoisson() const { return count == FieldCount; }
};

/// Returns how many unknowns the larger system of a space has, at most.
std::size_t UnknownsOf(const FieldSpace& space);

/// Solves all fields, without Poisson's ratio those alone that it has no part in. Cost: two sparse
/// factorisations, n^1.5 for n unknowns at the most.
Fields SolveFields(FieldSpace space, const LinearLoads& loads, bool hasPoisson);

}  // namespace halvorn::engine

#endif
