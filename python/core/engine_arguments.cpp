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
    if (PyBool_Check(object.ptr()) != 0) return object.ptr() == Py_True;
    throw py::type_error(std::string(place) + ": expected True or False, got " +
                         std::string(py::str(py::repr(object))));
}

// Those of the tool and of this module. Others differ in their spelling alone: --dx is dx.
constexpr std::array<std::array<const char*, 2>, 5> kWords = {{
    {"halvorn-section --list-profiles prints the catalogue", "profiles() lists the catalogue"},
    {"--warping asks for it in a batch", "warping() computes it"},
    {"--layer", "--layers"},
    {"make both with the same unit", "make both with the same unit=..."},
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
    if (py::isinstance<py::bytes>(object)) return object.cast<std::string>();
    py::ssize_t size = 0;
    const char* const text = PyUnicode_AsUTF8AndSize(object.ptr(), &size);
    if (text != nullptr) return {text, static_cast<std::size_t>(size)};
    if (PyErr_ExceptionMatches(PyExc_UnicodeEncodeError) == 0) throw py::error_already_set();
    PyErr_Clear();
    throw py::value_error(std::string(place) + ": half a character, a lone surrogate, is in " +
                          std::string(py::str(py::repr(object))) + "; leave it out");
}

py::str Text(const std::string& text) {
    PyObject* const decoded = PyUnicode_DecodeUTF8(
        text.data(), static_cast<py::ssize_t>(text.size()), "backslashreplace");
    if (decoded == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::str>(decoded);
}

py::list Texts(const std::vector<std::string>& texts) {
    py::list list;
    for (const std::string& text : texts) list.append(Text(text));
    return list;
}

py::str PathText(const std::string& path) {
    PyObject* const decoded =
        PyUnicode_DecodeFSDefaultAndSize(path.data(), static_cast<py::ssize_t>(path.size()));
    if (decoded == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::str>(decoded);
}

engine::InputOptions ReadInputOptions(const py::dict& options) {
    engine::InputOptions read;
    IfGiven(options, "unit", [&](py::handle unit) { read.unit = ReadText(unit, "unit"); });
    IfGiven(options, "chord_tolerance", [&](py::handle tolerance) {
        read.chordTolerance = ReadNumber(tolerance, "chord_tolerance", "mm");
    });
    IfGiven(options, "join_tolerance", [&](py::handle tolerance) {
        read.joinTolerance = ReadNumber(tolerance, "join_tolerance", "mm");
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

engine::EvaluateOptions ReadEvaluateOptions(const py::dict& options, const std::string& length) {
    engine::EvaluateOptions read;
    read.wantsWarping = false;
    const auto number = [&](const char* name, const std::string& unit, double* value) {
        IfGiven(options, name,
                [&](py::handle given) { *value = ReadNumber(given, name, unit.c_str()); });
    };
    number("dx", length, &read.shift.dx);
    number("dy", length, &read.shift.dy);
    number("tolerance", "", &read.tolerance);
    number("poisson", "", &read.poisson);
    IfGiven(options, "density",
            [&](py::handle density) { read.density = ReadNumber(density, "density", "kg/m^3"); });
    IfGiven(options, "warping",
            [&](py::handle wanted) { read.wantsWarping = ReadBool(wanted, "warping"); });
    IfGiven(options, "class_values",
            [&](py::handle wanted) { read.wantsClassValues = ReadBool(wanted, "class_values"); });
    IfGiven(options, "forces", [&](py::handle given) {
        engine::SectionForces& f = read.forces.emplace();
        constexpr std::array names = {"N", "Mx", "My", "Vx", "Vy", "T"};
        const std::array forces = {&f.n, &f.mx, &f.my, &f.vx, &f.vy, &f.t};
        const auto tuple = py::reinterpret_borrow<py::tuple>(given);
        const std::string moment = "F " + length;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const bool isForce = names[i] == std::string_view("N") || *names[i] == 'V';
            *forces[i] = ReadNumber(tuple[i], names[i], isForce ? "F" : moment.c_str());
        }
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
        read.stress = ReadChoice<engine::StressKind>(stress, "kind",
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
            const py::object raised = py::handle(type)(Text(InPythonWords(error.what())));
            raised.attr("source") = PathText(error.Source());
            raised.attr("place") = Text(error.Place());
            raised.attr("problem") = Text(InPythonWords(error.Problem()));
            raised.attr("mend") = Text(InPythonWords(error.Mend()));
            PyErr_SetObject(type, raised.ptr());
        } catch (const py::builtin_exception&) {
            throw;
        } catch (const std::runtime_error& error) {
            PyErr_SetObject(PyExc_RuntimeError, Text(error.what()).ptr());
        }
    });
}

}  // namespace halvorn::python
