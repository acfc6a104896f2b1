#include <CSectionTools.h>

#include <array>
#include <cmath>
#include <stdexcept>
#include <string>

#include "geometry/wall_outline.h"
#include "model/principal_inertias.h"
#include "model/push_element.h"
#include "read/json/part_shapes.h"
#include "read/json/section_nodes.h"
#include "shapes/thin_wall_torsion.h"

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
    CSectionTools tools;
    for (const auto* ring : {&outline.solid, &outline.hole}) {
        if (ring->empty()) continue;
        Element face;
        face.isSolid = ring == &outline.solid;
        face.ring = PointsOf(*ring);
        PushElement(tools, face);
    }
    std::array<double, 17> out{};
    tools.GetCalculValues(0.0, 0.0, &out[0], &out[1], &out[2], &out[3], &out[4], &out[5], &out[6],
                          &out[7], &out[8], &out[9], &out[10], &out[11], &out[12], &out[13],
                          &out[14], &out[15], &out[16]);
    const PrincipalInertias principal = PrincipalInertiasOf(out[7], out[6], out[8]);
    GivenValues values;
    values.centroidX = out[1];
    values.centroidY = out[2];
    values.area = out[3];
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
    const std::array<double, 10> out = PolylineOutputs(wall);
    values.torsionConstant = out[3];
    values.torsionModulus = out[4];
    values.shearArea1 = out[5];
    values.shearArea2 = out[6];
    values.torsionMethod =
        line.isClosed ? "closed wall: It = 4 Am^2 t / outer perimeter, Wt = 2 t Am, Av = A / 2"
                      : "open wall: It = perimeter t^3 / 3, Wt = 2 t A, Av = A / 2";
}

// The textbook estimate along the mid-line, beside the library's.
ThinWallTorsion TextbookTorsion(const shapes::WallLine& line, const Points& midLine) {
    double length = 0.0;
    double twiceArea = 0.0;
    const auto& [originX, originY] = midLine.front();
    for (std::size_t i = 0; i + (line.isClosed ? 0 : 1) < midLine.size(); ++i) {
        const auto& [x1, y1] = midLine[i];
        const auto& [x2, y2] = midLine[(i + 1) % midLine.size()];
        length += std::hypot(x2 - x1, y2 - y1);
        twiceArea += (x1 - originX) * (y2 - originY) - (x2 - originX) * (y1 - originY);
    }
    if (line.isClosed) {
        return {shapes::ClosedTorsion(0.5 * twiceArea, length, line.thickness), "4 Am^2 t / s"};
    }
    return {shapes::OpenTorsion({{length, line.thickness}}), "sum of b t^3 / 3"};
}

}  // namespace

std::vector<Element> ReadWallPart(const Node& wall, const shapes::ArcDivision& division) {
    const shapes::WallLine line = ReadLine(wall);
    try {
        const shapes::Outline outline = DrawWall(line, division);
        const Points midLine = PointsOf(MidLine(line, division));
        Element element;
        element.ring = PointsOf(WallKeyhole(outline));
        element.given = FaceValues(outline);
        AddWallFormulas(line, midLine, *element.given);
        element.thinWall = TextbookTorsion(line, midLine);
        return {element};
    } catch (const shapes::DimensionError& error) {
        wall.Fail(error.what(), error.Remedy());
    } catch (const std::invalid_argument& error) {
        wall.Fail(error.what(), "correct the points and radii");
    }
}

}  // namespace halvorn::engine
