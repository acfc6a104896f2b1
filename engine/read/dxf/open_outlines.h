/// @file open_outlines.h
/// Outlines that a small fault of the drawing keeps out of the section.
#ifndef HALVORN_ENGINE_READ_DXF_OPEN_OUTLINES_H
#define HALVORN_ENGINE_READ_DXF_OPEN_OUTLINES_H

#include <string>
#include <vector>

#include "read/dxf/entity_curve.h"

namespace halvorn::engine::dxf {

/// A curve or a chain of curves that was left out: it is open, or it is not parallel to the x-y
/// plane.
struct LeftOutChain {
    Points points;
    bool isClosed = false;
    bool isAslant = false;
    int firstLine = 0;
    int lastLine = 0;
};

/// Refuses a drawing in which one of `chains`, or several of them, would go round one of `outlines`
/// or round another nearly closed chain, or lie within one of `outlines`, if they were closed:
/// without them holes would be read as solids or be missing. Chains whose gaps are 5 % of their
/// length or more are no outlines, but centre lines, dimension lines and the like.
/// @param millimetre one millimetre in the unit of the drawing
/// @throws InputError naming the ends at the widest gap
void RefuseOpenOutlines(std::vector<LeftOutChain> chains, const std::vector<Curve>& outlines,
                        double millimetre, const std::string& source);

}  // namespace halvorn::engine::dxf

#endif
