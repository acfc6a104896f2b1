/// @file warping_checks.h
/// Sections for the tests of warping, and how their values are held against the truth.
#ifndef HALVORN_TESTS_ENGINE_WARPING_CHECKS_H
#define HALVORN_TESTS_ENGINE_WARPING_CHECKS_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iostream>
#include <map>
#include <numbers>
#include <string>
#include <utility>

#include "region/region.h"
#include "ring_sections.h"
#include "warping/warping.h"

namespace test_support {

using halvorn::engine::Bracket;
using halvorn::engine::Estimate;
using halvorn::engine::Point;
using halvorn::engine::Points;
using halvorn::engine::WarpingOptions;
using halvorn::engine::WarpingValues;

inline WarpingValues Solve(const Rings& rings, const WarpingOptions& options = {}) {
    return SolveWarping(halvorn::engine::RegionOf(Weighted(rings)), options).values;
}

inline WarpingOptions Within(double tolerance, double poisson = 0.0) {
    WarpingOptions options;
    options.tolerance = tolerance;
    options.poisson = poisson;
    return options;
}

/// Half the width of a bracket in which rounding may leave a true value, of its magnitude.
constexpr double kRounding = 1e-11;

/// A regular polygon, or the half of it above the x axis; its first vertex is at (radius, 0).
inline Points RegularPolygon(int n, double radius, int chords) {
    Points ring;
    for (int i = 0; i < (chords < n ? chords + 1 : n); ++i) {
        const double angle = 2.0 * std::numbers::pi * i / n;
        ring.push_back(radius * Point(std::cos(angle), std::sin(angle)));
    }
    return ring;
}
inline Points RegularPolygon(int n, double radius) {
    return RegularPolygon(n, radius, n);
}

/// The wall between two outlines alike, the inner one a hole.
inline Rings Hollow(double width, double height, double wall) {
    return {{true, Rectangle(0, 0, width, height)},
            {false, Rectangle(wall, wall, width - 2 * wall, height - 2 * wall)}};
}

inline Bracket Inverse(const Bracket& bracket) {
    return {1.0 / bracket.upper, 1.0 / bracket.lower};
}

/// Holds values against the truth, and prints of each quantity the worst ratio of its true error to
/// the one that was claimed, with the case.
class ClaimedErrors {
public:
    ClaimedErrors() = default;
    ClaimedErrors(const ClaimedErrors&) = delete;
    ClaimedErrors& operator=(const ClaimedErrors&) = delete;
    ~ClaimedErrors() {
        for (const auto& [quantity, worst] : worst_) {
            std::cout << quantity << ": true error at most " << worst.first
                      << " of the claimed one (" << worst.second << ")\n";
        }
    }

    /// @param allowance  what the truth itself is off, absolute
    void Check(const std::string& quantity, const std::string& name, const Bracket& bracket,
               double truth, double allowance = 0.0) {
        EXPECT_LE(bracket.lower, bracket.upper) << quantity << " of " << name;
        Check(quantity, name, Estimate{bracket.Middle(), bracket.HalfWidth()}, truth, allowance);
    }
    void Check(const std::string& quantity, const std::string& name, const Estimate& estimate,
               double truth, double allowance = 0.0) {
        const double rounding = allowance + kRounding * std::fabs(truth);
        const double error = std::fmax(0.0, std::fabs(estimate.value - truth) - rounding);
        EXPECT_GE(estimate.error, 0.0) << quantity << " of " << name;
        EXPECT_LE(error, estimate.error)
            << quantity << " of " << name << " is " << estimate.value << ", not " << truth;
        auto& worst = worst_[quantity];
        if (error > worst.first * estimate.error) worst = {error / estimate.error, name};
    }

private:
    std::map<std::string, std::pair<double, std::string>> worst_;
};

}  // namespace test_support

#endif
