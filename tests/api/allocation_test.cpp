// How often the library allocates: the operators below replace those of the whole process, the
// library's included.
#include <CSectionTools.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <type_traits>
#include <vector>

namespace {

// A growing vector of sections moves them instead of copying every contour.
static_assert(std::is_nothrow_move_constructible_v<CSectionTools> &&
              std::is_nothrow_move_assignable_v<CSectionTools>);

int allocations = 0;

void* Allocate(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

TEST(Allocations, AreTheStoredContourOfAPushAndOneArrayForEachDirectionOfTheSearch) {
#if defined(_WIN32)
    GTEST_SKIP() << "on Windows a program's operator new does not serve its DLLs";
#endif
    CSectionTools section;
    // Unsymmetric channels, ever farther apart, so that neither search ends with its first line.
    for (int i = 0; i < 20; ++i) {
        std::vector<double> coords = {0, 0, 8, 0, 8, 1, 1, 1, 1, 9, 7, 9, 7, 10, 0, 10};
        for (double& c : coords) c += 0.37 * i * i;
        allocations = 0;
        section.PushContour(8, coords.data(), 1);
        EXPECT_EQ(allocations, 2) << "the list's node and the points";
    }
    double wplx = 0, wply = 0;
    allocations = 0;
    section.ComputeWplasticValues(wplx, wply);
    EXPECT_EQ(allocations, 2);
    EXPECT_GT(wplx, 0);
}

}  // namespace

void* operator new(std::size_t size) {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
