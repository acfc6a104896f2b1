#include "geometry/arc_division.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

#include "base/dimension_checks.h"
#include "base/numbers.h"
#include "geometry/sine.h"

namespace halvorn::engine::shapes {
namespace {

constexpr double quarterTurn = std::numbers::pi / 2.0;

// 1/192 of a turn holds the second moments of an arc to 1e-5 (see `Excess` for the size of what is
// left over).
constexpr int leastStepsPerQuarter = 48;

// Beyond this an arc is a mistake in the caller's tolerance, not a drawing.
constexpr int mostStepsPerQuarter = 100000;

// A sweep that is a whole number of steps but for this part of one gets no extra chord: quotients
// of angles carry a few rounding errors.
constexpr double wholeSteps = 1e-9;

// Points of an arc closer than this are one [rad]. The extent of an arc loses half its square.
constexpr double sameAngle = 1e-6;

// d / sin d - 1, by the series of d - sin d, whose terms shrink by 1/20 at least for d <= 1.
double SineExcess(double d) {
    constexpr int terms = 8;  // the first one left out is below 1e-17 of the sum
    double sum = 1.0;
    for (int i = terms; i >= 1; --i) sum = 1.0 - d * d / ((2.0 * i + 2.0) * (2.0 * i + 3.0)) * sum;
    return d * d * d / 6.0 * sum / SineAndCosineOf(d).sine;
}

// How far, as a part of the radius, the n - 1 inner points of an arc lie outside it, so that its n
// chords of the angle d enclose the area of the sector.
//
// With the ends at the radius 1 and the inner points at k, twice the area is
//     sin d (2 k + (n - 2) k^2) = n d;
// with k = 1 + e and x = d / sin d - 1 that is (n - 2) e^2 + 2 (n - 1) e - n x = 0, whose positive
// root is below, in the form that keeps the digits of a flat arc's small e. Near d^2 / 12 for many
// chords, d^2 / 6 for two.
//
// k is at most d / sin d, for there the left side is not below the right one. So k cos d <= d / tan
// d < 1: the inner points stay within the tangents at the ends. Neither a face that an arc joins
// nor the extent at a point with an upright tangent is crossed.
double Excess(int n, double d) {
    const double x = n * SineExcess(d);
    return x / ((n - 1.0) + std::sqrt((n - 1.0) * (n - 1.0) + (n - 2.0) * x));
}

// The fewest chords, at least two, none above the step, whose inner points lie no farther outside
// than the chords of that step on the circle lie inside. No chord lies farther inside either: its
// ends lie on the arc or outside.
int Chords(double sweep, double step) {
    const double sine = SineAndCosineOf(0.25 * step).sine;
    const double farthest = 2.0 * sine * sine;  // 1 - cos(step / 2), with its digits
    int chords = std::max(2, static_cast<int>(std::ceil(sweep / step - wholeSteps)));
    while (Excess(chords, sweep / chords) > farthest) ++chords;
    return chords;
}

// The point after the angle t, the part `excess` of the radius outside. From the start and by half
// angles, so that a flat arc, whose centre is far away, keeps its digits.
Point At(const Arc& arc, double t, double excess) {
    const SineAndCosine ofHalf = SineAndCosineOf(0.5 * t), whole = SineAndCosineOf(t);
    const double half = 2.0 * ofHalf.sine;
    const double ahead = half * ofHalf.cosine + excess * whole.sine;
    const double spoke = excess * whole.cosine - half * ofHalf.sine;
    return {arc.start.x + ahead * arc.ahead.x + spoke * arc.spoke.x,
            arc.start.y + ahead * arc.ahead.y + spoke * arc.spoke.y};
}

}  // namespace

ArcDivision ArcDivision::StepsPerQuarter(int steps) {
    if (steps < 1 || steps > mostStepsPerQuarter) {
        throw std::invalid_argument("the steps per quarter turn must lie between 1 and " +
                                    std::to_string(mostStepsPerQuarter));
    }
    return ArcDivision(steps, 0.0);
}

ArcDivision ArcDivision::ChordError(double distance) {
    RequirePositive("arc division", {{"chord error", distance}});
    return ArcDivision(leastStepsPerQuarter, distance);
}

ArcDivision ArcDivision::Scaled(double factor) const {
    ArcDivision scaled = *this;
    scaled.chordError_ *= factor;
    return scaled;
}

ArcDivision ArcDivision::AlsoExtremeAlong(Point first, Point second) const {
    ArcDivision division = *this;
    division.directions_.insert(division.directions_.end(), {first, second});
    return division;
}

double ArcDivision::LargestStep(double radius) const {
    const double step = quarterTurn / stepsPerQuarter_;
    if (chordError_ == 0.0) return step;
    // A chord is r (1 - cos(step / 2)) = 2 r sin^2(step / 4) from its arc.
    const double ratio = std::min(1.0, chordError_ / (2.0 * radius));
    return std::min(step, 4.0 * std::asin(std::sqrt(ratio)));
}

// The angles of both ends and of the points on the arc between them, rising.
//
// Along a direction f the arc is farthest where cos t f(ahead) = sin t f(spoke), twice in a turn.
std::vector<double> ArcDivision::Bounds(const Arc& arc) const {
    std::vector<double> bounds = {0.0};
    for (const Point& direction : directions_) {
        const double first = std::atan2(Dot(direction, arc.ahead), Dot(direction, arc.spoke));
        for (const double quarters : {0.0, 2.0, 4.0}) {
            const double t = first + quarters * quarterTurn;
            if (t > sameAngle && t < arc.sweep - sameAngle) bounds.push_back(t);
        }
    }
    std::sort(bounds.begin(), bounds.end());
    const auto isSame = [](double a, double b) { return b - a < sameAngle; };
    bounds.erase(std::unique(bounds.begin(), bounds.end(), isSame), bounds.end());
    bounds.push_back(arc.sweep);
    return bounds;
}

std::vector<Point> ArcDivision::PointsBetweenEnds(const Arc& arc) const {
    const double step = LargestStep(arc.radius);
    // Of the whole arc: a flat one of a huge radius takes few chords.
    if (!(arc.sweep <= 4.0 * mostStepsPerQuarter * step)) {
        throw DimensionError("the chord error " + ShortNumber(chordError_) +
                                 " is too small for the radius " + ShortNumber(arc.radius),
                             "chord_tolerance", "make \"chord_tolerance\" larger");
    }
    const std::vector<double> bounds = Bounds(arc);
    std::vector<Point> points;
    for (std::size_t i = 1; i < bounds.size(); ++i) {
        const double sweep = bounds[i] - bounds[i - 1];
        const int chords = Chords(sweep, step);
        const double excess = Excess(chords, sweep / chords);
        for (int k = 1; k < chords; ++k) {
            points.push_back(At(arc, bounds[i - 1] + sweep * k / chords, excess));
        }
        if (i + 1 < bounds.size()) points.push_back(At(arc, bounds[i], 0.0));
    }
    return points;
}

}  // namespace halvorn::engine::shapes
