/// @file c_array.h
/// Owners of arrays that come from calloc and realloc.
#ifndef HALVORN_NUMERIC_C_ARRAY_H
#define HALVORN_NUMERIC_C_ARRAY_H

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <type_traits>

namespace halvorn {

/// Releases with free, which accepts null.
struct FreeDeleter {
    void operator()(void* array) const noexcept { std::free(array); }
};

/// Owns one C array of trivial elements.
template <class T>
using CArray = std::unique_ptr<T[], FreeDeleter>;

/// Returns `count` zeroed elements, or null when memory is exhausted. A count of 0 may also give
/// null.
template <class T>
CArray<T> AllocateZeroed(std::size_t count) noexcept {
    static_assert(std::is_trivial_v<T>, "calloc makes bytes, not objects");
    return CArray<T>(static_cast<T*>(std::calloc(count, sizeof(T))));
}

/// Returns `count` zeroed elements.
/// @throws std::bad_alloc when memory is exhausted
template <class T>
CArray<T> AllocateZeroedOrThrow(std::size_t count) {
    CArray<T> array = AllocateZeroed<T>(count);
    if (!array && count != 0) throw std::bad_alloc();
    return array;
}

/// Grows or trims `array` to exactly `count` elements, at least one; new ones are not zeroed.
/// Returns false, with the array as it was, when memory is exhausted.
template <class T>
bool Resize(CArray<T>* array, std::size_t count) noexcept {
    auto* const resized = static_cast<T*>(std::realloc(array->get(), count * sizeof(T)));
    if (!resized) return false;
    static_cast<void>(array->release());
    array->reset(resized);
    return true;
}

}  // namespace halvorn

#endif
