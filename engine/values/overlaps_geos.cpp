// The reentrant C interface: batches may diagnose on several threads.
#define GEOS_USE_ONLY_R_API
#include <geos_c.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include "geometry/crossings.h"
#include "values/overlaps.h"

namespace halvorn::engine {

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
    Geometry Union(const Geometry& a, const Geometry& b) const {
        return Own(GEOSUnion_r(context_, a.get(), b.get()));
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
        : left(ring[0].x), right(left), bottom(ring[0].y), top(bottom) {
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

// All elements as areas.
class Overlay {
public:
    explicit Overlay(const std::vector<Element>& elements) : elements_(elements) {
        for (const Element& element : elements) {
            areas_.push_back(geos_.Polygon(element.ring));
            boxes_.emplace_back(element.ring);
        }
    }

    Overlaps Find() const {
        Overlaps overlaps;
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            for (std::size_t k = i + 1; k < elements_.size(); ++k) {
                if (elements_[i].isSolid != elements_[k].isSolid) continue;
                const double shared = SharedAmiss(i, k);
                if (shared == 0.0) continue;
                (elements_[i].isSolid ? overlaps.solids : overlaps.holes).push_back({i, k, shared});
            }
            AddOutside(i, &overlaps);
            // Without turns in the same sense an even-odd filling has what the integrals count.
            const double counted = 0.5 * std::fabs(TwiceArea(elements_[i].ring));
            const double excess = counted - geos_.Area(areas_[i]);
            if (excess > kNegligible * counted) overlaps.turns.push_back({i, i, excess});
        }
        return overlaps;
    }

private:
    // The area that both have and where all elements together count other than 0 and 1.
    double SharedAmiss(std::size_t first, std::size_t second) const {
        if (!boxes_[first].Meets(boxes_[second])) return 0.0;
        const double smaller = std::min(geos_.Area(areas_[first]), geos_.Area(areas_[second]));
        const double least = kNegligible * smaller;
        std::map<int, Geometry> parts;  // by solids less holes
        parts[elements_[first].isSolid ? 2 : -2] =
            geos_.Intersection(areas_[first], areas_[second]);
        if (geos_.Area(parts.begin()->second) <= least) return 0.0;
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            if (i == first || i == second) continue;
            if (!boxes_[i].Meets(boxes_[first]) || !boxes_[i].Meets(boxes_[second])) continue;
            std::map<int, Geometry> split;
            const auto add = [&](int weight, Geometry part) {
                if (geos_.Area(part) <= least) return;
                Geometry& there = split[weight];
                there = there ? geos_.Union(there, part) : std::move(part);
            };
            for (const auto& [weight, part] : parts) {
                add(weight + (elements_[i].isSolid ? 1 : -1), geos_.Intersection(part, areas_[i]));
                add(weight, geos_.Difference(part, areas_[i]));
            }
            parts = std::move(split);
        }
        double area = 0.0;
        for (const auto& [weight, part] : parts) {
            if (weight < 0 || weight > 1) area += geos_.Area(part);
        }
        return area;
    }

    void AddOutside(std::size_t hole, Overlaps* overlaps) const {
        if (elements_[hole].isSolid) return;
        Geometry left = geos_.Polygon(elements_[hole].ring);
        for (std::size_t k = 0; k < elements_.size(); ++k) {
            if (elements_[k].isSolid && boxes_[hole].Meets(boxes_[k])) {
                left = geos_.Difference(left, areas_[k]);
            }
        }
        const double outside = geos_.Area(left);
        if (outside > kNegligible * geos_.Area(areas_[hole])) {
            overlaps->outsideHoles.push_back({hole, hole, outside});
        }
    }

    Geos geos_;
    const std::vector<Element>& elements_;
    std::vector<Geometry> areas_;
    std::vector<Box> boxes_;
};

}  // namespace

bool CanFindOverlaps() {
    return true;
}

Overlaps FindOverlaps(const std::vector<Element>& elements) {
    return Overlay(elements).Find();
}

}  // namespace halvorn::engine
