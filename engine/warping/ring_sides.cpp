#include "warping/ring_sides.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace halvorn::engine {

namespace {

// Edges of the mesh belong to one side of the outline while they turn by less: rounding [radians].
constexpr double kStraight = 1e-6;
// A chord is no longer than so many times a neighbour of the same arc.
constexpr double kChordRatio = 3.0;
// Nearer to a corner that turns into the material than where it raises the stress by this part,
// points count for nothing, but the mean does; nowhere farther off than this part of its reach, as
// far as circles about sharp corners go. The mean is about that of the corner rounded over a third
// of the wall.
constexpr double kRaised = 0.01;
constexpr double kMostRaised = 0.25;
// Nearer to a convex corner than this part of its reach, times the root of the turn, points count
// for nothing: the stress falls towards it, and the fields are poorest there. Over a reach l the
// stress of a wall falls smoothly by about half, as 1 - (r / 1.5 l)^2: its product with
// (r / l)^(turn / pi) is largest at twice this distance.
constexpr double kLowered = 0.3;

// A straight side of a ring.
struct Side {
    std::size_t first = 0;
    std::size_t count = 0;
    double length = 0.0;
    double turnBefore = 0.0;  // at its start, positive out of the material's way: a convex corner
    double turnAfter = 0.0;
    bool isInArc = false;
};

bool IsSoft(double turn) {
    return std::fabs(turn) <= kSharpTurn;
}

// How near to a corner points count for nothing. The stress there is as the distance, over the
// reach of the corner, to the power of turn / pi.
double LeftOutBeside(double turn, double reach) {
    if (std::fabs(turn) < kNoCorner) return 0.0;
    if (turn > 0.0) return kLowered * std::sqrt(turn) * reach;
    return reach * std::min(kMostRaised, std::exp(kRaised * std::numbers::pi / turn));
}

class RingSides {
public:
    RingSides(const FieldSpace& space, const RimRing& ring, double reach)
        : space_(space), ring_(ring), reach_(reach) {
        ListSides();
        FindArcs();
    }

    std::vector<Stretch> Stretches() const {
        std::vector<Stretch> stretches;
        for (std::size_t i = 0; i < sides_.size(); ++i) AddStretches(i, &stretches);
        return stretches;
    }

private:
    const Side& SideAt(std::size_t i) const { return sides_[i % sides_.size()]; }
    const Side& Before(std::size_t i) const { return SideAt(i + sides_.size() - 1); }
    const Side& After(std::size_t i) const { return SideAt(i + 1); }

    const EdgeRef& EdgeAt(std::size_t i) const { return ring_.edges[i % ring_.edges.size()]; }
    const Point& StartOf(std::size_t i) const {
        return space_.CornerAt(EdgeAt(i).triangle, EdgeAt(i).edge + 1);
    }
    double TurnAt(std::size_t i) const {
        const Point& a = StartOf(i + ring_.edges.size() - 1);
        return TurnBetween(StartOf(i) - a, StartOf(i + 1) - StartOf(i));
    }

    void ListSides() {
        const std::size_t count = ring_.edges.size();
        std::size_t start = 0;
        while (start < count && std::fabs(TurnAt(start)) <= kStraight) ++start;
        for (std::size_t i = 0; i < count; ++i) {
            const double turn = TurnAt(start + i);
            if (sides_.empty() || std::fabs(turn) > kStraight) {
                if (!sides_.empty()) sides_.back().turnAfter = turn;
                sides_.push_back({start + i, 0, 0.0, turn, 0.0, false});
            }
            ++sides_.back().count;
            sides_.back().length += LengthOf(space_, EdgeAt(start + i));
        }
        sides_.back().turnAfter = sides_.front().turnBefore;
    }

    // A chord turns softly at both ends and in one direction, and is not much longer than a
    // neighbour. Of an arc's last one before a sharp corner half lies beside the chord before it.
    void FindArcs() {
        for (std::size_t i = 0; i < sides_.size(); ++i) {
            Side& side = sides_[i];
            const double longer = std::max(Before(i).length, After(i).length);
            side.isInArc = IsSoft(side.turnBefore) && IsSoft(side.turnAfter) &&
                           side.turnBefore * side.turnAfter > 0.0 &&
                           side.length <= kChordRatio * longer;
        }
    }

    void AddStretches(std::size_t i, std::vector<Stretch>* to) const {
        const Side& side = sides_[i];
        const auto add = [&](const StretchEnd& a, const StretchEnd& b) {
            to->push_back({side.first, side.count, a, b});
        };
        StretchEnd start = EndBeside(0.0, side.turnBefore, side, Before(i));
        StretchEnd end = EndBeside(side.length, side.turnAfter, side, After(i));
        if (side.isInArc) return add(start, end);
        if (const double length = LengthBeside(start, side, Before(i)); length > 0.0) {
            const StretchEnd rest{length, 0.0, 0.0};
            add(std::exchange(start, rest), rest);
        }
        if (const double length = LengthBeside(end, side, After(i)); length > 0.0) {
            const StretchEnd rest{side.length - length, 0.0, 0.0};
            add(rest, std::exchange(end, rest));
        }
        // Convex corners that stand alone are left in: the stress has its bound there.
        start.turn = end.turn = 0.0;
        add(start, end);
    }

    StretchEnd EndBeside(double distance, double turn, const Side& side, const Side& next) const {
        if (!IsSoft(turn)) return {distance, 0.0, 0.0};
        return {distance, turn, LeftOutBeside(turn, std::min({side.length, next.length, reach_}))};
    }

    // How much of a side is a stretch of its own beside a corner: as much as the chord beside it is
    // long, or what is left out at one that turns into the material.
    static double LengthBeside(const StretchEnd& end, const Side& side, const Side& next) {
        if (end.turn == 0.0) return 0.0;
        const double beside = next.isInArc ? next.length : end.turn < 0.0 ? end.leftOut : 0.0;
        return std::min(beside, 0.5 * side.length);
    }

    const FieldSpace& space_;
    const RimRing& ring_;
    double reach_;
    std::vector<Side> sides_;
};

}  // namespace

double LengthOf(const FieldSpace& space, const EdgeRef& edge) {
    const Point d =
        space.CornerAt(edge.triangle, edge.edge + 2) - space.CornerAt(edge.triangle, edge.edge + 1);
    return std::hypot(d.x, d.y);
}

std::vector<Stretch> StretchesOf(const FieldSpace& space, const RimRing& ring, double reach) {
    return RingSides(space, ring, reach).Stretches();
}

}  // namespace halvorn::engine
