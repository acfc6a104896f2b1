/// @file values.h
/// The one table of everything the engine reports.
#ifndef HALVORN_ENGINE_VALUES_VALUES_H
#define HALVORN_ENGINE_VALUES_VALUES_H

#include <array>
#include <string>

#include "model/class_outputs.h"
#include "values/report.h"

namespace halvorn::engine {

/// What comes with a number of a value.
enum class Certainty {
    Exact,   ///< nothing: rounding alone makes it differ from what is drawn
    Bounds,  ///< two bounds; with a Poisson's ratio above 0 shear areas have an error
    Error    ///< an error, bounded or estimated
};

/// What a value is called and measured in.
struct ValueDescription {
    const char* key;             // in JSON and CSV; never changes once released
    const char* name;            // in full words
    const char* symbol;          // as engineers write it
    int power;                   // of the length unit; 0: see `unit`
    const char* unit = nullptr;  // "deg", "kg/m" when the power is 0; null: none
    ValueGroup group = ValueGroup::Geometry;
    Certainty certainty = Certainty::Exact;
    const char* published = nullptr;  // the key of what tables publish of it; null: nothing
};

/// What an engineer means by each symbol, in reading order, group by group.
extern const std::array<ValueDescription, 47> kValues;

/// What the tables of profiles publish.
extern const std::array<ValueDescription, 12> kPublishedValues;

/// An output of the library's class.
template <typename Outputs>
struct OutputDescription {
    ValueDescription value;
    double (*get)(const Outputs&);
};

/// The outputs of `CSectionTools::GetCalculValues` in reading order.
extern const std::array<OutputDescription<ClassOutputs>, 17> kClassValues;

/// The outputs of `CSectionTools::CalculContourQuelconqueTOOL` in reading order.
extern const std::array<OutputDescription<PolylineOutputs>, 10> kPolylineValues;

/// Why a section without area has no other value.
inline constexpr const char* kNoArea =
    "the section encloses no area: its points lie on one line or in one place, or holes take it";

/// Why a value that was computed is none.
inline constexpr const char* kBeyondDoubles =
    "the result is not a finite number: the coordinates are too large or too small";

/// Returns a value in another unit of length, whether it has a number or not.
Value InUnit(Value value, const std::string& from, const std::string& to);

/// Returns a value with what its description says, without a number.
Value DescribedValue(const ValueDescription& description, const std::string& lengthUnit);

}  // namespace halvorn::engine

#endif
