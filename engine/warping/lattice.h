/// @file lattice.h
/// Points all over a triangle.
#ifndef HALVORN_ENGINE_WARPING_LATTICE_H
#define HALVORN_ENGINE_WARPING_LATTICE_H

#include <array>
#include <cstddef>
#include <vector>

#include "warping/shape_functions.h"
#include "warping/stress_at.h"

namespace halvorn::engine {

/// Points of a lattice over a triangle that is divided into so many along each side, with the
/// functions there: point (i, j), 0 <= i, j and i + j <= divisions, at (i, j) / divisions.
class Lattice {
public:
    explicit Lattice(int divisions) : divisions_(divisions) {
        std::vector<std::array<double, 2>> places;
        for (int i = 0; i <= divisions; ++i) {
            for (int j = 0; i + j <= divisions; ++j) {
                places.push_back(
                    {static_cast<double>(i) / divisions, static_cast<double>(j) / divisions});
            }
        }
        for (int order = 1; order <= kHighestOrder; ++order) {
            samples_.push_back(SamplesAt(order, places));
        }
    }

    int Divisions() const { return divisions_; }
    const ShapeSamples& Samples(int order) const { return samples_[Slot(order - 1)]; }
    /// Place of a point among the samples.
    std::size_t Place(int i, int j) const {
        return Slot(i * (divisions_ + 1) - i * (i - 1) / 2 + j);
    }

private:
    int divisions_;
    std::vector<ShapeSamples> samples_;  // by order
};

}  // namespace halvorn::engine

#endif
