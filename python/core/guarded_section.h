/// @file guarded_section.h
/// A section that Python threads may share.
#ifndef HALVORN_PYTHON_CORE_GUARDED_SECTION_H
#define HALVORN_PYTHON_CORE_GUARDED_SECTION_H

#include <CSectionTools.h>
#include <pybind11/pybind11.h>

#include <atomic>
#include <cstddef>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>

#include "section_rounding.h"

namespace halvorn::python {

/// A call on at least this many vertices, some 5 us, lets other Python threads run meanwhile. To
/// let go of the interpreter's lock and wait for it again would cost a shorter call more than it
/// gives.
constexpr std::size_t kLongCall = 1000;

/// One section and the lock that every use of it takes: calls from several threads follow each
/// other.
///
/// Two locks could wait for each other, so no one waits for the section's lock while it holds the
/// interpreter's, nor for the interpreter's while it holds the section's.
class GuardedSection {
public:
    /// Zeros, so that `Use` knows memory that no constructor has seen.
    static void* operator new(std::size_t size) {
        return std::memset(::operator new(size), 0, size);
    }
    static void operator delete(void* memory) { ::operator delete(memory); }

    /// Calls `work(section)`, which must not touch Python objects; with the interpreter's lock
    /// held.
    /// @param vertices how many vertices the work runs over
    /// @throws TypeError for an object that __new__ made and __init__ did not
    template <typename Work>
    void Use(std::size_t vertices, const Work& work) {
        if (mark_ != kConstructed) throw pybind11::type_error("__init__ was not called");
        if (vertices < kLongCall) {
            const std::unique_lock lock(mutex_, std::try_to_lock);
            if (lock.owns_lock()) {
                work(tools_);
                return;
            }
        }
        const pybind11::gil_scoped_release released;
        const std::lock_guard lock(mutex_);
        work(tools_);
    }

    /// Returns a deep copy; with the interpreter's lock held.
    std::unique_ptr<GuardedSection> Copy() {
        auto copy = std::make_unique<GuardedSection>();
        Use(Vertices(), [&](const CSectionTools& tools) {
            copy->tools_ = tools;
            copy->vertices_ = Vertices();
            copy->rounding_ = rounding_;
        });
        return copy;
    }

    /// The vertices of all contours, or a few more.
    std::size_t Vertices() const { return vertices_; }
    void CountVertices(std::size_t added) { vertices_ += added; }

    /// What rounding leaves of the sums; to be touched within `Use` only.
    SectionRounding& Rounding() { return rounding_; }

private:
    static constexpr unsigned kConstructed = 0x5EC7107;

    unsigned mark_ = kConstructed;
    std::mutex mutex_;
    CSectionTools tools_;
    std::atomic<std::size_t> vertices_ = 0;
    SectionRounding rounding_;
};

}  // namespace halvorn::python

#endif
