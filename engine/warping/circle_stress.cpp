#include "warping/circle_stress.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <set>
#include <span>
#include <utility>

#include "geometry/lengths.h"
#include "warping/triangle_tree.h"

namespace halvorn::engine {

namespace {

using std::numbers::pi;

// Steps of an arc within a triangle: at least so many, and none longer [radians].
constexpr int kFewestSteps = 8;
constexpr double kLongestStep = 3.0 * pi / 180.0;
// Both fields may agree by chance at a point: they are compared over so many steps to both sides.
constexpr double kStepsBeside = 1.5;
// An arc that turns by less is rounding [radians].
constexpr double kLeastArc = 1e-9;
// All circles are searched when there are no more, else one in each square of this part of the
// radius.
constexpr std::size_t kFewCircles = 64;
constexpr double kPartOfRadius = 0.125;

class CircleStress {
public:
    CircleStress(const Fields& fields, const FieldFactors& factors, const LeftOutCircles& circles,
                 const SoftCorners& softCorners)
        : fields_(fields),
          space_(fields.space),
          factors_(factors),
          circles_(circles),
          softCorners_(softCorners),
          tree_(fields.space, 0.0) {}

    std::vector<ArcStress> Run() {
        for (const Point& centre : Searched()) {
            const std::vector<double> ends = EndsOfFreeArcs(centre);
            if (ends.empty()) continue;
            const KPoint middle{centre.x, centre.y};
            tree_.VisitNear(KBoxOfSegment(middle, middle, circles_.Radius()),
                            [&](Index triangle) { AddTriangle(centre, triangle, ends); });
        }
        return std::move(stresses_);
    }

private:
    Point PointAt(const Point& centre, double angle) const {
        return centre + circles_.Radius() * Point(std::cos(angle), std::sin(angle));
    }

    bool IsLeftOut(const Point& p) const { return circles_.Contain(p) || softCorners_.Contain(p); }

    // The centres whose circles are searched: all, or of many one in each square of a part of the
    // radius. What is free of many circles in a row is a short arc of each, where the stress is
    // that of the next one.
    Points Searched() const {
        if (circles_.Centres().size() <= kFewCircles) return circles_.Centres();
        Points searched;
        std::set<std::pair<double, double>> squares;
        for (const Point& centre : circles_.Centres()) {
            const double size = kPartOfRadius * circles_.Radius();
            if (squares.emplace(std::floor(centre.x / size), std::floor(centre.y / size)).second) {
                searched.push_back(centre);
            }
        }
        return searched;
    }

    // Where the arcs from -pi to pi begin and end that no other circle covers; none when all of it
    // is covered.
    std::vector<double> EndsOfFreeArcs(const Point& centre) const {
        std::vector<std::pair<double, double>> covered{{pi, pi}};
        const double radius = circles_.Radius();
        for (const Point& other : circles_.Between(centre.x - radius, centre.x + radius)) {
            const double half = 0.5 * Distance(centre, other);
            if (half == 0.0 || half >= radius) continue;
            const double towards = std::atan2(other.y - centre.y, other.x - centre.x);
            const double off = std::acos(half / radius);
            for (const double turns : {-2.0 * pi, 0.0, 2.0 * pi}) {
                covered.emplace_back(towards + turns - off, towards + turns + off);
            }
        }
        std::sort(covered.begin(), covered.end());
        std::vector<double> ends;
        double reached = -pi;
        for (const auto& [from, to] : covered) {
            if (reached >= pi) break;
            if (from - reached > kLeastArc) ends.insert(ends.end(), {reached, std::min(from, pi)});
            reached = std::max(reached, to);
        }
        return ends;
    }

    // Where the edges of a triangle cross it.
    void AddAnglesOnEdges(const Point& centre, Index triangle, std::vector<double>* angles) const {
        const double radius = circles_.Radius();
        for (int edge = 0; edge < 3; ++edge) {
            const Point& from = space_.CornerAt(triangle, edge + 1);
            const Point d = space_.CornerAt(triangle, edge + 2) - from;
            const double length = std::hypot(d.x, d.y);
            const Point along = 1.0 / length * d;
            const double middle = Dot(centre - from, along);
            const double off = Cross(along, centre - from);
            if (std::fabs(off) >= radius) continue;
            const double half = std::sqrt((radius - off) * (radius + off));
            for (const double distance : {middle - half, middle + half}) {
                if (distance < 0.0 || distance > length) continue;
                const Point p = from + distance * along - centre;
                angles->push_back(std::atan2(p.y, p.x));
            }
        }
    }

    void AddTriangle(const Point& centre, Index triangle, const std::vector<double>& ends) {
        std::vector<double> angles;
        AddAnglesOnEdges(centre, triangle, &angles);
        if (angles.empty()) return;
        angles.insert(angles.end(), ends.begin(), ends.end());
        for (double& angle : angles) angle = std::remainder(angle, 2.0 * pi);
        std::sort(angles.begin(), angles.end());
        angles.push_back(angles.front() + 2.0 * pi);
        for (std::size_t i = 1; i < angles.size(); ++i) {
            if (angles[i] - angles[i - 1] < kLeastArc) continue;
            const Point middle = PointAt(centre, 0.5 * (angles[i - 1] + angles[i]));
            if (NearestOnTriangle(space_, triangle, middle).distance > 0.0) continue;
            AddArc(centre, triangle, angles[i - 1], angles[i]);
        }
    }

    // The part of a circle within a triangle and between other circles.
    void AddArc(const Point& centre, Index triangle, double from, double to) {
        const int steps = std::max(kFewestSteps, static_cast<int>((to - from) / kLongestStep) + 1);
        const auto anglesAt = [&](std::span<const double> places) {
            std::vector<double> angles;
            for (const double k : places) angles.push_back(from + k / steps * (to - from));
            return angles;
        };
        std::vector<double> places;  // in steps
        for (int k = 0; k <= steps; ++k) places.push_back(k);
        std::vector<ArcStress> stresses = StressesAt(centre, triangle, anglesAt(places));
        if (stresses.empty()) return;
        std::vector<double> shears, both;
        for (const ArcStress& at : stresses) {
            shears.push_back(at.shear);
            both.push_back(VonMises(NormalAt(factors_, at.at), at.shear));
        }
        const std::vector<double> peaks = {PeakAmong(shears).at, PeakAmong(both).at};
        const std::vector<ArcStress> high = StressesAt(centre, triangle, anglesAt(peaks));
        if (!high.empty()) {
            places.insert(places.end(), peaks.begin(), peaks.end());
            stresses.insert(stresses.end(), high.begin(), high.end());
        }
        for (std::size_t i = 0; i < stresses.size(); ++i) {
            if (IsLeftOut(stresses[i].at)) continue;
            ArcStress& at = stresses_.emplace_back(stresses[i]);
            for (std::size_t k = 0; k < stresses.size(); ++k) {
                if (std::fabs(places[k] - places[i]) > kStepsBeside) continue;
                at.error = std::max(at.error, stresses[k].error);
            }
        }
    }

    // Nothing when all are left out.
    std::vector<ArcStress> StressesAt(const Point& centre, Index triangle,
                                      const std::vector<double>& angles) const {
        const TriangleMap map = MapOf(space_, triangle);
        const Point& corner = space_.CornerAt(triangle, 0);
        std::vector<std::array<double, 2>> places;
        std::vector<ArcStress> stresses;
        for (const double angle : angles) {
            const Point p = PointAt(centre, angle);
            stresses.push_back({p});
            places.push_back({Dot(map.byXi, p - corner), Dot(map.byEta, p - corner)});
        }
        const auto isLeftOut = [&](const ArcStress& stress) { return IsLeftOut(stress.at); };
        if (std::all_of(stresses.begin(), stresses.end(), isLeftOut)) return {};
        const ShapeSamples samples = SamplesAt(space_.HighestOrderAt(triangle), std::move(places));
        const auto shears = ShearsAt(fields_, factors_, triangle, samples);
        for (std::size_t i = 0; i < shears.size(); ++i) {
            stresses[i].shear = Length(shears[i].Middle());
            stresses[i].error = Length(shears[i].free - shears[i].held);
        }
        return stresses;
    }

    const Fields& fields_;
    const FieldSpace& space_;
    const FieldFactors& factors_;
    const LeftOutCircles& circles_;
    const SoftCorners& softCorners_;
    TriangleTree tree_;
    std::vector<ArcStress> stresses_;
};

}  // namespace

std::vector<ArcStress> StressesAlongCircles(const Fields& fields, const FieldFactors& factors,
                                            const LeftOutCircles& circles,
                                            const SoftCorners& softCorners) {
    if (circles.Centres().empty()) return {};
    return CircleStress(fields, factors, circles, softCorners).Run();
}

}  // namespace halvorn::engine
