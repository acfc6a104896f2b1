#include <list>

#include "CSectionTools.h"

// A host allocates the object, so its size is a part of the binary interface: eighteen sums and the
// list of contours. On a change follow the bump rule in CMakeLists.txt.
static_assert(sizeof(CSectionTools) == 18 * sizeof(double) + sizeof(std::list<int>));
static_assert(alignof(CSectionTools) == alignof(double));
