/// @file clipping.h
/// Which block references a drawing shows cut off at a border (XCLIP).
#ifndef HALVORN_ENGINE_READ_DXF_CLIPPING_H
#define HALVORN_ENGINE_READ_DXF_CLIPPING_H

#include <map>
#include <set>
#include <string>
#include <string_view>

#include "read/dxf/group_reader.h"

namespace halvorn::engine::dxf {

/// Gathers what the section OBJECTS says about clipping, one object after the other. A reference
/// owns a dictionary, whose entry ACAD_FILTER is a dictionary, whose entry SPATIAL is the border.
class Clipping {
public:
    /// Begins an object of the kind: only "DICTIONARY" and "SPATIAL_FILTER" count.
    void Begin(std::string_view kind);

    /// Takes the next group of the object.
    void Take(const Group& group);

    /// Returns whether the owner of a dictionary is clipped; false for an empty handle.
    bool Clips(std::string_view dictionary) const;

private:
    std::string_view kind_, handle_, entry_;
    std::map<std::string, std::string> filters_;  ///< entries ACAD_FILTER by their dictionary
    std::map<std::string, std::string> borders_;  ///< entries SPATIAL likewise
    std::set<std::string> borderOff_;             ///< borders that are switched off
};

/// Returns the handle of the dictionary that an entity owns, from its groups one after the other.
class OwnedDictionary {
public:
    void Take(const Group& group);
    std::string_view Handle() const { return handle_; }

private:
    bool isInside_ = false;
    std::string_view handle_;
};

}  // namespace halvorn::engine::dxf

#endif
