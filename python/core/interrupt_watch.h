/// @file interrupt_watch.h
/// Ctrl-C while the interpreter's lock is released.
#ifndef HALVORN_PYTHON_CORE_INTERRUPT_WATCH_H
#define HALVORN_PYTHON_CORE_INTERRUPT_WATCH_H

#include <pybind11/pybind11.h>

#include <chrono>
#include <utility>

namespace halvorn::python {

/// Looks every so often whether work is to stop, often enough for Ctrl-C and seldom enough for
/// other threads: Python's signal handlers run, and a function of the caller, if any. Either stops
/// the work by an exception.
class InterruptWatch {
public:
    /// With the interpreter's lock held.
    /// @param function  called without arguments; None: there is none
    explicit InterruptWatch(pybind11::object function = pybind11::none())
        : function_(std::move(function)) {}

    /// Returns whether the work is to stop; without the interpreter's lock, on the thread that made
    /// the watch.
    bool IsInterrupted() {
        if (isInterrupted_ || std::chrono::steady_clock::now() < next_) return isInterrupted_;
        const pybind11::gil_scoped_acquire held;
        isInterrupted_ = PyErr_CheckSignals() != 0;
        if (!isInterrupted_ && !function_.is_none()) {
            PyObject* const result = PyObject_CallObject(function_.ptr(), nullptr);
            isInterrupted_ = result == nullptr;
            Py_XDECREF(result);
        }
        next_ = std::chrono::steady_clock::now() + kBetweenLooks;
        return isInterrupted_;
    }

    /// Throws what stopped the work, if anything did; with the lock held.
    void Rethrow() const {
        if (isInterrupted_) throw pybind11::error_already_set();
    }

private:
    static constexpr std::chrono::milliseconds kBetweenLooks{50};

    pybind11::object function_;
    std::chrono::steady_clock::time_point next_ = std::chrono::steady_clock::now() + kBetweenLooks;
    bool isInterrupted_ = false;
};

}  // namespace halvorn::python

#endif
