#include "read/dxf/read_drawing.h"

#include <optional>
#include <utility>

#include "HalvornEngine.h"
#include "read/dxf/collect_curves.h"
#include "read/dxf/drawing.h"
#include "read/dxf/frame.h"
#include "read/dxf/join_curves.h"
#include "read/dxf/layers.h"
#include "read/dxf/notes.h"
#include "read/input_options.h"
#include "read/nesting.h"

namespace halvorn::engine {

namespace {

using dxf::Drawing;
using dxf::Notes;

// Returns the unit that the file states, empty for none.
std::string StatedUnit(const Drawing& drawing) {
    switch (drawing.unitCode.value_or(0)) {
        case 0:
            return "";
        case 1:
            return "in";
        case 4:
            return "mm";
        case 5:
            return "cm";
        case 6:
            return "m";
        default:
            return "$INSUNITS " + std::to_string(*drawing.unitCode);
    }
}

std::string UnitOf(const Drawing& drawing, const std::string& source, const InputOptions& options,
                   Notes& notes) {
    std::string stated = StatedUnit(drawing);
    if (options.unit) {
        if (!stated.empty() && stated != *options.unit) {
            notes.Say("the drawing states its unit as " + stated + "; its numbers are read as " +
                      *options.unit + " because the command line says so");
        }
        return *options.unit;
    }
    if (stated.empty()) {
        notes.Say(
            "the drawing states no unit, so its numbers are read as mm; --unit says otherwise");
        return "mm";
    }
    if (stated[0] == '$') {
        throw InputError(
            source, "its unit (" + stated + ") is not mm, cm, m or in",
            "scale the drawing to one of them, or say with --unit what its numbers are");
    }
    return stated;
}

// Returns a tolerance in the unit of the drawing.
double InUnit(double millimetres, const std::string& unit) {
    return millimetres * MetresPer("mm") / MetresPer(unit);
}

[[noreturn]] void RefuseEmpty(const std::string& source, const Notes& notes) {
    std::string seen;
    for (const std::string& remark : notes.Remarks()) seen += " (" + remark + ")";
    throw InputError(source, "there is no closed outline in the drawing" + seen,
                     "draw each outline as a closed polyline, a circle or curves that meet end to "
                     "end");
}

}  // namespace

std::vector<DrawingLayer> LayersOfDrawing(const std::string& text, const std::string& source) {
    return dxf::LayersOf(dxf::FindParts(text, source), source);
}

SectionModel ReadDrawing(const std::string& text, const std::string& source,
                         const InputOptions& options) {
    CheckInputOptions(options);
    const Drawing drawing = dxf::FindParts(text, source);
    Notes notes;
    SectionModel section;
    section.source = source;
    section.unit = UnitOf(drawing, source, options, notes);
    section.isUnitAssumed = !options.unit && StatedUnit(drawing).empty();
    const double chord = InUnit(options.chordTolerance, section.unit);
    const double join = InUnit(options.joinTolerance, section.unit);
    if (!drawing.hasEnd) notes.Say("the file closes without EOF, so its end may be missing");
    const dxf::LayerChoice layers(drawing, options.layers, source);
    auto outlines = dxf::JoinCurves(dxf::CollectCurves(drawing, layers, chord, source, notes), join,
                                    join / options.joinTolerance, source, notes);
    if (outlines.empty()) RefuseEmpty(source, notes);
    for (dxf::Curve& outline : outlines) {
        Element element;
        element.label = "line " + std::to_string(outline.line);
        element.ring = std::move(outline.points);
        section.elements.push_back(std::move(element));
    }
    section.isDrawn = true;
    const std::optional<std::size_t> holder = ClassifyByNesting(&section.elements, source);
    const std::string frame = holder ? dxf::FrameRemark(section.elements, *holder) : "";
    if (!frame.empty()) notes.Say(frame);
    section.remarks = notes.Remarks();
    return section;
}

}  // namespace halvorn::engine
