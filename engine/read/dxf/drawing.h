/// @file drawing.h
/// What of a DXF file a section needs, found but not yet understood.
#ifndef HALVORN_ENGINE_READ_DXF_DRAWING_H
#define HALVORN_ENGINE_READ_DXF_DRAWING_H

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "read/dxf/clipping.h"
#include "read/dxf/group_reader.h"

namespace halvorn::engine::dxf {

/// An entity as it stands in the text, which must outlive it.
struct Entity {
    std::string_view kind;   ///< "LINE", "CIRCLE", ...
    std::string_view body;   ///< its groups after the kind
    std::string_view layer;  ///< "0" when it names none
    int line = 0;            ///< of the kind
    bool isInPaperSpace = false;
    bool isInvisible = false;
    std::string_view dictionary;  ///< handle of the one it owns; empty: none
};

struct Block {
    double baseX = 0.0;
    double baseY = 0.0;
    std::vector<Entity> entities;
};

struct Layer {
    std::string name;       ///< as it is first written
    bool isHidden = false;  ///< off or frozen
};

/// What is kept of a file. Names are compared as they are written but for the case of ASCII
/// letters: the keys are in capitals.
struct Drawing {
    std::optional<int> unitCode;          ///< $INSUNITS
    std::map<std::string, Layer> layers;  ///< those with entities too that no table names
    std::map<std::string, Block> blocks;
    std::vector<Entity> entities;
    Clipping clipping;
    bool hasEnd = false;  ///< the text closes with EOF
};

/// @throws InputError for binary DXF, for a text that is not DXF or is cut off within a section,
///         for one without entities, and for more than 200000 entities
Drawing FindParts(std::string_view text, const std::string& source);

}  // namespace halvorn::engine::dxf

#endif
