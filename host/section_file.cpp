#include "section_file.h"

#include <string_view>
#include <tuple>

#include "input_text.h"
#include "json_document.h"
#include "json_node.h"

namespace halvorn::host {

namespace {

constexpr double kFormatVersion = 1.0;
constexpr std::size_t kFewestRingPoints = 3;
constexpr std::size_t kFewestWallPoints = 2;

struct ProfileNumber {
    const char* key;
    double StandardProfile::*member;
    Sign sign;
    bool isRequired;
};

constexpr ProfileNumber kProfileNumbers[] = {
    {"angle_radians", &StandardProfile::angle, Sign::Any, false},
    {"area", &StandardProfile::area, Sign::Positive, true},
    {"shear_area_1", &StandardProfile::shearArea1, Sign::NotNegative, true},
    {"shear_area_2", &StandardProfile::shearArea2, Sign::NotNegative, true},
    {"torsion_constant", &StandardProfile::torsionConstant, Sign::NotNegative, true},
    {"inertia_1", &StandardProfile::inertia1, Sign::NotNegative, true},
    {"inertia_2", &StandardProfile::inertia2, Sign::NotNegative, true},
    {"torsion_modulus", &StandardProfile::torsionModulus, Sign::NotNegative, true},
    {"plastic_modulus_x", &StandardProfile::plasticModulusX, Sign::NotNegative, true},
    {"plastic_modulus_y", &StandardProfile::plasticModulusY, Sign::NotNegative, true},
    {"extra", &StandardProfile::extra, Sign::Any, false},
    {"reserved", &StandardProfile::reserved, Sign::Any, false},
};

std::pair<double, double> ReadPoint(const Node& node) {
    const std::size_t size = node.Size("two numbers, a point [x, y]");
    if (size != 2) {
        node.Fail("a point needs exactly two numbers, found " + std::to_string(size),
                  "write it as [x, y]");
    }
    return {node[0].Number(), node[1].Number()};
}

Points ReadPoints(const Node& node, std::size_t fewest) {
    const std::size_t size = node.Size("points [x, y]");
    if (size < fewest) {
        node.Fail("at least " + std::to_string(fewest) + " points are needed, found " +
                      std::to_string(size),
                  "add the missing points");
    }
    Points points;
    points.reserve(size);
    for (std::size_t i = 0; i < size; ++i) points.push_back(ReadPoint(node[i]));
    return points;
}

bool ReadIsSolid(const Node& node) {
    return node.At("kind").Choice<bool>({{"solid", true}, {"hole", false}});
}

std::string ReadOptionalText(const Node& node, const char* key) {
    return node.Has(key) ? node.At(key).Text() : std::string();
}

Contour ReadContour(const Node& node) {
    node.RequireKeys({"name", "kind", "points"});
    ReadOptionalText(node, "name");
    return {ReadIsSolid(node), ReadPoints(node.At("points"), kFewestRingPoints)};
}

StandardProfile ReadProfile(const Node& node) {
    std::vector<std::string_view> keys = {"name", "kind", "outline", "centroid"};
    for (const ProfileNumber& number : kProfileNumbers) keys.push_back(number.key);
    node.RequireKeys(keys);
    ReadOptionalText(node, "name");

    StandardProfile profile;
    profile.isSolid = ReadIsSolid(node);
    profile.outline = ReadPoints(node.At("outline"), kFewestRingPoints);
    std::tie(profile.centroidX, profile.centroidY) = ReadPoint(node.At("centroid"));
    for (const ProfileNumber& number : kProfileNumbers) {
        if (number.isRequired || node.Has(number.key)) {
            profile.*number.member = node.At(number.key).Number(number.sign);
        }
    }
    return profile;
}

std::vector<double> ReadRadii(const Node& polyline, std::size_t pointCount) {
    std::vector<double> radii(pointCount, 0.0);
    if (!polyline.Has("radii")) return radii;
    const Node node = polyline.At("radii");
    const std::size_t size = node.Size("radii");
    if (size != pointCount) {
        node.Fail("one radius per point is needed: " + std::to_string(pointCount) +
                      " points, found " + std::to_string(size) + " radii",
                  size < pointCount ? "write 0 for each sharp corner" : "remove the surplus");
    }
    for (std::size_t i = 0; i < size; ++i) radii[i] = node[i].Number(Sign::NotNegative);
    return radii;
}

Polyline ReadPolyline(const Node& node) {
    node.RequireKeys({"kind", "thickness", "points", "radii", "torsion"});
    Polyline polyline;
    polyline.kind = node.At("kind").Choice<PolylineKind>({{"solid", PolylineKind::Solid},
                                                          {"closed_wall", PolylineKind::ClosedWall},
                                                          {"open_wall", PolylineKind::OpenWall}});
    if (polyline.kind == PolylineKind::Solid) {
        for (const char* key : {"thickness", "torsion"}) {
            if (node.Has(key)) {
                node.At(key).Fail("a solid has no \"" + std::string(key) + "\"",
                                  "remove the key or make \"kind\" a wall");
            }
        }
    } else {
        polyline.thickness = node.At("thickness").Number(Sign::Positive);
        polyline.torsion = node.At("torsion").Choice<TorsionFormulas>(
            {{"tube", TorsionFormulas::Tube}, {"general", TorsionFormulas::General}});
    }
    const bool isOpen = polyline.kind == PolylineKind::OpenWall;
    polyline.points = ReadPoints(node.At("points"), isOpen ? kFewestWallPoints : kFewestRingPoints);
    polyline.radii = ReadRadii(node, polyline.points.size());
    return polyline;
}

template <typename T>
std::vector<T> ReadList(const Node& root, const char* key, T (*readItem)(const Node&)) {
    std::vector<T> items;
    if (!root.Has(key)) return items;
    const Node node = root.At(key);
    const std::size_t size = node.Size("objects");
    items.reserve(size);
    for (std::size_t i = 0; i < size; ++i) items.push_back(readItem(node[i]));
    return items;
}

// Before anything else, so that the file of a newer format is not blamed for its newer keys.
void CheckVersion(const Node& root) {
    root.RequireObject();
    const Node version = root.At("version");
    if (version.Number() != kFormatVersion) {
        version.Fail("this program reads version 1 of the format",
                     "write 1, or use a program that knows the version of the file");
    }
}

std::string ReadUnit(const Node& node) {
    return std::string(
        node.Choice<std::string_view>({{"mm", "mm"}, {"cm", "cm"}, {"m", "m"}, {"in", "in"}}));
}

SectionFile ReadSection(const Node& root) {
    CheckVersion(root);
    root.RequireKeys(
        {"$schema", "version", "name", "description", "unit", "contours", "profiles", "polyline"});
    ReadOptionalText(root, "$schema");
    SectionFile section;
    section.name = ReadOptionalText(root, "name");
    section.description = ReadOptionalText(root, "description");
    section.unit = ReadUnit(root.At("unit"));
    if (root.Has("polyline")) {
        if (root.Has("contours") || root.Has("profiles")) {
            root.At("polyline")
                .Fail("a polyline stands alone",
                      "remove it, or remove \"contours\" and \"profiles\"");
        }
        section.polyline = ReadPolyline(root.At("polyline"));
        return section;
    }
    section.contours = ReadList(root, "contours", ReadContour);
    section.profiles = ReadList(root, "profiles", ReadProfile);
    if (section.contours.empty() && section.profiles.empty()) {
        root.Fail("the section is empty", "add \"contours\", \"profiles\" or a \"polyline\"");
    }
    return section;
}

}  // namespace

SectionFile ReadSectionFile(const std::string& path) {
    const std::string source = SourceName(path);
    const nlohmann::json document = ParseJson(ReadInput(path), source);
    return ReadSection(Node(document, source));
}

}  // namespace halvorn::host
