// The solution of torsion and shear with one allocation after the other failing: it throws
// std::bad_alloc, leaks nothing, and the next one succeeds.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "failing_heap.h"
#include "region/region.h"
#include "warping/warping.h"

namespace {

using namespace halvorn::engine;
using test_support::Attempt;
using test_support::heap;

TEST(AllocationFaults, OfTheWarpingSolverThrowAndLeakNothing) {
    const Points outline = {{0, 0}, {4, 0}, {4, 3}, {0, 3}}, hole = {{1, 1}, {3, 1}, {2, 2}};
    const std::vector<WeightedRing> rings = {{&outline, 1}, {&hole, -1}};
    const Region region = RegionOf(rings);
    WarpingOptions options;
    options.tolerance = 0.05;
    const double j = SolveWarping(region, options).values.torsionConstant.lower;  // and what stays
    bool failed = true;
    // Every allocation at first, then a twelfth of them.
    for (long k = 1; failed; k += 1 + k / 12) {
        SCOPED_TRACE("allocation " + std::to_string(k));
        const long live = heap.live;
        heap.count = 0;
        heap.failing = k;
        double lower = 0.0;
        const auto outcome =
            Attempt([&] { lower = SolveWarping(region, options).values.torsionConstant.lower; });
        failed = outcome.failed;
        EXPECT_EQ(outcome.threw, failed);
        EXPECT_EQ(lower, failed ? 0.0 : j);
        ASSERT_EQ(heap.live, live) << "blocks leaked";
        EXPECT_TRUE(failed || k > 100) << "allocates little";
    }
}

}  // namespace
