/// @file tube_torsion.h
/// Torsion of a thin circular tube of the same area and thickness as a wall.
#ifndef HALVORN_CONTOUR_TUBE_TORSION_H
#define HALVORN_CONTOUR_TUBE_TORSION_H

namespace halvorn {

/// Returns the torsion constant of a thin circular tube [L^4] from the area and wall thickness t:
/// with the mean radius r = A / (2 pi t), the exact polar moment pi r t (t^2 + 4 r^2) / 2.
double TubeTorsionConstant(double area, double thickness);

/// Returns the torsion modulus of the same tube [L^3]: `TubeTorsionConstant` over the outer radius
/// r + t / 2.
double TubeTorsionModulus(double area, double thickness);

}  // namespace halvorn

#endif
