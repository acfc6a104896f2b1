#include "input/open_section.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "catalogue/catalogue.h"
#include "dxf/read_drawing.h"
#include "input/input_error.h"
#include "input/input_text.h"
#include "input/points_csv.h"
#include "input/section_file.h"

namespace halvorn::host {

namespace {

// In small letters: ".json".
std::string Ending(const std::string& path) {
    std::string ending = std::filesystem::path(path).extension().string();
    for (char& c : ending) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return ending;
}

bool IsFileName(const std::string& argument) {
    std::error_code error;
    const bool isFile =
        std::filesystem::exists(argument, error) &&
        !(std::filesystem::is_directory(argument, error) && IsCatalogueProfile(argument));
    return argument.empty() || argument == "-" || isFile ||
           argument.find_first_of("/\\") != std::string::npos || Ending(argument) == ".json" ||
           Ending(argument) == ".dxf" || Ending(argument) == ".csv";
}

SectionModel CatalogueSection(const std::string& name, const InputOptions& options) {
    if (!IsCatalogueProfile(name)) {
        std::string remedy = "halvorn-section --list-profiles prints the catalogue";
        std::string similar;
        for (const std::string& other : SimilarProfiles(name)) {
            similar += (similar.empty() ? "" : ", ") + other;
        }
        if (!similar.empty()) remedy = "similar profiles: " + similar;
        throw InputError(Excerpt(name), "neither a file nor a profile of the catalogue", remedy);
    }
    SectionModel section;
    section.unit = options.unit.value_or("mm");
    const double chordTolerance =
        options.chordTolerance * MetresPer("mm") / MetresPer(section.unit);
    section.elements =
        CatalogueElements(name, section.unit, chordTolerance, options.wantsPublishedValues);
    section.source = section.name = section.elements.front().label;
    return section;
}

}  // namespace

SectionModel OpenSection(const std::string& argument, const InputOptions& options) {
    if (!IsFileName(argument)) return CatalogueSection(argument, options);
    const std::string source = SourceName(argument);
    const std::string text = ReadInput(argument);
    if (argument != "-" && Ending(argument) == ".dxf") return ReadDrawing(text, source, options);
    if (argument != "-" && Ending(argument) == ".csv") return ReadPointsCsv(text, source, options);
    return ReadSectionText(text, source, options);
}

}  // namespace halvorn::host
