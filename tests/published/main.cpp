#include <cstring>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/text.h"
#include "catalogue/csv_table.h"
#include "comparison.h"
#include "report.h"
#include "table_notes.h"

namespace {

constexpr const char* usage =
    R"(usage: halvorn-published TABLE.csv [--notes NOTES.csv] [--metres]

Draws every profile of a table of published values, evaluates it and prints, for each family and
property, the number of values, how many differ by no more than rounding, how many by what a note
explains, how many are off, and the median and the largest relative difference.
Dimensions and values are in mm, mm^2, mm^3, mm^4.

  --notes NOTES.csv  what is known of the table's rounding and accuracy
  --metres           evaluate in metres; the report stays in the table's unit

exit status: 0 all values agree, 1 some do not or a note is not needed, 2 nothing could be compared
)";

struct Options {
    std::string table;
    std::string notes;
    double scale = 1.0;
};

// Returns whether the arguments make sense.
bool ReadOptions(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--metres") {
            options.scale = 1e-3;
        } else if (argument == "--notes" && i + 1 < argc) {
            options.notes = argv[++i];
        } else if (!argument.starts_with('-') && options.table.empty()) {
            options.table = argument;
        } else {
            return false;
        }
    }
    return !options.table.empty();
}

// Returns whether every value agrees and every note is needed.
bool Run(const Options& options) {
    using namespace halvorn::published;
    const std::vector<TableNote> notes =
        options.notes.empty() ? std::vector<TableNote>() : ReadNotes(options.notes);
    const std::vector<Difference> differences = CompareTable(
        halvorn::engine::ParseCsv(halvorn::engine::ReadInput(options.table)), notes, options.scale);
    if (differences.empty()) throw std::runtime_error(options.table + " holds no values");
    PrintSummary(differences, std::cout);
    if (!notes.empty()) std::cout << "\nnotes on the table\n";
    const int needlessNotes = PrintNotes(differences, notes, std::cout);
    std::cout << '\n';
    const int offenders = PrintOffenders(differences, std::cout);
    std::cout << offenders << " of " << differences.size() << " values disagree\n";
    return offenders == 0 && needlessNotes == 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        std::cout << usage;
        return 0;
    }
    if (!ReadOptions(argc, argv, options)) {
        std::cerr << usage;
        return 2;
    }
    try {
        return Run(options) ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "halvorn-published: " << error.what() << '\n';
        return 2;
    }
}
