#include "base/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace halvorn::engine {

namespace {

template <class Number>
std::optional<Number> Read(std::string_view text) {
    // std::from_chars takes no plus sign, some programs write one.
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (stop != end || error != std::errc()) return std::nullopt;
    return number;
}

// Room for the largest double, or the smallest in 17 digits, without an exponent.
constexpr std::size_t kMostCharacters = 400;

template <class... Form>
std::string Written(double value, Form... form) {
    std::array<char, kMostCharacters> text;
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value, form...).ptr};
}

std::string WithoutLastZeros(std::string text) {
    if (text.find('.') == std::string::npos) return text;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

// Whether a column shows a number of this size without an exponent.
bool IsPlain(double magnitude) {
    constexpr double kFrom = 1e-4;
    constexpr double kBelow = 1e15;
    return kFrom <= magnitude && magnitude < kBelow;
}

constexpr const char* kPlusMinus = " \xC2\xB1 ";  // in UTF-8

}  // namespace

std::optional<double> NumberIn(std::string_view text) {
    return Read<double>(text);
}

std::optional<double> FiniteNumberIn(std::string_view text) {
    const std::optional<double> number = NumberIn(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<int> WholeNumberIn(std::string_view text) {
    return Read<int>(text);
}

std::string EveryDigit(double value) {
    return Written(value);
}

std::string ShortNumber(double value, int digits) {
    return Written(value, std::chars_format::general, digits);
}

std::string PlaceText(double x, double y, int digits) {
    // Places far from the origin keep three decimals.
    constexpr int kMostDigits = 15;
    const auto text = [digits](double value) {
        const bool isFar = std::fabs(value) >= 1e3 && std::isfinite(value);
        const int needed = isFar ? 4 + static_cast<int>(std::log10(std::fabs(value))) : 0;
        if (needed <= digits || needed > kMostDigits) return ShortNumber(value, digits);
        return PlainNumber(value, needed);
    };
    return "(" + text(x) + ", " + text(y) + ")";
}

std::string PlainNumber(double value, int digits) {
    if (value == 0.0) return "0";
    if (!std::isfinite(value)) return Written(value);
    const int before = static_cast<int>(std::floor(std::log10(std::fabs(value))));
    const int decimals = std::max(0, digits - 1 - before);
    return WithoutLastZeros(Written(value, std::chars_format::fixed, decimals));
}

std::string TableNumber(double value, int digits) {
    if (value == 0.0 || IsPlain(std::fabs(value))) return PlainNumber(value, digits);
    return Written(value, std::chars_format::scientific, digits - 1);
}

std::string NumberWithin(double value, double error, int digits) {
    const auto placeOf = [](double number) {
        return static_cast<int>(std::floor(std::log10(std::fabs(number))));
    };
    // The last digit that a table shows: of long plain numbers that of the units.
    const int lastPlace = value == 0.0 ? 0 : placeOf(value) - digits + 1;
    const int lastShown = IsPlain(std::fabs(value)) ? std::min(lastPlace, 0) : lastPlace;
    const bool isBelowDigits = value != 0.0 && error < 0.5 * std::pow(10.0, lastShown);
    if (error == 0.0 || isBelowDigits || !std::isfinite(value) || !std::isfinite(error)) {
        return TableNumber(value, digits);
    }
    constexpr double kRounding = 1e-9;  // of a step: what is no more does not take another one
    int place = placeOf(error) - 1;
    double step = 0.0, shown = 0.0, steps = 10.0;
    while (steps >= 10.0) {
        ++place;
        step = std::pow(10.0, place);
        shown = std::round(value / step) * step + 0.0;
        steps = std::ceil((error + std::fabs(value - shown)) / step - kRounding);
    }
    const double bound = steps * step;
    constexpr int kFewestPlaces = -10, kMostPlaces = 3;
    constexpr std::size_t kWidest = 22;    // of a plain number with its bound
    constexpr std::size_t kMarkWidth = 3;  // as it is shown
    const auto plain = [&](double number) {
        return Written(number, std::chars_format::fixed, std::max(0, -place));
    };
    const bool isPlain = kFewestPlaces <= place && place <= kMostPlaces &&
                         (shown == 0.0 || IsPlain(std::max(std::fabs(shown), bound))) &&
                         plain(shown).size() + kMarkWidth + plain(bound).size() <= kWidest;
    const auto scientific = [&](double number) {
        if (number == 0.0) return std::string("0");
        constexpr double kUp = 1.0 + 1e-12;  // a power of ten that rounding has left below it
        return Written(number, std::chars_format::scientific, placeOf(number * kUp) - place);
    };
    return isPlain ? plain(shown) + kPlusMinus + plain(bound)
                   : scientific(shown) + kPlusMinus + scientific(bound);
}

std::string FixedNumber(double value, int decimals) {
    const std::string text = WithoutLastZeros(Written(value, std::chars_format::fixed, decimals));
    return text == "-0" ? "0" : text;
}

}  // namespace halvorn::engine
