/// @file interface.h
/// The engine behind two functions of C, for hosts that reach it through memory alone, such as
/// WebAssembly's: a request in JSON goes in, an answer in JSON comes out (docs/web.md).
#ifndef HALVORN_WEB_INTERFACE_H
#define HALVORN_WEB_INTERFACE_H

#include <cstddef>

// Also kept in a WebAssembly module, under its own name.
#if defined(__EMSCRIPTEN__)
#define HALVORN_EXPORTED(name) __attribute__((export_name(name)))
#else
#define HALVORN_EXPORTED(name)
#endif

extern "C" {

/// Returns room for a request, null when memory is exhausted. `halvorn_free` takes it back.
/// @param size  in bytes, with the closing zero
HALVORN_EXPORTED("halvorn_allocate") char* halvorn_allocate(std::size_t size);

/// Returns the answer to a request, both in UTF-8 and closed by a zero: an object with "ok", which
/// is true, or false beside an "error" of source, place, problem, mend and message. Exhausted
/// memory is such an error. Never null, never throws.
/// @param request  an object with "op"
HALVORN_EXPORTED("halvorn_call") const char* halvorn_call(const char* request);

/// Takes back a request's room or an answer.
/// @param text  of `halvorn_allocate` or `halvorn_call`; null: nothing happens
HALVORN_EXPORTED("halvorn_free") void halvorn_free(const char* text);

#if defined(__EMSCRIPTEN__)
/// Returns 1 when it was for want of memory that the module stopped, else 0.
HALVORN_EXPORTED("halvorn_is_exhausted") int halvorn_is_exhausted();
#endif

}  // extern "C"

#endif
