// General geometry libraries, each doing the clip of the plastic search in its own way. Every one
// is optional: what was not found when the program was configured is left out.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "search.h"

#if defined(HALVORN_HAVE_GEOS)
#include <geos_c.h>
#endif
#if defined(HALVORN_HAVE_BOOST)
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#endif
#if defined(HALVORN_HAVE_CLIPPER)
#include <polyclipping/clipper.hpp>
#endif

namespace halvorn::benchmarks {

namespace {

// A box far beyond the section, up to the axis.
struct Box {
    double x0, y0, x1, y1;
};

constexpr double kFar = 1e6;

Box BoxOf(const HalfPlane& side) {
    if (side.isVertical) {
        return side.isHigh ? Box{side.pos, -kFar, kFar, kFar} : Box{-kFar, -kFar, side.pos, kFar};
    }
    return side.isHigh ? Box{-kFar, side.pos, kFar, kFar} : Box{-kFar, -kFar, kFar, side.pos};
}

double LeverArm(const HalfPlane& side, double x, double y) {
    return std::abs((side.isVertical ? x : y) - side.pos);
}

#if defined(HALVORN_HAVE_GEOS)
class Geos : public Clipper {
public:
    Geos(const Section& section, bool byRectangle) : byRectangle_(byRectangle) {
        for (const std::vector<double>& ring : section.contours) {
            contours_.push_back(Polygon(ring.data(), static_cast<unsigned>(ring.size() / 2)));
        }
    }
    Geos(const Geos&) = delete;
    Geos& operator=(const Geos&) = delete;
    ~Geos() override {
        for (GEOSGeometry* contour : contours_) GEOSGeom_destroy_r(context_, contour);
        GEOS_finish_r(context_);
    }

    double AreaBeyond(const HalfPlane& side) override {
        return Sum(side, [](GEOSGeometry*, double area) { return Part{area, 0.0}; }).area;
    }
    Part PartBeyond(const HalfPlane& side) override {
        return Sum(side, [&](GEOSGeometry* part, double area) {
            if (area <= 0.0) return Part{};
            double x = 0.0, y = 0.0;
            GEOSGeometry* const centroid = GEOSGetCentroid_r(context_, part);
            GEOSGeomGetX_r(context_, centroid, &x);
            GEOSGeomGetY_r(context_, centroid, &y);
            GEOSGeom_destroy_r(context_, centroid);
            return Part{area, area * LeverArm(side, x, y)};
        });
    }

private:
    GEOSGeometry* Polygon(const double* ring, unsigned n) const {
        GEOSCoordSequence* const coords = GEOSCoordSeq_create_r(context_, n + 1, 2);
        for (unsigned i = 0; i <= n; ++i) {
            GEOSCoordSeq_setXY_r(context_, coords, i, ring[2 * (i % n)], ring[2 * (i % n) + 1]);
        }
        return GEOSGeom_createPolygon_r(context_, GEOSGeom_createLinearRing_r(context_, coords),
                                        nullptr, 0);
    }

    template <class Evaluate>
    Part Sum(const HalfPlane& side, Evaluate&& evaluate) const {
        const Box box = BoxOf(side);
        const double corners[] = {box.x0, box.y0, box.x1, box.y0, box.x1, box.y1, box.x0, box.y1};
        GEOSGeometry* const clip = byRectangle_ ? nullptr : Polygon(corners, 4);
        Part sum;
        for (GEOSGeometry* contour : contours_) {
            GEOSGeometry* const part =
                byRectangle_ ? GEOSClipByRect_r(context_, contour, box.x0, box.y0, box.x1, box.y1)
                             : GEOSIntersection_r(context_, contour, clip);
            double area = 0.0;
            GEOSArea_r(context_, part, &area);
            const Part evaluated = evaluate(part, area);
            sum.area += evaluated.area;
            sum.moment += evaluated.moment;
            GEOSGeom_destroy_r(context_, part);
        }
        if (clip) GEOSGeom_destroy_r(context_, clip);
        return sum;
    }

    GEOSContextHandle_t context_ = GEOS_init_r();
    bool byRectangle_;
    std::vector<GEOSGeometry*> contours_;
};
#endif

#if defined(HALVORN_HAVE_BOOST)
namespace bg = boost::geometry;

class Boost : public Clipper {
public:
    explicit Boost(const Section& section) {
        for (const std::vector<double>& ring : section.contours) {
            Polygon polygon;
            for (std::size_t i = 0; i < ring.size(); i += 2) {
                bg::append(polygon.outer(), Point(ring[i], ring[i + 1]));
            }
            bg::correct(polygon);
            contours_.push_back(polygon);
        }
    }

    double AreaBeyond(const HalfPlane& side) override { return Sum(side, false).area; }
    Part PartBeyond(const HalfPlane& side) override { return Sum(side, true); }

private:
    using Point = bg::model::d2::point_xy<double>;
    using Polygon = bg::model::polygon<Point>;

    Part Sum(const HalfPlane& side, bool withMoment) const {
        const Box box = BoxOf(side);
        const bg::model::box<Point> clip({box.x0, box.y0}, {box.x1, box.y1});
        Part sum;
        for (const Polygon& contour : contours_) {
            bg::model::multi_polygon<Polygon> part;
            bg::intersection(contour, clip, part);
            const double area = bg::area(part);
            sum.area += area;
            if (!withMoment || area <= 0.0) continue;
            Point centroid(0.0, 0.0);
            bg::centroid(part, centroid);
            sum.moment += area * LeverArm(side, centroid.x(), centroid.y());
        }
        return sum;
    }

    std::vector<Polygon> contours_;
};
#endif

#if defined(HALVORN_HAVE_CLIPPER)
// Works on integers: coordinates are scaled so that a section is about 2^24 units across, which
// keeps the products within 62 bits and about seven digits of every result.
class IntegerClipper : public Clipper {
public:
    explicit IntegerClipper(const Section& section) {
        double reach = 0.0;
        for (const std::vector<double>& ring : section.contours) {
            for (const double c : ring) reach = std::max(reach, std::abs(c));
        }
        scale_ = std::ldexp(1.0, 24) / reach;
        for (const std::vector<double>& ring : section.contours) {
            ClipperLib::Path path;
            for (std::size_t i = 0; i < ring.size(); i += 2) {
                path.emplace_back(Scaled(ring[i]), Scaled(ring[i + 1]));
            }
            contours_.push_back(path);
        }
    }

    double AreaBeyond(const HalfPlane& side) override { return Sum(side, false).area; }
    Part PartBeyond(const HalfPlane& side) override { return Sum(side, true); }

private:
    ClipperLib::cInt Scaled(double c) const {
        return static_cast<ClipperLib::cInt>(std::llround(c * scale_));
    }

    Part Sum(const HalfPlane& side, bool withMoment) const {
        const Box box = BoxOf(side);
        const auto bound = [this](double c) {
            return std::clamp(Scaled(c), -(ClipperLib::cInt{1} << 26), ClipperLib::cInt{1} << 26);
        };
        const ClipperLib::Path clip = {{bound(box.x0), bound(box.y0)},
                                       {bound(box.x1), bound(box.y0)},
                                       {bound(box.x1), bound(box.y1)},
                                       {bound(box.x0), bound(box.y1)}};
        Part sum;
        for (const ClipperLib::Path& contour : contours_) {
            ClipperLib::Clipper clipper;
            clipper.AddPath(contour, ClipperLib::ptSubject, true);
            clipper.AddPath(clip, ClipperLib::ptClip, true);
            ClipperLib::Paths parts;
            clipper.Execute(ClipperLib::ctIntersection, parts, ClipperLib::pftNonZero,
                            ClipperLib::pftNonZero);
            for (const ClipperLib::Path& part : parts) {
                sum.area += ClipperLib::Area(part) / (scale_ * scale_);
                if (withMoment) sum.moment += std::abs(Moment(part, side));
            }
        }
        return sum;
    }

    double Moment(const ClipperLib::Path& part, const HalfPlane& side) const {
        double moment = 0.0;
        for (std::size_t i = 0; i < part.size(); ++i) {
            const ClipperLib::IntPoint& p = part[i];
            const ClipperLib::IntPoint& q = part[i + 1 < part.size() ? i + 1 : 0];
            const double u0 = static_cast<double>(side.isVertical ? p.Y : p.X) / scale_;
            const double u1 = static_cast<double>(side.isVertical ? q.Y : q.X) / scale_;
            const double v0 = static_cast<double>(side.isVertical ? p.X : p.Y) / scale_ - side.pos;
            const double v1 = static_cast<double>(side.isVertical ? q.X : q.Y) / scale_ - side.pos;
            moment += (u1 - u0) * (v0 * v0 + v0 * v1 + v1 * v1) / 6;
        }
        return moment;
    }

    double scale_ = 1.0;
    ClipperLib::Paths contours_;
};
#endif

}  // namespace

const std::vector<Method>& Peers() {
    static const std::vector<Method> peers = {
#if defined(HALVORN_HAVE_GEOS)
        {"GEOS rectangle",
         [](const Section& s) -> std::unique_ptr<Clipper> {
             return std::make_unique<Geos>(s, true);
         }},
        {"GEOS overlay",
         [](const Section& s) -> std::unique_ptr<Clipper> {
             return std::make_unique<Geos>(s, false);
         }},
#endif
#if defined(HALVORN_HAVE_BOOST)
        {"Boost.Geometry",
         [](const Section& s) -> std::unique_ptr<Clipper> { return std::make_unique<Boost>(s); }},
#endif
#if defined(HALVORN_HAVE_CLIPPER)
        {"Clipper",
         [](const Section& s) -> std::unique_ptr<Clipper> {
             return std::make_unique<IntegerClipper>(s);
         }},
#endif
    };
    return peers;
}

}  // namespace halvorn::benchmarks
