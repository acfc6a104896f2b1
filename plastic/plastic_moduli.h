/// @file plastic_moduli.h
/// Plastic section moduli about the axes that halve the gross area.
#ifndef HALVORN_PLASTIC_PLASTIC_MODULI_H
#define HALVORN_PLASTIC_PLASTIC_MODULI_H

#include <list>
#include <string>

#include "contour/contour_record.h"

namespace halvorn {

/// Computes the plastic moduli of a composite section about a horizontal and a vertical axis.
///
/// Each axis is found by bisection as the line with equal gross areas on its two sides. The search
/// ends when they differ by less than 1e-7 (absolute), or with the 51st line. The modulus is the
/// sum over the pieces on both sides of weight x area x distance of the centroid from the axis. A
/// hole's area counts in the balance, its weight is 0: the modulus of a solid with a hole is the
/// solid's. A keyhole ring gives the net value.
///
/// Areas and lever arms are integrals over the edges beyond a line (plastic/equal_area_axis.h,
/// plastic/lever_arms.h); only the web parts need pieces. Coordinates are taken relative to the
/// section's first point, so that digits do not depend on how far away the host's origin is. Cost
/// for each axis: a pass that collects the edges, one for each line tried over those that can still
/// meet a line, and one for the lever arms.
/// @param wplx     about the horizontal axis [L^3]; when null, or wply is, nothing is done
/// @param wply     about the vertical axis [L^3]
/// @param webPartX part of wplx that comes from pieces whose longest edge stands across the axis;
///                 computed only when both web pointers are given
/// @param webPartY likewise of wply
/// @param trace    when given, receives a log of the search: positions x 1000 as [mm], areas
///                 x 1e6 as [mm2], moduli x 1e6 as [cm^3], as for input in metres
/// @throws std::bad_alloc, std::length_error; the outputs may then hold the first modulus only
void ComputePlasticModuli(const std::list<ContourRecord>& contours, double* wplx, double* wply,
                          double* webPartX, double* webPartY, std::string* trace = nullptr);

/// Computes the same moduli alone; neither pointer may be null.
void ComputePlasticModuliAlone(const std::list<ContourRecord>& contours, double* wplx,
                               double* wply);

}  // namespace halvorn

#endif
