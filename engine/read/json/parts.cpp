#include "read/json/parts.h"

#include <cmath>
#include <optional>

#include "base/text.h"
#include "catalogue/catalogue.h"
#include "model/placement.h"
#include "read/json/part_shapes.h"
#include "read/json/section_nodes.h"

namespace halvorn::engine {

namespace {

const std::vector<std::string_view> kCommonKeys = {"name",   "kind",   "at",
                                                   "mirror", "rotate", "move"};

// Exactly one of these keys says what a part draws.
const std::vector<std::string_view> kSources = {"shape", "profile", "points", "wall"};

enum class Origin { OwnCoordinates, Corner, Centroid };

std::vector<std::string_view> WithCommonKeys(std::vector<std::string_view> keys) {
    keys.insert(keys.end(), kCommonKeys.begin(), kCommonKeys.end());
    return keys;
}

// Which of the sources a part has.
std::string_view SourceOf(const Node& part) {
    part.RequireObject();
    std::string_view found;
    for (const std::string_view source : kSources) {
        if (!part.Has(source.data())) continue;
        if (!found.empty()) {
            part.Fail("has both \"" + std::string(found) + "\" and \"" + std::string(source) + "\"",
                      "make two parts of it");
        }
        found = source;
    }
    if (found.empty()) {
        part.Fail("nothing says what to draw",
                  "add one of \"shape\", \"profile\", \"points\", \"wall\"");
    }
    return found;
}

std::string SuggestionFor(const std::string& name, const Catalogue& catalogue) {
    std::string list;
    for (const std::string& similar : catalogue.Similar(name)) {
        list += (list.empty() ? "write \"" : ", \"") + similar + "\"";
    }
    return list.empty() ? "write a name from the catalogue" : list + " or another of its names";
}

std::vector<Element> ReadProfilePart(const Node& part, const PartOptions& options,
                                     const shapes::ArcDivision& division) {
    part.RequireKeys(WithCommonKeys({"profile", "values"}));
    const Node profile = part.At("profile");
    const std::string name = profile.Text();
    if (!IsCatalogueProfile(name, options.catalogue)) {
        profile.Fail("the catalogue has no \"" + Excerpt(name) + "\"",
                     SuggestionFor(name, options.catalogue));
    }
    const bool wantsPublished =
        part.Has("values") ? part.At("values").Choice<bool>({{"drawn", false}, {"published", true}})
                           : options.wantsPublishedValues;
    return CatalogueElements(name, options.unit, division, wantsPublished, options.catalogue);
}

std::vector<Element> ReadPointsPart(const Node& part) {
    part.RequireKeys(WithCommonKeys({"points"}));
    Element element;
    element.ring = ReadPoints(part.At("points"), kFewestRingPoints);
    return {element};
}

std::vector<Element> ReadUnplaced(const Node& part, std::string_view source,
                                  const PartOptions& options, const shapes::ArcDivision& division) {
    if (source == "profile") return ReadProfilePart(part, options, division);
    if (source == "points") return ReadPointsPart(part);
    if (source == "shape") return ReadShapePart(part, kCommonKeys, division);
    part.RequireKeys(WithCommonKeys({"wall"}));
    return ReadWallPart(part.At("wall"), division);
}

Origin ReadOrigin(const Node& part, std::string_view source) {
    if (part.Has("at")) {
        return part.At("at").Choice<Origin>(
            {{"corner", Origin::Corner}, {"centroid", Origin::Centroid}});
    }
    const bool isDrawn = source == "shape" || source == "profile";
    return isDrawn ? Origin::Corner : Origin::OwnCoordinates;
}

// What does not depend on the part's points.
Placement ReadTurn(const Node& part) {
    Placement placement;
    if (part.Has("mirror")) {
        placement.mirror =
            part.At("mirror").Choice<Mirror>({{"x", Mirror::AboutX}, {"y", Mirror::AboutY}});
    }
    if (part.Has("rotate")) placement.rotation = part.At("rotate").Number();
    if (part.Has("move")) placement.move = ReadPoint(part.At("move"));
    return placement;
}

Point OriginOf(const Node& part, std::string_view source, const std::vector<Element>& elements) {
    const Origin origin = ReadOrigin(part, source);
    if (origin == Origin::OwnCoordinates) return {0.0, 0.0};
    if (origin == Origin::Corner) return LowerLeftCorner(elements);
    const auto centre = CentreOfGravity(elements);
    if (!std::isfinite(centre.x) || !std::isfinite(centre.y)) {
        part.At("at").Fail("the part has no area and so no centroid", "write \"corner\"");
    }
    return centre;
}

// Turns solids into holes and holes into solids.
void MakeHole(std::vector<Element>& elements) {
    for (Element& element : elements) element.isSolid = !element.isSolid;
}

void SetLabels(const Node& part, std::vector<Element>& elements) {
    const std::string name = ReadOptionalText(part, "name");
    for (std::size_t i = 0; i < elements.size(); ++i) {
        std::string& label = elements[i].label;
        if (!name.empty() || label.empty()) {
            label = (name.empty() ? part.Pointer() : name) + (i == 0 ? "" : ", inside");
        }
    }
}

}  // namespace

std::vector<Element> ReadPart(const Node& part, const PartOptions& options) {
    const std::string_view source = SourceOf(part);
    Placement placement = ReadTurn(part);
    const auto [alongX, alongY] = AxesOfSection(placement);
    const auto division =
        shapes::ArcDivision::ChordError(options.chordTolerance).AlsoExtremeAlong(alongX, alongY);
    std::vector<Element> elements = ReadUnplaced(part, source, options, division);
    placement.origin = OriginOf(part, source, elements);
    Place(placement, elements);
    const bool isHole =
        part.Has("kind") && part.At("kind").Choice<bool>({{"solid", false}, {"hole", true}});
    if (isHole) MakeHole(elements);
    SetLabels(part, elements);
    return elements;
}

}  // namespace halvorn::engine
