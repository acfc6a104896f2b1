/// @file stress_picture.h
/// What a figure of stresses needs beside the section, and how it is put on the page.
#ifndef HALVORN_ENGINE_FIGURE_STRESS_PICTURE_H
#define HALVORN_ENGINE_FIGURE_STRESS_PICTURE_H

#include <optional>
#include <string>
#include <vector>

#include "figure/sheet.h"
#include "figure/stress_scale.h"
#include "warping/stresses.h"

namespace halvorn::engine::figure {

/// One stress of a section under forces.
struct StressPicture {
    StressKind kind = StressKind::VonMises;
    SectionForces forces;
    PeakStress peak;    ///< the largest, with its place
    StressField field;  ///< in the section's coordinates
    std::optional<NeutralLine> neutral{};
    bool leavesOut = false;  ///< of the largest: circles about sharp corners
};

/// Returns the picture of a stress of a report.
/// @throws InputError when the report has no such stress
StressPicture StressPictureOf(const Report& report, StressKind kind);

/// Returns the scale of the stress.
StressScale ScaleOf(const StressPicture& picture);

/// Returns a line that says which stress it is and under which forces.
std::string StressTitle(const StressPicture& picture);

/// Returns the forces that are not 0, and the largest stress with its place.
std::vector<ValueRow> StressRows(const Sheet& sheet);

/// Puts the bands of the stress and the rim of the section on the page.
/// @throws std::runtime_error for a stress that is not finite
void AddStresses(Sheet& sheet, const StressScale& scale);

/// Marks the place of the largest stress and writes it there, after all lines.
void AddPeak(Sheet& sheet);

/// Returns the height of `AddScale` [pt].
double ScaleHeight(const StressScale& scale);

/// Puts the scale on the page, from an upper left corner on, and returns the box that it takes up.
PageBox AddScale(Sheet& sheet, const StressScale& scale, const Spot& corner);

}  // namespace halvorn::engine::figure

#endif
