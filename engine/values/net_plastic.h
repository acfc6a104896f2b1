/// @file net_plastic.h
/// The plastic axes of a region, and its halves on both sides of them.
#ifndef HALVORN_ENGINE_VALUES_NET_PLASTIC_H
#define HALVORN_ENGINE_VALUES_NET_PLASTIC_H

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "geometry/point.h"
#include "region/region.h"

namespace halvorn::engine {

/// Of a plastic axis: horizontal for bending about x, vertical for bending about y.
enum class AxisDirection { Horizontal, Vertical };

/// Returns the height y of the horizontal line, or the abscissa x of the vertical one, that halves
/// the area of a region, in its frame; empty when there is no area. Where a gap halves it, such as
/// between two equal plates, it is the middle of the gap.
///
/// The area beyond a line is the sum over the edges of the strips between them and the line; it is
/// bisected to the last bit. Areas closer than 1e-13 of the sum of all strips are taken as equal,
/// so that the line is off by no more than this over the width of the section there.
/// Cost: a few passes over the edges.
std::optional<double> PlasticAxis(const Region& region, AxisDirection direction);

/// One side of a plastic axis, in the section's coordinates.
struct PlasticHalf {
    double area = 0.0;           ///< [L^2]
    Point centroid;              ///< [L]
    double leverArm = 0.0;       ///< distance of the centroid from the axis [L]
    std::vector<Points> pieces;  ///< the half itself; holes hang on by bridges [L]
};

/// Both halves: above and below a horizontal axis, to the right and to the left of a vertical one.
struct PlasticHalves {
    std::array<PlasticHalf, 2> sides;
    std::string whyMissing;  ///< one sentence without a full stop; empty: there are halves
};

/// Cuts every part of a region at its plastic axis, as `KCutPolygonByLine` cuts. The areas of the
/// halves agree with half of the region's within 1e-9 of it, else there are none.
PlasticHalves HalvesOf(const Region& region, AxisDirection direction);

}  // namespace halvorn::engine

#endif
