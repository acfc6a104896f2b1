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

std::pair<double, double> readPoint(const Node& node) {
    const std::size_t size = node.size("two numbers, a point [x, y]");
    if (size != 2) {
        node.fail("a point needs exactly two numbers, found " + std::to_string(size),
                  "write it as [x, y]");
    }
    return {node[0].number(), node[1].number()};
}

Points readPoints(const Node& node, std::size_t fewest) {
    const std::size_t size = node.size("points [x, y]");
    if (size < fewest) {
        node.fail("at least " + std::to_string(fewest) + " points are needed, found " +
                      std::to_string(size),
                  "add the missing points");
    }
    Points points;
    points.reserve(size);
    for (std::size_t i = 0; i < size; ++i) points.push_back(readPoint(node[i]));
    return points;
}

bool readIsSolid(const Node& node) {
    return node.at("kind").choice<bool>({{"solid", true}, {"hole", false}});
}

std::string readOptionalText(const Node& node, const char* key) {
    return node.has(key) ? node.at(key).text() : std::string();
}

Contour readContour(const Node& node) {
    node.requireKeys({"name", "kind", "points"});
    readOptionalText(node, "name");
    return {readIsSolid(node), readPoints(node.at("points"), kFewestRingPoints)};
}

StandardProfile readProfile(const Node& node) {
    std::vector<std::string_view> keys = {"name", "kind", "outline", "centroid"};
    for (const ProfileNumber& number : kProfileNumbers) keys.push_back(number.key);
    node.requireKeys(keys);
    readOptionalText(node, "name");

    StandardProfile profile;
    profile.isSolid = readIsSolid(node);
    profile.outline = readPoints(node.at("outline"), kFewestRingPoints);
    std::tie(profile.centroidX, profile.centroidY) = readPoint(node.at("centroid"));
    for (const ProfileNumber& number : kProfileNumbers) {
        if (number.isRequired || node.has(number.key)) {
            profile.*number.member = node.at(number.key).number(number.sign);
        }
    }
    return profile;
}

std::vector<double> readRadii(const Node& polyline, std::size_t pointCount) {
    std::vector<double> radii(pointCount, 0.0);
    if (!polyline.has("radii")) return radii;
    const Node node = polyline.at("radii");
    const std::size_t size = node.size("radii");
    if (size != pointCount) {
        node.fail("one radius per point is needed: " + std::to_string(pointCount) +
                      " points, found " + std::to_string(size) + " radii",
                  "write 0 for each sharp corner");
    }
    for (std::size_t i = 0; i < size; ++i) radii[i] = node[i].number(Sign::NotNegative);
    return radii;
}

Polyline readPolyline(const Node& node) {
    node.requireKeys({"kind", "thickness", "points", "radii", "torsion"});
    Polyline polyline;
    polyline.kind = node.at("kind").choice<PolylineKind>({{"solid", PolylineKind::Solid},
                                                          {"closed_wall", PolylineKind::ClosedWall},
                                                          {"open_wall", PolylineKind::OpenWall}});
    if (polyline.kind == PolylineKind::Solid) {
        for (const char* key : {"thickness", "torsion"}) {
            if (node.has(key)) {
                node.at(key).fail("a solid has no \"" + std::string(key) + "\"",
                                  "remove the key or make \"kind\" a wall");
            }
        }
    } else {
        polyline.thickness = node.at("thickness").number(Sign::Positive);
        polyline.torsion = node.at("torsion").choice<TorsionFormulas>(
            {{"tube", TorsionFormulas::Tube}, {"general", TorsionFormulas::General}});
    }
    const bool isOpen = polyline.kind == PolylineKind::OpenWall;
    polyline.points = readPoints(node.at("points"), isOpen ? kFewestWallPoints : kFewestRingPoints);
    polyline.radii = readRadii(node, polyline.points.size());
    return polyline;
}

template <typename T>
std::vector<T> readList(const Node& root, const char* key, T (*readItem)(const Node&)) {
    std::vector<T> items;
    if (!root.has(key)) return items;
    const Node node = root.at(key);
    const std::size_t size = node.size("objects");
    items.reserve(size);
    for (std::size_t i = 0; i < size; ++i) items.push_back(readItem(node[i]));
    return items;
}

// Before anything else, so that the file of a newer format is not blamed for its newer keys.
void checkVersion(const Node& root) {
    root.requireObject();
    const Node version = root.at("version");
    if (version.number() != kFormatVersion) {
        version.fail("this program reads version 1 of the format",
                     "write 1, or use a program that knows the version of the file");
    }
}

std::string readUnit(const Node& node) {
    return std::string(
        node.choice<std::string_view>({{"mm", "mm"}, {"cm", "cm"}, {"m", "m"}, {"in", "in"}}));
}

SectionFile readSection(const Node& root) {
    checkVersion(root);
    root.requireKeys(
        {"$schema", "version", "name", "description", "unit", "contours", "profiles", "polyline"});
    readOptionalText(root, "$schema");
    SectionFile section;
    section.name = readOptionalText(root, "name");
    section.description = readOptionalText(root, "description");
    section.unit = readUnit(root.at("unit"));
    if (root.has("polyline")) {
        if (root.has("contours") || root.has("profiles")) {
            root.at("polyline")
                .fail("a polyline stands alone",
                      "remove it, or remove \"contours\" and \"profiles\"");
        }
        section.polyline = readPolyline(root.at("polyline"));
        return section;
    }
    section.contours = readList(root, "contours", readContour);
    section.profiles = readList(root, "profiles", readProfile);
    if (section.contours.empty() && section.profiles.empty()) {
        root.fail("the section is empty", "add \"contours\", \"profiles\" or a \"polyline\"");
    }
    return section;
}

}  // namespace

SectionFile readSectionFile(const std::string& path) {
    const std::string source = sourceName(path);
    const nlohmann::json document = parseJson(readInput(path), source);
    return readSection(Node(document, source));
}

}  // namespace halvorn::host
