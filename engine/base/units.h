/// @file units.h
/// The units of length that sections are given in.
#ifndef HALVORN_ENGINE_BASE_UNITS_H
#define HALVORN_ENGINE_BASE_UNITS_H

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

namespace halvorn::engine {

struct LengthUnit {
    std::string_view name;
    double metres;
};

inline constexpr std::array<LengthUnit, 4> kLengthUnits = {
    {{"mm", 1e-3}, {"cm", 1e-2}, {"m", 1.0}, {"in", 0.0254}}};

inline bool IsLengthUnit(std::string_view name) {
    for (const LengthUnit& unit : kLengthUnits) {
        if (unit.name == name) return true;
    }
    return false;
}

/// Returns metres in one of the unit.
/// @throws std::invalid_argument for a name that is not in the table
inline double MetresPer(std::string_view name) {
    for (const LengthUnit& unit : kLengthUnits) {
        if (unit.name == name) return unit.metres;
    }
    throw std::invalid_argument("unknown unit of length: " + std::string(name));
}

}  // namespace halvorn::engine

#endif
