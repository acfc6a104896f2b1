#include "figure/layout.h"

#include <algorithm>
#include <cmath>

#include "HalvornEngine.h"
#include "figure/sheet.h"
#include "figure/stress_picture.h"
#include "figure/text.h"
#include "model/outlines.h"

namespace halvorn::engine::figure {

namespace {

constexpr double kTitleSize = 14.0;
constexpr double kTitleRoom = 38.0;  // title and the line below it
constexpr double kColumnGap = 16.0;
// Of the drawing between title, column and footer: on A5 on its side, and the least.
constexpr double kMostWidth = 370.0;
constexpr double kMostHeight = 312.0;
constexpr double kLeastWidth = 230.0;
constexpr double kLeastHeight = 130.0;

// Below the drawing: the scale bar, and the coordinate arrows when the origin is far away.
double FooterRoom(const Sheet& sheet) {
    return sheet.hasOrigin ? 30.0 : 46.0;
}

// What lies beside the section and its coordinate arrows: dimensions on the left and below, axes
// and their labels on the right and above.
PageBox Surroundings(const Sheet& sheet) {
    const double labels = AxisLabelRoom(sheet.report, sheet.measure);
    return {kOverhang + 22.0, kOverhang + 26.0, kOverhang + 14.0 + labels, kOverhang + 20.0};
}

void MeasureSection(Sheet& sheet) {
    sheet.bounds = BoxOf(sheet.report.section.elements);
    if (!std::isfinite(sheet.Width()) || !std::isfinite(sheet.Height())) {
        throw InputError(sheet.report.section.source, "the section is too large to be drawn",
                         "give it in a larger unit");
    }
    // The origin belongs in the drawing unless the section would shrink much for it, or its arrows
    // would lie on the colours of stresses.
    constexpr double kShrink = 1.3;
    const double width = std::max(sheet.bounds.right, 0.0) - std::min(sheet.bounds.left, 0.0);
    const double height = std::max(sheet.bounds.top, 0.0) - std::min(sheet.bounds.bottom, 0.0);
    sheet.hasOrigin = sheet.stress == nullptr &&
                      std::max(width, height) <= kShrink * std::max(sheet.Width(), sheet.Height());
}

// Section and coordinate arrows at a scale, relative to the section's lower left corner.
PageBox ContentAt(const Sheet& sheet, double scale) {
    PageBox box = {0.0, -sheet.Height() * scale, sheet.Width() * scale, 0.0};
    if (!sheet.hasOrigin) return box;
    const Spot origin = {-sheet.bounds.left * scale, sheet.bounds.bottom * scale};
    box.left = std::min(box.left, origin.x);
    box.top = std::min(box.top, origin.y - kOriginRoom);
    box.right = std::max(box.right, origin.x + kOriginRoom);
    box.bottom = std::max(box.bottom, origin.y);
    return box;
}

// The largest scale at which everything has room. The arrows keep their size, so it is found by
// halving.
double FittingScale(const Sheet& sheet, double width, double height) {
    double low = 0.0;
    double high = std::min(width / sheet.Width(), height / sheet.Height());
    if (!std::isfinite(high)) return 1.0;  // no extent: one point
    constexpr int kHalvings = 60;
    for (int i = 0; i < kHalvings; ++i) {
        const double middle = i == 0 ? high : 0.5 * (low + high);
        const PageBox box = ContentAt(sheet, middle);
        (box.Width() <= width && box.Height() <= height ? low : high) = middle;
    }
    return low;
}

// Chooses scale and drawing area and puts the section into its middle.
void Place(Sheet& sheet, double columnHeight) {
    const PageBox around = Surroundings(sheet);
    sheet.scale = FittingScale(sheet, kMostWidth - around.left - around.right,
                               kMostHeight - around.top - around.bottom);
    const PageBox box = ContentAt(sheet, sheet.scale);
    const double width = std::max(kLeastWidth, around.left + box.Width() + around.right);
    const double height = std::max({kLeastHeight, around.top + box.Height() + around.bottom,
                                    std::min(columnHeight - FooterRoom(sheet), kMostHeight)});
    const double top = kMargin + kTitleRoom;
    sheet.page.drawing = {kMargin, top, kMargin + width, top + height};
    const double spareX = width - around.left - around.right - box.Width();
    const double spareY = height - around.top - around.bottom - box.Height();
    sheet.corner = {kMargin + around.left + 0.5 * spareX - box.left,
                    top + around.top + 0.5 * spareY - box.top};
    const auto [x, y] = sheet.corner;
    sheet.content = {x + box.left, y + box.top, x + box.right, y + box.bottom};
    sheet.section = {x, y - sheet.Height() * sheet.scale, x + sheet.Width() * sheet.scale, y};
}

// The scale bar on the right, and on the left the coordinate arrows when the origin is far away.
void AddFooter(Sheet& sheet) {
    const PageBox& drawing = sheet.page.drawing;
    const std::string unit = " " + sheet.report.section.unit;
    const double baseline = drawing.bottom + FooterRoom(sheet) - (sheet.hasOrigin ? 6.0 : 10.0);
    const double length = RoundLength(0.3 * drawing.Width() / sheet.scale);
    const double start = drawing.right - length * sheet.scale;
    const double middle = 0.5 * (start + drawing.right);
    constexpr double kThickness = 4.0;
    sheet.page.bars.push_back({start, baseline - kThickness, middle, baseline});
    sheet.Add(LineKind::Rule,
              {{start, baseline - kThickness},
               {drawing.right, baseline - kThickness},
               {drawing.right, baseline},
               {start, baseline}},
              true);
    sheet
        .Write(Joined(Number(length, 6, 1e7), {{unit}}), {middle, baseline - kThickness - 4.0},
               kSmallSize)
        .anchor = Anchor::Centre;
    if (sheet.hasOrigin) return;
    AddOrigin(sheet, {drawing.left + 11.0, baseline});
    const double textStart = drawing.left + 11.0 + kOriginRoom + 6.0;
    constexpr double kNoteSize = 7.5;
    constexpr double kNoteLine = 10.0;
    const auto note = [&](const Runs& text, double up) {
        sheet.Write(text, {textStart, baseline - up * kNoteLine}, kNoteSize);
    };
    note({{"section's lower left:"}}, 2.0);
    note(Joined(Joined({{"x = "}}, Coordinate(sheet, sheet.bounds.left)), {{unit}}), 1.0);
    note(Joined(Joined({{"y = "}}, Coordinate(sheet, sheet.bounds.bottom)), {{unit}}), 0.0);
}

// The height of the column of values, scale and legend, before there is a legend.
double ColumnRoom(std::size_t rows, const StressScale* scale) {
    constexpr double kLegendRows = 4.0;
    const double height = (static_cast<double>(rows) + kLegendRows) * kRowHeight;
    return scale != nullptr ? height + ScaleHeight(*scale) : height;
}

// Values, the scale of the stress if there is one, and the legend, one below the other.
PageBox AddColumn(Sheet& sheet, const std::vector<ValueRow>& rows, const StressScale* scale) {
    constexpr double kBlockGap = 0.7 * kRowHeight;
    const PageBox& drawing = sheet.page.drawing;
    const Spot corner = {drawing.right + kColumnGap, drawing.top - 4.0};
    PageBox column = AddRows(sheet, rows, corner);
    const auto grow = [&](const PageBox& box) {
        column = {corner.x, corner.y, std::max(column.right, box.right), box.bottom};
    };
    if (scale != nullptr) grow(AddScale(sheet, *scale, {corner.x, column.bottom + kBlockGap}));
    const double gap = column.bottom > corner.y ? kBlockGap : 0.0;
    grow(AddLegend(sheet, {corner.x, column.bottom + gap}));
    return column;
}

void AddTitle(Sheet& sheet) {
    const SectionModel& section = sheet.report.section;
    const double room = sheet.page.width - 2.0 * kMargin;
    sheet.page.title = ValidText(section.name.empty() ? section.source : section.name);
    const std::string title = Shortened(sheet.page.title, room, kTitleSize, true, sheet.measure);
    sheet.Write({{title}}, {kMargin, kMargin + 11.0}, kTitleSize).isBold = true;
    const std::string below = sheet.stress != nullptr
                                  ? StressTitle(*sheet.stress)
                                  : ValidText(!section.description.empty() ? section.description
                                              : section.name.empty()       ? ""
                                                                           : section.source);
    if (below.empty() || below == sheet.page.title) return;
    const std::string line = Shortened(below, room, kSmallSize, false, sheet.measure);
    sheet.Write({{line}}, {kMargin, kMargin + 26.0}, kSmallSize).isGrey = true;
}

void Summarise(Sheet& sheet, const std::vector<ValueRow>& rows) {
    const std::string unit = " " + sheet.report.section.unit;
    std::string& summary = sheet.page.summary;
    if (sheet.stress != nullptr) summary = StressTitle(*sheet.stress) + "; ";
    summary += std::string(sheet.stress != nullptr ? "width " : "Width ") +
               PlainText(Coordinate(sheet, sheet.Width())) + unit + ", height " +
               PlainText(Coordinate(sheet, sheet.Height())) + unit;
    for (const ValueRow& row : rows) {
        summary += "; " + PlainText(row.symbol) + " = " + PlainText(row.number) + " " +
                   PlainText(row.unit);
    }
}

}  // namespace

double RoundLength(double most) {
    const double power = std::pow(10.0, std::floor(std::log10(most)));
    for (const double step : {5.0, 2.0}) {
        if (step * power <= most) return step * power;
    }
    return power;
}

Page LayOut(const Report& report, const MeasureText& measure, const FigureOptions& options,
            const StressPicture* stress) {
    Sheet sheet{report, measure, stress};
    MeasureSection(sheet);
    const std::vector<ValueRow> rows = stress != nullptr ? StressRows(sheet) : ValueRows(report);
    std::optional<StressScale> scale;
    if (stress != nullptr) scale = ScaleOf(*stress);
    Place(sheet, ColumnRoom(rows.size(), scale ? &*scale : nullptr));

    const std::size_t axis = options.blocks == AxisDirection::Vertical ? 1 : 0;
    const bool hasBlocks = options.blocks && stress == nullptr;
    if (scale) {
        AddStresses(sheet, *scale);
    } else {
        AddSection(sheet);
    }
    if (hasBlocks) AddBlocks(sheet, axis);
    AddDimensions(sheet);
    if (sheet.hasOrigin) AddOrigin(sheet, {});
    AddAxes(sheet);
    if (!scale) AddCentroid(sheet);
    if (hasBlocks) LabelBlocks(sheet, axis);
    if (scale) AddPeak(sheet);
    AddFooter(sheet);
    const PageBox column = AddColumn(sheet, rows, scale ? &*scale : nullptr);
    sheet.page.width = column.right + kMargin;
    sheet.page.height =
        std::max(sheet.page.drawing.bottom + FooterRoom(sheet), column.bottom) + kMargin;
    AddTitle(sheet);
    Summarise(sheet, rows);
    return sheet.page;
}

}  // namespace halvorn::engine::figure
