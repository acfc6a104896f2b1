#include "model/setting.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "model/outlines.h"

namespace halvorn::engine {

namespace {

// Edges opposite each other on less than this part of the size pass each other: flush faces whose
// coordinates differ by rounding. The same distance joins points of outlines that are arranged.
constexpr double kPassing = kMergeDistance;

// The directions of a side: along it, and outwards from it. Only signs and order change, no digit.
class SideFrame {
public:
    explicit SideFrame(Side side)
        : isAcrossY_(side == Side::Bottom || side == Side::Top),
          isHigh_(side == Side::Top || side == Side::Right) {}

    double AlongSide(const Point& p) const { return isAcrossY_ ? p.x : p.y; }
    double Outwards(const Point& p) const {
        const double across = isAcrossY_ ? p.y : p.x;
        return isHigh_ ? across : -across;
    }
    Point InSection(double alongSide, double outwards) const {
        const double across = isHigh_ ? outwards : -outwards;
        return isAcrossY_ ? Point{alongSide, across} : Point{across, alongSide};
    }
    // The outermost or innermost point of a box, along the side where it is aligned.
    Point PointOf(const Box& box, Along align, bool isOutermost) const {
        const Along end = isOutermost == isHigh_ ? Along::High : Along::Low;
        return isAcrossY_ ? PointOfBox(box, align, end) : PointOfBox(box, end, align);
    }

private:
    bool isAcrossY_;
    bool isHigh_;
};

// An edge of a solid: s along the side, h outwards from it.
struct SideEdge {
    double lowS, lowH, highS, highH;

    double HeightAt(double s) const {
        if (s == lowS || lowH == highH) return lowH;
        return s == highS ? highH : lowH + (highH - lowH) * ((s - lowS) / (highS - lowS));
    }
};

std::vector<SideEdge> EdgesOf(const SideFrame& frame, std::span<const Element> elements,
                              double shortest) {
    std::vector<SideEdge> edges;
    for (const Element& element : elements) {
        if (!element.isSolid) continue;
        for (std::size_t i = 0; i < element.ring.size(); ++i) {
            Point a = element.ring[i], b = element.ring[(i + 1) % element.ring.size()];
            if (frame.AlongSide(a) > frame.AlongSide(b)) std::swap(a, b);
            if (frame.AlongSide(b) - frame.AlongSide(a) <= shortest) continue;
            edges.push_back(
                {frame.AlongSide(a), frame.Outwards(a), frame.AlongSide(b), frame.Outwards(b)});
        }
    }
    return edges;
}

// Where outlines meet when the upper one comes down: heights of both before.
struct Meeting {
    double upper, lower;
};

// The least distance between edges opposite each other. That of two straight edges is least at an
// end of what they have in common along the side.
std::optional<Meeting> FirstMeeting(const std::vector<SideEdge>& upper,
                                    const std::vector<SideEdge>& lower, double passing) {
    std::optional<Meeting> first;
    for (const SideEdge& above : upper) {
        for (const SideEdge& below : lower) {
            const double from = std::max(above.lowS, below.lowS);
            const double to = std::min(above.highS, below.highS);
            if (to - from <= passing) continue;
            for (const double s : {from, to}) {
                const Meeting meeting = {above.HeightAt(s), below.HeightAt(s)};
                if (!first || meeting.upper - meeting.lower < first->upper - first->lower) {
                    first = meeting;
                }
            }
        }
    }
    return first;
}

}  // namespace

SettingResult SetOnSide(const Setting& setting, std::span<const Element> others,
                        std::vector<Element>& elements) {
    const SideFrame frame(setting.side);
    const Box boxOfOthers = BoxOf(others), box = BoxOf(elements);
    const Point gap = frame.InSection(0.0, setting.gap);
    MovePoint(frame.PointOf(box, setting.align, false),
              frame.PointOf(boxOfOthers, setting.align, true) + gap + setting.shift, elements);
    if (setting.touch == Touch::Boxes) return SettingResult::Set;

    const double passing = kPassing * std::max(boxOfOthers.Diagonal(), box.Diagonal());
    const auto upper = EdgesOf(frame, elements, passing);
    const auto lower = EdgesOf(frame, others, passing);
    const double pairs = static_cast<double>(upper.size()) * static_cast<double>(lower.size());
    if (pairs > kMostEdgePairs) return SettingResult::TooMany;
    const auto meeting = FirstMeeting(upper, lower, passing);
    if (!meeting) return SettingResult::Misses;
    const double outwards = setting.gap + frame.Outwards(setting.shift);
    MovePoint(frame.InSection(0.0, meeting->upper), frame.InSection(0.0, meeting->lower + outwards),
              elements);
    return SettingResult::Set;
}

}  // namespace halvorn::engine
