#include "warping/adaptivity.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <numeric>
#include <utility>

#include "warping/shape_functions.h"

namespace halvorn::engine {

namespace {

// Where the boundary turns into the material by more, the singular stress rules the error: the
// radius to the power of at least 0.05. At the joints of a fillet's chords it is hardly felt.
constexpr double kStrongTurn = 10.0 * std::numbers::pi / 180.0;
// What the shares are brought down to: less than 1, since the reductions are guessed.
constexpr double kAimedSum = 0.7;
// By how much one more order and one halving are expected to reduce a share, and the most of them
// at once. At a corner of the material of 270 degrees a halving takes 2^(-2/3).
constexpr double kByOrder = 10.0;
constexpr int kMostOrders = 2;
constexpr double kByHalving = 1.6;
// The least order of a triangle at such a corner: its stress is smooth round the corner.
constexpr int kCornerOrder = 3;
constexpr int kMostHalvings = 10;
// An order that reduced a share by less met a solution that is not smooth.
constexpr double kPoorOrder = 3.0;

constexpr int kLowestOrder = 2;

// The median of the lengths of edges on rings. It measures what the outline is made of: chords of
// fillets, or the thickness of walls.
double UsualEdge(const TriangleMesh& mesh) {
    std::vector<double> lengths;
    for (std::size_t t = 0; t < mesh.corners.size(); ++t) {
        for (std::size_t i = 0; i < 3; ++i) {
            if (mesh.neighbours[t][i] != kNone) continue;
            const Point d = mesh.vertices[Slot(mesh.corners[t][(i + 2) % 3])] -
                            mesh.vertices[Slot(mesh.corners[t][(i + 1) % 3])];
            lengths.push_back(std::hypot(d.x, d.y));
        }
    }
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    std::nth_element(lengths.begin(), middle, lengths.end());
    return *middle;
}

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
            if (isAtCorner) {
                const double left = order < kCornerOrder ? ratio / kByOrder : ratio;
                order = std::max(order, kCornerOrder);
                if (left > 1.0) halvings[t] = StepsFor(left, kByHalving, kMostHalvings);
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
    // The share to which all larger ones must come down for the sum to be `kAimedSum`.
    double ToleratedShare() const {
        std::vector<double> sorted = shares_;
        std::sort(sorted.begin(), sorted.end());
        double sum = 0.0;  // of the shares that stay
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            const double even = (kAimedSum - sum) / static_cast<double>(sorted.size() - i);
            if (sorted[i] > even) return even;
            sum += sorted[i];
        }
        return sorted.back();
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
    start.orders.assign(mesh.corners.size(), kLowestOrder);
    start.sharesBefore.assign(mesh.corners.size(), 0.0);
    const double small = UsualEdge(mesh);
    for (std::size_t t = 0; t < mesh.corners.size(); ++t) {
        const Point& a = mesh.vertices[Slot(mesh.corners[t][0])];
        const Point& b = mesh.vertices[Slot(mesh.corners[t][1])];
        const Point& c = mesh.vertices[Slot(mesh.corners[t][2])];
        const double ratio = std::sqrt(0.5 * std::fabs(Cross(b - a, c - a))) / small;
        if (!(ratio > 1.0)) continue;
        start.orders[t] = std::min(kLowestOrder + static_cast<int>(std::lround(std::log2(ratio))),
                                   kHighestOrder - 1);
    }
    start.mesh = std::move(mesh);
    return start;
}

void Enrich(const FieldSpace& space, const std::vector<double>& shares, Discretisation* to) {
    Enrichment(space, shares, to).Run();
}

}  // namespace halvorn::engine
