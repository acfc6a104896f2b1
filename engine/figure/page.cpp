#include "figure/page.h"

#include <algorithm>

namespace halvorn::engine::figure {

namespace {

double SignedArea(const std::vector<Spot>& ring) {
    double sum = 0.0;
    for (std::size_t i = 2; i < ring.size(); ++i) {
        sum += (ring[i - 1].x - ring[0].x) * (ring[i].y - ring[0].y) -
               (ring[i].x - ring[0].x) * (ring[i - 1].y - ring[0].y);
    }
    return sum;
}

}  // namespace

std::vector<Spot> Wound(const Area& area) {
    if ((SignedArea(area.spots) > 0.0) == area.isSolid) return area.spots;
    return {area.spots.rbegin(), area.spots.rend()};
}

double WidthOf(const Label& label, const MeasureText& measure) {
    double width = 0.0;
    for (const Run& run : label.runs) {
        const double size = run.level == 0 ? label.size : label.size * kScriptSize;
        width += measure(run.text, size, label.isBold);
    }
    return width;
}

PageBox BoxOf(const Label& label, const MeasureText& measure) {
    constexpr double kAscent = 0.78;
    constexpr double kDescent = 0.24;
    const double width = WidthOf(label, measure);
    const double start = label.anchor == Anchor::Left     ? 0.0
                         : label.anchor == Anchor::Centre ? -0.5 * width
                                                          : -width;
    const double up = kAscent * label.size;
    const double down = kDescent * label.size;
    const auto [x, y] = label.at;
    if (label.isUpright) return {x - up, y - start - width, x + down, y - start};
    return {x + start, y - up, x + start + width, y + down};
}

// Liang and Barsky, "A new concept and method for line clipping", ACM Trans. Graphics 3 (1984).
std::optional<std::pair<Spot, Spot>> Clipped(const Spot& from, const Spot& to, const PageBox& box) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    double enter = 0.0;
    double leave = 1.0;
    const auto cut = [&](double speed, double room) {
        if (speed == 0.0) return room >= 0.0;
        const double at = room / speed;
        if (speed < 0.0) enter = std::max(enter, at);
        if (speed > 0.0) leave = std::min(leave, at);
        return enter <= leave;
    };
    if (!cut(-dx, from.x - box.left) || !cut(dx, box.right - from.x) ||
        !cut(-dy, from.y - box.top) || !cut(dy, box.bottom - from.y)) {
        return std::nullopt;
    }
    return std::pair{Spot{from.x + enter * dx, from.y + enter * dy},
                     Spot{from.x + leave * dx, from.y + leave * dy}};
}

}  // namespace halvorn::engine::figure
