#include "read/dxf/open_outlines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <tuple>
#include <utility>

#include "geometry/arrangement.h"
#include "geometry/box.h"
#include "geometry/lengths.h"
#include "geometry/outline_sides.h"
#include "geometry/ring_area.h"

namespace halvorn::engine::dxf {

namespace {

// Gaps together, of the length of what they interrupt [-]: a stroke that stays open on purpose has
// its ends farther apart.
constexpr double kOpenOnPurpose = 0.05;

// Each is compared with every outline; of more chains the longest are looked at.
constexpr std::size_t kMostChains = 1000;

// Every end is compared with every other. A drawing with more loose chains than this is looked at
// for outlines of several among the longest.
constexpr std::size_t kMostLinked = 300;

// Area over that of the circle of the same perimeter [-]. A single chain below the first encloses
// nothing but what rounding leaves; a ring of several below the second may be parallel lines, as
// hatches are drawn: they reach pi / 4 times kOpenOnPurpose * 4 = 0.16 at most.
constexpr double kLeastFilledByOne = 1e-6;
constexpr double kLeastFilledBySeveral = 0.2;

// Returns a length in millimetres rounded up to two digits, a little more than it is.
std::string RoundedUp(double length) {
    const double least = 1.001 * length;
    const double digit = std::pow(10.0, std::floor(std::log10(least)) - 1.0);
    return Shown(std::ceil(least / digit) * digit);
}

// A gap between two ends of chains. End 2 i is the first point of the chain i, end 2 i + 1 its last
// one.
struct Gap {
    double width = 0.0;
    std::size_t from = 0;
    std::size_t to = 0;

    bool operator<(const Gap& other) const {
        return std::tie(width, from, to) < std::tie(other.width, other.from, other.to);
    }
};

class Search {
public:
    Search(std::vector<LeftOutChain> chains, const std::vector<Curve>& outlines, double millimetre,
           const std::string& source)
        : chains_(std::move(chains)), millimetre_(millimetre), source_(source) {
        std::stable_sort(chains_.begin(), chains_.end(), [](const auto& one, const auto& other) {
            return Length(one.points) > Length(other.points);
        });
        if (chains_.size() > kMostChains) chains_.resize(kMostChains);
        for (const Curve& outline : outlines) {
            outlines_.push_back({outline.line, kRead, &outline.points, Box(outline.points)});
        }
        for (std::size_t i = 0; i < chains_.size(); ++i) {
            Points& points = chains_[i].points;
            points.erase(std::unique(points.begin(), points.end()), points.end());
            lengths_.push_back(Length(points));
            const Gap gap = GapBetween(2 * i + 1, 2 * i);
            if (chains_[i].isAslant || gap.width >= kOpenOnPurpose * lengths_[i]) continue;
            if (!IsFilled(points, 1)) continue;
            outlines_.push_back({chains_[i].firstLine, i, &points, Box(points)});
        }
    }

    // Another end may lie nearer to that of a chain than its own other one, so each chain is looked
    // at alone too: first, unless an aslant curve may be what fills its gap.
    void Run() {
        const bool hasAslant =
            std::any_of(chains_.begin(), chains_.end(), [](const auto& c) { return c.isAslant; });
        if (hasAslant) LinkNearestEnds();
        for (std::size_t i = 0; i < chains_.size(); ++i) Consider({{0.0, 2 * i + 1, 2 * i}});
        if (!hasAslant) LinkNearestEnds();
        if (candidates_.empty()) return;
        try {
            RefuseFirst();
        } catch (const ArrangementError& error) {
            RefuseTangle(error);
        }
    }

private:
    static constexpr std::size_t kRead = std::numeric_limits<std::size_t>::max();

    // What a ring may go round.
    struct Outline {
        int line;
        std::size_t chain;  // nearly closed and left out; kRead: none, it is read
        const Points* ring;
        Box box;
    };

    // A ring that chains would be if their gaps were closed.
    struct Candidate {
        std::vector<Gap> gaps;  // one after each chain
        Points ring;
        bool isFilled;  // so that it may lie within an outline
    };

    static bool IsFilled(const Points& ring, std::size_t chains) {
        const double perimeter = Perimeter(ring);
        const double least = chains == 1 ? kLeastFilledByOne : kLeastFilledBySeveral;
        return 2.0 * std::numbers::pi * std::abs(TwiceArea(ring)) >= least * perimeter * perimeter;
    }

    const Point& PointAt(std::size_t end) const {
        const Points& points = chains_[end / 2].points;
        return end % 2 == 0 || chains_[end / 2].isClosed ? points.front() : points.back();
    }

    int LineAt(std::size_t end) const {
        return end % 2 == 0 ? chains_[end / 2].firstLine : chains_[end / 2].lastLine;
    }

    Gap GapBetween(std::size_t from, std::size_t to) const {
        return {Distance(PointAt(from), PointAt(to)), from, to};
    }

    // Joins the two nearest ends, then the next nearest, until rings close.
    void LinkNearestEnds() {
        const std::size_t ends = 2 * std::min(chains_.size(), kMostLinked);
        std::vector<std::size_t> farEnd(ends), mate(ends, ends);
        for (std::size_t end = 0; end < ends; ++end) farEnd[end] = end ^ 1U;
        for (const Gap& gap : GapsAmong(ends)) {
            if (mate[gap.from] != ends || mate[gap.to] != ends) continue;
            mate[gap.from] = gap.to;
            mate[gap.to] = gap.from;
            const std::size_t one = farEnd[gap.from], other = farEnd[gap.to];
            if (one == gap.to) Consider(GapsOfRing(gap.to, mate));
            farEnd[one] = other;
            farEnd[other] = one;
        }
    }

    std::vector<Gap> GapsAmong(std::size_t ends) const {
        double total = 0.0;
        for (std::size_t i = 0; i < ends / 2; ++i) total += lengths_[i];
        std::vector<Gap> gaps;
        for (std::size_t from = 0; from < ends; ++from) {
            if (chains_[from / 2].isClosed) continue;
            for (std::size_t to = from + 1; to < ends; ++to) {
                const Gap gap = GapBetween(from, to);
                const bool isNear = gap.width < kOpenOnPurpose * total;
                if (isNear && !chains_[to / 2].isClosed) gaps.push_back(gap);
            }
        }
        std::sort(gaps.begin(), gaps.end());
        return gaps;
    }

    // The gaps of the ring that enters a chain at `entry`, one after each of its chains.
    static std::vector<Gap> GapsOfRing(std::size_t entry, const std::vector<std::size_t>& mate) {
        std::vector<Gap> gaps;
        for (std::size_t at = entry;;) {
            const std::size_t exit = at ^ 1U;
            gaps.push_back({0.0, exit, mate[exit]});
            at = mate[exit];
            if (at == entry) return gaps;
        }
    }

    // Keeps the ring of the chains before each gap when it may hold an outline or lie within one.
    void Consider(std::vector<Gap> gaps) {
        double open = 0.0, length = 0.0;
        Points ring;
        for (Gap& gap : gaps) {
            gap = GapBetween(gap.from, gap.to);
            open += gap.width;
            length += lengths_[gap.from / 2];
        }
        if (open >= kOpenOnPurpose * length) return;
        for (const Gap& gap : gaps) {
            Points points = chains_[gap.from / 2].points;
            if (gap.from % 2 == 0) std::reverse(points.begin(), points.end());
            ring.insert(ring.end(), points.begin(), points.end());
        }
        ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
        const Box box(ring);
        const bool isAslant = std::any_of(gaps.begin(), gaps.end(), [this](const Gap& gap) {
            return chains_[gap.from / 2].isAslant;
        });
        const bool isFilled = !isAslant && IsFilled(ring, gaps.size());
        const bool matters =
            std::any_of(outlines_.begin(), outlines_.end(), [&](const Outline& outline) {
                if (!IsOwn(outline, gaps) && box.Holds(outline.box)) return true;
                return isFilled && outline.chain == kRead && !box.IsApartFrom(outline.box, 0.0);
            });
        if (matters) candidates_.push_back({std::move(gaps), std::move(ring), isFilled});
    }

    static bool IsOwn(const Outline& outline, const std::vector<Gap>& gaps) {
        return std::any_of(gaps.begin(), gaps.end(),
                           [&](const Gap& gap) { return gap.from / 2 == outline.chain; });
    }

    // Refuses the first candidate that holds an outline or lies within one.
    void RefuseFirst() const {
        std::vector<const Points*> rings;
        for (const Outline& outline : outlines_) rings.push_back(outline.ring);
        for (const Candidate& candidate : candidates_) rings.push_back(&candidate.ring);
        const OutlineSides sides(std::move(rings));
        for (std::size_t i = 0; i < candidates_.size(); ++i) {
            const Candidate& candidate = candidates_[i];
            const std::size_t ring = outlines_.size() + i;
            if (const Outline* const held = HeldBy(candidate, ring, sides)) {
                RefuseRing(candidate.gaps,
                           (held->chain == kRead ? "goes round the outline at line "
                                                 : "goes round the open chain at line ") +
                               std::to_string(held->line));
            }
            if (!candidate.isFilled) continue;
            if (const Outline* const holder = HolderOf(ring, sides)) {
                RefuseRing(candidate.gaps,
                           "lies within the outline at line " + std::to_string(holder->line));
            }
        }
    }

    // What crosses too often to be arranged may be an outline or not. Read outlines that do so are
    // left to their nesting.
    void RefuseTangle(const ArrangementError& error) const {
        if (error.Second() == kNone) return;
        const std::size_t ring = Slot(std::max(error.First(), error.Second()));
        const bool isCandidate = ring >= outlines_.size();
        if (!isCandidate && outlines_[ring].chain == kRead) return;
        Refuse(source_,
               isCandidate ? LineAt(candidates_[ring - outlines_.size()].gaps.front().from)
                           : outlines_[ring].line,
               std::string("an open chain is nearly closed, and together ") + error.what(),
               kNoOutline);
    }

    // Returns an outline within a candidate, a read one first; none also when the candidate runs
    // along a read one, which then goes round what it holds.
    const Outline* HeldBy(const Candidate& candidate, std::size_t ring,
                          const OutlineSides& sides) const {
        const Outline* held = nullptr;
        for (std::size_t i = 0; i < outlines_.size(); ++i) {
            if (IsOwn(outlines_[i], candidate.gaps)) continue;
            const Sides own = sides.Of(i, ring);
            if (own.LieOn() && outlines_[i].chain == kRead) return nullptr;
            if (own.inside && !own.outside && held == nullptr) held = &outlines_[i];
        }
        return held;
    }

    // Returns a read outline round a candidate; none also when the candidate runs along one.
    const Outline* HolderOf(std::size_t ring, const OutlineSides& sides) const {
        const Outline* holder = nullptr;
        for (std::size_t i = 0; i < outlines_.size() && outlines_[i].chain == kRead; ++i) {
            const Sides own = sides.Of(ring, i);
            if (own.LieOn()) return nullptr;
            if (!own.outside && holder == nullptr) holder = &outlines_[i];
        }
        return holder;
    }

    [[noreturn]] void RefuseRing(const std::vector<Gap>& gaps, const std::string& lies) const {
        for (const Gap& gap : gaps) {
            if (!chains_[gap.from / 2].isAslant) continue;
            Refuse(source_, chains_[gap.from / 2].firstLine,
                   "a curve that is not parallel to the x-y plane " + lies +
                       (gaps.size() > 1 ? " with the chains that it joins" : ""),
                   std::string("give all its points the same z; ") + kNoOutline);
        }
        const Gap& gap = *std::max_element(gaps.begin(), gaps.end());
        const Point &from = PointAt(gap.from), &to = PointAt(gap.to);
        Refuse(source_, LineAt(gap.from),
               (gaps.size() == 1 ? "an open chain " : "a ring of open chains ") + lies +
                   ", with a gap of " + Shown(gap.width) + " from " + ShownPoint(from.x, from.y) +
                   " to " + ShownPoint(to.x, to.y) + " at line " + std::to_string(LineAt(gap.to)),
               "close it in the drawing or give --join-tolerance " +
                   RoundedUp(gap.width / millimetre_) + "; " + kNoOutline);
    }

    static constexpr const char* kNoOutline =
        "if it is no outline, hide its layer or name the section's with --layer";

    std::vector<LeftOutChain> chains_;  // the longest first
    std::vector<double> lengths_;
    std::vector<Outline> outlines_;  // the read ones first
    std::vector<Candidate> candidates_;
    double millimetre_;
    const std::string& source_;
};

}  // namespace

void RefuseOpenOutlines(std::vector<LeftOutChain> chains, const std::vector<Curve>& outlines,
                        double millimetre, const std::string& source) {
    if (!chains.empty()) Search(std::move(chains), outlines, millimetre, source).Run();
}

}  // namespace halvorn::engine::dxf
