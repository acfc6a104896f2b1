/// @file input_options.h
/// What a caller says about reading.
#ifndef HALVORN_ENGINE_READ_INPUT_OPTIONS_H
#define HALVORN_ENGINE_READ_INPUT_OPTIONS_H

#include <optional>
#include <string>
#include <vector>

namespace halvorn::engine {

/// The join tolerance of drawings when none is given, in millimetres [mm]: what their rounded
/// coordinates leave between ends that are meant to be one.
inline constexpr double kDefaultJoinTolerance = 0.01;

struct InputOptions {
    /// Of CSV that states none, and of a drawing whatever it states.
    std::optional<std::string> unit;
    /// Greatest distance between an arc and its chords, in millimetres [mm].
    double chordTolerance = 0.001;
    /// Ends of lines in a drawing that are no farther apart are joined, in millimetres [mm].
    double joinTolerance = kDefaultJoinTolerance;
    /// Only these layers of a drawing are read; none: all. In letters of either case.
    std::vector<std::string> layers;
    /// A catalogue profile is pushed as a standard profile with its published values.
    bool wantsPublishedValues = false;
};

}  // namespace halvorn::engine

#endif
