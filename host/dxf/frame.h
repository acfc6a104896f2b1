/// @file frame.h
/// A rectangle around a whole drawing.
#ifndef HALVORN_HOST_DXF_FRAME_H
#define HALVORN_HOST_DXF_FRAME_H

#include <string>
#include <vector>

#include "model/section_model.h"

namespace halvorn::host::dxf {

/// Returns a remark when one of the rings is a rectangle that holds all others, so that what was
/// drawn as a solid may have become a hole; empty otherwise, and for a rectangular tube.
std::string FrameRemark(const std::vector<Element>& elements);

}  // namespace halvorn::host::dxf

#endif
