/// @file values.h
/// The one table of everything the engine reports.
#ifndef HALVORN_ENGINE_VALUES_VALUES_H
#define HALVORN_ENGINE_VALUES_VALUES_H

#include <array>
#include <cstddef>
#include <string>

namespace halvorn::engine {

/// What a value is called and measured in.
struct ValueDescription {
    const char* key;     // in JSON; never changes once released
    const char* name;    // in full words
    const char* symbol;  // as engineers write it
    int power;           // of the length unit; 0: whatever unit the caller gave it in
    std::size_t output;  // position among the outputs of the library call, from 0
};

/// The outputs of `CSectionTools::GetCalculValues` in reading order.
extern const std::array<ValueDescription, 17> kSectionValues;

/// The outputs of `CSectionTools::CalculContourQuelconqueTOOL` in reading order.
extern const std::array<ValueDescription, 10> kPolylineValues;

/// What a derived value is called and measured in.
struct DerivedDescription {
    const char* key;
    const char* name;
    const char* symbol;
    int power;         // of the length unit; 0: see `unit`
    const char* unit;  // "deg", "kg/m" or none, when the power is 0
};

/// What the engine derives from a section of elements, in reading order.
extern const std::array<DerivedDescription, 17> kDerivedValues;

/// Returns the unit of a value: "mm", "mm^2", ...; empty for power 0.
std::string UnitLabel(const std::string& lengthUnit, int power);

}  // namespace halvorn::engine

#endif
