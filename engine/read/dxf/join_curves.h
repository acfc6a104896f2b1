/// @file join_curves.h
/// Curves of a drawing, joined end to end into outlines.
#ifndef HALVORN_ENGINE_READ_DXF_JOIN_CURVES_H
#define HALVORN_ENGINE_READ_DXF_JOIN_CURVES_H

#include <string>
#include <vector>

#include "read/dxf/entity_curve.h"
#include "read/dxf/notes.h"

namespace halvorn::engine::dxf {

/// Returns the closed curves among `curves` and the closed chains that the others form, in any
/// order and direction, by their first lines. Ends no farther apart than `tolerance` [L] are
/// joined: midway between them up to the default tolerance; farther apart, in the point where the
/// curves run past each other or by a straight edge that keeps both ends.
///
/// Named in `notes` and left out are curves that lie on another from end to end, those that are no
/// longer than the tolerance, chains that stay open and outlines that enclose nothing. Aslant
/// curves are left out too.
/// @param millimetre one millimetre in the unit of the drawing
/// @throws InputError where three or more ends meet: which of them belong together is not known;
///         and for what is left out and would go round an outline (`RefuseOpenOutlines`)
std::vector<Curve> JoinCurves(std::vector<Curve> curves, double tolerance, double millimetre,
                              const std::string& source, Notes& notes);

}  // namespace halvorn::engine::dxf

#endif
