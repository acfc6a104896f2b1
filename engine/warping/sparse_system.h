/// @file sparse_system.h
/// A symmetric positive definite system that is assembled from triangles.
#ifndef HALVORN_ENGINE_WARPING_SPARSE_SYSTEM_H
#define HALVORN_ENGINE_WARPING_SPARSE_SYSTEM_H

#include <Eigen/Dense>
#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "geometry/triangulation.h"

namespace halvorn::engine {

/// Returns the vertices of triangles in an order of elimination that keeps the factor sparse
/// (approximate minimum degree). What belongs to an edge is eliminated with the first of its ends.
std::vector<Index> OrderVertices(std::span<const std::array<Index, 3>> triangles,
                                 std::size_t vertices);

/// See the file's comment.
class SparseSystem {
public:
    /// @param entries  so many are added, at most
    SparseSystem(Index unknowns, std::size_t rightHandSides, std::size_t entries)
        : rightHandSides_(
              Eigen::MatrixXd::Zero(unknowns, static_cast<Eigen::Index>(rightHandSides))) {
        entries_.reserve(entries);
    }

    /// Adds to a place of the matrix; the other half is its mirror image. @pre row <= column
    void Add(Index row, Index column, double amount) { entries_.push_back({row, column, amount}); }
    Eigen::MatrixXd& RightHandSides() { return rightHandSides_; }

    /// Returns the solution, unknown by right hand side. Frees the entries.
    /// @throws WarpingError when rounding has left the matrix not positive definite
    Eigen::MatrixXd Solve();

private:
    struct Entry {
        Index row_, column_;
        double value_;
        Index row() const { return row_; }
        Index col() const { return column_; }
        double value() const { return value_; }
    };

    std::vector<Entry> entries_;
    Eigen::MatrixXd rightHandSides_;
};

}  // namespace halvorn::engine

#endif
