#include "read/json/section_file.h"

#include <algorithm>
#include <span>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <utility>

#include "model/outlines.h"
#include "read/input_options.h"
#include "read/json/json_document.h"
#include "read/json/json_node.h"
#include "read/json/parts.h"
#include "read/json/section_nodes.h"

namespace halvorn::engine {

namespace {

constexpr double kFormatVersion = 1.0;

// Sets a number of the given values; a double and an optional one alike.
struct GivenNumber {
    const char* key;
    void (*set)(GivenValues&, double);
    Sign sign;
    bool isRequired;
};

template <auto Member>
void Set(GivenValues& values, double number) {
    values.*Member = number;
}

constexpr GivenNumber kProfileNumbers[] = {
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

bool ReadIsSolid(const Node& node) {
    return node.At("kind").Choice<bool>({{"solid", true}, {"hole", false}});
}

// The name that a file gives an element, else its place.
std::string Label(const Node& node) {
    const std::string name = ReadOptionalText(node, "name");
    return name.empty() ? node.Pointer() : name;
}

Element ReadContour(const Node& node) {
    node.RequireKeys({"name", "kind", "points", "modular_ratio"});
    Element element;
    element.label = Label(node);
    element.isSolid = ReadIsSolid(node);
    element.ring = ReadPoints(node.At("points"), kFewestRingPoints);
    ReadModularRatio(node, !element.isSolid, std::span(&element, 1));
    return element;
}

Element ReadProfile(const Node& node) {
    std::vector<std::string_view> keys = {"name", "kind", "outline", "centroid", "modular_ratio"};
    for (const GivenNumber& number : kProfileNumbers) keys.push_back(number.key);
    node.RequireKeys(keys);

    Element element;
    element.label = Label(node);
    element.isSolid = ReadIsSolid(node);
    element.ring = ReadPoints(node.At("outline"), kFewestRingPoints);
    GivenValues given;
    given.method = "given in the file";
    const Point centroid = ReadPoint(node.At("centroid"));
    given.centroidX = centroid.x;
    given.centroidY = centroid.y;
    for (const GivenNumber& number : kProfileNumbers) {
        if (number.isRequired || node.Has(number.key)) {
            number.set(given, node.At(number.key).Number(number.sign));
        }
    }
    element.given = given;
    ReadModularRatio(node, !element.isSolid, std::span(&element, 1));
    return element;
}

// Where points repeat, a wall has no direction and a rounded corner no edges.
void RequireDistinct(const Node& points, const Polyline& polyline) {
    const Points& p = polyline.points;
    const bool hasRadii = std::any_of(polyline.radii.begin(), polyline.radii.end(),
                                      [](double radius) { return radius > 0.0; });
    if (polyline.kind == PolylineKind::Solid && !hasRadii) return;
    const auto fail = [&](std::size_t i, std::size_t k) {
        points[i].Fail("repeats point " + std::to_string(k) +
                           ", so that no wall or arc has a "
                           "direction there",
                       "leave it out");
    };
    for (std::size_t i = 1; i < p.size(); ++i) {
        if (p[i] == p[i - 1]) fail(i, i - 1);
    }
    if (polyline.kind != PolylineKind::OpenWall && p.back() == p.front()) fail(p.size() - 1, 0);
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
    polyline.points = ReadPoints(node.At("points"), isOpen ? kFewestLinePoints : kFewestRingPoints);
    polyline.radii = ReadRadii(node, polyline.points.size());
    RequireDistinct(node.At("points"), polyline);
    RequireRoom(node, {polyline.points, polyline.radii, polyline.thickness, !isOpen},
                shapes::FaceArcs::Equal);
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
    std::vector<std::pair<std::string_view, std::string_view>> names;
    names.reserve(kLengthUnits.size());
    for (const LengthUnit& unit : kLengthUnits) names.emplace_back(unit.name, unit.name);
    return std::string(node.Choice(names));
}

// A tolerance in the file overrides that of the caller.
PartOptions ReadPartOptions(const Node& root, const std::string& unit,
                            const InputOptions& options) {
    PartOptions parts;
    parts.unit = unit;
    parts.wantsPublishedValues = options.wantsPublishedValues;
    parts.catalogue = options.catalogue;
    parts.chordTolerance = root.Has("chord_tolerance")
                               ? root.At("chord_tolerance").Number(Sign::Positive)
                               : options.chordTolerance * MetresPer("mm") / MetresPer(unit);
    return parts;
}

SectionModel ReadSection(const Node& root, const InputOptions& options) {
    CheckVersion(root);
    root.RequireKeys({"$schema", "version", "name", "description", "unit", "density",
                      "chord_tolerance", "contours", "profiles", "parts", "polyline"});
    ReadOptionalText(root, "$schema");
    SectionModel section;
    section.name = ReadOptionalText(root, "name");
    section.description = ReadOptionalText(root, "description");
    section.unit = ReadUnit(root.At("unit"));
    if (options.unit && *options.unit != section.unit) {
        root.At("unit").Fail("the file is in " + section.unit + ", --unit says " + *options.unit,
                             "leave out --unit");
    }
    if (root.Has("density")) section.density = root.At("density").Number(Sign::Positive);
    const PartOptions partOptions = ReadPartOptions(root, section.unit, options);
    if (root.Has("polyline")) {
        for (const char* key : {"contours", "profiles", "parts"}) {
            if (root.Has(key)) {
                root.At("polyline")
                    .Fail("a polyline stands alone",
                          "remove it, or remove \"" + std::string(key) + "\"");
            }
        }
        const Node node = root.At("polyline");
        section.polyline = ReadPolyline(node);
        try {
            section.elements = ElementsOf(
                *section.polyline, shapes::ArcDivision::ChordError(partOptions.chordTolerance));
        } catch (const std::invalid_argument& error) {
            node.Fail(error.what(), "correct the points and radii");
        }
        return section;
    }
    ReadElements(root, "contours", ReadContour, &section.elements);
    ReadElements(root, "profiles", ReadProfile, &section.elements);
    if (root.Has("parts")) {
        for (Element& element : ReadParts(root.At("parts"), partOptions)) {
            section.elements.push_back(std::move(element));
        }
    }
    if (section.elements.empty()) {
        root.Fail("the section is empty",
                  "add \"contours\", \"profiles\", \"parts\" or a \"polyline\"");
    }
    return section;
}

}  // namespace

SectionModel ReadSectionText(const std::string& text, const std::string& source,
                             const InputOptions& options) {
    CheckInputOptions(options);
    const nlohmann::json document = ParseJson(text, source);
    SectionModel section = ReadSection(Node(document, source), options);
    section.source = source;
    return section;
}

}  // namespace halvorn::engine
