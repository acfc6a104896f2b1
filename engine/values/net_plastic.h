/// @file net_plastic.h
/// The plastic axes and moduli of a region, and its static moments.
#ifndef HALVORN_ENGINE_VALUES_NET_PLASTIC_H
#define HALVORN_ENGINE_VALUES_NET_PLASTIC_H

#include <optional>
#include <vector>

#include "region/region.h"
#include "values/halving_line.h"

namespace halvorn::engine {

/// Returns where a line halves the area of a region, as `HalvingLine` does, in its frame; empty
/// when there is no area.
std::optional<double> PlasticAxis(const Region& region, AxisDirection direction);

/// A modulus or first moment about each axis [L^3]: plastic moduli are the integral of the distance
/// from the plastic axis.
struct PlasticModuli {
    double x = 0.0;  ///< about the horizontal axis
    double y = 0.0;  ///< about the vertical axis
};

/// Returns the moduli about the plastic axes, by integrals along the rings of the parts.
PlasticModuli NetPlasticModuli(const Region& region);

/// Returns the same of rings in the frame of a region, outlines counter-clockwise and voids
/// clockwise [L^3].
PlasticModuli NetPlasticModuli(const std::vector<const Points*>& rings, const Frame& frame);

/// Returns the first moments of what lies on one side of the axes through the centre of gravity,
/// about these axes [L^3]: both sides have the same.
/// @param centroid  in the section's coordinates [L]
PlasticModuli StaticMoments(const Region& region, const Point& centroid);

/// Returns the outlines and voids of all parts, in the frame; the region owns them.
std::vector<const Points*> RingsOf(const Region& region);

}  // namespace halvorn::engine

#endif
