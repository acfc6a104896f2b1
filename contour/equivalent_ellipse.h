/// @file equivalent_ellipse.h
/// Torsion and shear of a compact contour from the ellipse that has its area and polar moment.
///
/// An ellipse of semi-axes a >= b has A = pi a b and Ip = A (a^2 + b^2) / 4 about its centre.
#ifndef HALVORN_CONTOUR_EQUIVALENT_ELLIPSE_H
#define HALVORN_CONTOUR_EQUIVALENT_ELLIPSE_H

namespace halvorn {

/// Writes the semi-axes [L] of the ellipse of the given area [L^2] and centroidal polar moment
/// [L^4]: with h = 2 Ip / A and d = h^2 - (A / pi)^2, a = sqrt(h + sqrt(d)) and b = A / (pi a).
///
/// A circle has d = 0, up to rounding; a and b then differ from sqrt(A / pi) by about the root of
/// the rounding error and agree with it to eight digits. No ellipse has d < 0. Such a d counts as 0
/// down to -1e-10 [L^4] or -1e-10 (A / pi)^2, whichever is lower; a = sqrt(h) is then the smaller
/// semi-axis. In all other cases `a` is the larger one. In metres 1e-10 is a
/// lot: with A below 3e-5, every polar moment below a circle's counts as a circle's.
///
/// Writes (0, 0) for a lower d, for an area within 1e-10 of 0, and for an a^2 below 1e-10.
void EquivalentEllipse(double area, double polarMoment, double* a, double* b);

/// Returns the shear area over the area of an ellipse of semi-axes a and b [L], in either order: 0
/// when one is exactly 0. See `EllipseShearCoefficientX`.
double EllipseShearCoefficient(double a, double b);

/// Returns pi a b^2 / 2 for semi-axes a and b [L], in either order. See `EllipseTorsionModulus`.
double EllipseTorsionModulusOfAxes(double a, double b);

/// Returns the Saint-Venant torsion constant of the equivalent ellipse [L^4],
/// pi a^3 b^3 / (a^2 + b^2) = A^4 / (4 pi^2 Ip); 0 for a polar moment within 1e-10 of 0.
/// Source: A. J. C. Barre de Saint-Venant, "Memoire sur la torsion des prismes", 1855.
double EllipseTorsionConstant(double area, double polarMoment);

/// Returns the shear area over the area of the equivalent ellipse,
/// 12 (3 b^2 + a^2) / (40 b^2 + 16 a^2): 6/7 for a circle, 3/4 for a flat ellipse; 0 when the
/// ellipse is undefined. Source: G. R. Cowper, "The shear coefficient in Timoshenko's beam theory",
/// Journal of Applied Mechanics 33, 1966, for an ellipse and a Poisson's ratio of 0. The same for
/// both directions by design: the ellipse stands for a contour whose principal directions it does
/// not know.
double EllipseShearCoefficientX(double area, double polarMoment);

/// Returns the same value as `EllipseShearCoefficientX`.
double EllipseShearCoefficientY(double area, double polarMoment);

/// Returns the torsion modulus of the equivalent ellipse [L^3], pi a b^2 / 2: torque over the
/// largest shear stress, which acts at the end of the minor axis.
double EllipseTorsionModulus(double area, double polarMoment);

}  // namespace halvorn

#endif
