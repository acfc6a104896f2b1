#include "read/dxf/clipping.h"

#include <algorithm>

#include "base/text.h"
#include "read/dxf/drawing.h"

namespace halvorn::engine::dxf {

namespace {

// A handle is a hexadecimal number, in letters of either case.
std::string Number(std::string_view handle) {
    handle.remove_prefix(std::min(handle.find_first_not_of('0'), handle.size()));
    return InCapitals(handle);
}

}  // namespace

void Clipping::Begin(std::string_view kind) {
    kind_ = kind;
    handle_ = entry_ = {};
}

void Clipping::Take(const Group& group) {
    constexpr int handle = 5, name = 3, softOwner = 350, owner = 360, isOn = 71;
    if (group.code == handle) handle_ = group.value;
    if (kind_ == "SPATIAL_FILTER" && group.code == isOn && group.value == "0") {
        borderOff_.insert(Number(handle_));
    }
    if (kind_ != "DICTIONARY") return;
    if (group.code == owner || group.code == softOwner) {
        if (entry_ == "ACAD_FILTER") filters_[Number(handle_)] = Number(group.value);
        if (entry_ == "SPATIAL") borders_[Number(handle_)] = Number(group.value);
    }
    entry_ = group.code == name ? group.value : std::string_view();
}

bool Clipping::Clips(std::string_view dictionary) const {
    const auto filter = filters_.find(Number(dictionary));
    if (dictionary.empty() || filter == filters_.end()) return false;
    const auto border = borders_.find(filter->second);
    return border != borders_.end() && !borderOff_.contains(border->second);
}

void OwnedDictionary::Take(const Group& group) {
    constexpr int bracket = 102, owner = 360;
    if (group.code == bracket) isInside_ = group.value == "{ACAD_XDICTIONARY";
    if (isInside_ && group.code == owner) handle_ = group.value;
}

}  // namespace halvorn::engine::dxf
