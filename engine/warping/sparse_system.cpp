#include "warping/sparse_system.h"

#include <Eigen/OrderingMethods>
#include <Eigen/SparseCholesky>
#include <Eigen/SparseCore>
#include <cstddef>

#include "warping/warping.h"

namespace halvorn::engine {

namespace {

using Matrix = Eigen::SparseMatrix<double, Eigen::ColMajor, Index>;
using Cholesky = Eigen::SimplicialLLT<Matrix, Eigen::Upper, Eigen::NaturalOrdering<Index>>;

// The factor of a matrix that is in order already. `compute` would copy it twice: it knows natural
// ordering by Eigen's own type of index alone.
class OrderedCholesky : public Cholesky {
public:
    explicit OrderedCholesky(const Matrix& upper) {
        analyzePattern_preordered(upper, false);
        factorize_preordered<false>(upper);
    }
};

}  // namespace

std::vector<Index> OrderVertices(std::span<const std::array<Index, 3>> triangles,
                                 std::size_t vertices) {
    // The ordering counts in this type what grows with unknowns times the size of a front: beyond
    // 32 bits for 10,000 vertices.
    using Count = std::ptrdiff_t;
    using Pattern = Eigen::SparseMatrix<char, Eigen::ColMajor, Count>;
    std::vector<Eigen::Triplet<char, Count>> entries;
    entries.reserve(triangles.size() * 9);
    for (const auto& corners : triangles) {
        for (const Index a : corners) {
            for (const Index b : corners) entries.emplace_back(a, b, static_cast<char>(1));
        }
    }
    const auto count = static_cast<Count>(vertices);
    Pattern pattern(count, count);
    pattern.setFromTriplets(entries.begin(), entries.end(), [](char a, char) { return a; });
    Eigen::PermutationMatrix<Eigen::Dynamic, Eigen::Dynamic, Count> places;
    Eigen::AMDOrdering<Count>()(pattern, places);
    std::vector<Index> order;
    order.reserve(vertices);
    for (Eigen::Index i = 0; i < places.size(); ++i) {
        order.push_back(static_cast<Index>(places.indices()[i]));
    }
    return order;
}

Eigen::MatrixXd SparseSystem::Solve() {
    const Eigen::Index count = rightHandSides_.rows();
    if (count == 0) return rightHandSides_;
    Matrix matrix(count, count);
    matrix.setFromTriplets(entries_.begin(), entries_.end());
    entries_ = {};
    const OrderedCholesky factor(matrix);
    if (factor.info() != Eigen::Success) {
        throw WarpingError("the equations cannot be solved in the digits of a double");
    }
    return factor.solve(rightHandSides_);
}

}  // namespace halvorn::engine
