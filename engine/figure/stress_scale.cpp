#include "figure/stress_scale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>

namespace halvorn::engine::figure {

namespace {

constexpr std::size_t kMostBands = 12;  // as many as an eye tells apart in one scale

// The map "viridis" of N. Smith and S. van der Walt, 2015, in the public domain, from its light
// end: equal steps look alike, and its lightness in CIELAB falls evenly, from 91 to 25. Without its
// darkest eighth, on which black lines would be lost.
constexpr std::array<Colour, 8> kLightToDark = {{{253, 231, 37},
                                                 {170, 220, 50},
                                                 {92, 200, 99},
                                                 {39, 173, 129},
                                                 {33, 144, 141},
                                                 {44, 113, 142},
                                                 {59, 81, 139},
                                                 {71, 44, 122}}};
// Blue and red are told apart by the colour-blind; both fall in lightness alike, from 92 to 30.
constexpr std::array<Colour, 5> kCompression = {
    {{222, 236, 247}, {163, 203, 232}, {102, 160, 212}, {50, 112, 180}, {20, 66, 140}}};
constexpr std::array<Colour, 5> kTension = {
    {{252, 228, 214}, {247, 183, 155}, {232, 128, 104}, {198, 60, 60}, {142, 12, 38}}};

// The colour at a share of a map, from 0 to 1.
Colour ColourAt(std::span<const Colour> map, double share) {
    const double place = share * static_cast<double>(map.size() - 1);
    const auto first = std::min(static_cast<std::size_t>(place), map.size() - 2);
    const double rest = place - static_cast<double>(first);
    const auto mixed = [&](int Colour::*part) {
        const double from = map[first].*part;
        const double to = map[first + 1].*part;
        return static_cast<int>(std::lround(from + rest * (to - from)));
    };
    return {mixed(&Colour::red), mixed(&Colour::green), mixed(&Colour::blue)};
}

// The levels between two ends: multiples of a step. Those too near an end for a band of their own
// are left out, but not 0, where the sign changes.
std::vector<double> LevelsBetween(double low, double high, double step) {
    // Room for both numbers beside a strip, which is never lower than 160 pt nor a step than 14 pt.
    constexpr double kNarrowest = 0.66;        // of the step
    constexpr double kNarrowestOfAll = 0.058;  // of all
    const double narrowest = std::min(kNarrowest * step, kNarrowestOfAll * (high - low));
    std::vector<double> levels;
    const double last = std::floor(high / step);
    for (double k = std::ceil(low / step); k <= last; k += 1.0) {
        const double level = k * step;
        const double room = k == 0.0 ? 0.0 : narrowest;
        if (level - low > room && high - level > room) levels.push_back(level);
    }
    return levels;
}

// Chooses the smallest round step that gives no more bands than may be.
void Divide(double low, double high, StressScale* scale) {
    const double least = (high - low) / static_cast<double>(kMostBands);
    double power = std::pow(10.0, std::floor(std::log10(least)));
    for (;; power *= 10.0) {
        for (const double factor : {1.0, 2.0, 2.5, 5.0}) {
            const std::vector<double> levels = LevelsBetween(low, high, factor * power);
            if (levels.size() >= kMostBands) continue;
            scale->step = factor * power;
            scale->ends = {low};
            scale->ends.insert(scale->ends.end(), levels.begin(), levels.end());
            scale->ends.push_back(high);
            return;
        }
    }
}

// Whether values are the same but for rounding.
bool AreAlike(double low, double high) {
    constexpr double kAlike = 1e-6;   // relative; less than any digit that a figure shows
    constexpr double kTiny = 1e-290;  // a twelfth of less leaves the range of normal numbers
    return high - low <= kTiny || high - low <= kAlike * std::max(std::fabs(low), std::fabs(high));
}

bool GoesBeyond(double lowest, double highest, double largest) {
    constexpr double kVisible = 1.001;  // the digits that the end of a scale shows
    return std::max(-lowest, highest) > kVisible * largest;
}

StressScale OneBand(double value, const Colour& colour) {
    StressScale scale;
    scale.ends = {value, value};
    scale.colours = {colour};
    return scale;
}

// The share of a map for the band `i` from its light end, of `count`.
double ShareOf(std::size_t i, std::size_t count) {
    return (static_cast<double>(i) + 0.5) / (static_cast<double>(count) - 0.5);
}

}  // namespace

StressScale TwoSidedScale(double lowest, double highest, double largest) {
    const double high = std::clamp(highest, -largest, largest);
    const double low = std::clamp(lowest, -largest, high);
    if (AreAlike(low, high)) {
        const double share = high == 0.0 ? 0.0 : 0.5;
        return OneBand(high, ColourAt(high < 0.0 ? kCompression : kTension, share));
    }
    StressScale scale;
    Divide(low, high, &scale);
    scale.goesOn = GoesBeyond(lowest, highest, largest);
    const std::size_t count = scale.ends.size() - 1;
    const auto below = static_cast<std::size_t>(
        std::count_if(scale.ends.begin() + 1, scale.ends.end(), [](double e) { return e <= 0.0; }));
    const std::size_t deepest = std::max(below, count - below);
    for (std::size_t i = 0; i < count; ++i) {
        scale.colours.push_back(i < below ? ColourAt(kCompression, ShareOf(below - 1 - i, deepest))
                                          : ColourAt(kTension, ShareOf(i - below, deepest)));
    }
    return scale;
}

StressScale OneSidedScale(double lowest, double highest, double largest) {
    const double high = largest;
    double low = std::clamp(lowest, 0.0, high);
    if (high == 0.0 || AreAlike(low, std::min(highest, high))) {
        return OneBand(high, ColourAt(kLightToDark, high == 0.0 ? 0.0 : 0.5));
    }
    // From 0, unless that left half of the scale without a place in the section.
    constexpr double kFromZero = 0.5;
    if (low < kFromZero * high) low = 0.0;
    StressScale scale;
    Divide(low, high, &scale);
    scale.goesOn = GoesBeyond(lowest, highest, largest);
    const std::size_t count = scale.ends.size() - 1;
    for (std::size_t i = 0; i < count; ++i) {
        const double share =
            static_cast<double>(i) / static_cast<double>(std::max<std::size_t>(count - 1, 1));
        scale.colours.push_back(ColourAt(kLightToDark, share));
    }
    return scale;
}

}  // namespace halvorn::engine::figure
