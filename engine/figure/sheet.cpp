#include "figure/sheet.h"

#include <algorithm>
#include <cmath>

#include "figure/hatch.h"
#include "figure/outline.h"
#include "figure/text.h"

namespace halvorn::engine::figure {

namespace {

// Vertices nearer to the last one are left out: no eye and no printer tells them apart.
constexpr double kFinest = 0.03;  // [pt]

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

// The length of the coordinate arrows from a place: a little more where the mark of the centre of
// gravity would hide a tip.
double ArmBeside(const Sheet& sheet, const Spot& origin) {
    constexpr double kClear = 9.0;
    const std::optional<Spot> mark = CentroidOnPage(sheet);
    if (!mark) return kOriginArm;
    const auto isHidden = [&](double x, double y) {
        return std::hypot(mark->x - x, mark->y - y) < kClear;
    };
    const bool hidesTip =
        isHidden(origin.x + kOriginArm, origin.y) || isHidden(origin.x, origin.y - kOriginArm);
    return hidesTip ? kOriginArm + 2.0 * kClear : kOriginArm;
}

}  // namespace

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
        const Spot last = sheet.ToPage(points.back().x, points.back().y);
        if (spots.size() > 1) spots.back() = last;
        if (spots.size() == 1) spots.push_back(last);
    }
    return spots;
}

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
    constexpr int kFewest = 6;
    constexpr int kMost = 15;  // that a double has
    constexpr double kPlainBelow = 1e12;
    constexpr double kRounding = 1e-12;
    const double size = std::max(sheet.Width(), sheet.Height());
    if (std::fabs(value) <= kRounding * size) return Number(0.0, kFewest, kPlainBelow);
    const double ratio = size > 0.0 ? std::fabs(value) / size : 1.0;
    const double digits = kFewest + std::floor(std::log10(ratio));
    return Number(value, static_cast<int>(std::clamp(digits, kFewest - 1.0, 1.0 * kMost)),
                  kPlainBelow);
}

std::optional<Spot> CentroidOnPage(const Sheet& sheet) {
    const Value* const x = sheet.report.Find("centroid_x");
    const Value* const y = sheet.report.Find("centroid_y");
    if (x == nullptr || y == nullptr) return std::nullopt;
    const Spot spot = sheet.ToPage(x->number, y->number);
    if (!sheet.content.Grown(kOverhang).Holds(spot)) return std::nullopt;
    return spot;
}

void AddSection(Sheet& sheet) {
    if (!sheet.report.parts.empty()) {
        AddMaterials(sheet);
        return;
    }
    for (const Element& element : sheet.report.section.elements) {
        sheet.page.areas.push_back({OnPage(sheet, element.ring), element.isSolid});
    }
    AddHatching(sheet);
    for (const Element& element : sheet.report.section.elements) {
        for (const Stretch& stretch : WithoutBridges(element.ring)) {
            sheet.Add(LineKind::Outline, OnPage(sheet, stretch.points), stretch.isClosed);
        }
    }
}

void AddOrigin(Sheet& sheet, const Spot& elsewhere) {
    const auto [x, y] = sheet.hasOrigin ? sheet.ToPage(0.0, 0.0) : elsewhere;
    const double arm = ArmBeside(sheet, {x, y});
    const double shaft = arm - 5.0;  // the head covers the rest
    sheet.Add(LineKind::Arrow, {{x + shaft, y}, {x, y}, {x, y - shaft}});
    sheet.AddArrowHead({x + arm, y}, {x, y});
    sheet.AddArrowHead({x, y - arm}, {x, y});
    sheet.Write({{"x"}}, {x + arm - 4.0, y + 9.5}).anchor = Anchor::Centre;
    sheet.Write({{"y"}}, {x - 7.0, y - arm + 7.0}).anchor = Anchor::Centre;
}

}  // namespace halvorn::engine::figure
