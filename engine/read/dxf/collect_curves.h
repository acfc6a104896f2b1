/// @file collect_curves.h
/// All curves that a drawing shows.
#ifndef HALVORN_ENGINE_READ_DXF_COLLECT_CURVES_H
#define HALVORN_ENGINE_READ_DXF_COLLECT_CURVES_H

#include <string>
#include <vector>

#include "read/dxf/drawing.h"
#include "read/dxf/entity_curve.h"
#include "read/dxf/layers.h"
#include "read/dxf/notes.h"

namespace halvorn::engine::dxf {

/// Returns the curves of model space and of the blocks placed there, in the coordinates of the
/// drawing, and among them as aslant those that are not parallel to the x-y plane. These and
/// everything else that is no part of the section are named in `notes`: other kinds, what is
/// hidden, in paper space or on other layers, and blocks that cannot be placed.
/// @param tolerance greatest distance of a chord from its curve [L]
/// @throws InputError for entities that are damaged, clipped or too many
std::vector<Curve> CollectCurves(const Drawing& drawing, const LayerChoice& layers,
                                 double tolerance, const std::string& source, Notes& notes);

}  // namespace halvorn::engine::dxf

#endif
