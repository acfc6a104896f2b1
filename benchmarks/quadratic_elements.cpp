#include "quadratic_elements.h"

#include <Eigen/LU>
#include <Eigen/SparseCholesky>
#include <Eigen/SparseCore>
#include <array>
#include <cmath>
#include <stdexcept>
#include <vector>

#include "warping/triangle_mesh.h"

namespace halvorn::benchmarks {
namespace {

using engine::Index;
using engine::kNone;
using engine::Point;
using engine::TriangleMesh;

// Of each triangle its corners, then the middles of the edges opposite to them.
using Nodes = std::vector<std::array<Index, 6>>;

Index NumberNodes(const TriangleMesh& mesh, Nodes* nodes) {
    auto count = static_cast<Index>(mesh.vertices.size());
    nodes->resize(mesh.corners.size());
    for (std::size_t t = 0; t < nodes->size(); ++t) {
        for (std::size_t i = 0; i < 3; ++i) {
            (*nodes)[t][i] = mesh.corners[t][i];
            const Index beyond = mesh.neighbours[t][i];
            if (beyond == kNone || static_cast<std::size_t>(beyond) > t) {
                (*nodes)[t][3 + i] = count++;
                continue;
            }
            const auto other = static_cast<std::size_t>(beyond);
            for (std::size_t k = 0; k < 3; ++k) {
                if (mesh.neighbours[other][k] == static_cast<Index>(t)) {
                    (*nodes)[t][3 + i] = (*nodes)[other][3 + k];
                }
            }
        }
    }
    return count;
}

// A triangle with the gradients of its linear functions.
struct Element {
    std::array<Point, 3> corners, gradients;
    double area;

    Element(const TriangleMesh& mesh, std::size_t t, const Point& origin) {
        for (std::size_t i = 0; i < 3; ++i) {
            corners[i] = mesh.vertices[static_cast<std::size_t>(mesh.corners[t][i])] - origin;
        }
        area = 0.5 * Cross(corners[1] - corners[0], corners[2] - corners[0]);
        for (std::size_t i = 0; i < 3; ++i) {
            const Point edge = corners[(i + 2) % 3] - corners[(i + 1) % 3];
            gradients[i] = 0.5 / area * Point(-edge.y, edge.x);
        }
    }
};

// Products of gradients of the functions of second order, integrated in closed form.
std::array<std::array<double, 6>, 6> StiffnessOf(const Element& e) {
    std::array<std::array<double, 6>, 6> k{};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t j = (i + 1) % 3, l = (i + 2) % 3;
        const auto linear = [&](std::size_t a, std::size_t b) {
            return e.area * Dot(e.gradients[a], e.gradients[b]);
        };
        k[i][i] = linear(i, i);
        k[i][j] = k[j][i] = -linear(i, j) / 3;
        for (const std::size_t other : {j, l}) {  // a middle and an end of its edge
            k[3 + i][other] = k[other][3 + i] = 4 * linear(j, l) / 3;
        }
        k[3 + i][3 + i] = 8 * (linear(j, j) + linear(l, l) + linear(j, l)) / 3;
        k[3 + i][3 + j] = k[3 + j][3 + i] = 8 * linear(i, j) / 3;
    }
    return k;
}

// The loads of torsion and of the linear fields x and y.
std::array<std::array<double, 3>, 6> LoadsOf(const Element& e) {
    std::array<std::array<double, 3>, 6> loads{};
    const auto turned = [&](std::size_t i) { return Point(-e.corners[i].y, e.corners[i].x); };
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t j = (i + 1) % 3, l = (i + 2) % 3;
        const Point sum = e.corners[0] + e.corners[1] + e.corners[2];
        const Point vertex = e.area / 60 * (3 * e.corners[i] - sum);
        const Point middle = e.area / 15 * (2 * sum - e.corners[i]);
        const Point towards = (1.0 / 12) * (turned(i) + turned(j) + turned(l));
        loads[i] = {-e.area / 3 * Dot(turned(i), e.gradients[i]), vertex.x, vertex.y};
        loads[3 + i] = {-4 * e.area *
                            (Dot(towards + (1.0 / 12) * turned(j), e.gradients[l]) +
                             Dot(towards + (1.0 / 12) * turned(l), e.gradients[j])),
                        middle.x, middle.y};
    }
    return loads;
}

}  // namespace

QuadraticValues SolveQuadratic(const engine::Region& region, double largestArea) {
    engine::MeshOptions options;
    options.largestArea = largestArea;
    options.largestCount = 100000000;
    const TriangleMesh mesh = engine::MeshOf(region.parts.at(0), options);
    Nodes nodes;
    const Index count = NumberNodes(mesh, &nodes);

    Point first;
    for (std::size_t t = 0; t < nodes.size(); ++t) {
        const Element e(mesh, t, {});
        first = first + e.area / 3 * (e.corners[0] + e.corners[1] + e.corners[2]);
    }
    const Point centroid = 1.0 / region.area * first;

    // The first node stays at 0: the fields are known but for a constant.
    Eigen::MatrixXd loads = Eigen::MatrixXd::Zero(count - 1, 3);
    std::vector<Eigen::Triplet<double>> entries;
    entries.reserve(21 * nodes.size());
    double ix = 0.0, iy = 0.0, ixy = 0.0;
    for (std::size_t t = 0; t < nodes.size(); ++t) {
        const Element e(mesh, t, centroid);
        const auto stiffness = StiffnessOf(e);
        const auto load = LoadsOf(e);
        for (std::size_t i = 0; i < 6; ++i) {
            const Index row = nodes[t][i] - 1;
            if (row < 0) continue;
            for (Eigen::Index c = 0; c < 3; ++c)
                loads(row, c) += load[i][static_cast<std::size_t>(c)];
            for (std::size_t j = 0; j < 6; ++j) {
                const Index column = nodes[t][j] - 1;
                if (column >= 0 && column <= row)
                    entries.emplace_back(row, column, stiffness[i][j]);
            }
        }
        for (std::size_t i = 0; i < 3; ++i) {  // exact at the middles of the edges
            const Point middle = 0.5 * (e.corners[i] + e.corners[(i + 1) % 3]);
            ix += e.area / 3 * middle.y * middle.y;
            iy += e.area / 3 * middle.x * middle.x;
            ixy += e.area / 3 * middle.x * middle.y;
        }
    }
    Eigen::SparseMatrix<double> matrix(count - 1, count - 1);
    matrix.setFromTriplets(entries.begin(), entries.end());
    entries = {};
    const Eigen::SimplicialLLT<Eigen::SparseMatrix<double>> factor(matrix);
    if (factor.info() != Eigen::Success) throw std::runtime_error("quadratic elements: no factor");
    const Eigen::MatrixXd fields = factor.solve(loads);
    const Eigen::Matrix3d energy = loads.transpose() * fields;

    Eigen::Matrix2d inertias;
    inertias << iy, ixy, ixy, ix;
    const Eigen::Matrix2d forces = inertias.inverse();  // the coefficients of x and y, by columns
    const Eigen::Matrix2d compliance = forces * energy.bottomRightCorner<2, 2>() * forces;
    return {ix + iy - energy(0, 0), 1 / compliance(0, 0), 1 / compliance(1, 1),
            static_cast<std::size_t>(count - 1)};
}

}  // namespace halvorn::benchmarks
