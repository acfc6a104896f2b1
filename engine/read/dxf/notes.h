/// @file notes.h
/// What a drawing holds that the section does not, gathered by kind.
#ifndef HALVORN_ENGINE_READ_DXF_NOTES_H
#define HALVORN_ENGINE_READ_DXF_NOTES_H

#include <string>
#include <vector>

namespace halvorn::engine::dxf {

class Notes {
public:
    /// Counts one more of `what`, for example "TEXT left out", seen at `line`.
    void Count(const std::string& what, int line);

    /// Adds a remark as it stands.
    void Say(const std::string& remark) { said_.push_back(remark); }

    /// Returns all remarks, the counted ones last: "TEXT left out: 3, the first at line 40".
    std::vector<std::string> Remarks() const;

private:
    struct Counted {
        std::string what;
        int count;
        int line;
    };
    std::vector<std::string> said_;
    std::vector<Counted> counted_;
};

}  // namespace halvorn::engine::dxf

#endif
