#include "dxf/flatten.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "shapes/rounded_polygon.h"

namespace halvorn::host::dxf {

namespace {

// Bisecting a piece of a curve this often makes it shorter than the digits of a double can tell.
constexpr int kMostBisections = 52;

int Chords(double radius, double sweep, double tolerance) {
    return shapes::ArcDivision::ChordError(tolerance).Chords(radius, sweep);
}

Point Cartesian(const WeightedPoint& p) {
    return {p.wx / p.w, p.wy / p.w};
}

WeightedPoint Middle(const WeightedPoint& p, const WeightedPoint& q) {
    return {0.5 * (p.wx + q.wx), 0.5 * (p.wy + q.wy), 0.5 * (p.w + q.w)};
}

double DistanceToSegment(Point p, Point from, Point to) {
    const double alongX = to.first - from.first, alongY = to.second - from.second;
    const double x = p.first - from.first, y = p.second - from.second;
    const double length2 = alongX * alongX + alongY * alongY;
    const double at =
        length2 > 0.0 ? std::clamp((x * alongX + y * alongY) / length2, 0.0, 1.0) : 0.0;
    return std::hypot(x - at * alongX, y - at * alongY);
}

// The curve lies in the convex hull of its control points, and the distance to a segment is a
// convex function: when no control point is farther from the chord than the tolerance, neither is
// any point of the curve.
bool IsFlat(const std::vector<WeightedPoint>& control, double tolerance) {
    const Point from = Cartesian(control.front()), to = Cartesian(control.back());
    return std::all_of(control.begin(), control.end(), [&](const WeightedPoint& p) {
        return DistanceToSegment(Cartesian(p), from, to) <= tolerance;
    });
}

void Bisect(Points& points, std::vector<WeightedPoint> control, double tolerance, int depth) {
    if (IsFlat(control, tolerance)) {
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

// With the swept angle s = 4 atan(bulge) and the chord c, the diameter is c (1 + b^2) / (2 b). The
// point after the angle a lies at the distance diameter sin(a / 2) from the start, in the direction
// of the chord turned by (a - s) / 2: no centre, whose distance would cost a flat arc its digits.
void AppendBulge(Points& points, Point end, double bulge, double tolerance) {
    const Point start = points.back();
    const double chordX = end.first - start.first, chordY = end.second - start.second;
    const double chord = std::hypot(chordX, chordY);
    if (chord == 0.0) return;
    if (std::abs(bulge) * chord > 2.0 * tolerance) {
        const double sweep = 4.0 * std::atan(bulge);
        const double ratio = (1.0 + bulge * bulge) / (2.0 * std::abs(bulge));  // diameter / chord
        const int chords = Chords(0.5 * ratio * chord, std::abs(sweep), tolerance);
        for (int k = 1; k < chords; ++k) {
            const double turned = sweep * k / chords;
            const double length = ratio * std::sin(0.5 * std::abs(turned));
            const double cosine = length * std::cos(0.5 * (turned - sweep));
            const double sine = length * std::sin(0.5 * (turned - sweep));
            points.push_back({start.first + cosine * chordX - sine * chordY,
                              start.second + sine * chordX + cosine * chordY});
        }
    }
    points.push_back(end);
}

// An ellipse is the image of a circle of its greater radius under a map that lengthens nothing, so
// the chords that serve the circle serve the ellipse.
void AppendEllipse(Points& points, Point centre, Point major, Point minor, double start,
                   double sweep, double tolerance) {
    const double radius =
        std::max(std::hypot(major.first, major.second), std::hypot(minor.first, minor.second));
    const int chords = std::max(Chords(radius, sweep, tolerance), 1);
    const int last = sweep == kFullTurn ? chords - 1 : chords;
    for (int k = 0; k <= last; ++k) {
        const double angle = start + sweep * k / chords;
        const double cosine = std::cos(angle), sine = std::sin(angle);
        points.push_back({centre.first + cosine * major.first + sine * minor.first,
                          centre.second + cosine * major.second + sine * minor.second});
    }
}

void AppendBezier(Points& points, const std::vector<WeightedPoint>& control, double tolerance) {
    Bisect(points, control, tolerance, kMostBisections);
}

}  // namespace halvorn::host::dxf
