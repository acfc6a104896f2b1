/// @file principal_inertias.h
/// Second moments about principal axes.
#ifndef HALVORN_ENGINE_MODEL_PRINCIPAL_INERTIAS_H
#define HALVORN_ENGINE_MODEL_PRINCIPAL_INERTIAS_H

namespace halvorn::engine {

/// Second moments about the principal axes through a point.
struct PrincipalInertias {
    double first;   ///< the larger one [L^4]
    double second;  ///< [L^4]
    double angle;   ///< from the x axis to the first axis, counter-clockwise, in (-pi/2, pi/2]
};

/// Returns the principal values of the integrals of y^2, x^2 and x y. About an axis at angle a the
/// second moment is Ix cos^2 a + Iy sin^2 a - Ixy sin 2a; its maximum is at tan 2a =
/// -2 Ixy / (Ix - Iy). Equal moments without a product have the x axis as their first.
PrincipalInertias PrincipalInertiasOf(double inertiaX, double inertiaY, double inertiaXY);

}  // namespace halvorn::engine

#endif
