/// @file method_words.h
/// The words that say how values are found.
#ifndef HALVORN_ENGINE_VALUES_METHOD_WORDS_H
#define HALVORN_ENGINE_VALUES_METHOD_WORDS_H

namespace halvorn::engine {

// `MethodDescriptions` says what each does, and its source.
inline constexpr const char* kIntegrals = "exact";
inline constexpr const char* kTransformed = "transformed";
inline constexpr const char* kMeasured = "outline";
inline constexpr const char* kMohr = "Mohr";
inline constexpr const char* kQuotient = "formula";
inline constexpr const char* kHalves = "halves";
inline constexpr const char* kBounds = "bounds";
inline constexpr const char* kWithin = "bounded";
inline constexpr const char* kEstimate = "estimate";

}  // namespace halvorn::engine

#endif
