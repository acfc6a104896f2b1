/// @file input_options.h
/// Whether what a caller says about reading makes sense.
#ifndef HALVORN_ENGINE_READ_INPUT_OPTIONS_H
#define HALVORN_ENGINE_READ_INPUT_OPTIONS_H

#include "HalvornEngine.h"

namespace halvorn::engine {

/// @throws InputError for an unknown unit, and a tolerance that is not positive and finite
void CheckInputOptions(const InputOptions& options);

}  // namespace halvorn::engine

#endif
