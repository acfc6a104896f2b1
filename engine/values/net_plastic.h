/// @file net_plastic.h
/// The plastic axes and moduli of a region.
#ifndef HALVORN_ENGINE_VALUES_NET_PLASTIC_H
#define HALVORN_ENGINE_VALUES_NET_PLASTIC_H

#include <optional>

#include "region/region.h"
#include "values/plastic_axis.h"

namespace halvorn::engine {

/// Returns where a line halves the area of a region, as `HalvingLine` does, in its frame; empty
/// when there is no area.
std::optional<double> PlasticAxis(const Region& region, AxisDirection direction);

/// The plastic moduli of a region [L^3]: the integral of the distance from the plastic axis.
struct PlasticModuli {
    double x = 0.0;  ///< about the horizontal axis
    double y = 0.0;  ///< about the vertical axis
};

/// Returns the moduli about the plastic axes, by integrals along the rings of the parts.
PlasticModuli NetPlasticModuli(const Region& region);

}  // namespace halvorn::engine

#endif
