/// @file report.h
/// Everything that is known about one section.
#ifndef HALVORN_ENGINE_VALUES_REPORT_H
#define HALVORN_ENGINE_VALUES_REPORT_H

#include <string>
#include <string_view>
#include <vector>

#include "model/section_model.h"
#include "region/region.h"
#include "values/finding.h"
#include "values/plastic_halves.h"

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

/// Returns the value with this key; null when it is not there or was not computed.
const Value* FindValue(const std::vector<Value>& values, std::string_view key);

/// Shift of the reference point of the elastic moduli from the centre of gravity, in the unit of
/// the section.
struct Shift {
    double dx = 0.0;
    double dy = 0.0;
};

struct Report {
    SectionModel section;
    Shift shift;
    Region region;                   ///< what the section means; empty when `whyNoRegion` says why
    std::string whyNoRegion;         ///< one sentence without a full stop
    std::vector<Value> values;       ///< what an engineer means by each symbol, of the region
    std::vector<Value> published;    ///< of a catalogue profile
    std::vector<Value> classValues;  ///< outputs of the library's class, under keys of their own
    std::vector<Finding> findings;   ///< worst first
    /// About the horizontal and the vertical plastic axis; none unless `AddHalves` adds them.
    std::vector<PlasticHalves> halves;

    /// Returns the value with this key among `values`, as `FindValue`.
    const Value* Find(std::string_view key) const { return FindValue(values, key); }
};

}  // namespace halvorn::engine

#endif
