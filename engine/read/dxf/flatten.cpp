#include "read/dxf/flatten.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>

#include "geometry/lengths.h"

namespace halvorn::engine::dxf {

namespace {

// Bisecting a piece of a curve this often makes it shorter than the digits of a double can tell.
constexpr int kMostBisections = 52;

// An arc that turns by less than this [rad] is its chord: 1e-13 of the chord's square of area.
constexpr double kStraightTurn = 1e-12;

// A chord of a circle that turns by d takes d^2 / 6 of its sector, here 1.6e-6 of it [rad]. Where
// the curvature varies, the flat pieces have the long chords and take more, up to about 1e-5.
constexpr double kLargestTurn = kFullTurn / 2048.0;

// A cusp turns however short it is, so turns are looked at in the first bisections only: smooth
// curves halve theirs with each.
constexpr int kTurnBisections = 16;

Point Cartesian(const WeightedPoint& p) {
    return {p.wx / p.w, p.wy / p.w};
}

WeightedPoint Middle(const WeightedPoint& p, const WeightedPoint& q) {
    return {0.5 * (p.wx + q.wx), 0.5 * (p.wy + q.wy), 0.5 * (p.w + q.w)};
}

// How much the polygon of the control points turns, and its curve no more [rad].
double TurnOf(const std::vector<WeightedPoint>& control) {
    double sum = 0.0;
    std::optional<Point> before;
    for (std::size_t i = 1; i < control.size(); ++i) {
        const Point from = Cartesian(control[i - 1]), to = Cartesian(control[i]);
        const Point leg = {to.x - from.x, to.y - from.y};
        if (leg == Point{0.0, 0.0}) continue;
        if (before) {
            sum += std::abs(std::atan2(before->x * leg.y - before->y * leg.x,
                                       before->x * leg.x + before->y * leg.y));
        }
        before = leg;
    }
    return sum;
}

// The curve lies in the convex hull of its control points, and the distance to a segment is a
// convex function: when no control point is farther from the chord than the tolerance, neither is
// any point of the curve.
bool IsNearChord(const std::vector<WeightedPoint>& control, double tolerance) {
    const Point from = Cartesian(control.front()), to = Cartesian(control.back());
    return std::all_of(control.begin(), control.end(), [&](const WeightedPoint& p) {
        return DistanceToSegment(Cartesian(p), from, to) <= tolerance;
    });
}

void Bisect(Points& points, std::vector<WeightedPoint> control, double tolerance, int depth) {
    const bool isTurnSmall =
        depth <= kMostBisections - kTurnBisections || TurnOf(control) <= kLargestTurn;
    if (isTurnSmall && IsNearChord(control, tolerance)) {
        points.push_back(Cartesian(control.back()));
        return;
    }
    if (depth == 0) throw std::invalid_argument("the chord tolerance is too small for it");
    if (points.size() >= kMostPoints) {
        throw std::invalid_argument("it takes more than a million points");
    }
    // De Casteljau: every pass replaces neighbours by their middles; the first of each pass are the
    // control points of the left half, the last ones those of the right half.
    std::vector<WeightedPoint> left;
    left.reserve(control.size());
    for (std::size_t last = control.size() - 1;; --last) {
        left.push_back(control.front());
        if (last == 0) break;
        for (std::size_t i = 0; i < last; ++i) control[i] = Middle(control[i], control[i + 1]);
    }
    Bisect(points, std::move(left), tolerance, depth - 1);
    Bisect(points, std::move(control), tolerance, depth - 1);
}

}  // namespace

// With the swept angle 4 atan(bulge) and the chord c, the radius is c (1 + b^2) / (4 b). The arc
// sets out in the direction of its chord turned back by half the swept angle.
void AppendBulge(Points& points, Point end, double bulge, const shapes::ArcDivision& division) {
    const Point start = points.back();
    const double chordX = end.x - start.x, chordY = end.y - start.y;
    if (std::hypot(chordX, chordY) == 0.0) return;
    const double sweep = 4.0 * std::atan(bulge);
    if (std::abs(sweep) >= kStraightTurn) {
        const double ratio = (1.0 + bulge * bulge) / (4.0 * std::abs(bulge));  // radius / chord
        const double cosine = ratio * std::cos(0.5 * sweep), sine = ratio * std::sin(0.5 * sweep);
        const Point ahead = {cosine * chordX + sine * chordY, cosine * chordY - sine * chordX};
        const double side = sweep < 0.0 ? -1.0 : 1.0;
        const Point spoke = {side * ahead.y, -side * ahead.x};
        const double radius = std::hypot(spoke.x, spoke.y);
        const auto inner =
            division.PointsBetweenEnds({start, spoke, ahead, std::abs(sweep), radius});
        points.insert(points.end(), inner.begin(), inner.end());
    }
    points.push_back(end);
}

// An ellipse is the image of a circle of its greater radius under a map that lengthens nothing, so
// the chords that serve the circle serve the ellipse.
void AppendEllipse(Points& points, Point centre, Point major, Point minor, double start,
                   double sweep, const shapes::ArcDivision& division) {
    const double radius = std::max(std::hypot(major.x, major.y), std::hypot(minor.x, minor.y));
    const auto combine = [&](double alongMajor, double alongMinor) -> Point {
        return {alongMajor * major.x + alongMinor * minor.x,
                alongMajor * major.y + alongMinor * minor.y};
    };
    const auto on = [&](double angle) -> Point {
        const auto [x, y] = combine(std::cos(angle), std::sin(angle));
        return {centre.x + x, centre.y + y};
    };
    const auto inner =
        division.PointsBetweenEnds({on(start), combine(std::cos(start), std::sin(start)),
                                    combine(-std::sin(start), std::cos(start)), sweep, radius});
    points.push_back(on(start));
    points.insert(points.end(), inner.begin(), inner.end());
    if (sweep != kFullTurn) points.push_back(on(start + sweep));
}

void AppendBezier(Points& points, const std::vector<WeightedPoint>& control, double tolerance) {
    Bisect(points, control, tolerance, kMostBisections);
}

}  // namespace halvorn::engine::dxf
