#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>
#include <utility>

#include "geometry/box.h"
#include "geometry/lengths.h"
#include "kernel/box_tree.h"
#include "warping/stress_at.h"
#include "warping/stresses.h"

namespace halvorn::engine {

namespace {

// A point this near to a triangle lies on it, but for rounding; in the frame, whose size is
// about 1.
constexpr double kOnTriangle = 1e-12;
// A point this near to the section lies on its outline, in parts of its longer side. Points of an
// arc do, whose chords are drawn to 0.001 mm, on sections of 10 mm and more.
constexpr double kOnOutline = 1e-4;

// A place on a triangle, and how far from there the point is that was asked for.
struct PlaceOnTriangle {
    Index triangle = kNone;
    double xi = 0.0, eta = 0.0;
    double distance = std::numeric_limits<double>::infinity();
};

PlaceOnTriangle NearestOnTriangle(const FieldSpace& space, Index triangle, const Point& point) {
    const TriangleMap map = MapOf(space, triangle);
    const Point& corner = space.CornerAt(triangle, 0);
    const auto at = [&](const Point& p) {
        return PlaceOnTriangle{triangle, Dot(map.byXi, p - corner), Dot(map.byEta, p - corner),
                               Distance(p, point)};
    };
    PlaceOnTriangle nearest = at(point);
    if (nearest.xi >= 0.0 && nearest.eta >= 0.0 && nearest.xi + nearest.eta <= 1.0) return nearest;
    nearest.distance = std::numeric_limits<double>::infinity();
    for (int edge = 0; edge < 3; ++edge) {
        const PlaceOnTriangle onEdge = at(NearestOnSegment(
            point, space.CornerAt(triangle, edge + 1), space.CornerAt(triangle, edge + 2)));
        if (onEdge.distance < nearest.distance) nearest = onEdge;
    }
    return nearest;
}

class StressLookup {
public:
    StressLookup(const WarpingFields& fields, const SectionForces& forces)
        : frame_(fields.frame),
          part_(fields.parts.front()),
          factors_(FactorsUnder(forces, fields)) {
        const Box around(part_.fields.space.mesh.vertices);
        onOutline_ = kOnOutline * std::max(around.Width(), around.Height());
        const FieldSpace& space = part_.fields.space;
        const std::size_t n = space.TriangleCount();
        CArray<KBox> boxes(static_cast<KBox*>(std::calloc(n, sizeof(KBox))));
        if (!boxes) throw std::bad_alloc();
        for (std::size_t t = 0; t < n; ++t) {
            const auto corner = [&](int i) {
                const Point& p = space.CornerAt(static_cast<Index>(t), i);
                return KPoint{p.x, p.y};
            };
            boxes[t] = KBoxAround(KBoxOfSegment(corner(0), corner(1), onOutline_),
                                  KBoxOfSegment(corner(1), corner(2), onOutline_));
        }
        if (KBuildBoxTree(&tree_, std::move(boxes), static_cast<int>(n)) != 0) {
            throw std::bad_alloc();
        }
    }

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
    // Over all triangles on which the point lies, or the one nearest to it.
    std::pair<Point, double> SumOfShears(const Point& at) const {
        Point sum;
        double count = 0.0;
        PlaceOnTriangle nearest;
        const KBox here{{at.x, at.y}, {at.x, at.y}};
        KVisitBoxTree(
            tree_, [&](const KBox& box) { return KBoxesMeet(box, here); },
            [&](int triangle) {
                const PlaceOnTriangle place =
                    NearestOnTriangle(part_.fields.space, static_cast<Index>(triangle), at);
                if (place.distance <= kOnTriangle) {
                    sum = sum + ShearAt(place);
                    count += 1.0;
                }
                if (place.distance < nearest.distance) nearest = place;
                return false;
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
    double onOutline_ = 0.0;
    KBoxTree tree_;
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
