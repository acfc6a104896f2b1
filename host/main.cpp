// halvorn-section: the properties of a section file on the command line.
#include <CLI/CLI.hpp>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <sstream>
#include <string>

#include "input/input_error.h"
#include "input/input_text.h"
#include "input/open_section.h"
#include "output/json.h"
#include "output/table.h"
#include "results/evaluate.h"

namespace {

using namespace halvorn::host;

enum ExitCode { kDone = 0, kNotWritten = 1, kBadInput = 2 };

constexpr const char* kFooter = R"(Example:
  halvorn-section section.json
  halvorn-section --json section.json > results.json

  with section.json, a rectangle of 200 x 400 mm:
  { "version": 1, "unit": "mm",
    "contours": [ { "kind": "solid",
                    "points": [[0, 0], [200, 0], [200, 400], [0, 400]] } ] }

Exit codes:
  0  the results were written
  1  the results could not be computed or written (full disk, exhausted memory)
  2  the command line or the section file is wrong; one line on standard error
     says where and how to mend it)";

int Complain(const std::string& message, ExitCode code) {
    std::fprintf(stderr, "halvorn-section: %s\n", SingleLine(message).c_str());
    return code;
}

// Ends the program where memory runs out: an exception could not pass through every destructor of
// the libraries that this program uses.
[[noreturn]] void OutOfMemory() {
    std::fputs("halvorn-section: memory is exhausted; give a smaller section or free memory\n",
               stderr);
    std::_Exit(kNotWritten);
}

// A shift is a plain decimal number. The command-line library would take "" for 0, as a script with
// an unset variable gives it, and 0x10 for 16.
std::string CheckShift(const std::string& text) {
    const bool isPlain = !text.empty() && text.find_first_of("xX") == std::string::npos;
    return isPlain ? "" : "'" + text + "' is not a number";
}

// All or an error: nothing is written before everything is known.
int Write(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() &&
        std::fflush(stdout) == 0) {
        return kDone;
    }
    return Complain("standard output cannot be written: check the disk or the receiving program",
                    kNotWritten);
}

struct Options {
    std::string path;
    Shift shift;
    bool wantsJson = false;
};

std::string ReportText(const Options& options) {
    const SectionModel section = OpenSection(options.path, InputOptions{});
    if (section.polyline && (options.shift.dx != 0.0 || options.shift.dy != 0.0)) {
        throw InputError(section.source + ": /polyline",
                         "a polyline has no reference point to shift", "leave out --dx and --dy");
    }
    const Report report = Evaluate(section, options.shift);
    return options.wantsJson ? JsonText(report) : TableText(report);
}

int Run(int argc, char** argv) {
    Options options;
    CLI::App app("Prints the properties of a cross-section given as a JSON file.",
                 "halvorn-section");
    app.set_version_flag("--version", "halvorn-section " HALVORN_VERSION);
    app.footer(kFooter);
    app.add_option("FILE", options.path, "Section file, or - for standard input")->required();
    app.add_flag("--json", options.wantsJson, "Print JSON instead of a table");
    app.add_option("--dx", options.shift.dx,
                   "Shift of the elastic moduli's reference point from xG, in the unit of the file")
        ->check(CheckShift);
    app.add_option("--dy", options.shift.dy, "Likewise from yG; both default to 0")
        ->check(CheckShift);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) {
            throw InputError("command line", error.what(), "see halvorn-section --help");
        }
        std::ostringstream text;
        app.exit(error, text);
        return Write(text.str());
    }
    if (!std::isfinite(options.shift.dx) || !std::isfinite(options.shift.dy)) {
        throw InputError("command line", "--dx and --dy must be finite", "give plain numbers");
    }
    return Write(ReportText(options));
}

}  // namespace

int main(int argc, char** argv) {
    std::set_new_handler(OutOfMemory);
#if defined(SIGPIPE)
    // A reader that goes away is an error like a full disk, not the end of the program.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    try {
        return Run(argc, argv);
    } catch (const InputError& error) {
        return Complain(error.what(), kBadInput);
    } catch (const std::exception& error) {
        return Complain(error.what(), kNotWritten);
    }
}
