#include "read/json/parts.h"

#include <utility>

#include "base/text.h"
#include "catalogue/catalogue.h"
#include "model/placement.h"
#include "read/json/part_places.h"
#include "read/json/part_shapes.h"
#include "read/json/section_nodes.h"

namespace halvorn::engine {

namespace {

// Of every part, whatever it draws.
const std::vector<std::string_view> kCommonKeys = [] {
    std::vector<std::string_view> keys = {"name", "kind", "modular_ratio"};
    keys.insert(keys.end(), kPlaceKeys.begin(), kPlaceKeys.end());
    return keys;
}();

// Exactly one of these keys says what a part draws.
const std::vector<std::string_view> kSources = {"shape", "profile", "points", "wall"};

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
    if (const std::string several = SeveralProfiles(name, options.catalogue); !several.empty()) {
        profile.Fail("several profiles can be meant: " + several,
                     "write the name as its table does");
    }
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

void SetLabels(const Node& part, std::vector<Element>& elements) {
    const std::string name = ReadOptionalText(part, "name");
    for (std::size_t i = 0; i < elements.size(); ++i) {
        std::string& label = elements[i].label;
        if (!name.empty() || label.empty()) {
            label = (name.empty() ? part.Pointer() : name) + (i == 0 ? "" : ", inside");
        }
    }
}

void ReadPart(const Node& part, const PartOptions& options, PartPlaces& places) {
    const std::string_view source = SourceOf(part);
    const auto [alongX, alongY] = AxesOfSection(ReadTurn(part));
    const auto division =
        shapes::ArcDivision::ChordError(options.chordTolerance).AlsoExtremeAlong(alongX, alongY);
    UnplacedPart unplaced;
    unplaced.elements = ReadUnplaced(part, source, options, division);
    unplaced.hasOwnCoordinates = source == "points" || source == "wall";
    unplaced.isHole =
        part.Has("kind") && part.At("kind").Choice<bool>({{"solid", false}, {"hole", true}});
    ReadModularRatio(part, unplaced.isHole, unplaced.elements);
    SetLabels(part, unplaced.elements);
    places.PlaceNext(part, std::move(unplaced));
}

}  // namespace

std::vector<Element> ReadParts(const Node& parts, const PartOptions& options) {
    const std::size_t size = parts.Size("objects");
    PartPlaces places(parts);
    for (std::size_t i = 0; i < size; ++i) ReadPart(parts[i], options, places);
    return places.Take();
}

}  // namespace halvorn::engine
