#include "read/input_options.h"

#include <cmath>

#include "base/units.h"

namespace halvorn::engine {

namespace {

void CheckTolerance(double millimetres, const char* name) {
    if (millimetres > 0.0 && std::isfinite(millimetres)) return;
    throw InputError("options",
                     std::string("the ") + name + " tolerance is not positive and finite",
                     "give it in millimetres, for example 0.01");
}

}  // namespace

void CheckInputOptions(const InputOptions& options) {
    if (options.unit && !IsLengthUnit(*options.unit)) {
        throw InputError("options", "the unit is " + *options.unit, "give mm, cm, m or in");
    }
    CheckTolerance(options.chordTolerance, "chord");
    CheckTolerance(options.joinTolerance, "join");
}

}  // namespace halvorn::engine
