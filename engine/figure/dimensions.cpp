#include <algorithm>
#include <cmath>
#include <limits>

#include "figure/sheet.h"
#include "figure/text.h"

namespace halvorn::engine::figure {

namespace {

constexpr double kArrowLength = 7.0;
constexpr double kTail = 14.0;  // of arrows that point inwards from outside
constexpr double kGap = 3.0;    // between outline and extension line

// The height is dimensioned like the width, with the axes exchanged.
struct Direction {
    bool isWidth;

    // `along` runs with the dimension line, `across` away from the section.
    Spot At(double along, double across) const {
        return isWidth ? Spot{along, across} : Spot{across, along};
    }
};

// How near to the dimension line the section reaches at its ends, in the section's unit: of the
// vertices at `end` of the x axis the lowest, of the y axis the leftmost.
double NearestAt(const Sheet& sheet, const Direction& direction, double end) {
    const double close = 1e-9 * std::max(sheet.Width(), sheet.Height());
    double nearest = std::numeric_limits<double>::infinity();
    for (const Element& element : sheet.report.section.elements) {
        for (const auto& [x, y] : element.ring) {
            if (std::fabs((direction.isWidth ? x : y) - end) > close) continue;
            nearest = std::min(nearest, direction.isWidth ? y : x);
        }
    }
    return nearest;
}

void AddExtension(Sheet& sheet, const Direction& direction, double end, double line) {
    const double nearest = NearestAt(sheet, direction, end);
    const Spot spot = direction.isWidth ? sheet.ToPage(end, nearest) : sheet.ToPage(nearest, end);
    const double away = direction.isWidth ? 1.0 : -1.0;
    const double along = direction.isWidth ? spot.x : spot.y;
    const double start = (direction.isWidth ? spot.y : spot.x) + away * kGap;
    sheet.Add(LineKind::Dimension,
              {direction.At(along, start), direction.At(along, line + away * kGap)});
}

// `from` < `to` on the page, `line` across.
void AddDimension(Sheet& sheet, const Direction& direction, double from, double to, double line,
                  const Runs& text) {
    const bool isInside = to - from >= 2.5 * kArrowLength;
    const double out = isInside ? 0.0 : kTail;
    const Spot start = direction.At(from, line);
    const Spot end = direction.At(to, line);
    const Spot first = direction.At(from - out, line);
    const Spot last = direction.At(to + out, line);
    sheet.Add(LineKind::Dimension, {first, last});
    sheet.AddArrowHead(start, isInside ? direction.At(to, line) : first);
    sheet.AddArrowHead(end, isInside ? direction.At(from, line) : last);

    constexpr double kLift = 3.0;  // of the text above the line
    Label& label = sheet.Write(text, direction.At(0.5 * (from + to), line - kLift));
    label.anchor = Anchor::Centre;
    label.isUpright = !direction.isWidth;
    if (WidthOf(label, sheet.measure) + 2.0 * kLift <= to - from) return;
    // No room between the arrows: behind the last one, which of the height is the upper one.
    label.anchor = Anchor::Left;
    const double beside = line + 0.35 * label.size;
    label.at = direction.isWidth ? Spot{to + out + 4.0, beside} : Spot{beside, from - out - 4.0};
}

}  // namespace

void AddDimensions(Sheet& sheet) {
    const std::string unit = " " + sheet.report.section.unit;
    const Direction width{true};
    const double below = sheet.content.bottom + kOverhang + 15.0;
    AddExtension(sheet, width, sheet.bounds.left, below);
    AddExtension(sheet, width, sheet.bounds.right, below);
    AddDimension(sheet, width, sheet.section.left, sheet.section.right, below,
                 Joined(Coordinate(sheet, sheet.Width()), {{unit}}));
    const Direction height{false};
    const double beside = sheet.content.left - kOverhang - 8.0;
    AddExtension(sheet, height, sheet.bounds.bottom, beside);
    AddExtension(sheet, height, sheet.bounds.top, beside);
    AddDimension(sheet, height, sheet.section.top, sheet.section.bottom, beside,
                 Joined(Coordinate(sheet, sheet.Height()), {{unit}}));
}

}  // namespace halvorn::engine::figure
