#include "values/region_findings.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>

#include "base/numbers.h"
#include "geometry/box.h"
#include "geometry/place_text.h"
#include "geometry/rings.h"
#include "model/composite.h"
#include "values/ring_findings.h"

namespace halvorn::engine {

namespace {

using Kind = FindingKind;

// What the region tells.
class RegionFindings {
public:
    RegionFindings(const SectionModel& section, const Region& region,
                   std::vector<Finding>& findings)
        : elements_(section.elements),
          region_(region),
          section_(section),
          findings_(findings),
          isComposite_(IsComposite(section.elements)) {}

    void Add() {
        for (const OddPlace& odd : region_.oddPlaces) Gather(odd);
        TellTurns();
        TellRingsWithoutArea();
        TellOverlaps();
        TellDisplaced();
        TellTakenLater();
        TellHolesInLaps();
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

    struct Layers {
        Outlines solids, holes;
        int Sum() const { return static_cast<int>(solids.size()) - static_cast<int>(holes.size()); }
    };

    struct Displacement {
        Amount amount;
        std::set<std::size_t> by;  // stiffer solids
    };

    void Tell(Severity severity, Kind kind, std::size_t element, const std::string& problem,
              const std::string& mend, std::optional<Point> place) {
        findings_.push_back({severity, kind, elements_[element].label, problem, mend, place});
    }

    // Without what rounding leaves of a 0.
    Point Clean(Point place) const {
        constexpr double kNothing = 1e-12;  // of the section's size
        const double least = kNothing * region_.frame.LengthFromFrame(region_.size);
        if (std::fabs(place.x) <= least) place.x = 0.0;
        if (std::fabs(place.y) <= least) place.y = 0.0;
        return place;
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

    void Gather(const OddPlace& odd) {
        for (const auto& [i, winding] : odd.windings) {
            if (winding != 1)
                (winding < 0 ? reversed_ : repeated_)[i].Add(odd.area, Clean(odd.place));
        }
        std::map<double, Layers, std::greater<>> materials;  // by modular ratio
        Layers ofAll;
        const bool hasIsland = HasIsland(odd);
        for (const auto& [i, winding] : odd.windings) {
            const Element& element = elements_[i];
            const bool isOfAll = isComposite_ && element.actsOnAll;
            if (isComposite_ && hasIsland && !IsIsland(i, odd)) continue;
            Layers& layers = isOfAll ? ofAll : materials[element.modularRatio];
            (element.isSolid ? layers.solids : layers.holes).push_back(i);
        }
        const bool isTaken = ofAll.holes.size() > ofAll.solids.size();
        if (isTaken) {
            GatherTaken(materials, ofAll.holes.front(), odd);
        } else {
            GatherDisplaced(materials, odd);
        }
        for (const auto& [ratio, layers] : materials) {
            if (!isTaken) Gather(layers.solids, layers.holes, odd);
        }
        if (!isComposite_ && odd.sum > 0 && !hasIsland) {
            for (const auto& [i, winding] : odd.windings) {
                if (!elements_[i].isSolid) inLaps_[i].Add(odd.area, Clean(odd.place));
            }
        }
        if (ofAll.holes.empty()) return;
        // To a hole in all of them, materials are one solid.
        for (const auto& [ratio, layers] : materials) {
            if (layers.Sum() <= 0) continue;
            ofAll.solids.push_back(layers.solids.front());
            break;
        }
        Gather(ofAll.solids, ofAll.holes, odd);
    }

    // Whether a solid lies within every hole round a place, and there is one.
    bool IsIsland(std::size_t solid, const OddPlace& odd) const {
        if (!elements_[solid].isSolid || (isComposite_ && elements_[solid].actsOnAll)) return false;
        if (isComposite_) return !HolesAround(elements_[solid], elements_).empty();
        bool isWithin = false;
        for (const auto& [i, winding] : odd.windings) {
            const Element& hole = elements_[i];
            if (hole.isSolid) continue;
            if (!LiesWithin(elements_[solid].ring, hole.ring)) return false;
            isWithin = true;
        }
        return isWithin;
    }

    bool HasIsland(const OddPlace& odd) const {
        return std::any_of(odd.windings.begin(), odd.windings.end(),
                           [&](const auto& winding) { return IsIsland(winding.first, odd); });
    }

    void GatherDisplaced(const std::map<double, Layers, std::greater<>>& materials,
                         const OddPlace& odd) {
        const Layers* stiffest = nullptr;
        for (const auto& [ratio, layers] : materials) {
            if (layers.Sum() <= 0) continue;
            if (stiffest == nullptr) {
                stiffest = &layers;
                continue;
            }
            Displacement& displacement = displaced_[layers.solids.front()];
            displacement.amount.Add(odd.area, Clean(odd.place));
            displacement.by.insert(stiffest->solids.front());
        }
    }

    // A hole in all materials takes what comes after it, too: who draws a groove in one part and
    // then what is glued into it may not mean that.
    void GatherTaken(const std::map<double, Layers, std::greater<>>& materials, std::size_t hole,
                     const OddPlace& odd) {
        Outlines solids;
        for (const auto& [ratio, layers] : materials) {
            solids.insert(solids.end(), layers.solids.begin(), layers.solids.end());
        }
        const auto isBefore = [&](std::size_t solid) { return solid < hole; };
        if (std::none_of(solids.begin(), solids.end(), isBefore)) return;
        for (const std::size_t solid : solids) {
            if (!isBefore(solid)) takenLater_[{hole, solid}].Add(odd.area, Clean(odd.place));
        }
    }

    void TellTakenLater() {
        constexpr double kNegligible = 1e-9;  // of the solid
        for (const auto& [pair, amount] : takenLater_) {
            const auto& [hole, solid] = pair;
            if (amount.area <= kNegligible * AreaOfElement(solid)) continue;
            Tell(Severity::Warning, Kind::Overlap, hole,
                 "this hole takes " + Told(amount.area) + " of \"" + elements_[solid].label +
                     "\" at " + PlaceText(amount.place) + ", which comes after it",
                 "divide that at the edge of the hole: a part that lies within the hole stays",
                 amount.place);
        }
    }

    // Of solids and holes that act on each other at a place.
    void Gather(const Outlines& solids, const Outlines& holes, const OddPlace& odd) {
        const auto solidCount = static_cast<int>(solids.size());
        const auto holeCount = static_cast<int>(holes.size());
        const int sum = solidCount - holeCount;
        if (sum > 1) {
            overlaps_[Smallest(solids, static_cast<std::size_t>(sum))].Add(odd.area,
                                                                           Clean(odd.place));
        } else if (sum < 0 && solidCount == 0) {
            for (const std::size_t hole : holes) outside_[hole].Add(odd.area, Clean(odd.place));
        } else if (sum < 0) {
            overlaps_[Smallest(holes, static_cast<std::size_t>(1 - sum))].Add(odd.area,
                                                                              Clean(odd.place));
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
                    Tell(Severity::Warning, Kind::RepeatedTurn, i,
                         "it runs round a part of its area more than once: " + Told(amount.area) +
                             " at " + PlaceText(amount.place) + " count once",
                         "run round a hole in the other sense, and round each part once",
                         amount.place);
                }
            }
        }
    }

    void TellRingsWithoutArea() {
        if (region_.size == 0.0) return;
        constexpr double kSmallest = 1e-8;  // of the section; ten times what is one point
        const double size = region_.frame.LengthFromFrame(region_.size);
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            if (OwnCrossing(i)) continue;
            if (HasNoArea(elements_[i].ring)) {
                Tell(Severity::Error, Kind::NoArea, i, "it encloses no area",
                     "look for missing points, or for points in a wrong order", {});
            } else if (Box(elements_[i].ring).Diagonal() <= kSmallest * size) {
                Tell(Severity::Error, Kind::NoArea, i,
                     "it is so small beside the section that its points are one",
                     "look for a point that is far off, or leave it out", {});
            }
        }
    }

    void TellSelfCrossing(std::size_t i, const Point& place) {
        if (elements_[i].isWall) {
            Tell(Severity::Warning, Kind::SelfCrossing, i,
                 "the wall crosses itself at " + PlaceText(place),
                 "its material there counts once; draw the line without crossings", place);
        } else {
            Tell(Severity::Error, Kind::SelfCrossing, i, "it crosses itself at " + PlaceText(place),
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
            Tell(Severity::Warning, Kind::Overlap, first,
                 std::string("it overlaps ") + (isSolid ? "" : "the hole ") + others + ": " +
                     Told(amount.area) + " at " + PlaceText(amount.place) +
                     (isSolid ? " count once" : " are taken once"),
                 isSolid ? "move one of them or join both to one contour"
                         : "move one of them or join both to one hole",
                 amount.place);
        }
    }

    void TellDisplaced() {
        constexpr double kNegligible = 1e-9;  // of the softer solid
        for (const auto& [softer, displacement] : displaced_) {
            const auto& [amount, by] = displacement;
            if (amount.area <= kNegligible * AreaOfElement(softer)) continue;
            const std::size_t others = by.size() - 1;
            Tell(Severity::Remark, Kind::Overlap, softer,
                 "the stiffer \"" + elements_[*by.begin()].label + "\"" +
                     (others > 0 ? " and " + std::to_string(others) + " more take " : " takes ") +
                     Told(amount.area) + " of it at " + PlaceText(amount.place),
                 "", amount.place);
        }
    }

    void TellHolesInLaps() {
        constexpr double kNegligible = 1e-9;  // of the hole
        for (const auto& [i, amount] : inLaps_) {
            if (amount.area <= kNegligible * AreaOfElement(i)) continue;
            Tell(Severity::Warning, Kind::Overlap, i,
                 "of this hole " + Told(amount.area) + " at " + PlaceText(amount.place) +
                     " stay material: solids overlap there, and it takes one of them",
                 "join the solids to one, or repeat the hole", amount.place);
        }
    }

    // A notch is cut with a hole that sticks out.
    void TellHolesOutside() {
        constexpr double kNegligible = 1e-9;  // of the hole
        for (const auto& [i, amount] : outside_) {
            const double own = AreaOfElement(i);
            if (amount.area <= kNegligible * own) continue;
            const bool isNotch = amount.area < (1.0 - kNegligible) * own;
            Tell(isNotch ? Severity::Remark : Severity::Warning, Kind::HoleOutside, i,
                 Told(amount.area) + " of this hole lie outside every solid, at " +
                     PlaceText(amount.place) + "; they take nothing",
                 isNotch ? "nothing to do where it cuts an edge; else move it inside"
                         : "move it inside, or give the solid around it",
                 amount.place);
        }
    }

    std::string Distance(double distance) const {
        return ShortNumber(distance) + " " + section_.unit;
    }

    void TellContacts() {
        for (const OutlineContact& miss : region_.nearMisses) {
            Tell(Severity::Warning, Kind::NearMiss, Slot(miss.vertexOf),
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
            Tell(Severity::Remark, Kind::SetOnto, Slot(pair.first),
                 "it is set onto \"" + elements_[Slot(pair.second)].label + "\" at " +
                     PlaceText(contact.place) + ", " + Distance(contact.distance) + " away",
                 "nothing to do where they are meant to touch", contact.place);
        }
    }

    void TellPinches() {
        for (std::size_t k = 0; k < std::min(region_.pinches.size(), kMostPlaces); ++k) {
            const Point place = Clean(region_.pinches[k]);
            findings_.push_back(
                {Severity::Warning, Kind::Pinch, section_.source,
                 "the material hangs together in one point only at " + PlaceText(place),
                 "join it there, or part it", place});
        }
    }

    void TellPartsApart() {
        if (region_.parts.size() < 2) return;
        const Part& second = region_.parts[1];
        const Point place = Clean(region_.frame.FromFrame(second.outline.front()));
        findings_.push_back({Severity::Remark, Kind::PartsApart, section_.source,
                             "the section is in " + std::to_string(region_.parts.size()) +
                                 " parts that share no edge, one of them at " + PlaceText(place) +
                                 "; its values hold where something makes them act as one",
                             "", place});
    }

    const std::vector<Element>& elements_;
    const Region& region_;
    const SectionModel& section_;
    std::vector<Finding>& findings_;
    std::map<std::size_t, Amount> reversed_, repeated_, outside_, inLaps_;
    std::map<Outlines, Amount> overlaps_;
    bool isComposite_;
    std::map<std::size_t, Displacement> displaced_;
    std::map<std::pair<std::size_t, std::size_t>, Amount>
        takenLater_;  // by hole and solid  // by the softer solid
};

}  // namespace

void AddRegionFindings(const SectionModel& section, const Region& region,
                       std::vector<Finding>* findings) {
    RegionFindings(section, region, *findings).Add();
}

}  // namespace halvorn::engine
