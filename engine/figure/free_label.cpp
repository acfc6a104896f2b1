#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "figure/sheet.h"

namespace halvorn::engine::figure {

namespace {

// How much it hurts when a text hides a line of this kind.
double PainOf(LineKind kind) {
    switch (kind) {
        case LineKind::Arrow:
            return 8.0;
        case LineKind::Outline:
        case LineKind::Rim:
            return 3.5;
        case LineKind::Hatch:
            return 0.1;
        default:
            return 4.0;
    }
}

// Whether a spot is within an odd number of rings.
bool Covers(const Band& band, const Spot& spot) {
    bool isWithin = false;
    for (const std::vector<Spot>& ring : band.rings) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const Spot& from = ring[i];
            const Spot& to = ring[(i + 1) % ring.size()];
            if ((from.y > spot.y) == (to.y > spot.y)) continue;
            const double share = (spot.y - from.y) / (to.y - from.y);
            if (spot.x < from.x + share * (to.x - from.x)) isWithin = !isWithin;
        }
    }
    return isWithin;
}

// How much of the colours of stresses a text would hide; the first band is the whole section.
double PainOnColours(const Sheet& sheet, const PageBox& box) {
    if (sheet.page.bands.empty()) return 0.0;
    constexpr double kPain = 3.0;
    const double middle = 0.5 * (box.left + box.right);
    double pain = 0.0;
    for (const double x : {box.left, middle, box.right}) {
        for (const double y : {box.top, box.bottom}) {
            if (Covers(sheet.page.bands.front(), {x, y})) pain += kPain;
        }
    }
    return pain;
}

double PainAt(const Sheet& sheet, const PageBox& box) {
    constexpr double kOverText = 1000.0;
    constexpr double kMarkRadius = 5.0;
    double pain = PainOnColours(sheet, box);
    for (const Label& label : sheet.page.labels) {
        if (box.Meets(BoxOf(label, sheet.measure))) pain += kOverText;
    }
    for (const std::vector<Spot>* marks : {&sheet.page.centroids, &sheet.page.peaks}) {
        for (const Spot& mark : *marks) {
            if (box.Grown(kMarkRadius).Holds(mark)) pain += kOverText;
        }
    }
    for (const std::vector<Spot>& head : sheet.page.arrowHeads) {
        if (box.Holds(head.front())) pain += PainOf(LineKind::Arrow);
    }
    for (const Line& line : sheet.page.lines) {
        const std::size_t n = line.spots.size();
        double hidden = 0.0;  // a curve of many short edges hurts no more than its length
        for (std::size_t i = 0; i + 1 < n || (line.isClosed && i < n); ++i) {
            const auto part = Clipped(line.spots[i], line.spots[(i + 1) % n], box);
            if (!part) continue;
            hidden += std::hypot(part->second.x - part->first.x, part->second.y - part->first.y);
        }
        if (hidden > 0.0) pain += PainOf(line.kind) * (1.0 + hidden / kTextSize);
    }
    return pain;
}

}  // namespace

void AddFreeLabel(Sheet& sheet, const Runs& runs, const std::vector<Spot>& places) {
    constexpr std::array<double, 6> kDistances = {7.0, 13.0, 24.0, 38.0, 56.0, 80.0};
    constexpr int kDirections = 16;
    constexpr double kPainPerPoint = 0.14;  // of distance
    Label best{runs, places.front(), kTextSize};
    Spot bestPlace = places.front();
    double least = std::numeric_limits<double>::infinity();
    for (const Spot& place : places) {
        for (const double distance : kDistances) {
            for (int k = 0; k < kDirections; ++k) {
                // From half way up the right side on, as one reads.
                const double angle = std::numbers::pi * (0.25 + 2.0 * k / kDirections);
                const Spot to = {place.x + distance * std::cos(angle),
                                 place.y - distance * std::sin(angle)};
                Label label{runs, {to.x, to.y + 0.3 * kTextSize}, kTextSize};
                if (std::cos(angle) < -0.1) label.anchor = Anchor::Right;
                if (std::fabs(std::cos(angle)) <= 0.1) label.anchor = Anchor::Centre;
                const PageBox box = BoxOf(label, sheet.measure);
                const PageBox& room = sheet.page.drawing;
                if (!room.Holds({box.left, box.top}) || !room.Holds({box.right, box.bottom})) {
                    continue;
                }
                const double pain = PainAt(sheet, box.Grown(1.0)) + kPainPerPoint * distance;
                if (pain >= least) continue;
                least = pain;
                best = label;
                bestPlace = place;
            }
        }
    }
    const PageBox box = BoxOf(best, sheet.measure);
    const Spot end = {std::clamp(bestPlace.x, box.left - 1.0, box.right + 1.0),
                      std::clamp(bestPlace.y, box.top, box.bottom)};
    constexpr double kApart = 10.0;
    if (std::hypot(end.x - bestPlace.x, end.y - bestPlace.y) > kApart) {
        sheet.Add(LineKind::Leader, {bestPlace, end});
    }
    sheet.page.labels.push_back(best);
}

}  // namespace halvorn::engine::figure
