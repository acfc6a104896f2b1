#include "read/dxf/join_curves.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

#include "HalvornEngine.h"
#include "geometry/box.h"
#include "geometry/lengths.h"
#include "geometry/rings.h"
#include "read/dxf/end_clusters.h"
#include "read/dxf/open_outlines.h"

namespace halvorn::engine::dxf {

namespace {

// The remarks name this many open chains, and count the others.
constexpr std::size_t kNamedChains = 5;

// Far above any section; every outline is compared with the others.
constexpr std::size_t kMostOutlines = 10000;

// Returns whether two lists of equally many points agree when the second is read from `start` on,
// round, forwards or backwards.
bool Agree(const Points& one, const Points& other, std::size_t start, bool isBackwards,
           double tolerance) {
    const std::size_t n = one.size();
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t k = (start + (isBackwards ? n - i : i)) % n;
        if (Distance(one[i], other[k]) > tolerance) return false;
    }
    return true;
}

bool IsSameOpen(const Curve& one, const Curve& other, double tolerance) {
    const std::size_t n = one.points.size();
    return other.points.size() == n && (Agree(one.points, other.points, 0, false, tolerance) ||
                                        Agree(one.points, other.points, n - 1, true, tolerance));
}

bool IsSameClosed(const Curve& one, const Curve& other, double tolerance) {
    const std::size_t n = one.points.size();
    if (other.points.size() != n) return false;
    // No outline of a section has more points at one place.
    int attempts = 16;
    for (std::size_t start = 0; start < n && attempts > 0; ++start) {
        if (Distance(one.points[0], other.points[start]) > tolerance) continue;
        if (Agree(one.points, other.points, start, false, tolerance)) return true;
        if (Agree(one.points, other.points, start, true, tolerance)) return true;
        --attempts;
    }
    return false;
}

// An outline whose doubled area is below this share of its squared perimeter encloses nothing [-]:
// that much is what rounding leaves of a line that goes forth and back.
bool EnclosesNothing(const Points& ring) {
    constexpr double rounding = 1e-12;
    if (ring.size() < 3) return true;
    double doubleArea = 0.0;
    for (std::size_t i = 1; i + 1 < ring.size(); ++i) {
        doubleArea += (ring[i].x - ring[0].x) * (ring[i + 1].y - ring[0].y) -
                      (ring[i + 1].x - ring[0].x) * (ring[i].y - ring[0].y);
    }
    const double perimeter = Length(ring) + Distance(ring.back(), ring.front());
    return std::abs(doubleArea) <= rounding * perimeter * perimeter;
}

// The last edge of a curve on its way to an end.
struct EndEdge {
    Point before;
    Point end;
};

double Cross(const Point& origin, const Point& p, const Point& q) {
    return (p.x - origin.x) * (q.y - origin.y) - (q.x - origin.x) * (p.y - origin.y);
}

// Returns where two curves meet that run past each other, if their last edges do: an end that lies
// on the other edge within `touching`, else the point in which the edges cross.
std::optional<Point> MeetingPoint(const EndEdge& one, const EndEdge& other, double touching) {
    if (DistanceToSegment(other.end, one.before, one.end) <= touching) return other.end;
    if (DistanceToSegment(one.end, other.before, other.end) <= touching) return one.end;
    const double before = Cross(other.before, other.end, one.before);
    const double after = Cross(other.before, other.end, one.end);
    const double left = Cross(one.before, one.end, other.before);
    const double right = Cross(one.before, one.end, other.end);
    if (before * after >= 0.0 || left * right >= 0.0) return std::nullopt;
    const double at = before / (before - after);
    return Point{one.before.x + at * (one.end.x - one.before.x),
                 one.before.y + at * (one.end.y - one.before.y)};
}

// Gaps that were treated alike: how many, and the widest.
struct Gaps {
    int count = 0;
    double widest = 0.0;
    int line = 0;  // of the curve before the widest

    void Add(double width, int at) {
        ++count;
        if (width > widest) widest = width, line = at;
    }

    std::string Text() const {
        return std::to_string(count) + ", the widest of " + Shown(widest) + " at line " +
               std::to_string(line);
    }
};

// End 2 i is the first point of the open curve i, end 2 i + 1 its last one.
class Joiner {
public:
    Joiner(std::vector<Curve> curves, double tolerance, double millimetre,
           const std::string& source, Notes& notes)
        : curves_(std::move(curves)),
          tolerance_(tolerance),
          merged_(kDefaultJoinTolerance * millimetre),
          source_(source),
          notes_(notes) {}

    // Returns the closed chains, and appends the open ones to `leftOut`.
    std::vector<Curve> Join(std::vector<LeftOutChain>& leftOut) {
        Points ends;
        for (const Curve& curve : curves_) {
            ends.insert(ends.end(), {curve.points.front(), curve.points.back()});
        }
        cluster_ = ClusterPoints(ends, tolerance_);
        isUsed_.assign(curves_.size(), false);
        DropShortOnes();
        DropRepeated();
        CollectEnds();
        std::vector<Curve> rings;
        for (std::size_t end = 0; end < ends.size(); ++end) {
            if (isUsed_[end / 2] || ends_[cluster_[end]].size() != 1) continue;
            const std::vector<std::size_t> chain = Walk(end);
            NoteOpen(chain);
            leftOut.push_back(LeftOut(chain));
        }
        for (std::size_t i = 0; i < curves_.size(); ++i) {
            if (!isUsed_[i]) rings.push_back(Closed(Walk(2 * i)));
        }
        NoteGaps();
        return rings;
    }

private:
    const Point& PointAt(std::size_t end) const {
        const Points& points = curves_[end / 2].points;
        return end % 2 == 0 ? points.front() : points.back();
    }

    void DropShortOnes() {
        for (std::size_t i = 0; i < curves_.size(); ++i) {
            if (cluster_[2 * i] != cluster_[2 * i + 1] || Length(curves_[i].points) > tolerance_) {
                continue;
            }
            isUsed_[i] = true;
            notes_.Count("curves no longer than the join tolerance left out", curves_[i].line);
        }
    }

    void DropRepeated() {
        std::map<std::pair<std::size_t, std::size_t>, std::vector<std::size_t>> kept;
        for (std::size_t i = 0; i < curves_.size(); ++i) {
            if (isUsed_[i]) continue;
            auto& others = kept[std::minmax(cluster_[2 * i], cluster_[2 * i + 1])];
            isUsed_[i] = std::any_of(others.begin(), others.end(), [&](std::size_t other) {
                return IsSameOpen(curves_[i], curves_[other], tolerance_);
            });
            if (isUsed_[i]) {
                notes_.Count("curves drawn twice, taken once", curves_[i].line);
            } else if (others.size() < 3) {
                // Three different ones between the same ends are refused whatever follows.
                others.push_back(i);
            }
        }
    }

    void CollectEnds() {
        ends_.resize(cluster_.size());
        for (std::size_t end = 0; end < cluster_.size(); ++end) {
            if (!isUsed_[end / 2]) ends_[cluster_[end]].push_back(end);
        }
        for (const std::vector<std::size_t>& meeting : ends_) {
            if (meeting.size() > 2) RefuseMeeting(meeting);
        }
    }

    [[noreturn]] void RefuseMeeting(const std::vector<std::size_t>& meeting) const {
        constexpr std::size_t mostNamed = 6;
        std::string lines;
        for (std::size_t i = 0; i < std::min(meeting.size(), mostNamed); ++i) {
            lines += (i == 0 ? "" : ", ") + std::to_string(curves_[meeting[i] / 2].line);
        }
        const auto [x, y] = PointAt(meeting[0]);
        Refuse(source_, curves_[meeting[0] / 2].line,
               std::to_string(meeting.size()) + " curve ends meet at " + ShownPoint(x, y) +
                   " (of the curves at the lines " + lines + "), so it is not clear which belong " +
                   "together",
               "draw each outline as one closed polyline, or hide what is no outline on a layer "
               "that is off");
    }

    // Returns the ends at which a chain is entered, curve by curve, from `end` on to where it stops
    // or comes back.
    std::vector<std::size_t> Walk(std::size_t end) {
        std::vector<std::size_t> chain;
        while (!isUsed_[end / 2]) {
            isUsed_[end / 2] = true;
            chain.push_back(end);
            const std::size_t exit = end ^ 1U;
            const std::vector<std::size_t>& meeting = ends_[cluster_[exit]];
            if (meeting.size() < 2) break;
            end = meeting[0] == exit ? meeting[1] : meeting[0];
        }
        return chain;
    }

    EndEdge EdgeAt(std::size_t end) const {
        const Points& points = curves_[end / 2].points;
        if (end % 2 == 0) return {points[1], points[0]};
        return {points[points.size() - 2], points.back()};
    }

    // Appends to `ring` what leads from one curve to the next. Far ends keep their places: a point
    // between them would turn the edges that lead to it and change the area by half their length
    // times the gap.
    void Join(std::size_t exit, std::size_t entry, Points& ring) {
        const EndEdge one = EdgeAt(exit), other = EdgeAt(entry);
        const Point &p = one.end, &q = other.end;
        const double gap = Distance(p, q);
        const int line = curves_[exit / 2].line;
        // Between two ends one curve within the tolerance may have been dropped, but not a row of
        // them.
        if (gap > 3.0 * tolerance_ && gap > 1e-9 * (std::abs(p.x) + std::abs(p.y))) {
            Refuse(source_, line,
                   "several curves at " + ShownPoint(p.x, p.y) +
                       " are shorter than the join tolerance",
                   "give a smaller join tolerance, or the right unit");
        }
        if (gap <= merged_) {
            closed_.Add(gap, line);
            ring.emplace_back(0.5 * (p.x + q.x), 0.5 * (p.y + q.y));
            return;
        }
        const auto meeting = MeetingPoint(one, other, merged_);
        if (meeting && std::max(Distance(p, *meeting), Distance(q, *meeting)) <= tolerance_) {
            cut_.Add(gap, line);
            ring.push_back(*meeting);
        } else {
            bridged_.Add(gap, line);
            ring.insert(ring.end(), {p, q});
        }
    }

    Curve Closed(const std::vector<std::size_t>& chain) {
        Curve ring;
        ring.isClosed = true;
        ring.line = curves_[chain.front() / 2].line;
        std::size_t exit = chain.back() ^ 1U;
        for (const std::size_t entry : chain) {
            Join(exit, entry, ring.points);
            Points points = curves_[entry / 2].points;
            if (entry % 2 != 0) std::reverse(points.begin(), points.end());
            ring.points.insert(ring.points.end(), points.begin() + 1, points.end() - 1);
            exit = entry ^ 1U;
        }
        return ring;
    }

    void NoteOpen(const std::vector<std::size_t>& chain) {
        const std::size_t first = chain.front(), last = chain.back() ^ 1U;
        const int line = curves_[first / 2].line;
        if (++openChains_ > kNamedChains) {
            notes_.Count("further open chains left out", line);
            return;
        }
        const Point &p = PointAt(first), &q = PointAt(last);
        notes_.Say("an open chain of " + std::to_string(chain.size()) +
                   (chain.size() == 1 ? " curve" : " curves") + " left out: from " +
                   ShownPoint(p.x, p.y) + " at line " + std::to_string(line) + " to " +
                   ShownPoint(q.x, q.y) + " at line " + std::to_string(curves_[last / 2].line) +
                   ", a gap of " + Shown(Distance(p, q)));
    }

    LeftOutChain LeftOut(const std::vector<std::size_t>& chain) const {
        LeftOutChain leftOut;
        leftOut.firstLine = curves_[chain.front() / 2].line;
        leftOut.lastLine = curves_[chain.back() / 2].line;
        for (const std::size_t entry : chain) {
            Points points = curves_[entry / 2].points;
            if (entry % 2 != 0) std::reverse(points.begin(), points.end());
            leftOut.points.insert(leftOut.points.end(), points.begin(), points.end());
        }
        return leftOut;
    }

    void NoteGaps() {
        constexpr double worthNaming = 1e-3;  // of the tolerance; below, it is rounding
        if (closed_.widest > worthNaming * std::min(tolerance_, merged_)) {
            notes_.Say("gaps between curve ends were closed, the widest of " +
                       Shown(closed_.widest) + " at line " + std::to_string(closed_.line));
        }
        if (bridged_.count > 0) {
            notes_.Say("gaps between curve ends bridged by straight edges: " + bridged_.Text());
        }
        if (cut_.count > 0) {
            notes_.Say("curves that run past each other cut where they meet: " + cut_.Text());
        }
    }

    std::vector<Curve> curves_;
    double tolerance_;
    double merged_;  // ends no farther apart become one point between them [L]
    const std::string& source_;
    Notes& notes_;
    std::vector<std::size_t> cluster_;            // by end
    std::vector<bool> isUsed_;                    // by curve
    std::vector<std::vector<std::size_t>> ends_;  // by cluster
    std::size_t openChains_ = 0;
    Gaps closed_, bridged_, cut_;
};

}  // namespace

std::vector<Curve> JoinCurves(std::vector<Curve> curves, double tolerance, double millimetre,
                              const std::string& source, Notes& notes) {
    std::vector<Curve> rings, open;
    std::vector<LeftOutChain> leftOut;
    for (Curve& curve : curves) {
        if (curve.isAslant) {
            leftOut.push_back({curve.points, curve.isClosed, true, curve.line, curve.line});
            continue;
        }
        std::vector<Curve>& kind = curve.isClosed ? rings : open;
        kind.push_back(std::move(curve));
    }
    Joiner joiner(std::move(open), tolerance, millimetre, source, notes);
    std::vector<Curve> joined = joiner.Join(leftOut);
    rings.insert(rings.end(), std::make_move_iterator(joined.begin()),
                 std::make_move_iterator(joined.end()));
    std::sort(rings.begin(), rings.end(),
              [](const Curve& one, const Curve& other) { return one.line < other.line; });
    std::vector<Curve> kept;
    std::multimap<double, std::size_t> byLeft;  // `kept` by the left sides of their boxes
    const auto isKept = [&](const Curve& ring) {
        const double left = Box(ring.points).left;
        return std::any_of(
            byLeft.lower_bound(left - 2.0 * tolerance), byLeft.upper_bound(left + 2.0 * tolerance),
            [&](const auto& entry) { return IsSameClosed(ring, kept[entry.second], tolerance); });
    };
    for (Curve& ring : rings) {
        DropRepeatedPoints(ring.points);
        if (EnclosesNothing(ring.points)) {
            notes.Count("closed curves that enclose nothing left out", ring.line);
        } else if (isKept(ring)) {
            notes.Count("outlines drawn twice, taken once", ring.line);
        } else {
            byLeft.emplace(Box(ring.points).left, kept.size());
            kept.push_back(std::move(ring));
        }
        if (kept.size() > kMostOutlines) {
            Refuse(source, kept.back().line, "more than 10000 outlines",
                   "keep only the section in the drawing");
        }
    }
    RefuseOpenOutlines(std::move(leftOut), kept, millimetre, source);
    return kept;
}

}  // namespace halvorn::engine::dxf
