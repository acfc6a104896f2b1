/// @file report.h
/// Everything that is known about one section.
#ifndef HALVORN_ENGINE_VALUES_REPORT_H
#define HALVORN_ENGINE_VALUES_REPORT_H

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HalvornEngine.h"
#include "model/section_model.h"
#include "region/moments.h"
#include "region/region.h"
#include "warping/warping.h"

namespace halvorn::engine {

struct Report {
    SectionModel section;
    Shift shift;
    Region region;            ///< what the section means; empty when `whyNoRegion` says why
    std::string whyNoRegion;  ///< one sentence without a full stop
    /// Of a composite section with a region: its transformed moments.
    std::optional<Moments> transformed;
    std::vector<CompositePart> parts;  ///< of a composite section
    std::vector<Region> partRegions;   ///< what each of them keeps; empty where nothing is left
    std::vector<Value> values;         ///< what an engineer means by each symbol, of the region
    std::vector<Value> published;      ///< of a catalogue profile
    std::vector<Value> classValues;    ///< outputs of the library's class, under keys of their own
    std::vector<Finding> findings;     ///< worst first
    /// Torsion, warping and shear as `AddWarping` solves them; null when `whyNoWarping` says why.
    std::shared_ptr<const WarpingSolution> warping;
    std::string whyNoWarping;             ///< one sentence without a full stop
    double tolerance = 0.0;               ///< that the solution was asked for [-]
    double poisson = 0.0;                 ///< Poisson's ratio of the solution
    std::optional<SectionForces> forces;  ///< on the section
    std::vector<LargestStress> stresses;  ///< normal, shear, von Mises; none without forces
    /// About the horizontal and the vertical plastic axis; none unless `AddHalves` adds them.
    std::vector<PlasticHalves> halves;

    /// Returns the value with this key among `values`, as `FindValue`.
    const Value* Find(std::string_view key) const { return FindValue(values, key); }
};

}  // namespace halvorn::engine

#endif
