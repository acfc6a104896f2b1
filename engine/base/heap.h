/// @file heap.h
/// A heap whose order of equal members is the same with every standard library, which leaves it
/// open: what follows from it would differ between platforms.
#ifndef HALVORN_ENGINE_BASE_HEAP_H
#define HALVORN_ENGINE_BASE_HEAP_H

#include <cstddef>
#include <utility>
#include <vector>

namespace halvorn::engine {

/// Moves a hole up to where a member belongs, and puts it there.
/// @param isAfter  whether a member comes later than another
template <typename Member, typename IsAfter>
void PutUpwards(std::vector<Member>& heap, std::size_t hole, Member member, IsAfter isAfter) {
    while (hole > 0) {
        const std::size_t parent = (hole - 1) / 2;
        if (!isAfter(heap[parent], member)) break;
        heap[hole] = std::move(heap[parent]);
        hole = parent;
    }
    heap[hole] = std::move(member);
}

/// Adds a member.
template <typename Member, typename IsAfter>
void PushOnHeap(std::vector<Member>& heap, Member member, IsAfter isAfter) {
    heap.push_back(member);
    PutUpwards(heap, heap.size() - 1, std::move(member), isAfter);
}

/// Takes the first member out. The hole that it leaves goes down to the bottom, and the last member
/// up from there (Floyd, Algorithm 245, 1964, with fewer comparisons).
template <typename Member, typename IsAfter>
Member PopFromHeap(std::vector<Member>& heap, IsAfter isAfter) {
    Member first = std::move(heap.front());
    Member last = std::move(heap.back());
    heap.pop_back();
    const std::size_t size = heap.size();
    if (size == 0) return first;
    std::size_t hole = 0;
    for (std::size_t child = 1; child < size; child = 2 * hole + 1) {
        // Of equal ones the right one.
        if (child + 1 < size && !isAfter(heap[child + 1], heap[child])) ++child;
        heap[hole] = std::move(heap[child]);
        hole = child;
    }
    PutUpwards(heap, hole, std::move(last), isAfter);
    return first;
}

}  // namespace halvorn::engine

#endif
