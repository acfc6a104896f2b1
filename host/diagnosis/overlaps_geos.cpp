// The reentrant C interface: batches may diagnose on several threads.
#define GEOS_USE_ONLY_R_API
#include <geos_c.h>

#include <algorithm>
#include <memory>
#include <new>
#include <stdexcept>

#include "diagnosis/overlaps.h"

namespace halvorn::host {

namespace {

struct GeometryDeleter {
    GEOSContextHandle_t context;
    void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(context, geometry); }
};
using Geometry = std::unique_ptr<GEOSGeometry, GeometryDeleter>;

class Geos {
public:
    Geos() : context_(GEOS_init_r()) {
        if (context_ == nullptr) throw std::bad_alloc();
    }
    ~Geos() { GEOS_finish_r(context_); }
    Geos(const Geos&) = delete;
    Geos& operator=(const Geos&) = delete;

    Geometry Polygon(const Points& ring) const {
        const auto size = static_cast<unsigned int>(ring.size());
        GEOSCoordSequence* const sequence = GEOSCoordSeq_create_r(context_, size + 1, 2);
        for (unsigned int i = 0; i <= size && sequence != nullptr; ++i) {
            const auto& [x, y] = ring[i % size];
            GEOSCoordSeq_setXY_r(context_, sequence, i, x, y);
        }
        const Geometry polygon = Own(GEOSGeom_createPolygon_r(
            context_, GEOSGeom_createLinearRing_r(context_, sequence), nullptr, 0));
        return Own(GEOSMakeValid_r(context_, polygon.get()));
    }
    Geometry Intersection(const Geometry& a, const Geometry& b) const {
        return Own(GEOSIntersection_r(context_, a.get(), b.get()));
    }
    Geometry Difference(const Geometry& a, const Geometry& b) const {
        return Own(GEOSDifference_r(context_, a.get(), b.get()));
    }
    double Area(const Geometry& geometry) const {
        double area = 0.0;
        GEOSArea_r(context_, geometry.get(), &area);
        return area;
    }

private:
    Geometry Own(GEOSGeometry* geometry) const {
        if (geometry == nullptr) throw std::runtime_error("the outlines could not be overlaid");
        return {geometry, GeometryDeleter{context_}};
    }

    GEOSContextHandle_t context_;
};

struct Box {
    double left, right, bottom, top;

    explicit Box(const Points& ring)
        : left(ring[0].first), right(left), bottom(ring[0].second), top(bottom) {
        for (const auto& [x, y] : ring) {
            left = std::min(left, x);
            right = std::max(right, x);
            bottom = std::min(bottom, y);
            top = std::max(top, y);
        }
    }
    bool Meets(const Box& other) const {
        return left <= other.right && other.left <= right && bottom <= other.top &&
               other.bottom <= top;
    }
};

constexpr double kNegligible = 1e-9;  // part of the smaller area

}  // namespace

bool CanFindOverlaps() {
    return true;
}

Overlaps FindOverlaps(const std::vector<Element>& elements) {
    const Geos geos;
    std::vector<Geometry> areas;
    std::vector<Box> boxes;
    for (const Element& element : elements) {
        areas.push_back(geos.Polygon(element.ring));
        boxes.emplace_back(element.ring);
    }
    Overlaps overlaps;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        for (std::size_t k = i + 1; k < elements.size(); ++k) {
            if (elements[i].isSolid != elements[k].isSolid || !boxes[i].Meets(boxes[k])) continue;
            const double shared = geos.Area(geos.Intersection(areas[i], areas[k]));
            const double smaller = std::min(geos.Area(areas[i]), geos.Area(areas[k]));
            if (shared <= kNegligible * smaller) continue;
            (elements[i].isSolid ? overlaps.solids : overlaps.holes).push_back({i, k, shared});
        }
        if (elements[i].isSolid) continue;
        Geometry left = geos.Polygon(elements[i].ring);
        for (std::size_t k = 0; k < elements.size(); ++k) {
            if (elements[k].isSolid && boxes[i].Meets(boxes[k])) {
                left = geos.Difference(left, areas[k]);
            }
        }
        const double outside = geos.Area(left);
        if (outside > kNegligible * geos.Area(areas[i])) {
            overlaps.outsideHoles.push_back({i, i, outside});
        }
    }
    return overlaps;
}

}  // namespace halvorn::host
