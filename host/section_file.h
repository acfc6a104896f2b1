/// @file section_file.h
/// A section as its file gives it (docs/file-format.md).
#ifndef HALVORN_HOST_SECTION_FILE_H
#define HALVORN_HOST_SECTION_FILE_H

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace halvorn::host {

/// Vertices (x, y) in the unit of the file; a ring does not repeat its first vertex.
using Points = std::vector<std::pair<double, double>>;

/// A free contour, at least three points.
struct Contour {
    bool isSolid = true;
    Points points;
};

/// A profile of known properties, the arguments of `CSectionTools::PushContourStandard`.
struct StandardProfile {
    bool isSolid = true;
    Points outline;
    double angle = 0.0;  // [rad]
    double centroidX = 0.0;
    double centroidY = 0.0;
    double area = 0.0;
    double shearArea1 = 0.0;
    double shearArea2 = 0.0;
    double torsionConstant = 0.0;
    double inertia1 = 0.0;
    double inertia2 = 0.0;
    double reserved = 0.0;
    double torsionModulus = 0.0;
    double plasticModulusX = 0.0;
    double plasticModulusY = 0.0;
    double extra = 0.0;
};

enum class PolylineKind { Solid, ClosedWall, OpenWall };
enum class TorsionFormulas { Tube, General };

/// The arguments of `CSectionTools::CalculContourQuelconqueTOOL`.
struct Polyline {
    PolylineKind kind = PolylineKind::Solid;
    TorsionFormulas torsion = TorsionFormulas::General;
    double thickness = 0.0;  // 0 for a solid, positive for a wall
    Points points;
    std::vector<double> radii;  // one per point
};

/// Either contours and profiles, at least one of them, or one polyline.
struct SectionFile {
    std::string name;
    std::string description;
    std::string unit;  // of every length in the file
    std::vector<Contour> contours;
    std::vector<StandardProfile> profiles;
    std::optional<Polyline> polyline;
};

/// Returns the section in a file, or on standard input for "-".
/// @throws InputError for whatever docs/file-format.md does not allow; nothing is guessed
SectionFile ReadSectionFile(const std::string& path);

}  // namespace halvorn::host

#endif
