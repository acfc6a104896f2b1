/// @file report.h
/// Everything that is known about one section.
#ifndef HALVORN_ENGINE_VALUES_REPORT_H
#define HALVORN_ENGINE_VALUES_REPORT_H

#include <string>
#include <string_view>
#include <vector>

#include "HalvornEngine.h"
#include "model/section_model.h"
#include "region/region.h"

namespace halvorn::engine {

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
