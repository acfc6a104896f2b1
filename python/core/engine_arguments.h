/// @file engine_arguments.h
/// What Python passes to the engine, and the engine's words for its errors in Python's.
#ifndef HALVORN_PYTHON_CORE_ENGINE_ARGUMENTS_H
#define HALVORN_PYTHON_CORE_ENGINE_ARGUMENTS_H

#include <HalvornEngine.h>
#include <pybind11/pybind11.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace halvorn::python {

/// Returns the choice that a text names.
/// @param place  what messages call the argument
/// @throws ValueError with all choices for another text, TypeError for what is no text
template <typename T>
T ReadChoice(pybind11::handle object, const char* place,
             const std::vector<std::pair<const char*, T>>& choices) {
    std::string names;
    for (const auto& [name, choice] : choices) {
        if (pybind11::isinstance<pybind11::str>(object) && pybind11::str(name).equal(object)) {
            return choice;
        }
        names += (names.empty() ? "'" : ", '") + std::string(name) + "'";
    }
    const std::string shown = pybind11::str(pybind11::repr(object));
    const std::string message =
        std::string(place) + ": expected one of " + names + ", got " + shown;
    if (pybind11::isinstance<pybind11::str>(object)) throw pybind11::value_error(message);
    throw pybind11::type_error(message);
}

/// Returns a text in UTF-8, also of a path.
/// @throws TypeError for what is no text, ValueError for lone surrogates
std::string ReadText(pybind11::handle object, const char* place);

/// Returns a text of the engine; what of it is not UTF-8, as in the layers of old drawings, stands
/// in it as "\xe9".
pybind11::str Text(const std::string& text);

/// Returns a list of such texts.
pybind11::list Texts(const std::vector<std::string>& texts);

/// Returns a path as Python has paths, which opens the same file.
pybind11::str PathText(const std::string& path);

/// Returns the options of reading by the names of `InputOptions`; other names are ignored.
engine::InputOptions ReadInputOptions(const pybind11::dict& options);

/// Returns the options of computing by the names of `EvaluateOptions`, likewise.
/// @param length  the unit of the section's lengths
engine::EvaluateOptions ReadEvaluateOptions(const pybind11::dict& options,
                                            const std::string& length);

/// Returns the options of a figure: `halves` "x" or "y", `stress` "normal", "shear" or "von_mises".
engine::FigureOptions ReadFigureOptions(const pybind11::dict& options);

/// Returns a text of the engine with the arguments of this module in place of the tool's options.
std::string InPythonWords(std::string text);

/// Makes Python's `InputError`, a ValueError, of the engine's.
void TranslateInputErrors(pybind11::module_& module);

}  // namespace halvorn::python

#endif
