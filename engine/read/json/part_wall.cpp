#include <cmath>
#include <stdexcept>
#include <string>

#include "geometry/wall_outline.h"
#include "model/class_outputs.h"
#include "model/outlines.h"
#include "model/principal_inertias.h"
#include "model/push_element.h"
#include "read/json/part_shapes.h"
#include "read/json/section_nodes.h"

namespace halvorn::engine {

namespace {

shapes::WallLine ReadLine(const Node& wall) {
    wall.RequireKeys({"kind", "points", "thickness", "radii"});
    shapes::WallLine line;
    line.isClosed = wall.At("kind").Choice<bool>({{"open", false}, {"closed", true}});
    line.thickness = wall.At("thickness").Number(Sign::Positive);
    line.points =
        ReadPoints(wall.At("points"), line.isClosed ? kFewestRingPoints : kFewestLinePoints);
    line.radii = ReadRadii(wall, line.points.size());
    RequireRoom(wall, line, shapes::FaceArcs::Concentric);
    return line;
}

// Area, centroid and principal inertias of the drawn faces, the hole subtracted.
GivenValues FaceValues(const shapes::Outline& outline) {
    const ClassOutputs out = ClassOutputsOf(ElementsOf(outline));
    const PrincipalInertias principal =
        PrincipalInertiasOf(out.inertiaX, out.inertiaY, out.inertiaXY);
    GivenValues values;
    values.centroidX = out.centroid.x;
    values.centroidY = out.centroid.y;
    values.area = out.area;
    values.inertia1 = principal.first;
    values.inertia2 = principal.second;
    values.angle = principal.angle;
    values.method = "drawn faces of the wall";
    return values;
}

// Torsion and shear by the library's general wall formulas. The bends of the mid-line go in as
// chords: as corner radii they would round both faces with one radius in five chords.
void AddWallFormulas(const shapes::WallLine& line, const Points& midLine, GivenValues& values) {
    Polyline wall;
    wall.kind = line.isClosed ? PolylineKind::ClosedWall : PolylineKind::OpenWall;
    wall.torsion = TorsionFormulas::General;
    wall.thickness = line.thickness;
    wall.points = midLine;
    wall.radii.assign(midLine.size(), 0.0);
    const PolylineOutputs out = PolylineOutputsOf(wall);
    values.torsionConstant = out.torsionConstant;
    values.torsionModulus = out.torsionModulus;
    values.shearArea1 = out.shearAreaX;
    values.shearArea2 = out.shearAreaY;
    values.torsionMethod =
        line.isClosed ? "closed wall: It = 4 Am^2 t / outer perimeter, Wt = 2 t Am, Av = A / 2"
                      : "open wall: It = perimeter t^3 / 3, Wt = 2 t A, Av = A / 2";
}

}  // namespace

std::vector<Element> ReadWallPart(const Node& wall, const shapes::ArcDivision& division) {
    const shapes::WallLine line = ReadLine(wall);
    try {
        const shapes::Outline outline = DrawWall(line, division);
        const Points midLine = MidLine(line, division);
        Element element;
        element.ring = WallKeyhole(outline);
        element.isWall = true;
        element.given = FaceValues(outline);
        AddWallFormulas(line, midLine, *element.given);
        return {element};
    } catch (const shapes::DimensionError& error) {
        wall.Fail(error.what(), error.Remedy());
    } catch (const std::invalid_argument& error) {
        wall.Fail(error.what(), "correct the points and radii");
    }
}

}  // namespace halvorn::engine
