#include "warping/adaptivity.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <utility>

#include "warping/shape_functions.h"

namespace halvorn::engine {

namespace {

// Where the boundary turns into the material by more, the singular stress rules the error: the
// radius to the power of at least 0.05. At the joints of a fillet's chords it is hardly felt.
constexpr double kStrongTurn = 10.0 * std::numbers::pi / 180.0;
// Triangles keep their order while all of them together make up no more of the error.
constexpr double kToleratedSum = 0.3;
// By how much one more order and one halving are expected to reduce a share, and the most of them
// at once. At a corner of the material of 270 degrees a halving takes 2^(-2/3).
constexpr double kByOrder = 10.0;
constexpr int kMostOrders = 2;
constexpr double kByHalving = 1.6;
constexpr int kMostHalvings = 10;
// An order that reduced a share by less met a solution that is not smooth.
constexpr double kPoorOrder = 3.0;

int StepsFor(double ratio, double byStep, int most) {
    return std::clamp(static_cast<int>(std::ceil(std::log(ratio) / std::log(byStep))), 1, most);
}

class Enrichment {
public:
    Enrichment(const FieldSpace& space, const std::vector<double>& shares, Discretisation* to)
        : space_(space), shares_(shares), to_(*to), turns_(TurnsOf(space)) {}

    void Run() {
        const double tolerated = ToleratedShare();
        std::vector<int> halvings(shares_.size(), 0);
        for (std::size_t t = 0; t < shares_.size(); ++t) {
            if (shares_[t] <= tolerated) continue;
            const double ratio = shares_[t] / tolerated;
            const double before = std::exchange(to_.sharesBefore[t], 0.0);
            const bool wasPoor = before > 0.0 && shares_[t] * kPoorOrder > before;
            const bool isAtCorner = TouchesStrongCorner(to_.mesh, t);
            int& order = to_.orders[t];
            order = std::max(order, isAtCorner ? 3 : 2);
            if (isAtCorner) {
                halvings[t] = StepsFor(ratio, kByHalving, kMostHalvings);
            } else if (wasPoor || order >= kHighestOrder) {
                halvings[t] = 2;
            } else {
                order = std::min(order + StepsFor(ratio, kByOrder, kMostOrders), kHighestOrder);
                to_.sharesBefore[t] = shares_[t];
            }
        }
        // What a richer edge adds to a triangle must not be lost when it is halved.
        for (std::size_t t = 0; t < halvings.size(); ++t) {
            if (halvings[t] > 0) {
                to_.orders[t] =
                    std::max(to_.orders[t], space_.HighestOrderAt(static_cast<Index>(t)));
            }
        }
        Halve(std::move(halvings));
    }

private:
    // The largest share that is left as it is.
    double ToleratedShare() const {
        std::vector<double> sorted = shares_;
        std::sort(sorted.begin(), sorted.end());
        double sum = 0.0;
        // Where even the smallest is too large, all are, as in a part of one triangle.
        double largest = kToleratedSum / static_cast<double>(sorted.size());
        for (const double share : sorted) {
            sum += share;
            if (sum > kToleratedSum) {
                // Of equal shares, as in a square, all or none are left: then none.
                const double even = kToleratedSum / static_cast<double>(sorted.size());
                return share > largest ? largest : std::min(largest, even);
            }
            largest = share;
        }
        return largest;
    }

    bool TouchesStrongCorner(const TriangleMesh& mesh, std::size_t triangle) const {
        const auto& corners = mesh.corners[triangle];
        return std::any_of(corners.begin(), corners.end(), [&](Index v) {
            return Slot(v) < turns_.size() && turns_[Slot(v)] < -kStrongTurn;
        });
    }

    // After the first halving only pieces at a corner are halved on, unless none of the triangle
    // was.
    void Halve(std::vector<int> halvings) {
        std::vector<char> isAtCorner(halvings.size());
        for (std::size_t t = 0; t < halvings.size(); ++t) {
            isAtCorner[t] = TouchesStrongCorner(to_.mesh, t) ? 1 : 0;
        }
        for (;;) {
            std::vector<Index> marked;
            for (std::size_t t = 0; t < halvings.size(); ++t) {
                if (halvings[t] <= 0) continue;
                if (isAtCorner[t] != 0 && !TouchesStrongCorner(to_.mesh, t)) continue;
                marked.push_back(static_cast<Index>(t));
            }
            if (marked.empty()) return;
            for (const Index t : marked) --halvings[Slot(t)];
            const std::vector<Index> whole = BisectTriangles(marked, &to_.mesh);
            halvings = Inherit(halvings, whole);
            isAtCorner = Inherit(isAtCorner, whole);
            to_.orders = Inherit(to_.orders, whole);
            to_.sharesBefore = Inherit(to_.sharesBefore, whole);
        }
    }

    template <typename T>
    static std::vector<T> Inherit(const std::vector<T>& values, const std::vector<Index>& whole) {
        std::vector<T> inherited;
        inherited.reserve(whole.size());
        for (const Index t : whole) inherited.push_back(values[Slot(t)]);
        return inherited;
    }

    const FieldSpace& space_;
    const std::vector<double>& shares_;
    Discretisation& to_;
    std::vector<double> turns_;  // at the vertices of the space
};

}  // namespace

Discretisation StartOf(TriangleMesh mesh) {
    Discretisation start;
    start.orders.assign(mesh.corners.size(), 2);
    start.sharesBefore.assign(mesh.corners.size(), 0.0);
    start.mesh = std::move(mesh);
    return start;
}

void Enrich(const FieldSpace& space, const std::vector<double>& shares, Discretisation* to) {
    Enrichment(space, shares, to).Run();
}

}  // namespace halvorn::engine
