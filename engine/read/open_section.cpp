#include "read/open_section.h"

#include <algorithm>
#include <filesystem>

#include "HalvornEngine.h"
#include "base/text.h"
#include "catalogue/catalogue.h"
#include "geometry/box.h"
#include "read/csv/points_csv.h"
#include "read/dxf/read_drawing.h"
#include "read/input_options.h"
#include "read/json/section_file.h"

namespace halvorn::engine {

namespace {

// In small letters: ".json".
std::string Ending(const std::string& path) {
    return InSmallLetters(std::filesystem::path(path).extension().string());
}

// "L4x4x1/2": every slash is that of a fraction.
bool HasFractionsAlone(const std::string& text) {
    const auto isDigit = [&](std::size_t i) {
        return i < text.size() && text[i] >= '0' && text[i] <= '9';
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\') return false;
        if (text[i] == '/' && (i == 0 || !isDigit(i - 1) || !isDigit(i + 1))) return false;
    }
    return true;
}

bool IsFileName(const std::string& argument, const Catalogue& catalogue) {
    std::error_code error;
    const bool isFile = std::filesystem::exists(argument, error) &&
                        !(std::filesystem::is_directory(argument, error) &&
                          IsCatalogueProfile(argument, catalogue));
    return argument.empty() || argument == "-" || isFile || !HasFractionsAlone(argument) ||
           Ending(argument) == ".json" || Ending(argument) == ".dxf" || Ending(argument) == ".csv";
}

// A name as one word of a command.
std::string InShell(const std::string& name) {
    const std::string excerpt = Excerpt(name);
    return excerpt.find(' ') == std::string::npos ? excerpt : '"' + excerpt + '"';
}

// @param problem  of a name that the catalogue does not have
SectionModel ProfileOrFail(const std::string& name, const InputOptions& options,
                           const char* problem) {
    CheckInputOptions(options);
    if (const std::string several = SeveralProfiles(name, options.catalogue); !several.empty()) {
        throw InputError(Excerpt(name), "several profiles can be meant: " + several,
                         "write the name as its table does");
    }
    if (!IsCatalogueProfile(name, options.catalogue)) {
        const bool isFamily = !options.catalogue.Names(name).empty();
        std::string remedy = isFamily ? "it is a family, of which halvorn-section prints the "
                                        "profiles with --list-profiles " +
                                            InShell(name)
                                      : "halvorn-section --list-profiles prints the catalogue";
        std::string similar;
        for (const std::string& other : options.catalogue.Similar(name)) {
            similar += (similar.empty() ? "" : ", ") + other;
        }
        if (!isFamily && !similar.empty()) remedy = "similar profiles: " + similar;
        throw InputError(name.empty() ? "an empty name" : Excerpt(name), problem, remedy);
    }
    return CatalogueSection(name, options);
}

SectionModel FileSection(const std::string& path, const InputOptions& options) {
    TextFormat format = TextFormat::Json;
    if (IsDrawing(path)) format = TextFormat::Dxf;
    if (path != "-" && Ending(path) == ".csv") format = TextFormat::Csv;
    return ParseSection(ReadInput(path), format, SourceName(path), options);
}

[[noreturn]] void RefuseForDrawingsOnly(const std::string& source, const char* option) {
    throw InputError(
        "command line",
        std::string(option) + " is for DXF drawings, and " + Excerpt(source) + " is none",
        "leave it out");
}

// No section of a structure is larger or smaller; a wrong unit makes it so.
void DoubtUnit(SectionModel& section) {
    constexpr double largest = 5.0, smallest = 1e-3;  // larger side of the box [m]
    Points points;
    for (const Element& element : section.elements) {
        points.insert(points.end(), element.ring.begin(), element.ring.end());
    }
    const Box box(points);
    const double metres = std::max(box.Width(), box.Height()) * MetresPer(section.unit);
    if (metres >= smallest && metres <= largest) return;
    section.remarks.push_back(
        "the section is " +
        std::string(metres > largest ? "larger than 5 m" : "smaller than 1 mm") +
        " if its unit, taken for granted, is " + section.unit +
        "; --unit mm, cm, m or in says which it is");
}

}  // namespace

bool IsDrawing(const std::string& argument) {
    return argument != "-" && Ending(argument) == ".dxf";
}

std::string LayersText(const std::vector<DrawingLayer>& layers) {
    std::string text;
    for (const DrawingLayer& layer : layers) {
        std::string counts;
        for (const auto& [kind, entities] : layer.counts) {
            counts += (counts.empty() ? "" : ", ") + std::to_string(entities) + " " + Excerpt(kind);
        }
        text += SingleLine(layer.name) + (layer.isHidden ? " (off or frozen): " : ": ") +
                (counts.empty() ? "nothing" : counts) + '\n';
    }
    return text;
}

std::string ListLayers(const std::string& argument) {
    if (!IsDrawing(argument)) RefuseForDrawingsOnly(SourceName(argument), "--list-layers");
    return LayersText(LayersOfDrawing(ReadInput(argument), SourceName(argument)));
}

SectionModel OpenSection(const std::string& argument, const InputOptions& options) {
    // Before the file is read: what is no drawing may be a pipe.
    if (!options.layers.empty() && !IsDrawing(argument)) {
        RefuseForDrawingsOnly(SourceName(argument), "--layer");
    }
    return IsFileName(argument, options.catalogue) ? FileSection(argument, options)
                                                   : ProfileOrFail(argument, options,
                                                                   "neither a file nor a profile "
                                                                   "of the catalogue");
}

SectionModel ProfileSection(const std::string& name, const InputOptions& options) {
    if (!options.layers.empty()) RefuseForDrawingsOnly(name, "--layer");
    return ProfileOrFail(name, options, "no profile of the catalogue");
}

SectionModel ParseSection(const std::string& text, TextFormat format, const std::string& source,
                          const InputOptions& options) {
    const bool isDrawing = format == TextFormat::Dxf;
    if (!options.layers.empty() && !isDrawing) RefuseForDrawingsOnly(source, "--layer");
    SectionModel section = isDrawing                   ? ReadDrawing(text, source, options)
                           : format == TextFormat::Csv ? ReadPointsCsv(text, source, options)
                                                       : ReadSectionText(text, source, options);
    if (section.isUnitAssumed) DoubtUnit(section);
    return section;
}

}  // namespace halvorn::engine
