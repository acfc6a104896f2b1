/// @file parts.h
/// Parts of a section that are described by shapes and parameters (docs/file-format.md).
#ifndef HALVORN_ENGINE_READ_JSON_PARTS_H
#define HALVORN_ENGINE_READ_JSON_PARTS_H

#include <string>
#include <vector>

#include "HalvornEngine.h"
#include "model/section_model.h"
#include "read/json/json_node.h"

namespace halvorn::engine {

/// What all parts of a file share.
struct PartOptions {
    std::string unit;
    double chordTolerance = 0.0;        ///< greatest distance between an arc and its chords [L]
    bool wantsPublishedValues = false;  ///< of catalogue profiles that do not say which they want
    Catalogue catalogue;                ///< where they are looked up
};

/// Returns the elements of all parts, in their order, where they lie in the section; of each part
/// the solids before their holes.
/// @throws InputError at the part's place for whatever cannot be drawn
std::vector<Element> ReadParts(const Node& parts, const PartOptions& options);

}  // namespace halvorn::engine

#endif
