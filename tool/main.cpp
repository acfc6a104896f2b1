// halvorn-section: the properties of cross-sections on the command line.
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>

#include "HalvornEngine.h"
#include "base/text.h"
#include "read/open_section.h"
#include "tool/batch.h"
#include "tool/catalogue_tasks.h"
#include "tool/command_line.h"
#include "write/table.h"

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

using namespace halvorn::tool;
using namespace halvorn::engine;

void Complain(const std::string& message) {
    std::fprintf(stderr, "halvorn-section: %s\n", SingleLine(message).c_str());
}

// Ends the program where memory runs out: an exception could not pass through every destructor of
// the libraries that this program uses.
[[noreturn]] void OutOfMemory() {
    std::fputs("halvorn-section: memory is exhausted; give a smaller section or free memory\n",
               stderr);
    std::_Exit(kNotWritten);
}

void Print(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() ||
        std::fflush(stdout) != 0) {
        throw std::runtime_error(
            "standard output cannot be written: check the disk or the receiving program");
    }
}

bool IsTerminal(FILE* stream) {
#if defined(_WIN32)
    return _isatty(_fileno(stream)) != 0;
#else
    return isatty(fileno(stream)) != 0;
#endif
}

// The figure is written whole or not at all, and the report after it.
ExitCode PrintReport(const CommandLine& line) {
    const SectionReport report = EvaluateInput(line.inputs.front(), line.section);
    if (!line.figurePath.empty()) report.WriteFigure(line.figurePath, line.figure);
    switch (line.format) {
        case Format::Table:
            Print(report.Table(line.table));
            break;
        case Format::Json:
            Print(report.Json());
            break;
        case Format::Csv: {
            const CsvOptions csv = {line.section.values.wantsClassValues};
            Print(CsvHeader(csv) + report.CsvRow(csv));
            break;
        }
    }
    return kDone;
}

ExitCode PrintFindings(const CommandLine& line) {
    const std::vector<Finding> findings =
        Section::Open(line.inputs.front(), line.section.input).Diagnose();
    Print(FindingsText(findings));
    for (const Finding& finding : findings) {
        if (finding.severity > Severity::Remark) return kDoubtful;
    }
    return kDone;
}

// @param findings  of the user's own tables, which may be lists of the batch too
ExitCode PrintBatch(const CommandLine& line, const std::vector<Finding>& findings) {
    BatchOptions options;
    options.section = line.section;
    options.format = line.format == Format::Json ? BatchFormat::JsonLines : BatchFormat::Csv;
    options.threads = line.threads;
    options.showsProgress = IsTerminal(stderr);
    const BatchInputs inputs = ExpandBatch(line.inputs, [&](const std::string& path) {
        return RefusedRows(path, line.catalogues, findings);
    });
    for (const std::string& remark : inputs.remarks) Complain("remark: " + remark);
    for (const std::string& complaint : inputs.complaints) Complain(complaint);
    std::size_t faults = inputs.complaints.size() + inputs.refusedRows;
    if (!inputs.entries.empty()) faults += RunBatch(inputs.entries, options, Print, Complain);
    return faults > 0 ? kBadInput : kDone;
}

// Adds the user's own tables. Returns what was found in them, which is told a line each.
std::vector<Finding> ReadCatalogues(CommandLine* line) {
    std::vector<Finding> findings;
    // What the folder holds is not told where nothing is looked up in it.
    if (line->catalogues.empty() && !MayNeedProfiles(*line)) return findings;
    line->section.input.catalogue = CatalogueWith(CatalogueFiles(line->catalogues), &findings);
    for (const Finding& finding : findings) {
        const bool isError = finding.severity == Severity::Error;
        Complain((isError ? "" : SeverityName(finding.severity) + std::string(": ")) +
                 FindingText(finding));
    }
    return findings;
}

// The whole catalogue, which lacks what was left out.
ExitCode PrintCatalogue(const CommandLine& line, const std::vector<Finding>& findings) {
    const Catalogue& catalogue = line.section.input.catalogue;
    const std::string text = line.task == Task::Find ? SearchText(line, IsTerminal(stderr))
                             : line.task == Task::ListFamilies
                                 ? FamiliesText(catalogue)
                                 : ProfilesText(catalogue, line.family);
    Print(text);
    const bool areLeftOut =
        std::any_of(findings.begin(), findings.end(),
                    [](const Finding& finding) { return finding.severity == Severity::Error; });
    if (!text.empty()) return areLeftOut ? kBadInput : kDone;
    // As of a search in texts: a script tells by the exit code that nothing was found.
    Complain("search: no profile suits; loosen a term, or leave one out");
    return areLeftOut ? kBadInput : kNothingFound;
}

ExitCode Run(int argc, char** argv) {
    std::string text;
    std::optional<CommandLine> line = ReadCommandLine(argc, argv, &text);
    if (!line) {
        Print(text);
        return kDone;
    }
    if (line->task == Task::ListLayers) {
        Print(ListLayers(line->inputs.front()));
        return kDone;
    }
    if (line->task == Task::ListMethods) {
        Print(MethodsText());
        return kDone;
    }
    const std::vector<Finding> findings = ReadCatalogues(&*line);
    switch (line->task) {
        case Task::Report:
            return PrintReport(*line);
        case Task::Check:
            return PrintFindings(*line);
        case Task::Batch:
            return PrintBatch(*line, findings);
        default:
            return PrintCatalogue(*line, findings);
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::set_new_handler(OutOfMemory);
    // A report goes out in one piece, so that a reader such as head may leave after its first
    // lines.
    static char pipe[65536];
    std::setvbuf(stdout, pipe, _IOFBF, sizeof pipe);
#if defined(SIGPIPE)
    // A reader that goes away is an error like a full disk, not the end of the program.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    try {
        return Run(argc, argv);
    } catch (const InputError& error) {
        Complain(error.what());
        return kBadInput;
    } catch (const std::exception& error) {
        Complain(error.what());
        return kNotWritten;
    }
}
