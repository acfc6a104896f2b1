/// @file failing_heap.h
/// A heap whose k-th allocation fails. The C++ operators in failing_heap.cpp serve the whole
/// process, the linker's --wrap the objects' calls of C.
#ifndef HALVORN_TESTS_FAULTS_FAILING_HEAP_H
#define HALVORN_TESTS_FAULTS_FAILING_HEAP_H

#include <functional>

namespace test_support {

struct Heap {
    long live = 0;       // blocks
    bool armed = false;  // counts, and fails the allocation below
    long count = 0;
    long failing = 0;

    bool Allows() { return !armed || ++count != failing; }
    template <class Pointer>
    Pointer Book(Pointer block) {
        live += block != nullptr;
        return block;
    }
};
extern Heap heap;

struct Outcome {
    bool failed;  // the failing allocation was reached
    bool threw;
};

// Runs `operation` with one allocation failing.
Outcome Attempt(const std::function<void()>& operation);

}  // namespace test_support

#endif
