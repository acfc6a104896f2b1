#include "tool/catalogue_tasks.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "base/utf8.h"
#include "catalogue/catalogue.h"
#include "catalogue/csv_table.h"
#include "tool/progress_bar.h"

namespace halvorn::tool {

using namespace engine;

namespace {

namespace fs = std::filesystem;
using Rows = std::vector<std::vector<std::string>>;

constexpr const char* kFolderVariable = "HALVORN_CATALOGUES";

// The columns of rows, two blanks between them, numbers to the right of theirs.
std::string Aligned(const Rows& rows, const std::vector<std::size_t>& columnsOfNumbers) {
    std::vector<std::size_t> widths;
    for (const std::vector<std::string>& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], CharacterCount(row[i]));
        }
    }
    std::string text;
    for (const std::vector<std::string>& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string blanks(widths[i] - CharacterCount(row[i]), ' ');
            const bool isNumber = std::find(columnsOfNumbers.begin(), columnsOfNumbers.end(), i) !=
                                  columnsOfNumbers.end();
            line += (i > 0 ? "  " : "") + (isNumber ? blanks + row[i] : row[i] + blanks);
        }
        text += Trimmed(line, " ") + '\n';
    }
    return text;
}

std::string TableOf(const ProfileSearch& search, std::size_t limit) {
    Rows rows = {{"Profile"}};
    std::vector<std::size_t> numbers;
    for (const Value& value : search.profiles.front().values) {
        numbers.push_back(rows.front().size());
        rows.front().insert(rows.front().end(), {value.symbol, ""});
    }
    for (const FoundProfile& profile : search.profiles) {
        std::vector<std::string> row = {SingleLine(profile.name)};
        for (const Value& value : profile.values) {
            row.insert(row.end(), {value.IsComputed() ? ValueText(value) : "-", value.unit});
        }
        rows.push_back(std::move(row));
    }
    std::string text = Aligned(rows, numbers);
    if (search.isLimited) {
        text += "There may be more: these are the first " + std::to_string(limit) +
                "; limit= shows others.\n";
    }
    return text;
}

std::string CsvOf(const ProfileSearch& search) {
    std::string text = "name";
    for (const Value& value : search.profiles.front().values) {
        text += ',' + value.key + ',' + value.key + "_unit";
    }
    text += '\n';
    for (const FoundProfile& profile : search.profiles) {
        text += QuotedCell(profile.name);
        for (const Value& value : profile.values) {
            text += ',' + (value.IsComputed() ? EveryDigit(value.number) : "") + ',' + value.unit;
        }
        text += '\n';
    }
    return text;
}

std::string JsonOf(const ProfileSearch& search) {
    nlohmann::ordered_json found;
    found["is_limited"] = search.isLimited;
    found["profiles"] = nlohmann::ordered_json::array();
    for (const FoundProfile& profile : search.profiles) {
        nlohmann::ordered_json entry = {{"name", profile.name}};
        for (const Value& value : profile.values) {
            nlohmann::ordered_json& number = entry["values"][value.key];
            number["value"] = value.number;
            if (!value.IsComputed()) number["value"] = nullptr;
            if (value.lower) number["lower"] = *value.lower;
            if (value.upper) number["upper"] = *value.upper;
            if (value.error) number["error"] = *value.error;
            number["unit"] = value.unit;
        }
        found["profiles"].push_back(std::move(entry));
    }
    using nlohmann::json;
    return found.dump(2, ' ', false, json::error_handler_t::replace) + '\n';
}

}  // namespace

std::vector<CatalogueFile> CatalogueFiles(const std::vector<std::string>& named) {
    std::vector<CatalogueFile> files;
    const char* const folder = std::getenv(kFolderVariable);
    if (folder != nullptr && *folder != '\0') {
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            if (InSmallLetters(entry->path().extension().string()) == ".csv") {
                files.push_back({entry->path().string(), false});
            }
        }
        if (error) {
            throw InputError(folder, "cannot be read: " + error.message(),
                             std::string("let ") + kFolderVariable +
                                 " name a folder of catalogues, or unset it");
        }
        std::sort(files.begin(), files.end(),
                  [](const auto& a, const auto& b) { return a.path < b.path; });
    }
    // A table of the folder may be named too.
    for (const std::string& path : named) {
        const auto same = std::find_if(files.begin(), files.end(), [&](const CatalogueFile& other) {
            std::error_code error;
            return fs::equivalent(path, other.path, error);
        });
        if (same == files.end()) {
            files.push_back({path, true});
        } else {
            same->isNamed = true;
        }
    }
    return files;
}

bool MayNeedProfiles(const CommandLine& line) {
    if (line.task != Task::Report && line.task != Task::Check) return true;
    return std::any_of(line.inputs.begin(), line.inputs.end(), [](const std::string& input) {
        std::error_code error;
        if (!fs::is_regular_file(input, error)) return true;
        const std::string ending = InSmallLetters(fs::path(input).extension().string());
        if (ending == ".dxf" || ending == ".csv") return false;
        return ReadInput(input).find("\"profile\"") != std::string::npos;
    });
}

Catalogue CatalogueWith(const std::vector<CatalogueFile>& files, std::vector<Finding>* findings) {
    Catalogue catalogue;
    for (const CatalogueFile& file : files) {
        try {
            ExtendedCatalogue extended = catalogue.With(file.path);
            catalogue = std::move(extended.catalogue);
            findings->insert(findings->end(), extended.findings.begin(), extended.findings.end());
        } catch (const InputError& error) {
            std::error_code ignored;
            if (file.isNamed && fs::is_directory(file.path, ignored)) {
                throw InputError(error.Source(), error.Problem(),
                                 error.Mend() + std::string(", or let ") + kFolderVariable +
                                     " name the folder for all of its tables");
            }
            if (file.isNamed) throw;
            Finding& finding = findings->emplace_back();
            finding.element = error.Source() + (error.Place().empty() ? "" : ": ") + error.Place();
            finding.problem = error.Problem() + "; this file is passed over";
            finding.mend =
                std::string("mend it, or take it out of the folder of ") + kFolderVariable;
        }
    }
    return catalogue;
}

std::set<std::size_t> RefusedRows(const std::string& path, const std::vector<std::string>& named,
                                  const std::vector<Finding>& findings) {
    std::set<std::size_t> lines;
    for (const CatalogueFile& file : CatalogueFiles(named)) {
        std::error_code error;
        if (!fs::equivalent(path, file.path, error)) continue;
        const std::string start = SourceName(file.path) + ": line ";
        for (const Finding& finding : findings) {
            const std::string& place = finding.element;
            if (finding.severity != Severity::Error || !place.starts_with(start)) continue;
            const std::size_t comma = std::min(place.find(',', start.size()), place.size());
            const auto line = WholeNumberIn(place.substr(start.size(), comma - start.size()));
            if (line) lines.insert(static_cast<std::size_t>(*line));
        }
    }
    return lines;
}

std::string ProfileOfWords(const std::vector<std::string>& words,
                           const std::vector<std::string>& named) {
    std::string name;
    for (const std::string& word : words) name += (name.empty() ? "" : " ") + word;
    std::vector<Finding> ignored;
    const auto profile = CatalogueWith(CatalogueFiles(named), &ignored).Find(name);
    return profile ? profile->name : "";
}

std::string ProfilesText(const Catalogue& catalogue, const std::string& family) {
    const std::vector<std::string> names =
        family.empty() ? catalogue.Names() : catalogue.Names(family);
    if (names.empty()) {
        throw InputError("command line", "the catalogue has no family \"" + Excerpt(family) + '"',
                         "take one of " + FamilyList(catalogue));
    }
    std::string text;
    for (const std::string& name : names) text += SingleLine(name) + '\n';
    return text;
}

std::string FamiliesText(const Catalogue& catalogue) {
    Rows rows = {{"Family", "Profiles", "Names begin with"}};
    for (const CatalogueFamily& family : catalogue.Families()) {
        std::string series;
        for (const std::string& each : family.series) series += (series.empty() ? "" : ", ") + each;
        rows.push_back({SingleLine(family.name), std::to_string(family.profiles), series});
    }
    return Aligned(rows, {1});
}

std::string SearchText(const CommandLine& line, bool showsProgress) {
    ProgressBar bar(showsProgress);
    FindOptions options;
    options.unit = line.section.input.unit;
    options.values = line.section.values;
    options.progress = [&bar](std::size_t solved, std::size_t most) { bar.Show(solved, most); };
    const ProfileSearch search = FindProfiles(line.query, line.section.input.catalogue, options);
    if (search.profiles.empty()) return "";
    switch (line.format) {
        case Format::Json:
            return JsonOf(search);
        case Format::Csv:
            return CsvOf(search);
        case Format::Table:
            break;
    }
    return TableOf(search, search.profiles.size());
}

}  // namespace halvorn::tool
