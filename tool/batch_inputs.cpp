#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "HalvornEngine.h"
#include "base/text.h"
#include "catalogue/csv_table.h"
#include "tool/batch.h"

namespace halvorn::tool {

using namespace engine;

namespace {

namespace fs = std::filesystem;
constexpr const char* kAround = " \t\r\"";  // of an entry
using Complain = std::function<void(const std::string& message)>;

std::string Ending(const fs::path& path) {
    return InSmallLetters(path.extension().string());
}

void AddFolder(const std::string& folder, std::vector<std::string>* arguments) {
    std::vector<std::string> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string ending = Ending(entry->path());
        if (ending == ".json" || ending == ".dxf" || ending == ".csv") {
            files.push_back(entry->path().string());
        }
    }
    if (error) throw InputError(folder, "cannot be read: " + error.message(), "check the folder");
    if (files.empty()) {
        throw InputError(folder, "holds no section files", "put .json, .dxf or .csv files into it");
    }
    std::sort(files.begin(), files.end());
    arguments->insert(arguments->end(), files.begin(), files.end());
}

// An entry of a list: a file beside the list goes before one in the working folder.
std::string Resolved(const std::string& entry, const fs::path& list) {
    const fs::path beside = list.parent_path() / entry;
    std::error_code error;
    return fs::is_regular_file(beside, error) ? beside.string() : entry;
}

// The entries of a list of one a line; '#' begins a comment.
void AddList(const std::string& path, std::vector<std::string>* arguments) {
    const std::size_t before = arguments->size();
    std::istringstream stream(WithLineFeeds(ReadInput(path)));
    std::string line;
    while (std::getline(stream, line)) {
        const std::string entry = Trimmed(line.substr(0, line.find('#')), kAround);
        if (!entry.empty()) arguments->push_back(Resolved(entry, path));
    }
    if (arguments->size() == before) {
        throw InputError(path, "the list is empty", "write one profile or file a line");
    }
}

// The cells of the column `name`, if the table has one; otherwise it is a section of points.
bool AddTable(const std::string& path, std::vector<std::string>* arguments,
              const Complain& complain) {
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
    const std::size_t before = arguments->size();
    std::size_t faults = 0;
    while (next()) {
        const std::vector<std::string> row = cells();
        if (index >= row.size() || row[index].empty()) {
            const InputError fault(path, number, "the column \"name\" is empty",
                                   "name a profile or a section file");
            complain(fault.what());
            ++faults;
            continue;
        }
        arguments->push_back(Resolved(row[index], path));
    }
    if (arguments->size() == before && faults == 0) {
        throw InputError(path, "the table has no rows", "name a profile or a section file a line");
    }
    return true;
}

void AddPath(const std::string& path, std::vector<std::string>* arguments,
             const Complain& complain) {
    std::error_code error;
    const bool isFile = fs::is_regular_file(path, error);
    if (fs::is_directory(path, error)) {
        AddFolder(path, arguments);
    } else if (isFile && Ending(path) == ".txt") {
        AddList(path, arguments);
    } else if (!(isFile && Ending(path) == ".csv" && AddTable(path, arguments, complain))) {
        arguments->push_back(path);
    }
}

}  // namespace

std::vector<std::string> ExpandBatch(const std::vector<std::string>& paths,
                                     const Complain& complain) {
    std::vector<std::string> arguments;
    for (const std::string& path : paths) {
        try {
            AddPath(path, &arguments, complain);
        } catch (const InputError& error) {
            complain(error.what());
        }
    }
    return arguments;
}

}  // namespace halvorn::tool
