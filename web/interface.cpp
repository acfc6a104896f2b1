#include "interface.h"

#include <HalvornEngine.h>

#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <nlohmann/json.hpp>
#include <string>

#include "operations.h"

namespace {

using halvorn::engine::InputError;
using nlohmann::ordered_json;

// Needs no memory, and is never given back.
constexpr const char* kMemoryExhausted =
    R"({"ok":false,"error":{"source":"engine","place":"","problem":"memory is exhausted",)"
    R"("mend":"give a smaller section","message":"memory is exhausted; give a smaller section"}})";

std::string Failure(const std::string& source, const std::string& place, const std::string& problem,
                    const std::string& mend, const std::string& message) {
    const ordered_json answer = {{"ok", false},
                                 {"error",
                                  {{"source", source},
                                   {"place", place},
                                   {"problem", problem},
                                   {"mend", mend},
                                   {"message", message}}}};
    return halvorn::web::Written(answer);
}

std::string AnswerText(const char* request) {
    try {
        return halvorn::web::Written(halvorn::web::Answer(request));
    } catch (const InputError& error) {
        return Failure(error.Source(), error.Place(), error.Problem(), error.Mend(), error.what());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        return Failure("engine", "", error.what(), "", error.what());
    }
}

const char* Copied(const std::string& text) {
    char* const copy = halvorn_allocate(text.size() + 1);
    if (copy == nullptr) return kMemoryExhausted;
    std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

#if defined(__EMSCRIPTEN__)
bool isExhausted = false;

// A module whose memory is exhausted stops at once and is replaced by its host: an exception could
// not pass through every destructor of the libraries that it is made with. A trap is caught by
// nobody, while what an import throws would be, again and again.
[[noreturn]] void StopExhausted() {
    isExhausted = true;
    __builtin_trap();
}

[[noreturn]] void Stop() {
    __builtin_trap();
}

const auto kNoNewHandler = std::set_new_handler(StopExhausted);
const auto kDefaultTerminate = std::set_terminate(Stop);
#endif

}  // namespace

#if defined(__EMSCRIPTEN__)
int halvorn_is_exhausted() {
    return isExhausted ? 1 : 0;
}
#endif

char* halvorn_allocate(std::size_t size) {
    return static_cast<char*>(std::malloc(size));
}

const char* halvorn_call(const char* request) {
    try {
        return Copied(AnswerText(request));
    } catch (const std::bad_alloc&) {
        return kMemoryExhausted;
    }
}

void halvorn_free(const char* text) {
    // What `halvorn_allocate` gave was not const.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    if (text != kMemoryExhausted) std::free(const_cast<char*>(text));
}
