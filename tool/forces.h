/// @file forces.h
/// Forces as the command line has them.
#ifndef HALVORN_TOOL_FORCES_H
#define HALVORN_TOOL_FORCES_H

#include <string>

#include "HalvornEngine.h"

namespace halvorn::tool {

/// Returns the forces in a text such as "N=-250e3,My=4e6": any of them in any order, each once;
/// those that it does not name are 0.
/// @throws InputError for any other text
engine::SectionForces ForcesIn(const std::string& text);

}  // namespace halvorn::tool

#endif
