#include "input/section_file.h"

#include <string_view>
#include <tuple>

#include "input/json_document.h"
#include "input/json_node.h"

namespace halvorn::host {

namespace {

constexpr double kFormatVersion = 1.0;
constexpr std::size_t kFewestRingPoints = 3;
constexpr std::size_t kFewestWallPoints = 2;

// Sets a number of the given values; a double and an optional one alike.
struct ProfileNumber {
    const char* key;
    void (*set)(GivenValues&, double);
    Sign sign;
    bool isRequired;
};

template <auto Member>
void Set(GivenValues& values, double number) {
    values.*Member = number;
}

constexpr ProfileNumber kProfileNumbers[] = {
    {"angle_radians", Set<&GivenValues::angle>, Sign::Any, false},
    {"area", Set<&GivenValues::area>, Sign::Positive, true},
    {"shear_area_1", Set<&GivenValues::shearArea1>, Sign::NotNegative, true},
    {"shear_area_2", Set<&GivenValues::shearArea2>, Sign::NotNegative, true},
    {"torsion_constant", Set<&GivenValues::torsionConstant>, Sign::NotNegative, true},
    {"inertia_1", Set<&GivenValues::inertia1>, Sign::NotNegative, true},
    {"inertia_2", Set<&GivenValues::inertia2>, Sign::NotNegative, true},
    {"torsion_modulus", Set<&GivenValues::torsionModulus>, Sign::NotNegative, true},
    {"plastic_modulus_x", Set<&GivenValues::plasticModulusX>, Sign::NotNegative, true},
    {"plastic_modulus_y", Set<&GivenValues::plasticModulusY>, Sign::NotNegative, true},
    {"extra", Set<&GivenValues::extra>, Sign::Any, false},
    {"reserved", Set<&GivenValues::reserved>, Sign::Any, false},
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

// The name that a file gives an element, else its place.
std::string Label(const Node& node) {
    const std::string name = ReadOptionalText(node, "name");
    return name.empty() ? node.Pointer() : name;
}

Element ReadContour(const Node& node) {
    node.RequireKeys({"name", "kind", "points"});
    Element element;
    element.label = Label(node);
    element.isSolid = ReadIsSolid(node);
    element.ring = ReadPoints(node.At("points"), kFewestRingPoints);
    return element;
}

Element ReadProfile(const Node& node) {
    std::vector<std::string_view> keys = {"name", "kind", "outline", "centroid"};
    for (const ProfileNumber& number : kProfileNumbers) keys.push_back(number.key);
    node.RequireKeys(keys);

    Element element;
    element.label = Label(node);
    element.isSolid = ReadIsSolid(node);
    element.ring = ReadPoints(node.At("outline"), kFewestRingPoints);
    GivenValues given;
    given.method = "given in the file";
    std::tie(given.centroidX, given.centroidY) = ReadPoint(node.At("centroid"));
    for (const ProfileNumber& number : kProfileNumbers) {
        if (number.isRequired || node.Has(number.key)) {
            number.set(given, node.At(number.key).Number(number.sign));
        }
    }
    element.given = given;
    return element;
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

void ReadElements(const Node& root, const char* key, Element (*readElement)(const Node&),
                  std::vector<Element>* elements) {
    if (!root.Has(key)) return;
    const Node node = root.At(key);
    const std::size_t size = node.Size("objects");
    for (std::size_t i = 0; i < size; ++i) elements->push_back(readElement(node[i]));
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

SectionModel ReadSection(const Node& root) {
    CheckVersion(root);
    root.RequireKeys(
        {"$schema", "version", "name", "description", "unit", "contours", "profiles", "polyline"});
    ReadOptionalText(root, "$schema");
    SectionModel section;
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
    ReadElements(root, "contours", ReadContour, &section.elements);
    ReadElements(root, "profiles", ReadProfile, &section.elements);
    if (section.elements.empty()) {
        root.Fail("the section is empty", "add \"contours\", \"profiles\" or a \"polyline\"");
    }
    return section;
}

}  // namespace

SectionModel ReadSectionText(const std::string& text, const std::string& source,
                             const InputOptions&) {
    const nlohmann::json document = ParseJson(text, source);
    SectionModel section = ReadSection(Node(document, source));
    section.source = source;
    return section;
}

}  // namespace halvorn::host
