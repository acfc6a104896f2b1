/// @file frame.h
/// A rectangle around a whole drawing.
#ifndef HALVORN_ENGINE_READ_DXF_FRAME_H
#define HALVORN_ENGINE_READ_DXF_FRAME_H

#include <cstddef>
#include <string>
#include <vector>

#include "model/section_model.h"

namespace halvorn::engine::dxf {

/// Returns a remark when the ring that holds all others is a rectangle, so that what was drawn as
/// a solid may have become a hole; empty otherwise, and for a rectangular tube.
std::string FrameRemark(const std::vector<Element>& elements, std::size_t holder);

}  // namespace halvorn::engine::dxf

#endif
