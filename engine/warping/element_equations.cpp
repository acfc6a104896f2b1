#include "warping/element_equations.h"

#include "warping/shape_functions.h"

namespace halvorn::engine {

namespace {

void ListFunctions(const FieldSpace& space, Index triangle, ElementEquations* equations) {
    for (int corner = 0; corner < 3; ++corner) equations->outer.push_back({corner, -1, 1});
    for (int edge = 0; edge < 3; ++edge) {
        const int order = space.edgeOrders[Slot(space.edges[Slot(triangle)][Slot(edge)])];
        for (int k = 2; k <= order; ++k) {
            equations->outer.push_back({EdgeFunction(k, edge), edge, k});
        }
    }
    for (int k = 3; k <= space.orders[Slot(triangle)]; ++k) {
        for (int i = 0; i < k - 2; ++i) equations->inner.push_back(FirstInnerFunction(k) + i);
    }
}

// Loads of one function: integrals over the triangle.
class Loads {
public:
    Loads(const FieldSpace& space, const LinearLoads& loads, Index triangle)
        : map_(MapOf(space, triangle)), loads_(loads) {
        for (int i = 0; i < 3; ++i) {
            corners_[Slot(i)] = space.CornerAt(triangle, i);
            for (std::size_t k = 0; k < 2; ++k)
                loadAt_[Slot(i)][k] = loads.At(corners_[Slot(i)], k);
        }
        for (std::size_t i = 0; i < 3; ++i) {
            const Point& c = corners_[i];
            squares_[i] = {c.x * c.x, c.y * c.y};
            // Between a and b a square is less than the straight line by la lb (b - a)^2.
            const Point d = corners_[(i + 2) % 3] - corners_[(i + 1) % 3];
            squares_[i + 3] = {-d.x * d.x / EdgeFactor(2), -d.y * d.y / EdgeFactor(2)};
        }
    }

    void Add(int place, Eigen::Index row, Eigen::MatrixXd* to) const {
        const ReferenceMeans& means = MeansOfReference();
        double mean = 0.0;
        Point first;                   // means of the function times x and y
        double swirl = 0.0;            // of y f_x - x f_y
        std::array<double, 2> work{};  // means of the function times the loads
        for (std::size_t i = 0; i < 3; ++i) {
            const Point& corner = corners_[i];
            mean += means.values[i][place];
            first = first + means.values[i][place] * corner;
            for (std::size_t load = 0; load < 2; ++load) {
                work[load] += means.values[i][place] * loadAt_[i][load];
            }
            const Point slope =
                means.byXi[i][place] * map_.byXi + means.byEta[i][place] * map_.byEta;
            swirl += corner.y * slope.x - corner.x * slope.y;
        }
        (*to)(row, Warping) = map_.area * swirl;
        (*to)(row, Stress) = 2.0 * map_.area * mean;
        for (int load = 0; load < 2; ++load) {
            (*to)(row, ShearX + load) = map_.area * work[Slot(load)];
            (*to)(row, StressX + load) = 0.0;
        }
        if (to->cols() == FieldCount) AddPoisson(place, row, first, to);
    }

private:
    void AddPoisson(int place, Eigen::Index row, const Point& first, Eigen::MatrixXd* to) const {
        const ReferenceMeans& means = MeansOfReference();
        Point sway;  // means of x^2 f_y and y^2 f_x
        for (std::size_t i = 0; i < squares_.size(); ++i) {
            const Point slope =
                means.byXi[i][place] * map_.byXi + means.byEta[i][place] * map_.byEta;
            sway = sway + Point(squares_[i].x * slope.y, squares_[i].y * slope.x);
        }
        for (int load = 0; load < 2; ++load) {
            const Point& slopes = loads_.slopes[Slot(load)];
            (*to)(row, SwayX + load) = -0.5 * map_.area * (slopes.x * sway.y + slopes.y * sway.x);
            (*to)(row, LateralX + load) = map_.area * (slopes.y * first.x - slopes.x * first.y);
        }
    }

    TriangleMap map_;
    const LinearLoads& loads_;
    std::array<Point, 3> corners_;
    std::array<std::array<double, 2>, 3> loadAt_{};
    std::array<Point, 6> squares_;  // x^2 and y^2 as sums of the functions of second order
};

}  // namespace

ElementEquations EquationsOf(const FieldSpace& space, const LinearLoads& loads, int fields,
                             Index triangle) {
    ElementEquations equations;
    ListFunctions(space, triangle, &equations);
    const TriangleMap map = MapOf(space, triangle);
    const double xiXi = map.area * Dot(map.byXi, map.byXi);
    const double xiEta = map.area * Dot(map.byXi, map.byEta);
    const double etaEta = map.area * Dot(map.byEta, map.byEta);
    const ReferenceMeans& means = MeansOfReference();
    const auto stiffness = [&](int i, int j) {
        return xiXi * means.xiXi(i, j) + xiEta * means.xiEta(i, j) + etaEta * means.etaEta(i, j);
    };
    const auto outerCount = static_cast<Eigen::Index>(equations.outer.size());
    const auto innerCount = static_cast<Eigen::Index>(equations.inner.size());
    const Loads integrals(space, loads, triangle);
    equations.stiffness.resize(outerCount, outerCount);
    equations.loads.resize(outerCount, fields);
    for (Eigen::Index i = 0; i < outerCount; ++i) {
        const int place = equations.outer[static_cast<std::size_t>(i)].place;
        for (Eigen::Index j = 0; j <= i; ++j) {
            equations.stiffness(i, j) = equations.stiffness(j, i) =
                stiffness(place, equations.outer[static_cast<std::size_t>(j)].place);
        }
        integrals.Add(place, i, &equations.loads);
    }
    if (innerCount == 0) return equations;
    Eigen::MatrixXd among(innerCount, innerCount);
    Eigen::MatrixXd between(innerCount, outerCount);
    Eigen::MatrixXd innerLoads(innerCount, fields);
    for (Eigen::Index i = 0; i < innerCount; ++i) {
        const int place = equations.inner[static_cast<std::size_t>(i)];
        for (Eigen::Index j = 0; j < innerCount; ++j) {
            among(i, j) = stiffness(place, equations.inner[static_cast<std::size_t>(j)]);
        }
        for (Eigen::Index j = 0; j < outerCount; ++j) {
            between(i, j) = stiffness(place, equations.outer[static_cast<std::size_t>(j)].place);
        }
        integrals.Add(place, i, &innerLoads);
    }
    const Eigen::LLT<Eigen::MatrixXd> factor(among);
    equations.innerByOuter = factor.solve(between);
    equations.innerLoads = factor.solve(innerLoads);
    equations.stiffness.noalias() -= between.transpose() * equations.innerByOuter;
    equations.loads.noalias() -= between.transpose() * equations.innerLoads;
    return equations;
}

}  // namespace halvorn::engine
