/// @file open_section.h
/// From what a user names to a section.
#ifndef HALVORN_ENGINE_READ_OPEN_SECTION_H
#define HALVORN_ENGINE_READ_OPEN_SECTION_H

#include <optional>
#include <string>
#include <vector>

#include "model/section_model.h"

namespace halvorn::engine {

/// The join tolerance of drawings when none is given, in millimetres [mm]: what their rounded
/// coordinates leave between ends that are meant to be one.
inline constexpr double kDefaultJoinTolerance = 0.01;

/// What the caller says about reading.
struct InputOptions {
    std::optional<std::string> unit;  ///< of CSV that states none; goes before a drawing's own
    /// Greatest distance between an arc and its chords, in millimetres [mm].
    double chordTolerance = 0.001;
    /// Ends of lines in a drawing that are no farther apart are joined, in millimetres [mm].
    double joinTolerance = kDefaultJoinTolerance;
    /// Only these layers of a drawing are read; none: all. In letters of either case.
    std::vector<std::string> layers;
    /// A catalogue profile is pushed as a standard profile with its published values.
    bool wantsPublishedValues = false;
};

/// Reads the section that `argument` names: a file (.json, .dxf, .csv by its ending; of any other
/// ending, and "-", standard input, JSON), or else a profile of the catalogue such as "IPE300".
/// A file of that name goes before a profile.
/// @throws InputError for whatever docs/file-format.md does not allow; nothing is guessed
SectionModel OpenSection(const std::string& argument, const InputOptions& options);

/// Returns whether `argument` names a drawing by its ending.
bool IsDrawing(const std::string& argument);

/// Returns one line per layer of a drawing with its entities counted by kind.
/// @throws InputError, also for what is no drawing
std::string ListLayers(const std::string& argument);

}  // namespace halvorn::engine

#endif
