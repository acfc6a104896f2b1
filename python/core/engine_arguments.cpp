#include "engine_arguments.h"

#include <array>
#include <exception>
#include <string_view>
#include <utility>

#include "arguments.h"

namespace py = pybind11;

namespace halvorn::python {

namespace {

// An option that is not there, or None, is left out.
template <typename Take>
void IfGiven(const py::dict& options, const char* name, const Take& take) {
    if (options.contains(name) && !options[name].is_none()) take(options[name]);
}

bool ReadBool(py::handle object, const char* place) {
    return ReadWhole(object, place, 0, 1) != 0;
}

// Those of the tool and of this module. Others differ in their spelling alone: --dx is dx.
constexpr std::array<std::array<const char*, 2>, 4> kWords = {{
    {"halvorn-section --list-profiles prints the catalogue", "profiles() lists the catalogue"},
    {"--warping asks for it in a batch", "warping() computes it"},
    {"--layer", "--layers"},
    {" (see --help)", ""},
}};

// What the engine calls the source of what is no file.
constexpr std::array<std::array<const char*, 2>, 3> kSources = {{
    {"options: ", ""},
    {"command line: ", ""},
    {"search: ", "where: "},
}};

// "give --chord-tolerance" becomes "give chord_tolerance".
void SpellOptions(std::string& text) {
    std::size_t at = 0;
    while ((at = text.find("--", at)) != std::string::npos) {
        if (at > 0 && text[at - 1] != ' ') {  // within a name
            ++at;
            continue;
        }
        text.erase(at, 2);
        for (; at < text.size() && (text[at] == '-' || (text[at] >= 'a' && text[at] <= 'z'));
             ++at) {
            if (text[at] == '-') text[at] = '_';
        }
    }
}

}  // namespace

std::string ReadText(py::handle object, const char* place) {
    if (!py::isinstance<py::str>(object) && !py::isinstance<py::bytes>(object)) {
        throw py::type_error(std::string(place) + ": expected a text, got " +
                             std::string(py::str(py::repr(object))));
    }
    return object.cast<std::string>();
}

engine::InputOptions ReadInputOptions(const py::dict& options) {
    engine::InputOptions read;
    IfGiven(options, "unit", [&](py::handle unit) { read.unit = ReadText(unit, "unit"); });
    IfGiven(options, "chord_tolerance", [&](py::handle tolerance) {
        read.chordTolerance = ReadNumber(tolerance, "chord_tolerance");
    });
    IfGiven(options, "join_tolerance", [&](py::handle tolerance) {
        read.joinTolerance = ReadNumber(tolerance, "join_tolerance");
    });
    IfGiven(options, "layers", [&](py::handle layers) {
        for (const py::handle layer : layers) read.layers.push_back(ReadText(layer, "layers"));
    });
    IfGiven(options, "published", [&](py::handle published) {
        read.wantsPublishedValues = ReadBool(published, "published");
    });
    IfGiven(options, "catalogue",
            [&](py::handle catalogue) { read.catalogue = catalogue.cast<engine::Catalogue>(); });
    return read;
}

engine::EvaluateOptions ReadEvaluateOptions(const py::dict& options) {
    engine::EvaluateOptions read;
    read.wantsWarping = false;
    const auto number = [&](const char* name, double* value) {
        IfGiven(options, name, [&](py::handle given) { *value = ReadNumber(given, name); });
    };
    number("dx", &read.shift.dx);
    number("dy", &read.shift.dy);
    number("tolerance", &read.tolerance);
    number("poisson", &read.poisson);
    IfGiven(options, "density",
            [&](py::handle density) { read.density = ReadNumber(density, "density"); });
    IfGiven(options, "warping",
            [&](py::handle wanted) { read.wantsWarping = ReadBool(wanted, "warping"); });
    IfGiven(options, "class_values",
            [&](py::handle wanted) { read.wantsClassValues = ReadBool(wanted, "class_values"); });
    IfGiven(options, "forces", [&](py::handle given) {
        engine::SectionForces& f = read.forces.emplace();
        constexpr std::array names = {"N", "Mx", "My", "Vx", "Vy", "T"};
        const std::array forces = {&f.n, &f.mx, &f.my, &f.vx, &f.vy, &f.t};
        const auto tuple = py::reinterpret_borrow<py::tuple>(given);
        for (std::size_t i = 0; i < names.size(); ++i) *forces[i] = ReadNumber(tuple[i], names[i]);
        read.wantsWarping = true;
    });
    return read;
}

engine::FigureOptions ReadFigureOptions(const py::dict& options) {
    engine::FigureOptions read;
    IfGiven(options, "halves", [&](py::handle halves) {
        read.blocks = ReadChoice<engine::AxisDirection>(
            halves, "halves",
            {{"x", engine::AxisDirection::Horizontal}, {"y", engine::AxisDirection::Vertical}});
    });
    IfGiven(options, "stress", [&](py::handle stress) {
        read.stress = ReadChoice<engine::StressKind>(stress, "stress",
                                                     {{"normal", engine::StressKind::Normal},
                                                      {"shear", engine::StressKind::Shear},
                                                      {"von_mises", engine::StressKind::VonMises}});
    });
    return read;
}

std::string InPythonWords(std::string text) {
    for (const auto& [option, word] : kWords) {
        const std::size_t at = text.find(option);
        if (at != std::string::npos) text.replace(at, std::string_view(option).size(), word);
    }
    for (const auto& [source, word] : kSources) {
        if (text.rfind(source, 0) == 0) text.replace(0, std::string_view(source).size(), word);
    }
    SpellOptions(text);
    return text;
}

void TranslateInputErrors(py::module_& module) {
    // Lives as long as the process, as the translator does.
    static PyObject* const type =
        PyErr_NewExceptionWithDoc("halvorn_section_tools.InputError",
                                  "Input that its author can mend: `source`, `place`, `problem` "
                                  "and `mend` are its parts.",
                                  PyExc_ValueError, nullptr);
    if (type == nullptr) throw py::error_already_set();
    module.attr("InputError") = py::handle(type);
    py::register_local_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown) std::rethrow_exception(std::move(thrown));
        } catch (const engine::InputError& error) {
            const py::object raised = py::handle(type)(InPythonWords(error.what()));
            raised.attr("source") = error.Source();
            raised.attr("place") = error.Place();
            raised.attr("problem") = InPythonWords(error.Problem());
            raised.attr("mend") = InPythonWords(error.Mend());
            PyErr_SetObject(type, raised.ptr());
        }
    });
}

}  // namespace halvorn::python
