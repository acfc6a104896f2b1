#include "search.h"

#include <algorithm>

namespace halvorn::benchmarks {

namespace {

class OnePass : public Clipper {
public:
    explicit OnePass(const Section& section) : contours_(section.contours) {}

    double AreaBeyond(const HalfPlane& side) override { return Sum<false>(side).area; }
    Part PartBeyond(const HalfPlane& side) override { return Sum<true>(side); }

private:
    // Trapezoids between the axis and the part of each edge beyond it (Green's theorem).
    template <bool withMoment>
    Part Sum(const HalfPlane& side) const {
        Part sum;
        const std::size_t u = side.isVertical ? 1 : 0, v = 1 - u;
        const double sign = side.isHigh ? 1.0 : -1.0;
        for (const std::vector<double>& ring : contours_) {
            Part part;
            double u0 = ring[ring.size() - 2 + u];
            double v0 = sign * (ring[ring.size() - 2 + v] - side.pos);
            for (std::size_t i = 0; i < ring.size(); i += 2) {
                const double u1 = ring[i + u], v1 = sign * (ring[i + v] - side.pos);
                if (v0 > 0.0 || v1 > 0.0) {
                    double ua = u0, va = v0, ub = u1, vb = v1;
                    if (v0 < 0.0) ua = u0 + (u1 - u0) * (v0 / (v0 - v1)), va = 0.0;
                    if (v1 < 0.0) ub = u0 + (u1 - u0) * (v0 / (v0 - v1)), vb = 0.0;
                    part.area += (ub - ua) * (va + vb);
                    if (withMoment) part.moment += (ub - ua) * (va * va + va * vb + vb * vb);
                }
                u0 = u1;
                v0 = v1;
            }
            sum.area += std::abs(part.area) / 2;
            sum.moment += std::abs(part.moment) / 6;
        }
        return sum;
    }

    const std::vector<std::vector<double>>& contours_;
};

double SearchOneDirection(const Section& section, Clipper& clipper, bool isVertical) {
    double low = section.contours[0][isVertical ? 0 : 1], high = low;
    for (const std::vector<double>& ring : section.contours) {
        for (std::size_t i = isVertical ? 0 : 1; i < ring.size(); i += 2) {
            low = std::min(low, ring[i]);
            high = std::max(high, ring[i]);
        }
    }
    const double whole = clipper.AreaBeyond({isVertical, low - 1.0, true});
    double pos = 0.0;
    for (int i = 0; i <= 50; ++i) {
        pos = (high + low) * 0.5;
        const double areaHigh = clipper.AreaBeyond({isVertical, pos, true});
        const double difference = areaHigh - (whole - areaHigh);
        if (std::abs(difference) < 1e-7) break;
        (difference < 0.0 ? high : low) = pos;
    }
    return clipper.PartBeyond({isVertical, pos, true}).moment +
           clipper.PartBeyond({isVertical, pos, false}).moment;
}

}  // namespace

Moduli PlasticSearch(const Section& section, Clipper& clipper) {
    return {SearchOneDirection(section, clipper, false),
            SearchOneDirection(section, clipper, true)};
}

std::unique_ptr<Clipper> MakeOnePass(const Section& section) {
    return std::make_unique<OnePass>(section);
}

}  // namespace halvorn::benchmarks
