#include "values/ring_findings.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "geometry/box.h"
#include "geometry/place_text.h"
#include "geometry/rings.h"
#include "values/class_rounding.h"

namespace halvorn::engine {

namespace {

using Kind = FindingKind;

std::string Count(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

// What one ring tells by itself.
class RingFindings {
public:
    RingFindings(const Element& element, const std::string& unit, std::vector<Finding>& findings)
        : element_(element), unit_(unit), findings_(findings) {}

    void Add() {
        DropRepeatedPoints();
        if (points_.size() < 3) {
            Tell(Severity::Error, Kind::TooFewPoints, "it has too few different points",
                 "add the missing points", {});
            return;
        }
        if (HasNoArea(points_)) return;
        LookForTurns();
        LookForSmallness();
    }

private:
    void Tell(Severity severity, Kind kind, const std::string& problem, const std::string& mend,
              std::optional<Point> place) {
        findings_.push_back({severity, kind, element_.label, problem, mend, place});
    }

    void DropRepeatedPoints() {
        const Points& ring = element_.ring;
        std::vector<std::size_t> repeated;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const bool isFirstAgain = i > 0 && i + 1 == ring.size() && ring[i] == ring[0];
            if (isFirstAgain || (!points_.empty() && points_.back() == ring[i])) {
                repeated.push_back(i);
            } else {
                points_.push_back(ring[i]);
            }
        }
        if (repeated.empty()) return;
        const Point& first = ring[repeated[0]];
        Tell(Severity::Hint, Kind::RepeatedPoint,
             Count(repeated.size(), "point repeats", "points repeat") +
                 " the one before, first point " + std::to_string(repeated[0]) + " at " +
                 PlaceText(first),
             "harmless for the values; leave it out, also a last point that repeats the first",
             first);
    }

    // Straight vertices, and spikes, where an edge runs back over the one before.
    void LookForTurns() {
        std::vector<std::size_t> straight;
        std::size_t spikes = 0;
        for (std::size_t i = 0; i < points_.size(); ++i) {
            const Point in = points_[i] - points_[(i + points_.size() - 1) % points_.size()];
            const Point out = points_[(i + 1) % points_.size()] - points_[i];
            const double dot = Dot(in, out);
            constexpr double kAlong = 1e-12;
            const bool isStraight = std::fabs(Cross(in, out)) <= kAlong * std::fabs(dot);
            if (!isStraight || !std::isfinite(dot)) continue;
            if (dot > 0.0) {
                straight.push_back(i);
            } else if (++spikes <= kMostPlaces) {
                Tell(Severity::Warning, Kind::Spike,
                     "a spike without area ends at " + PlaceText(points_[i]),
                     "leave its point out: the class measures its elastic moduli to it",
                     points_[i]);
            }
        }
        if (straight.empty()) return;
        const Point& first = points_[straight[0]];
        Tell(Severity::Hint, Kind::StraightVertex,
             Count(straight.size(), "vertex lies", "vertices lie") +
                 " straight between its neighbours, first point " + std::to_string(straight[0]) +
                 " at " + PlaceText(first),
             "harmless for the values; leave it out to save time", first);
    }

    // The class's tolerances are fixed numbers of the unit (docs/conventions.md).
    void LookForSmallness() {
        constexpr double kSmallestArea = 1e-10;   // below it no equivalent ellipse
        constexpr double kSmallestPolar = 1e-10;  // likewise, of the polar moment
        constexpr double kAxisAgreement = 1e-7;   // where the search of the plastic axis stops
        constexpr double kAxisPart = 1e-4;        // of the area that this may be
        if (element_.given) return;
        const double area = AreaOf(points_);
        const Box box(points_);
        const double size = std::max(box.Width(), box.Height());
        if (area < kSmallestArea || area * size * size / 12.0 < kSmallestPolar) {
            Tell(Severity::Remark, Kind::SmallForClass,
                 "its area of " + ShortNumber(area) + " " + unit_ +
                     "^2 is so small that the class gives no torsion constant",
                 "for class_values use a smaller unit, such as mm", {});
        } else if (area * kAxisPart < kAxisAgreement) {
            Tell(Severity::Remark, Kind::SmallForClass,
                 "the class's search of the plastic axis stops when both sides agree within 1e-7 " +
                     unit_ + "^2, " + ShortNumber(100.0 * kAxisAgreement / area) + " % of its area",
                 "for plastic moduli of class_values use a smaller unit, such as mm", {});
        }
    }

    const Element& element_;
    const std::string& unit_;
    std::vector<Finding>& findings_;
    Points points_;  // without repetitions
};

}  // namespace

bool HasNoArea(const Points& ring) {
    const double rounding = AreaRounding(ring);
    return std::isfinite(rounding) && AreaOf(ring) <= rounding;
}

void AddRingFindings(const Element& element, const std::string& unit,
                     std::vector<Finding>* findings) {
    RingFindings(element, unit, *findings).Add();
}

}  // namespace halvorn::engine
