/// @file frame.h
/// A rectangle around a whole drawing.
#ifndef HALVORN_ENGINE_READ_DXF_FRAME_H
#define HALVORN_ENGINE_READ_DXF_FRAME_H

#include <string>
#include <vector>

#include "model/section_model.h"

namespace halvorn::engine::dxf {

/// Returns a remark when one of the rings is a rectangle that holds all others, so that what was
/// drawn as a solid may have become a hole; empty otherwise, and for a rectangular tube.
std::string FrameRemark(const std::vector<Element>& elements);

}  // namespace halvorn::engine::dxf

#endif
