#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "warping/boundary_stress.h"
#include "warping/circle_stress.h"
#include "warping/lattice.h"
#include "warping/stresses.h"
#include "warping/warping_fields.h"

namespace halvorn::engine {

namespace {

// Each side of a triangle is divided into so many to find the largest stress within; even, so that
// the middle of a wall of one triangle is met.
constexpr int kDivisionsWithin = 6;
// A search looks from the highest place so far so many steps to either side. Where that leads to
// the border of what it sees, it looks as far again, else one step. So many rounds, and so many
// searches at most.
constexpr int kStepsOfSearch = 3;
constexpr int kRoundsOfSearch = 6;
constexpr int kMostSearches = 40;
// What the stress may have between points over what parabolas through them have.
constexpr double kDoubtOfParabolas = 2.0;

// The error at a point is at least this part of the largest in its triangle.
constexpr double kPartOfLargest = 0.1;
// From a point of a lattice to those beside it.
constexpr std::array<std::array<int, 2>, 6> kPointsBeside{
    {{1, 0}, {0, 1}, {-1, 1}, {-1, 0}, {0, -1}, {1, -1}}};

// Stresses are the same but for rounding: relative.
constexpr double kAlike = 1e-12;

enum Kind { kShear, kVonMises };

// A point of a triangle.
struct PointShear {
    Point at;
    std::array<double, 2> place;  // in the reference triangle
    double shear;
    double error;
    bool isLeftOut;
};

// A point of a lattice over a triangle that is no lower than those beside it.
struct Summit {
    Index triangle = kNone;
    std::array<double, 2> place{};
    double error = 0.0;
    double height = 0.0;
    double most = 0.0;  // what there may be between the points
};

class Largest {
public:
    Largest(const WarpingFields& fields, const SectionForces& forces)
        : part_(fields.parts.front()),
          frame_(fields.frame),
          factors_(FactorsUnder(forces, fields)),
          circles_(SharpCornersOf(part_.fields.space), fields.leftOutRadius),
          softCorners_(part_.fields.space, SoftRadius(fields.leftOutRadius)) {}

    Stresses Find() {
        FindNormal();
        for (const BoundaryStress& at :
             StressesAlongRings(part_.fields, factors_, circles_.Radius())) {
            const double shear = std::fabs(at.Middle());
            Add(kShear, shear, at.error, 0.5 * (at.from + at.to));
            for (const Point& end : {at.from, at.to}) Add(kVonMises, shear, at.error, end);
        }
        for (const ArcStress& at :
             StressesAlongCircles(part_.fields, factors_, circles_, softCorners_)) {
            AddBoth(at.shear, at.error, at.at);
        }
        FindWithin();
        // It is no less than any normal stress, which nothing leaves out.
        Add(kVonMises, 0.0, 0.0, sum_.normal.place);
        sum_.shear.stress = {largest_[kShear].value, largest_[kShear].Error()};
        sum_.vonMises.stress = {largest_[kVonMises].value, largest_[kVonMises].Error()};
        sum_.shear.place = places_[kShear];
        sum_.vonMises.place = PlaceOfVonMises();
        const double unit = frame_.LengthFromFrame(1.0);
        for (PeakStress* peak : {&sum_.normal, &sum_.shear, &sum_.vonMises}) {
            peak->stress.value /= unit * unit;
            peak->stress.error /= unit * unit;
            peak->place = PlaceOf(peak->place);
        }
        return sum_;
    }

private:
    // In the section's coordinates. The frame makes rounding of what is 0.
    Point PlaceOf(const Point& inPart) const {
        constexpr double kRounding = 1e-12;  // of the size
        const Point place = frame_.FromFrame(part_.moments.centroid + inPart);
        const double least = kRounding * frame_.LengthFromFrame(1.0);
        return {std::fabs(place.x) < least ? 0.0 : place.x,
                std::fabs(place.y) < least ? 0.0 : place.y};
    }

    void FindNormal() {
        constexpr double kRounding = 1e-13;  // of exact integrals and a plane
        for (const Point& p : part_.fields.space.mesh.vertices) {
            const double normal = NormalAt(factors_, p);
            if (!IsLargerNormal(normal, p)) continue;
            sum_.normal = {{normal, kRounding * std::fabs(normal)}, p};
        }
    }

    // Of stresses that are alike the one in tension, and the one farthest down and to the left: a
    // corner of the outline, whichever edge or area has the largest.
    bool IsLargerNormal(double normal, const Point& p) const {
        constexpr Point kUp{1.0, 2.0};
        const double largest = sum_.normal.stress.value;
        const double more = std::fabs(normal) - std::fabs(largest);
        if (std::fabs(more) > kAlike * std::fabs(largest)) return more > 0.0;
        if ((normal > 0.0) != (largest > 0.0)) return normal > 0.0;
        return Dot(kUp, p) < Dot(kUp, sum_.normal.place);
    }

    // Where no shear adds to it, the largest von Mises stress is where the largest normal stress
    // is.
    Point PlaceOfVonMises() const {
        const double normal = std::fabs(sum_.normal.stress.value);
        const bool isAlike = largest_[kVonMises].value <= (1.0 + kAlike) * normal;
        return isAlike ? sum_.normal.place : places_[kVonMises];
    }

    double StressOf(Kind kind, double shear, const Point& at) const {
        return kind == kShear ? shear : VonMises(NormalAt(factors_, at), shear);
    }

    // The error of von Mises is what the root can be off, which is steep where the shear is small.
    void Add(Kind kind, double shear, double error, const Point& at) {
        const double stress = StressOf(kind, shear, at);
        const double most = StressOf(kind, shear + error, at);
        if (largest_[kind].Add(stress, most - stress)) places_[kind] = at;
    }
    void AddBoth(double shear, double error, const Point& at) {
        Add(kShear, shear, error, at);
        Add(kVonMises, shear, error, at);
    }

    // On a lattice over each triangle, and closer where there may be more between its points.
    void FindWithin() {
        const std::size_t count = part_.fields.space.TriangleCount();
        std::array<std::vector<Summit>, 2> summits;
        for (std::size_t t = 0; t < count; ++t) {
            std::vector<PointShear> points = PointsOf(
                static_cast<Index>(t),
                lattice_.Samples(part_.fields.space.HighestOrderAt(static_cast<Index>(t))));
            SetErrors(&points);
            for (const PointShear& p : points) {
                if (!p.isLeftOut) AddBoth(p.shear, p.error, p.at);
            }
            for (const Kind kind : {kShear, kVonMises}) {
                AddSummits(kind, static_cast<Index>(t), points, &summits[kind]);
            }
        }
        for (const Kind kind : {kShear, kVonMises}) SearchAbout(kind, &summits[kind]);
    }

    std::vector<PointShear> PointsOf(Index triangle, const ShapeSamples& samples) const {
        const auto shears = ShearsAt(part_.fields, factors_, triangle, samples);
        std::vector<PointShear> points;
        points.reserve(shears.size());
        for (std::size_t i = 0; i < shears.size(); ++i) {
            const auto& place = samples.places[i];
            const Point at = PointIn(part_.fields.space, triangle, place[0], place[1]);
            points.push_back({at, place, Length(shears[i].Middle()),
                              Length(shears[i].free - shears[i].held),
                              circles_.Contain(at) || softCorners_.Contain(at)});
        }
        return points;
    }

    // Both fields may agree by chance at a point: they are compared at those beside it, too, and a
    // part of the largest difference in the triangle is left.
    void SetErrors(std::vector<PointShear>* points) const {
        std::vector<PointShear> own = *points;
        double most = 0.0;
        for (const PointShear& p : own) {
            if (!p.isLeftOut) most = std::max(most, kPartOfLargest * p.error);
        }
        for (PointShear& p : own) p.error = std::max(p.error, most);
        const int n = lattice_.Divisions();
        for (int i = 0; i <= n; ++i) {
            for (int j = 0; i + j <= n; ++j) {
                double& error = (*points)[lattice_.Place(i, j)].error;
                error = own[lattice_.Place(i, j)].error;
                for (const auto& [di, dj] : kPointsBeside) {
                    const int k = i + di, l = j + dj;
                    if (k < 0 || l < 0 || k + l > n) continue;
                    const PointShear& beside = own[lattice_.Place(k, l)];
                    if (!beside.isLeftOut) error = std::max(error, beside.error);
                }
            }
        }
    }

    // Adds the points of a lattice that are no lower than those beside them, where parabolas have
    // more between.
    void AddSummits(Kind kind, Index triangle, const std::vector<PointShear>& points,
                    std::vector<Summit>* summits) const {
        const int n = lattice_.Divisions();
        // Towards a circle the stress rises; the largest is on its arc.
        const auto isClear = [&](int i, int j) {
            return i >= 0 && j >= 0 && i + j <= n && !points[lattice_.Place(i, j)].isLeftOut;
        };
        const auto stressAt = [&](int i, int j) {
            const PointShear& p = points[lattice_.Place(i, j)];
            return StressOf(kind, p.shear, p.at);
        };
        for (int i = 0; i <= n; ++i) {
            for (int j = 0; i + j <= n; ++j) {
                if (!isClear(i, j)) continue;
                const double height = stressAt(i, j);
                const auto isHigher = [&](const std::array<int, 2>& d) {
                    return isClear(i + d[0], j + d[1]) && stressAt(i + d[0], j + d[1]) > height;
                };
                if (std::any_of(kPointsBeside.begin(), kPointsBeside.end(), isHigher)) continue;
                double more = 0.0;
                for (std::size_t line = 0; line < kPointsBeside.size() / 2; ++line) {
                    more += MoreAlong(kPointsBeside[line], i, j, isClear, stressAt);
                }
                if (!(more > 0.0)) continue;
                const PointShear& p = points[lattice_.Place(i, j)];
                summits->push_back(
                    {triangle, p.place, p.error, height, height + kDoubtOfParabolas * more});
            }
        }
    }

    // What a parabola through three points on a line has more than the highest of them, point
    // (i, j), which is in the middle, or at an end of the line.
    template <typename IsClear, typename StressAt>
    static double MoreAlong(const std::array<int, 2>& line, int i, int j, const IsClear& isClear,
                            const StressAt& stressAt) {
        const auto& [di, dj] = line;
        const int first = !isClear(i - di, j - dj) ? 0 : !isClear(i + di, j + dj) ? -2 : -1;
        std::array<double, 3> stresses{};
        for (int k = 0; k < 3; ++k) {
            const int along = i + (first + k) * di, up = j + (first + k) * dj;
            if (!isClear(along, up)) return 0.0;
            stresses[Slot(k)] = stressAt(along, up);
        }
        return PeakAmong(stresses).height - stresses[Slot(-first)];
    }

    // Closer to the summits that may become the largest.
    void SearchAbout(Kind kind, std::vector<Summit>* summits) {
        std::sort(summits->begin(), summits->end(),
                  [](const Summit& a, const Summit& b) { return a.most > b.most; });
        int searches = 0;
        for (const Summit& summit : *summits) {
            if (summit.most <= largest_[kind].value || searches++ == kMostSearches) return;
            Search(kind, summit);
        }
    }

    void Search(Kind kind, Summit at) {
        const FieldSpace& space = part_.fields.space;
        const int order = space.HighestOrderAt(at.triangle);
        double reach = 1.0 / kDivisionsWithin;
        double gain = 0.0;
        for (int round = 0; round < kRoundsOfSearch; ++round) {
            const Summit before = at;
            for (const PointShear& p :
                 PointsOf(at.triangle, SamplesAt(order, PlacesAbout(before.place, reach)))) {
                const double stress = StressOf(kind, p.shear, p.at);
                if (p.isLeftOut || stress <= at.height) continue;
                at.height = stress;
                at.place = p.place;
            }
            gain = at.height - before.height;
            const double moved = std::max(std::fabs(at.place[0] - before.place[0]),
                                          std::fabs(at.place[1] - before.place[1]));
            if (moved < (1.0 - 0.5 / kStepsOfSearch) * reach) reach /= kStepsOfSearch;
        }
        // What the last round has more tells what is missed.
        const PointShear p = PointsOf(at.triangle, SamplesAt(order, {at.place})).front();
        Add(kind, p.shear, at.error + gain, p.at);
    }

    // Places in a triangle within a reach of one.
    static std::vector<std::array<double, 2>> PlacesAbout(const std::array<double, 2>& place,
                                                          double reach) {
        std::vector<std::array<double, 2>> places;
        for (int i = -kStepsOfSearch; i <= kStepsOfSearch; ++i) {
            for (int j = -kStepsOfSearch; j <= kStepsOfSearch; ++j) {
                const double xi = place[0] + i * reach / kStepsOfSearch;
                const double eta = place[1] + j * reach / kStepsOfSearch;
                if (xi >= 0.0 && eta >= 0.0 && xi + eta <= 1.0) places.push_back({xi, eta});
            }
        }
        return places;
    }

    const PartSolution& part_;
    const Frame& frame_;
    FieldFactors factors_;
    LeftOutCircles circles_;
    SoftCorners softCorners_;
    Lattice lattice_{kDivisionsWithin};
    std::array<LargestOf, 2> largest_;  // by kind
    std::array<Point, 2> places_;
    Stresses sum_;
};

}  // namespace

Stresses LargestStresses(const WarpingSolution& solution, const SectionForces& forces) {
    return Largest(*solution.fields, forces).Find();
}

}  // namespace halvorn::engine
