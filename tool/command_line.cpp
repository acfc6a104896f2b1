#include "tool/command_line.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <sstream>

#include "HalvornEngine.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/units.h"
#include "figure/figure.h"
#include "tool/catalogue_tasks.h"
#include "tool/forces.h"

namespace halvorn::tool {

using namespace engine;

namespace {

constexpr const char* kDescription =
    "Prints the properties of a cross-section: of a file (JSON, DXF or CSV) or of a catalogue "
    "profile.";

constexpr const char* kFooter = R"(Examples:
  halvorn-section IPE300                           a catalogue profile
  halvorn-section drawing.dxf --figure drawing.svg table and figure of a drawing
  halvorn-section --json section.json > results.json
  halvorn-section IPE300 --forces Vy=-50e3,Mx=20e6 largest stresses
  halvorn-section --check section.json             findings: what is doubtful about it
  halvorn-section --batch sections/ > table.csv    a folder to one table
  halvorn-section --batch --json IPE200 IPE300     one JSON object a line
  halvorn-section --find "family=HE Wplx>=800cm^3" the lightest profiles that suit
  halvorn-section --catalogue own.csv "B 60x40x3"  a profile of a table of your own

  with section.json, a welded beam of three plates:
  { "version": 1, "unit": "mm",
    "parts": [ { "shape": "plate", "width": 200, "height": 20 },
               { "shape": "plate", "width": 10, "height": 360, "move": [95, 20] },
               { "shape": "plate", "width": 200, "height": 20, "move": [0, 380] } ] }

Exit codes:
  0  the results were written
  1  --find found no profile that suits; or the results could not be computed
     or written (full disk, exhausted memory)
  2  the command line or a section is wrong; one line on standard error for
     each says where and how to mend it; a batch writes the other sections,
     a list or search of profiles leaves out the rows that are wrong
  3  --check found an error or a warning

The formats of files and results: docs/file-format.md, tables of
profiles: docs/catalogues.md; man halvorn-section.)";

// A plain decimal number. The command-line library would take "" for 0, as a script with an unset
// variable gives it, and 0x10 for 16.
std::string IsPlainNumber(const std::string& text) {
    return NumberIn(text) ? "" : '"' + Excerpt(text) + "\" is not a number";
}

std::vector<std::string> UnitNames() {
    std::vector<std::string> names;
    names.reserve(kLengthUnits.size());
    for (const LengthUnit& length : kLengthUnits) names.emplace_back(length.name);
    return names;
}

[[noreturn]] void Fail(const std::string& problem, const std::string& remedy) {
    throw InputError("command line", problem, remedy);
}

// Nothing for an option that was not given.
std::optional<double> PositiveNumber(const CLI::Option* option, const char* remedy) {
    if (option->count() == 0) return std::nullopt;
    const double number = option->as<double>();
    if (!(number > 0.0) || !std::isfinite(number)) {
        Fail(option->get_name() + " must be greater than 0 and finite", remedy);
    }
    return number;
}

std::optional<double> NumberBetween(const CLI::Option* option, double least, double greatest,
                                    const char* remedy) {
    if (option->count() == 0) return std::nullopt;
    const double number = option->as<double>();
    if (!(least <= number && number <= greatest)) {
        Fail(option->get_name() + " must be from " + ShortNumber(least) + " to " +
                 ShortNumber(greatest),
             remedy);
    }
    return number;
}

// The program's options; values that need checks of their own are read from the option.
struct Parser {
    CLI::App app{kDescription, "halvorn-section"};
    CommandLine line;
    bool isJson = false, isCsv = false, isCheck = false, isBatch = false, isList = false,
         isFamilies = false, isFind = false, isLayers = false, isWarping = false;
    std::string unit, blocks, forces, stress;
    CLI::Option *density, *chordTolerance, *joinTolerance, *poisson, *tolerance;

    Parser() {
        app.set_version_flag("--version", "halvorn-section " HALVORN_VERSION);
        app.footer(kFooter);
        app.add_option("INPUT", line.inputs,
                       "A section file (.json, .dxf, .csv; - for JSON on standard input) or the "
                       "name of a catalogue profile; with --batch any number of them, folders, and "
                       "lists (.txt, one name or file a line; .csv with a column called name)");
        AddOutput();
        AddInput();
        AddValues();
    }

    void AddOutput() {
        CLI::Option* const json = app.add_flag("--json", isJson, "Print JSON instead of a table");
        app.add_flag("--csv", isCsv, "Print comma-separated values instead of a table")
            ->excludes(json);
        app.add_option("--figure", line.figurePath, "Draw the section to a .svg, .png or .pdf file")
            ->type_name("FILE");
        app.add_option("--figure-blocks", blocks,
                       "Tint the halves of the section about its plastic axis x or y in the figure")
            ->type_name("AXIS")
            ->check(CLI::IsMember({"x", "y"}));
        app.add_option("--figure-stress", stress,
                       "Fill the section in the figure with the stress under --forces: von_mises, "
                       "sigma or tau")
            ->type_name("STRESS")
            ->check(CLI::IsMember({"von_mises", "sigma", "tau"}));
        app.add_flag("--halves", line.table.wantsHalves,
                     "Add the halves about both plastic axes to the table; JSON always has them");
        app.add_flag("--class-values", line.section.values.wantsClassValues,
                     "Add the outputs of the class CSectionTools, with a line on what each is");
        app.add_flag("--methods", line.table.wantsMethods,
                     "Say below the table what each method is, with its source; without INPUT say "
                     "that alone");
        app.add_flag("--check", isCheck,
                     "Print the findings alone: what is doubtful or was left out");
        app.add_flag("--batch", isBatch,
                     "Many sections to one table: CSV, or with --json one object a line");
        app.add_option("--threads", line.threads, "Threads of a batch; one for each core if 0")
            ->check(CLI::Range(0U, 1024U));
        app.add_option("--list-profiles", line.family,
                       "Print the names of the catalogue, or of one of its families, and stop")
            ->type_name("[FAMILY]")
            ->expected(0, 1);
        app.add_flag("--list-families", isFamilies, "Print the families of the catalogue and stop");
        app.add_option("--find", line.query,
                       "Print the profiles of the catalogue that suit, the lightest first, as in "
                       "\"family=IPE Wplx>=500cm^3 limit=3\"")
            ->type_name("QUERY");
        app.add_flag("--list-layers", isLayers,
                     "Print the layers of a drawing with their entities and stop");
    }

    void AddInput() {
        app.add_option("--unit", unit,
                       "Unit of points in CSV that state none; of a drawing's numbers, whatever "
                       "it states")
            ->check(CLI::IsMember(UnitNames()));
        // One name an option, so that the INPUT may follow it.
        app.add_option("--catalogue", line.catalogues,
                       "Add the profiles of a table to the catalogue; may be given several times, "
                       "as may tables in the folder that the variable HALVORN_CATALOGUES names")
            ->type_name("FILE")
            ->expected(1)
            ->take_all()
            ->allow_extra_args(false);
        app.add_option("--layer", line.section.input.layers,
                       "Read only this layer of a drawing; may be given several times")
            ->type_name("NAME")
            ->expected(1)
            ->take_all()
            ->allow_extra_args(false);
        app.add_flag("--published", line.section.input.wantsPublishedValues,
                     "Add the outputs of the class that it gives for the published values of a "
                     "catalogue profile instead of its outline");
        chordTolerance = AddNumber("--chord-tolerance",
                                   "Greatest distance from an arc to its chords, in mm; 0.001 "
                                   "if not given");
        joinTolerance = AddNumber("--join-tolerance",
                                  "Ends of lines in a drawing this close are joined, in mm; 0.01 "
                                  "if not given");
    }

    void AddValues() {
        app.add_option("--dx", line.section.values.shift.dx,
                       "Shift of the elastic moduli's reference point from xG, in the unit of the "
                       "section")
            ->check(IsPlainNumber);
        app.add_option("--dy", line.section.values.shift.dy,
                       "Likewise from yG; both 0 if not given")
            ->check(IsPlainNumber);
        density = AddNumber("--density", "Density in kg/m^3, for the mass per metre");
        app.add_flag("--warping", isWarping,
                     "Torsion, warping and shear in a batch too; one section always has them");
        tolerance = AddNumber("--tolerance",
                              "Half width of the bounds of torsion constant and shear stiffness "
                              "areas, relative, from 1e-9 to 0.1; 1e-4 if not given");
        poisson = AddNumber("--poisson",
                            "Poisson's ratio, from 0 to 0.5, for shear; 0 if not given, above it "
                            "the bounds of the shear stiffness areas are estimates");
        app.add_option(
               "--forces", forces,
               "Print the largest stresses under N, Mx, My, Vx, Vy and T, any of them, as in "
               "N=-250e3,My=4e6: a force unit of your choice, lengths in that of the section")
            ->type_name("FORCES");
    }

    CLI::Option* AddNumber(const std::string& name, const std::string& description) {
        return app.add_option(name, description)->type_name("NUMBER")->check(IsPlainNumber);
    }

    void TakeNumbers() {
        EvaluateOptions& values = line.section.values;
        const Shift& shift = values.shift;
        if (!std::isfinite(shift.dx) || !std::isfinite(shift.dy)) {
            Fail("--dx and --dy must be finite", "give plain numbers");
        }
        InputOptions& input = line.section.input;
        if (!unit.empty()) input.unit = unit;
        values.density = PositiveNumber(density, "give kg/m^3, for steel 7850");
        input.chordTolerance = PositiveNumber(chordTolerance, "give millimetres, such as 0.001")
                                   .value_or(input.chordTolerance);
        input.joinTolerance = PositiveNumber(joinTolerance, "give millimetres, such as 0.01")
                                  .value_or(input.joinTolerance);
        values.tolerance =
            NumberBetween(tolerance, 1e-9, 0.1, "give a relative width, such as 1e-4")
                .value_or(values.tolerance);
        values.poisson = NumberBetween(poisson, 0.0, 0.5, "give 0.3 for steel, 0.2 for concrete")
                             .value_or(values.poisson);
        if (app.count("--forces") > 0) values.forces = ForcesIn(forces);
    }

    // Options that act on torsion, warping and shear alone.
    void TakeWarping() {
        line.section.values.wantsWarping = line.task != Task::Batch || isWarping;
        if (isWarping && line.task != Task::Batch) {
            Fail("--warping is for a batch", "leave it out: one section always has these values");
        }
        const char* const given = tolerance->count() > 0       ? "--tolerance"
                                  : poisson->count() > 0       ? "--poisson"
                                  : line.section.values.forces ? "--forces"
                                                               : nullptr;
        if (given == nullptr) return;
        const bool isSearch = line.task == Task::Find && !line.section.values.forces;
        if (line.task != Task::Report && line.task != Task::Batch && !isSearch) {
            Fail(given + std::string(" is for values"), "leave it out");
        }
        if (!line.section.values.wantsWarping) {
            const bool needsJson = line.section.values.forces && !isJson;
            Fail(given + std::string(" acts on torsion, warping and shear"),
                 needsJson ? "add --warping and --json" : "add --warping");
        }
        if (line.section.values.forces && (isCsv || (line.task == Task::Batch && !isJson))) {
            Fail("CSV has no columns for stresses", "give --json with --forces");
        }
    }

    void TakeStress() {
        if (stress.empty()) return;
        line.figure.stress = stress == "sigma" ? StressKind::Normal
                             : stress == "tau" ? StressKind::Shear
                                               : StressKind::VonMises;
        if (line.figurePath.empty()) Fail("--figure-stress is for a figure", "add --figure FILE");
        if (!line.section.values.forces) {
            Fail("--figure-stress shows the stress under forces", "add --forces");
        }
        if (line.figure.blocks) {
            Fail("--figure-blocks and --figure-stress both fill the section", "give one of them");
        }
    }

    // Tasks that need no section.
    bool IsOfCatalogue() const {
        return line.task == Task::ListProfiles || line.task == Task::ListFamilies ||
               line.task == Task::Find;
    }

    void TakeTask() {
        line.format = isJson ? Format::Json : isCsv ? Format::Csv : Format::Table;
        isList = app.count("--list-profiles") > 0;
        isFind = app.count("--find") > 0;
        const std::pair<bool, Task> tasks[] = {
            {isList, Task::ListProfiles}, {isFamilies, Task::ListFamilies},
            {isFind, Task::Find},         {isBatch, Task::Batch},
            {isCheck, Task::Check},       {isLayers, Task::ListLayers}};
        int given = 0;
        for (const auto& [isGiven, task] : tasks) {
            if (isGiven) line.task = task;
            given += isGiven ? 1 : 0;
        }
        if (given > 1) {
            Fail(
                "--check, --batch, --find, --list-profiles, --list-families and --list-layers are "
                "different tasks",
                "give one of them");
        }
        if (isLayers && !line.section.input.layers.empty()) {
            Fail("--list-layers prints all layers", "leave out --layer");
        }
        const bool isOne = line.task != Task::Batch && !IsOfCatalogue();
        if (isOne && line.inputs.size() > 1) {
            const std::string profile = ProfileOfWords(line.inputs, line.catalogues);
            if (!profile.empty()) {
                Fail("the blanks of " + profile + " separate it into several inputs",
                     "put the name into quotes: \"" + profile + '"');
            }
            Fail("one section is expected, found " + std::to_string(line.inputs.size()),
                 isLayers ? "give one drawing" : "add --batch for a table of several");
        }
        if (line.inputs.empty() && line.table.wantsMethods && line.task == Task::Report) {
            line.task = Task::ListMethods;
            return;
        }
        if (line.inputs.empty() && !IsOfCatalogue()) {
            Fail("INPUT is missing", "name a section file or a profile such as IPE300");
        }
        if (!line.inputs.empty() && IsOfCatalogue()) {
            Fail(std::string(isFind   ? "--find"
                             : isList ? "--list-profiles"
                                      : "--list-families") +
                     " takes no INPUT",
                 isFind ? "put the query into quotes" : "leave it out");
        }
        if (line.table.wantsHalves && (line.task != Task::Report || line.format != Format::Table)) {
            Fail("--halves adds rows to the table of one section", "leave it out");
        }
        if (line.table.wantsMethods &&
            (line.task != Task::Report || line.format != Format::Table)) {
            Fail("--methods adds lines to the table of one section", "leave it out");
        }
        if (line.section.input.wantsPublishedValues) line.section.values.wantsClassValues = true;
        if (line.section.values.wantsClassValues && line.task != Task::Report &&
            line.task != Task::Batch) {
            Fail("--class-values and --published add values", "leave them out");
        }
        if (!blocks.empty()) {
            line.figure.blocks =
                blocks == "x" ? AxisDirection::Horizontal : AxisDirection::Vertical;
            if (line.figurePath.empty()) {
                Fail("--figure-blocks is for a figure", "add --figure FILE");
            }
        }
        TakeWarping();
        TakeStress();
        if (line.figurePath.empty()) return;
        if (line.task != Task::Report) Fail("--figure draws one section", "leave it out");
        CheckFigurePath(line.figurePath);
    }
};

}  // namespace

std::optional<CommandLine> ReadCommandLine(int argc, char** argv, std::string* text) {
    Parser parser;
    try {
        parser.app.parse(argc, argv);
    } catch (const CLI::ArgumentMismatch& error) {
        const std::string what = error.what();
        const std::string option = what.substr(0, what.find(':'));
        if (what.find("At Most 1 ") == std::string::npos) Fail(what, "see halvorn-section --help");
        Fail(option + " is given more than once", "give it once");
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) Fail(error.what(), "see halvorn-section --help");
        std::ostringstream stream;
        parser.app.exit(error, stream);
        *text = stream.str();
        return std::nullopt;
    }
    parser.TakeNumbers();
    parser.TakeTask();
    return parser.line;
}

}  // namespace halvorn::tool
