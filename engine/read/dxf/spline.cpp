#include "read/dxf/spline.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

namespace halvorn::engine::dxf {

namespace {

// Drawing programs offer degree 10 at most.
constexpr int kHighestDegree = 10;

void Check(const Spline& spline) {
    const std::size_t count = spline.control.size();
    const auto degree = static_cast<std::size_t>(std::max(spline.degree, 0));
    if (spline.degree < 1 || spline.degree > kHighestDegree) {
        throw std::domain_error("its degree is " + std::to_string(spline.degree) + ", not 1 to 10");
    }
    if (count <= degree) {
        throw std::domain_error("it has only " + std::to_string(count) +
                                " control points for its degree " + std::to_string(degree));
    }
    if (spline.knots.size() != count + degree + 1) {
        throw std::domain_error("it has " + std::to_string(spline.knots.size()) +
                                " knots where its degree and control points need " +
                                std::to_string(count + degree + 1));
    }
    if (!spline.weights.empty() && spline.weights.size() != count) {
        throw std::domain_error("it has " + std::to_string(spline.weights.size()) +
                                " weights for " + std::to_string(count) + " control points");
    }
    if (!std::is_sorted(spline.knots.begin(), spline.knots.end()) ||
        !(spline.knots[degree] < spline.knots[count])) {
        throw std::domain_error("its knots do not rise");
    }
    for (const double weight : spline.weights) {
        if (!(weight > 0.0)) throw std::domain_error("it has a weight that is not positive");
    }
}

// The polar form (blossom) of the piece of the spline between the knots `span` and `span + 1`, with
// the argument `first` taken `times` times and `second` otherwise; de Boor's algorithm with one
// argument a pass (Ramshaw, Blossoms are polar forms, 1989).
WeightedPoint PolarForm(const Spline& spline, std::size_t span, std::size_t times, double first,
                        double second, std::vector<WeightedPoint>& work) {
    const auto degree = static_cast<std::size_t>(spline.degree);
    const std::size_t base = span - degree;
    for (std::size_t k = 0; k <= degree; ++k) {
        const auto [x, y] = spline.control[base + k];
        const double w = spline.weights.empty() ? 1.0 : spline.weights[base + k];
        work[k] = {w * x, w * y, w};
    }
    for (std::size_t pass = 1; pass <= degree; ++pass) {
        const double at = pass <= times ? first : second;
        for (std::size_t k = degree; k >= pass; --k) {
            const double low = spline.knots[base + k], high = spline.knots[span + 1 + k - pass];
            const double share = (at - low) / (high - low);
            const WeightedPoint &p = work[k - 1], &q = work[k];
            work[k] = {p.wx + share * (q.wx - p.wx), p.wy + share * (q.wy - p.wy),
                       p.w + share * (q.w - p.w)};
        }
    }
    return work[degree];
}

Points FlattenByControlPoints(const Spline& spline, double tolerance) {
    Check(spline);
    const auto degree = static_cast<std::size_t>(spline.degree);
    std::vector<WeightedPoint> work(degree + 1), bezier(degree + 1);
    Points points;
    for (std::size_t span = degree; span < spline.control.size(); ++span) {
        const double low = spline.knots[span], high = spline.knots[span + 1];
        if (low == high) continue;
        for (std::size_t k = 0; k <= degree; ++k) {
            bezier[k] = PolarForm(spline, span, degree - k, low, high, work);
        }
        if (points.empty())
            points.push_back({bezier[0].wx / bezier[0].w, bezier[0].wy / bezier[0].w});
        AppendBezier(points, bezier, tolerance);
    }
    return points;
}

// Solves a system with the diagonal `diagonal` and the neighbours `lower` (of the row above) and
// `upper` by elimination without pivots: the rows of a spline are diagonally dominant.
void SolveTridiagonal(const std::vector<double>& lower, std::vector<double> diagonal,
                      const std::vector<double>& upper, Points& values) {
    const std::size_t n = diagonal.size();
    for (std::size_t i = 1; i < n; ++i) {
        const double factor = lower[i] / diagonal[i - 1];
        diagonal[i] -= factor * upper[i - 1];
        values[i].x -= factor * values[i - 1].x;
        values[i].y -= factor * values[i - 1].y;
    }
    for (std::size_t i = n; i-- > 0;) {
        if (i + 1 < n) {
            values[i].x -= upper[i] * values[i + 1].x;
            values[i].y -= upper[i] * values[i + 1].y;
        }
        values[i].x /= diagonal[i];
        values[i].y /= diagonal[i];
    }
}

// Returns the derivative at every fit point of the cubic spline with the parameter steps `steps`:
// continuous curvature at the point i between the steps h and k means
// k m[i-1] + 2 (h + k) m[i] + h m[i+1] = 3 (k d[i-1] + h d[i]) with the slopes d of the chords; no
// curvature at an end means 2 m[0] + m[1] = 3 d[0].
Points Derivatives(const Points& fit, const std::vector<double>& steps,
                   const std::optional<Point>& start, const std::optional<Point>& end) {
    const std::size_t last = fit.size() - 1;
    const auto slope = [&](std::size_t i) -> Point {
        return {(fit[i + 1].x - fit[i].x) / steps[i], (fit[i + 1].y - fit[i].y) / steps[i]};
    };
    std::vector<double> lower(last + 1, 1.0), diagonal(last + 1, 2.0), upper(last + 1, 1.0);
    Points values(last + 1);
    for (std::size_t i = 0; i <= last; ++i) {
        const Point before = slope(i == 0 ? 0 : i - 1), after = slope(i == last ? last - 1 : i);
        if (i == 0 || i == last) {
            values[i] = {3.0 * before.x, 3.0 * before.y};
            continue;
        }
        lower[i] = steps[i];
        upper[i] = steps[i - 1];
        diagonal[i] = 2.0 * (steps[i - 1] + steps[i]);
        values[i] = {3.0 * (steps[i] * before.x + steps[i - 1] * after.x),
                     3.0 * (steps[i] * before.y + steps[i - 1] * after.y)};
    }
    const auto clamp = [&](std::size_t i, const std::optional<Point>& tangent, double& neighbour) {
        const double length = tangent ? std::hypot(tangent->x, tangent->y) : 0.0;
        if (length == 0.0) return;
        diagonal[i] = 1.0;
        neighbour = 0.0;
        values[i] = {tangent->x / length, tangent->y / length};
    };
    clamp(0, start, upper[0]);
    clamp(last, end, lower[last]);
    SolveTridiagonal(lower, diagonal, upper, values);
    return values;
}

Points FlattenThroughFitPoints(const Spline& spline, double tolerance) {
    Points fit = spline.fit;
    if (spline.isClosed && fit.front() != fit.back()) fit.push_back(fit.front());
    fit.erase(std::unique(fit.begin(), fit.end()), fit.end());
    if (fit.size() < (spline.isClosed ? 4U : 2U)) {
        throw std::domain_error("it has too few different fit points");
    }
    // The influence of an end halves from each point to the next at least, so sixty points on, the
    // spline that runs on round the closed one is the periodic one to the last digit.
    const std::size_t lap = fit.size() - 1, extra = spline.isClosed ? 60 : 0;
    Points extended;
    for (std::size_t i = 0; i <= lap + 2 * extra; ++i) {
        extended.push_back(extra == 0 ? fit[i] : fit[(i + lap * extra - extra) % lap]);
    }
    std::vector<double> steps;
    for (std::size_t i = 0; i + 1 < extended.size(); ++i) {
        steps.push_back(
            std::hypot(extended[i + 1].x - extended[i].x, extended[i + 1].y - extended[i].y));
    }
    const std::optional<Point> none;
    const Points slopes = Derivatives(extended, steps, extra == 0 ? spline.startTangent : none,
                                      extra == 0 ? spline.endTangent : none);
    Points points{extended[extra]};
    for (std::size_t i = extra; i < extra + lap; ++i) {
        const double third = steps[i] / 3.0;
        const Point &p = extended[i], &q = extended[i + 1], &m = slopes[i], &n = slopes[i + 1];
        AppendBezier(points,
                     {{p.x, p.y, 1.0},
                      {p.x + third * m.x, p.y + third * m.y, 1.0},
                      {q.x - third * n.x, q.y - third * n.y, 1.0},
                      {q.x, q.y, 1.0}},
                     tolerance);
    }
    return points;
}

}  // namespace

Points FlattenSpline(const Spline& spline, double tolerance) {
    if (!spline.control.empty() || spline.fit.empty()) {
        return FlattenByControlPoints(spline, tolerance);
    }
    return FlattenThroughFitPoints(spline, tolerance);
}

}  // namespace halvorn::engine::dxf
