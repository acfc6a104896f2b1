// Stands in where GEOS is not there.
#include <stdexcept>

#include "values/overlaps.h"

namespace halvorn::engine {

bool CanFindOverlaps() {
    return false;
}

Overlaps FindOverlaps(const std::vector<Element>&) {
    throw std::logic_error("this build has no GEOS");
}

}  // namespace halvorn::engine
