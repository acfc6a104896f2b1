#include "figure/sheet.h"

#include <algorithm>
#include <cmath>

#include "figure/hatch.h"
#include "figure/text.h"

namespace halvorn::host::figure {

namespace {

// Vertices nearer to the last one are left out: no eye and no printer tells them apart.
constexpr double kFinest = 0.03;  // [pt]

std::vector<Spot> OnPage(const Sheet& sheet, const Points& points) {
    std::vector<Spot> spots;
    for (const auto& [x, y] : points) {
        const Spot spot = sheet.ToPage(x, y);
        const bool isNew = spots.empty() ||
                           std::hypot(spot.x - spots.back().x, spot.y - spots.back().y) >= kFinest;
        if (isNew) spots.push_back(spot);
    }
    // The last vertex counts: a stretch ends there, a ring may have no other one.
    if (!points.empty()) {
        const Spot last = sheet.ToPage(points.back().first, points.back().second);
        if (spots.size() > 1) spots.back() = last;
        if (spots.size() == 1) spots.push_back(last);
    }
    return spots;
}

void AddHatching(Sheet& sheet) {
    constexpr double kSpacing = 6.0;
    const Hatching hatching = HatchedParts(sheet.page.areas, kSpacing);
    for (const auto& [from, to] : hatching.doubled) sheet.Add(LineKind::Hatch, {from, to});
    for (const auto& [from, to] : hatching.missing) sheet.Add(LineKind::Hatch, {from, to});
    if (!hatching.doubled.empty()) {
        sheet.legend.push_back({LineKind::Hatch, "in two solids at once"});
    }
    if (!hatching.missing.empty()) {
        sheet.legend.push_back({LineKind::Hatch, "hole outside of solids", true});
    }
}

}  // namespace

void Sheet::AddArrowHead(const Spot& tip, const Spot& tail) {
    constexpr double kLength = 7.0;
    constexpr double kHalfWidth = 1.7;
    const double length = std::hypot(tail.x - tip.x, tail.y - tip.y);
    const Spot back = {(tail.x - tip.x) / length, (tail.y - tip.y) / length};
    const Spot base = {tip.x + kLength * back.x, tip.y + kLength * back.y};
    page.arrowHeads.push_back({tip,
                               {base.x - kHalfWidth * back.y, base.y + kHalfWidth * back.x},
                               {base.x + kHalfWidth * back.y, base.y - kHalfWidth * back.x}});
}

Runs Coordinate(const Sheet& sheet, double value) {
    constexpr int kDigits = 6;
    constexpr double kPlainBelow = 1e7;
    constexpr double kRounding = 1e-12;
    const bool isZero = std::fabs(value) < kRounding * std::max(sheet.Width(), sheet.Height());
    return Number(isZero ? 0.0 : value, kDigits, kPlainBelow);
}

void AddSection(Sheet& sheet) {
    for (const Ring& ring : sheet.rings) {
        sheet.page.areas.push_back({OnPage(sheet, ring.points), ring.isSolid});
    }
    AddHatching(sheet);
    for (const Ring& ring : sheet.rings) {
        for (const Stretch& stretch : WithoutBridges(ring.points)) {
            sheet.Add(LineKind::Outline, OnPage(sheet, stretch.points), stretch.isClosed);
        }
    }
}

void AddOrigin(Sheet& sheet, const Spot& elsewhere) {
    const Spot origin = sheet.hasOrigin ? sheet.ToPage(0.0, 0.0) : elsewhere;
    constexpr double kShaft = kOriginArm - 5.0;  // the head covers the rest
    const auto [x, y] = origin;
    sheet.Add(LineKind::Arrow, {{x + kShaft, y}, {x, y}, {x, y - kShaft}});
    sheet.AddArrowHead({x + kOriginArm, y}, origin);
    sheet.AddArrowHead({x, y - kOriginArm}, origin);
    sheet.Write({{"x"}}, {x + kOriginArm + 3.0, y + 3.0});
    sheet.Write({{"y"}}, {x, y - kOriginArm - 4.0}).anchor = Anchor::Centre;
}

}  // namespace halvorn::host::figure
