/// @file disjoint_sets.h
/// Sets that grow together.
#ifndef HALVORN_ENGINE_BASE_DISJOINT_SETS_H
#define HALVORN_ENGINE_BASE_DISJOINT_SETS_H

#include <cstddef>
#include <numeric>
#include <vector>

namespace halvorn::engine {

/// The numbers below a count, each at first in a set of its own (R. E. Tarjan 1975).
class DisjointSets {
public:
    explicit DisjointSets(std::size_t count) : parents_(count) {
        std::iota(parents_.begin(), parents_.end(), std::size_t{0});
    }

    /// Returns the number that stands for the set of `i`.
    std::size_t Find(std::size_t i) {
        while (parents_[i] != i) i = parents_[i] = parents_[parents_[i]];
        return i;
    }

    /// Makes one set of two; returns whether they were two.
    bool Join(std::size_t a, std::size_t b) {
        a = Find(a);
        b = Find(b);
        parents_[a] = b;
        return a != b;
    }

private:
    std::vector<std::size_t> parents_;
};

}  // namespace halvorn::engine

#endif
