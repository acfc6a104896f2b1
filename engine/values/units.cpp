#include <cmath>
#include <string>
#include <utility>

#include "base/text.h"
#include "base/units.h"
#include "values/values.h"

namespace halvorn::engine {

namespace {

// A stress is a force of the caller's per area.
constexpr const char* kForcePer = "F/";

std::string UnitText(const std::string& length, int power) {
    const std::string base = power < 0 ? kForcePer + length : length;
    const int exponent = std::abs(power);
    return exponent > 1 ? base + "^" + std::to_string(exponent) : base;
}

// The unit of length in "mm^4" or "F/mm^2".
std::string LengthIn(const std::string& unit) {
    const std::size_t from = unit.starts_with(kForcePer) ? std::string(kForcePer).size() : 0;
    return unit.substr(from, unit.find('^') - from);
}

}  // namespace

Value InUnit(Value value, const std::string& from, const std::string& to) {
    if (value.power == 0) return value;
    const double divisor = std::pow(MetresPer(to) / MetresPer(from), value.power);
    value.number /= divisor;
    for (auto* const each : {&value.lower, &value.upper, &value.error, &value.published}) {
        if (*each) **each /= divisor;
    }
    value.unit = UnitText(to, value.power);
    return value;
}

Value InLengthUnit(const Value& value, const std::string& unit) {
    if (!IsLengthUnit(unit)) {
        throw InputError("options", "the unit is " + Excerpt(unit), "give mm, cm, m or in");
    }
    const std::string from = LengthIn(value.unit);
    return IsLengthUnit(from) ? InUnit(value, from, unit) : value;
}

}  // namespace halvorn::engine
