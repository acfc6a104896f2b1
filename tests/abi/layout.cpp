#include <list>
#include <type_traits>

#include "CSectionTools.h"

// A host allocates the object, so its size is a part of the binary interface: eighteen sums and the
// list of contours. On a change follow the bump rule in CMakeLists.txt.
static_assert(sizeof(CSectionTools) == 18 * sizeof(double) + sizeof(std::list<int>));
static_assert(alignof(CSectionTools) == alignof(double));

// A growing vector of sections moves them instead of copying every contour.
static_assert(std::is_nothrow_move_constructible_v<CSectionTools> &&
              std::is_nothrow_move_assignable_v<CSectionTools>);
