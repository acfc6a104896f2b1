#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include "HalvornEngine.h"
#include "base/text.h"
#include "catalogue/csv_table.h"
#include "tool/batch.h"

namespace halvorn::tool {

using namespace engine;

namespace {

namespace fs = std::filesystem;
constexpr const char* kAround = " \t\r\"";  // of an entry

std::string Ending(const fs::path& path) {
    return InSmallLetters(path.extension().string());
}

void AddFolder(const std::string& folder, BatchInputs* inputs) {
    std::vector<std::string> files, lists;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string ending = Ending(entry->path());
        if (ending == ".json" || ending == ".dxf" || ending == ".csv") {
            files.push_back(entry->path().string());
        } else if (ending == ".txt") {
            lists.push_back(entry->path().string());
        }
    }
    if (error) throw InputError(folder, "cannot be read: " + error.message(), "check the folder");
    std::sort(lists.begin(), lists.end());
    for (const std::string& list : lists) {
        inputs->remarks.push_back(list +
                                  ": passed over, for it is no section file; if it is a "
                                  "list of sections, name it beside the folder");
    }
    if (files.empty()) {
        throw InputError(folder, "holds no section files", "put .json, .dxf or .csv files into it");
    }
    std::sort(files.begin(), files.end());
    for (std::string& file : files) inputs->entries.push_back({std::move(file), ""});
}

// An entry of a list: a file beside the list goes before one in the working folder.
BatchEntry Resolved(const std::string& entry, const std::string& list, std::size_t line) {
    const fs::path beside = fs::path(list).parent_path() / entry;
    std::error_code error;
    return {fs::is_regular_file(beside, error) ? beside.string() : entry,
            SourceName(list) + ": line " + std::to_string(line)};
}

// The entries of a list of one a line; '#' begins a comment.
void AddList(const std::string& path, BatchInputs* inputs) {
    const std::size_t before = inputs->entries.size();
    std::istringstream stream(WithLineFeeds(ReadInput(path)));
    std::string line;
    for (std::size_t number = 1; std::getline(stream, line); ++number) {
        const std::string entry = Trimmed(line.substr(0, line.find('#')), kAround);
        if (!entry.empty()) inputs->entries.push_back(Resolved(entry, path, number));
    }
    if (inputs->entries.size() == before) {
        throw InputError(path, "the list is empty", "write one profile or file a line");
    }
}

// The cells of the column `name`, if the table has one; otherwise it is a section of points.
bool AddTable(const std::string& path, const RefusedLines& refused, BatchInputs* inputs) {
    std::istringstream stream(WithLineFeeds(ReadInput(path)));
    std::string line;
    std::size_t number = 0;
    // A spreadsheet writes an empty row as its separators alone.
    const auto next = [&] {
        while (std::getline(stream, line)) {
            ++number;
            const std::string text = Trimmed(line, " ,;\t\r\"");
            if (!text.empty() && text.front() != '#') return true;
        }
        return false;
    };
    char separator = next() ? DeclaredSeparator(line) : ',';
    if (separator == 0) {
        separator = CsvSeparatorOf(line);
    } else {
        next();
    }
    const auto cells = [&] {
        std::vector<std::string> row = SplitCsvLine(line, separator);
        for (std::string& cell : row) cell = Trimmed(cell, kAround);
        return row;
    };
    const std::vector<std::string> columns = cells();
    const auto column = std::find_if(columns.begin(), columns.end(), [](const std::string& title) {
        return title == "name" || title == "Name" || title == "NAME";
    });
    if (column == columns.end()) return false;
    const auto index = static_cast<std::size_t>(column - columns.begin());
    const std::set<std::size_t> refusedLines = refused ? refused(path) : std::set<std::size_t>();
    bool hasRows = false;
    while (next()) {
        hasRows = true;
        const std::vector<std::string> row = cells();
        if (refusedLines.contains(number)) {
            ++inputs->refusedRows;
        } else if (index >= row.size() || row[index].empty()) {
            const InputError fault(path, number, "the column \"name\" is empty",
                                   "name a profile or a section file");
            inputs->complaints.emplace_back(fault.what());
        } else {
            inputs->entries.push_back(Resolved(row[index], path, number));
        }
    }
    if (!hasRows) {
        throw InputError(path, "the table has no rows", "name a profile or a section file a line");
    }
    return true;
}

void AddPath(const std::string& path, const RefusedLines& refused, BatchInputs* inputs) {
    std::error_code error;
    const bool isFile = fs::is_regular_file(path, error);
    if (fs::is_directory(path, error)) {
        AddFolder(path, inputs);
    } else if (isFile && Ending(path) == ".txt") {
        AddList(path, inputs);
    } else if (!(isFile && Ending(path) == ".csv" && AddTable(path, refused, inputs))) {
        inputs->entries.push_back({path, ""});
    }
}

}  // namespace

BatchInputs ExpandBatch(const std::vector<std::string>& paths, const RefusedLines& refused) {
    BatchInputs inputs;
    for (const std::string& path : paths) {
        try {
            AddPath(path, refused, &inputs);
        } catch (const InputError& error) {
            inputs.complaints.emplace_back(error.what());
        }
    }
    return inputs;
}

}  // namespace halvorn::tool
