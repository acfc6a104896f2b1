#include "failing_heap.h"

#include <cstddef>
#include <new>

namespace test_support {

Heap heap;

Outcome Attempt(const std::function<void()>& operation) {
    heap.armed = true;
    bool threw = false;
    try {
        operation();
    } catch (const std::bad_alloc&) {
        threw = true;
    }
    heap.armed = false;
    return {heap.count >= heap.failing, threw};
}

}  // namespace test_support

using test_support::heap;

extern "C" {
// NOLINTBEGIN: the names are the linker's.
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);
void* __wrap_malloc(std::size_t size) {
    return heap.Allows() ? heap.Book(__real_malloc(size)) : nullptr;
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
    return heap.Allows() ? heap.Book(__real_calloc(count, size)) : nullptr;
}
void* __wrap_realloc(void* block, std::size_t size) {
    if (!heap.Allows()) return nullptr;
    void* const resized = __real_realloc(block, size);
    return block == nullptr ? heap.Book(resized) : resized;
}
void __wrap_free(void* block) {
    heap.live -= block != nullptr;
    __real_free(block);
}
// NOLINTEND
}

void* operator new(std::size_t size) {
    void* const block = heap.Allows() ? heap.Book(__real_malloc(size > 0 ? size : 1)) : nullptr;
    return block != nullptr ? block : throw std::bad_alloc();
}
void operator delete(void* block) noexcept {
    heap.live -= block != nullptr;
    __real_free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}
// The standard library's own array forms would do the same, but valgrind replaces those.
void* operator new[](std::size_t size) {
    return operator new(size);
}
void operator delete[](void* block) noexcept {
    operator delete(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    operator delete(block);
}
