#include "values/find_faults.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string_view>

#include "base/numbers.h"
#include "geometry/place_text.h"
#include "geometry/ring_area.h"
#include "values/class_rounding.h"

namespace halvorn::engine {

namespace {

using Kind = FindingKind;

// A few places of each kind are enough to begin with.
constexpr std::size_t kMostPlaces = 5;

std::string Count(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

double AreaOf(const Points& ring) {
    return 0.5 * std::fabs(TwiceArea(ring));
}

bool HasNoArea(const Points& ring) {
    const double rounding = AreaRounding(ring);
    return std::isfinite(rounding) && AreaOf(ring) <= rounding;
}

// What one ring tells by itself.
class RingFaults {
public:
    RingFaults(const Element& element, const std::string& unit, std::vector<Finding>& findings)
        : element_(element), unit_(unit), findings_(findings) {}

    void Find() {
        DropRepeatedPoints();
        if (points_.size() < 3) {
            Add(Severity::Error, Kind::TooFewPoints, "it has too few different points",
                "add the missing points", {});
            return;
        }
        if (HasNoArea(points_)) return;
        LookForTurns();
        LookForSmallness();
    }

private:
    void Add(Severity severity, Kind kind, const std::string& problem, const std::string& mend,
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
        Add(Severity::Hint, Kind::RepeatedPoint,
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
                Add(Severity::Warning, Kind::Spike,
                    "a spike without area ends at " + PlaceText(points_[i]),
                    "leave its point out: the class measures its elastic moduli to it", points_[i]);
            }
        }
        if (straight.empty()) return;
        const Point& first = points_[straight[0]];
        Add(Severity::Hint, Kind::StraightVertex,
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
            Add(Severity::Remark, Kind::SmallForClass,
                "its area of " + ShortNumber(area) + " " + unit_ +
                    "^2 is so small that the class gives no torsion constant",
                "for class_values use a smaller unit, such as mm", {});
        } else if (area * kAxisPart < kAxisAgreement) {
            Add(Severity::Remark, Kind::SmallForClass,
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

// What the region tells.
class RegionFaults {
public:
    RegionFaults(const Report& report, std::vector<Finding>& findings)
        : elements_(report.section.elements),
          region_(report.region),
          section_(report.section),
          findings_(findings) {}

    void Find() {
        for (const OddPlace& odd : region_.oddPlaces) Sort(odd);
        TellTurns();
        TellRingsWithoutArea();
        TellOverlaps();
        TellHolesOutside();
        TellContacts();
        TellPinches();
        TellPartsApart();
    }

private:
    struct Amount {
        double area = 0.0;
        double largest = 0.0;
        Point place;

        void Add(double more, const Point& at) {
            area += more;
            if (more > largest) place = at;
            largest = std::max(largest, more);
        }
    };
    using Outlines = std::vector<std::size_t>;

    void Add(Severity severity, Kind kind, std::size_t element, const std::string& problem,
             const std::string& mend, std::optional<Point> place) {
        findings_.push_back({severity, kind, elements_[element].label, problem, mend, place});
    }

    std::string Told(double area) const { return ShortNumber(area) + " " + section_.unit + "^2"; }

    double AreaOfElement(std::size_t i) const { return AreaOf(elements_[i].ring); }

    // Of the outlines round a place the ones with the smallest areas.
    Outlines Smallest(Outlines outlines, std::size_t count) const {
        std::sort(outlines.begin(), outlines.end(), [&](std::size_t a, std::size_t b) {
            const double ofA = AreaOfElement(a), ofB = AreaOfElement(b);
            return ofA < ofB || (ofA == ofB && a > b);
        });
        outlines.resize(std::min(count, outlines.size()));
        std::sort(outlines.begin(), outlines.end());
        return outlines;
    }

    void Sort(const OddPlace& odd) {
        Outlines solids, holes;
        for (const auto& [i, winding] : odd.windings) {
            if (winding != 1) (winding < 0 ? reversed_ : repeated_)[i].Add(odd.area, odd.place);
            (elements_[i].isSolid ? solids : holes).push_back(i);
        }
        const auto solidCount = static_cast<int>(solids.size());
        const auto holeCount = static_cast<int>(holes.size());
        const int sum = solidCount - holeCount;
        if (sum > 1) {
            overlaps_[Smallest(solids, static_cast<std::size_t>(sum))].Add(odd.area, odd.place);
        } else if (sum < 0 && solidCount == 0) {
            for (const std::size_t hole : holes) outside_[hole].Add(odd.area, odd.place);
        } else if (sum < 0) {
            overlaps_[Smallest(holes, static_cast<std::size_t>(1 - sum))].Add(odd.area, odd.place);
        }
    }

    // A place where an outline crosses itself, if it does.
    std::optional<Point> OwnCrossing(std::size_t i) const {
        for (const OutlineCrossing& crossing : region_.crossings) {
            if (Slot(crossing.first) == i && Slot(crossing.second) == i) return crossing.place;
        }
        return {};
    }

    void TellTurns() {
        // Less is what rounding does to curves that meet at a tangent.
        constexpr double kLeastLoop = 1e-6;  // of the outline's area
        std::set<std::size_t> told;
        for (const auto* const amounts : {&reversed_, &repeated_}) {
            for (const auto& [i, amount] : *amounts) {
                if (amount.area <= kLeastLoop * std::max(AreaOfElement(i), amount.area)) continue;
                if (!told.insert(i).second) continue;
                const auto crossing = OwnCrossing(i);
                if (crossing || amounts == &reversed_) {
                    TellSelfCrossing(i, crossing.value_or(amount.place));
                } else {
                    Add(Severity::Warning, Kind::RepeatedTurn, i,
                        "it runs round a part of its area more than once: " + Told(amount.area) +
                            " at " + PlaceText(amount.place) + " count once here",
                        "run round a hole in the other sense, and round each part once",
                        amount.place);
                }
            }
        }
    }

    void TellRingsWithoutArea() {
        if (region_.size == 0.0) return;
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            if (!HasNoArea(elements_[i].ring) || OwnCrossing(i)) continue;
            Add(Severity::Error, Kind::NoArea, i, "it encloses no area",
                "look for missing points, or for points in a wrong order", {});
        }
    }

    void TellSelfCrossing(std::size_t i, const Point& place) {
        const bool isWall = section_.polyline && section_.polyline->kind != PolylineKind::Solid;
        if (isWall) {
            Add(Severity::Warning, Kind::SelfCrossing, i,
                "the wall crosses itself at " + PlaceText(place),
                "its material there counts once; draw the line without crossings", place);
        } else {
            Add(Severity::Error, Kind::SelfCrossing, i, "it crosses itself at " + PlaceText(place),
                "bring its points into order, or draw each part as an outline", place);
        }
    }

    void TellOverlaps() {
        constexpr double kNegligible = 1e-9;  // of the smallest of the outlines
        for (const auto& [outlines, amount] : overlaps_) {
            const std::size_t first = outlines.front();
            double least = AreaOfElement(first);
            std::string others;
            for (std::size_t k = 1; k < outlines.size(); ++k) {
                least = std::min(least, AreaOfElement(outlines[k]));
                others += (k > 1 ? " and \"" : "\"") + elements_[outlines[k]].label + "\"";
            }
            if (others.empty() || amount.area <= kNegligible * least) continue;
            const bool isSolid = elements_[first].isSolid;
            Add(Severity::Warning, Kind::Overlap, first,
                std::string("it overlaps ") + (isSolid ? "" : "the hole ") + others + ": " +
                    Told(amount.area) + " at " + PlaceText(amount.place) +
                    (isSolid ? " count once here, and in class_values for each"
                             : " are taken once here, and in class_values for each"),
                isSolid ? "move one of them or join both to one contour"
                        : "move one of them or join both to one hole",
                amount.place);
        }
    }

    void TellHolesOutside() {
        constexpr double kNegligible = 1e-9;  // of the hole
        for (const auto& [i, amount] : outside_) {
            if (amount.area <= kNegligible * AreaOfElement(i)) continue;
            Add(Severity::Warning, Kind::HoleOutside, i,
                Told(amount.area) + " of this hole lie outside every solid, at " +
                    PlaceText(amount.place) +
                    "; they take nothing here, and are subtracted in "
                    "class_values",
                "move it inside, or give the solid around it", amount.place);
        }
    }

    std::string Distance(double distance) const {
        return ShortNumber(distance) + " " + section_.unit;
    }

    void TellContacts() {
        for (const OutlineContact& miss : region_.nearMisses) {
            Add(Severity::Warning, Kind::NearMiss, Slot(miss.vertexOf),
                "it comes within " + Distance(miss.distance) + " of \"" +
                    elements_[Slot(miss.edgeOf)].label + "\" at " + PlaceText(miss.place) +
                    " and does not touch it",
                "let them touch, or move them apart", miss.place);
        }
        std::map<std::pair<Index, Index>, OutlineContact> farthest;
        for (const OutlineContact& moved : region_.moved) {
            auto& contact = farthest[{moved.vertexOf, moved.edgeOf}];
            if (moved.distance >= contact.distance) contact = moved;
        }
        for (const auto& [pair, contact] : farthest) {
            Add(Severity::Remark, Kind::SetOnto, Slot(pair.first),
                "it is set onto \"" + elements_[Slot(pair.second)].label + "\" at " +
                    PlaceText(contact.place) + ", " + Distance(contact.distance) + " away",
                "right where they are meant to touch", contact.place);
        }
    }

    void TellPinches() {
        for (std::size_t k = 0; k < std::min(region_.pinches.size(), kMostPlaces); ++k) {
            const Point& place = region_.pinches[k];
            findings_.push_back(
                {Severity::Warning, Kind::Pinch, section_.source,
                 "the material hangs together in one point only at " + PlaceText(place),
                 "join it there, or part it", place});
        }
    }

    void TellPartsApart() {
        if (region_.parts.size() < 2) return;
        const Part& second = region_.parts[1];
        const Point place = region_.frame.FromFrame(second.outline.front());
        findings_.push_back({Severity::Remark, Kind::PartsApart, section_.source,
                             "the section is in " + std::to_string(region_.parts.size()) +
                                 " parts that are not joined, one of them at " + PlaceText(place) +
                                 "; its values hold where something makes them act as one",
                             "", place});
    }

    const std::vector<Element>& elements_;
    const Region& region_;
    const SectionModel& section_;
    std::vector<Finding>& findings_;
    std::map<std::size_t, Amount> reversed_, repeated_, outside_;
    std::map<Outlines, Amount> overlaps_;
};

void LookAtGivenValues(const Element& element, std::vector<Finding>& findings) {
    constexpr double kAgreement = 0.1;
    if (!element.given) return;
    const double drawn = AreaOf(element.ring);
    if (std::fabs(drawn - element.given->area) <= kAgreement * element.given->area) return;
    findings.push_back({Severity::Warning,
                        Kind::GivenValues,
                        element.label,
                        "its outline encloses " + ShortNumber(drawn) + ", the area given is " +
                            ShortNumber(element.given->area),
                        "values are of the outline, class_values of what is given: check both, and "
                        "their unit",
                        {}});
}

void LookForMissingRegion(const Report& report, std::vector<Finding>& findings) {
    const auto isError = [](const Finding& finding) { return finding.severity == Severity::Error; };
    if (report.whyNoRegion.empty() || std::any_of(findings.begin(), findings.end(), isError)) {
        return;
    }
    const bool isArranged = report.region.size > 0.0;
    findings.push_back({Severity::Error,
                        isArranged ? Kind::NoArea : Kind::NotArranged,
                        report.section.source,
                        report.whyNoRegion,
                        isArranged ? "look for missing points, and for holes that are too large"
                                   : "correct the coordinates, or bring the outlines into order",
                        {}});
}

}  // namespace

std::vector<Finding> FindFaults(const Report& report) {
    const SectionModel& section = report.section;
    std::vector<Finding> findings;
    for (const Element& element : section.elements) {
        RingFaults(element, section.unit, findings).Find();
        LookAtGivenValues(element, findings);
    }
    RegionFaults(report, findings).Find();
    LookForMissingRegion(report, findings);
    for (const std::string& remark : section.remarks) {
        findings.push_back({Severity::Remark, Kind::Reading, section.source, remark, "", {}});
    }
    return findings;
}

const Finding* FindSelfCrossing(const std::vector<Finding>& findings) {
    const auto found = std::find_if(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.kind == FindingKind::SelfCrossing;
    });
    return found == findings.end() ? nullptr : &*found;
}

}  // namespace halvorn::engine
