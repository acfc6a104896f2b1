/// @file drawing.h
/// Outlines from the bytes of one input.
#ifndef HALVORN_FUZZ_DRAWING_H
#define HALVORN_FUZZ_DRAWING_H

#include <utility>
#include <vector>

#include "fuzz/byte_program.h"
#include "geometry/arrangement.h"

namespace fuzz {

/// At most six rings, solids and holes.
class Drawing {
public:
    explicit Drawing(ByteProgram& program) {
        do {
            const bool isSolid = program.Choose(3) != 0;
            halvorn::engine::Points ring;
            for (const auto& [x, y] : program.Polygon()) ring.emplace_back(x, y);
            if (ring.empty()) continue;
            rings_.push_back(std::move(ring));
            weights_.push_back(isSolid ? 1 : -1);
        } while (!program.IsAtEnd() && rings_.size() < 6);
    }

    /// The drawing must outlive them.
    std::vector<halvorn::engine::WeightedRing> Outlines() const {
        std::vector<halvorn::engine::WeightedRing> outlines;
        for (std::size_t i = 0; i < rings_.size(); ++i) {
            outlines.push_back({&rings_[i], weights_[i]});
        }
        return outlines;
    }

private:
    std::vector<halvorn::engine::Points> rings_;
    std::vector<int> weights_;
};

}  // namespace fuzz

#endif
