#include "values/digits.h"

#include <cmath>

#include "base/numbers.h"

namespace halvorn::engine {

namespace {

constexpr const char* kComeHome = "move the origin to the section";
constexpr const char* kTurn =
    "turn it, or draw its straight pieces as contours of their own, parallel to the axes";

int DigitsLeft(double relative) {
    if (!(relative < 1.0)) return 0;  // infinite, too
    return static_cast<int>(std::floor(-std::log10(relative)));
}

}  // namespace

LostBy LostByOf(double size, double far) {
    constexpr double kFar = 10.0;  // sizes
    return far > kFar * size ? LostBy::Distance : LostBy::Slenderness;
}

std::string WhyNoDigits(LostBy cause) {
    return cause == LostBy::Distance
               ? std::string("no digit is left of it at this distance from the origin; ") +
                     kComeHome
               : std::string("no digit is left of it, the outline is too thin for its size; ") +
                     kTurn;
}

bool LeavesNoDigit(double relative) {
    return relative > kTooFewDigits && DigitsLeft(relative) == 0;
}

bool KeepDigits(double error, double* number) {
    const double relative = *number == 0.0 ? 0.0 : error / std::fabs(*number);
    if (LeavesNoDigit(relative)) return false;
    if (relative > kTooFewDigits) *number = *NumberIn(ShortNumber(*number, DigitsLeft(relative)));
    return true;
}

void KeepDigits(double error, const std::string& whyNone, Value* value) {
    if (value->IsComputed() && !KeepDigits(error, &value->number)) value->whyMissing = whyNone;
}

Finding LostDigits(const std::string& element, const std::string& values, double relative,
                   LostBy cause) {
    const bool isFar = cause == LostBy::Distance;
    return {Severity::Warning,
            FindingKind::LostDigits,
            element,
            std::string(isFar ? "the section lies so far from the origin"
                              : "the outline is so thin for its size") +
                " that of 16 digits of " + values + " about " +
                std::to_string(DigitsLeft(relative)) + " are left",
            isFar ? kComeHome : kTurn,
            {}};
}

}  // namespace halvorn::engine
