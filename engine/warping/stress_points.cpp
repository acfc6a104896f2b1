#include <algorithm>
#include <limits>
#include <utility>

#include "geometry/box.h"
#include "warping/stress_at.h"
#include "warping/stresses.h"
#include "warping/triangle_tree.h"

namespace halvorn::engine {

namespace {

// A point this near to a triangle lies on it, but for rounding; in the frame, whose size is
// about 1.
constexpr double kOnTriangle = 1e-12;
// A point this near to the section lies on its outline, in parts of its longer side. Points of an
// arc do, whose chords are drawn to 0.001 mm, on sections of 10 mm and more.
constexpr double kOnOutline = 1e-4;

class StressLookup {
public:
    StressLookup(const WarpingFields& fields, const SectionForces& forces)
        : frame_(fields.frame),
          part_(fields.parts.front()),
          factors_(FactorsUnder(forces, fields)),
          onOutline_(OnOutlineOf(part_.fields.space)),
          tree_(part_.fields.space, onOutline_) {}

    PointStress At(const Point& point) const {
        const Point at = frame_.ToFrame(point) - part_.moments.centroid;
        const auto [shears, count] = SumOfShears(at);
        if (count == 0.0) {
            constexpr double kOutside = std::numeric_limits<double>::quiet_NaN();
            return {kOutside, kOutside, kOutside, kOutside};
        }
        const double unit = frame_.LengthFromFrame(1.0);
        const Point shear = 1.0 / (count * unit * unit) * shears;
        const double normal = NormalAt(factors_, at) / (unit * unit);
        return {normal, shear.x, shear.y, VonMises(normal, Length(shear))};
    }

private:
    static double OnOutlineOf(const FieldSpace& space) {
        const Box around(space.mesh.vertices);
        return kOnOutline * std::max(around.Width(), around.Height());
    }

    // Over all triangles on which the point lies, or the one nearest to it.
    std::pair<Point, double> SumOfShears(const Point& at) const {
        Point sum;
        double count = 0.0;
        PlaceOnTriangle nearest;
        const KBox here{{at.x, at.y}, {at.x, at.y}};
        tree_.VisitNear(here, [&](Index triangle) {
            const PlaceOnTriangle place = NearestOnTriangle(part_.fields.space, triangle, at);
            if (place.distance <= kOnTriangle) {
                sum = sum + ShearAt(place);
                count += 1.0;
            }
            if (place.distance < nearest.distance) nearest = place;
        });
        if (count == 0.0 && nearest.distance <= onOutline_) return {ShearAt(nearest), 1.0};
        return {sum, count};
    }

    Point ShearAt(const PlaceOnTriangle& place) const {
        const int order = part_.fields.space.HighestOrderAt(place.triangle);
        const ShapeSamples samples = SamplesAt(order, {{place.xi, place.eta}});
        return ShearsAt(part_.fields, factors_, place.triangle, samples).front().Middle();
    }

    const Frame& frame_;
    const PartSolution& part_;
    FieldFactors factors_;
    double onOutline_;
    TriangleTree tree_;
};

}  // namespace

std::vector<PointStress> StressesAt(const WarpingSolution& solution, const SectionForces& forces,
                                    const Points& points) {
    const StressLookup lookup(*solution.fields, forces);
    std::vector<PointStress> stresses;
    stresses.reserve(points.size());
    for (const Point& point : points) stresses.push_back(lookup.At(point));
    return stresses;
}

}  // namespace halvorn::engine
