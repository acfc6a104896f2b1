/// @file engine_section.h
/// The engine's handles in _core: sections, reports, the catalogue.
#ifndef HALVORN_PYTHON_CORE_ENGINE_SECTION_H
#define HALVORN_PYTHON_CORE_ENGINE_SECTION_H

#include <pybind11/pybind11.h>

namespace halvorn::python {

/// Binds them as EngineSection, EngineReport and EngineCatalogue, with InputError.
///
/// They let other Python threads run while the engine works, and check what they are given no
/// further than Python's types; the package around _core does.
void BindEngine(pybind11::module_& module);

}  // namespace halvorn::python

#endif
