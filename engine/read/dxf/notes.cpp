#include "read/dxf/notes.h"

#include <algorithm>

namespace halvorn::engine::dxf {

namespace {

// A hostile file can name any number of kinds and layers.
constexpr std::size_t kMostKinds = 40;

}  // namespace

void Notes::Count(const std::string& what, int line) {
    const auto find = [&](const std::string& name) {
        return std::find_if(counted_.begin(), counted_.end(),
                            [&](const Counted& counted) { return counted.what == name; });
    };
    auto found = find(what);
    const bool isNew = found == counted_.end();
    const bool isFull = counted_.size() >= kMostKinds;
    const std::string name = isNew && isFull ? "others left out" : what;
    if (isNew && isFull) found = find(name);
    if (found == counted_.end()) {
        counted_.push_back({name, 1, line});
    } else {
        ++found->count;
    }
}

std::vector<std::string> Notes::Remarks() const {
    std::vector<std::string> remarks = said_;
    for (const Counted& counted : counted_) {
        remarks.push_back(counted.what + ": " + std::to_string(counted.count) +
                          (counted.count == 1 ? ", at line " : ", the first at line ") +
                          std::to_string(counted.line));
    }
    return remarks;
}

}  // namespace halvorn::engine::dxf
