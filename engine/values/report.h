/// @file report.h
/// Everything that is said about one section.
#ifndef HALVORN_ENGINE_VALUES_REPORT_H
#define HALVORN_ENGINE_VALUES_REPORT_H

#include <string>
#include <string_view>
#include <vector>

#include "model/section_model.h"

namespace halvorn::engine {

/// One reported value.
struct Value {
    std::string key;         ///< in JSON and CSV; never changes once released
    std::string name;        ///< in full words
    std::string symbol;      ///< as engineers write it
    std::string unit;        ///< "mm^4", "kg/m", "deg"; empty: none
    int power = 0;           ///< of the length unit; 0: another unit or none
    double number = 0.0;     ///< meaningful when `whyMissing` is empty
    std::string method;      ///< how it was found, a few words
    std::string whyMissing;  ///< one sentence without a full stop

    bool IsComputed() const { return whyMissing.empty(); }
};

/// Shift of the reference point of the elastic moduli from the centre of gravity, in the unit of
/// the section.
struct Shift {
    double dx = 0.0;
    double dy = 0.0;
};

struct Report {
    SectionModel section;
    Shift shift;
    std::vector<Value> values;        ///< the library's outputs in reading order
    std::vector<Value> derived;       ///< what follows from them; empty for a polyline
    std::vector<std::string> notes;   ///< what a reader of the values must know, one sentence each
    std::vector<std::string> doubts;  ///< those of the notes that cast doubt on the section itself

    /// Returns the value with this key among `values` and `derived`; null when it is not there or
    /// was not computed.
    const Value* Find(std::string_view key) const;
};

}  // namespace halvorn::engine

#endif
