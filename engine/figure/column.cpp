#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "figure/sheet.h"
#include "figure/text.h"

namespace halvorn::engine::figure {

namespace {

constexpr double kSample = 30.0;  // length of a line in the legend

// What a reader of a drawing looks for, in the order of the table.
constexpr std::array kShownKeys = {
    "area",
    "inertia_x",
    "inertia_y",
    "inertia_xy",
    "principal_inertia_1",
    "principal_inertia_2",
    "principal_angle",
    "elastic_modulus_bottom",
    "elastic_modulus_top",
    "elastic_modulus_left",
    "elastic_modulus_right",
    "plastic_modulus_x",
    "plastic_modulus_y",
    "plastic_axis_y",
    "plastic_axis_x",
    "torsion_constant",
    "torsion_modulus",
    "warping_constant",
    "shear_centre_x",
    "shear_centre_y",
    "shear_stiffness_area_x",
    "shear_stiffness_area_y",
};

void AddSample(Sheet& sheet, const LegendEntry& entry, double left, double baseline) {
    const double middle = baseline - 0.33 * kSmallSize;
    if (entry.kind == LineKind::Arrow) {
        sheet.page.centroids.push_back({left + 0.5 * kSample, middle});
        return;
    }
    if (entry.isPeak) {
        sheet.page.peaks.push_back({left + 0.5 * kSample, middle});
        return;
    }
    if (entry.tint) {
        constexpr double kHalfHeight = 3.5;
        sheet.page.blocks.push_back({{{left, middle - kHalfHeight},
                                      {left + kSample, middle - kHalfHeight},
                                      {left + kSample, middle + kHalfHeight},
                                      {left, middle + kHalfHeight}},
                                     *entry.tint});
        return;
    }
    if (entry.kind != LineKind::Hatch) {
        sheet.Add(entry.kind, {{left, middle}, {left + kSample, middle}});
        return;
    }
    constexpr double kHalf = 4.0;
    const double rise = entry.isFalling ? -kHalf : kHalf;
    for (double x = left; x + 2.0 * kHalf <= left + kSample; x += 1.5 * kHalf) {
        sheet.Add(entry.kind, {{x, middle + rise}, {x + 2.0 * kHalf, middle - rise}});
    }
}

// The digits of a value that its error leaves, at most so many.
int TrueDigits(const Value& value, int most) {
    double error = value.error.value_or(0.0);
    if (value.lower && value.upper) error = 0.5 * (*value.upper - *value.lower);
    if (!(error > 0.0) || value.number == 0.0) return most;
    const auto place = [](double number) { return std::floor(std::log10(std::fabs(number))); };
    return static_cast<int>(std::clamp(place(value.number) - place(error) + 1.0, 1.0, 1.0 * most));
}

// A value that its error exceeds is 0 as far as a reader can tell.
double TrueNumber(const Value& value) {
    return value.error && std::fabs(value.number) < *value.error ? 0.0 : value.number;
}

double Widest(const std::vector<ValueRow>& rows, Runs ValueRow::*part, const MeasureText& measure) {
    double widest = 0.0;
    for (const ValueRow& row : rows) {
        widest = std::max(widest, WidthOf({row.*part, {}, kSmallSize}, measure));
    }
    return widest;
}

}  // namespace

std::vector<ValueRow> ValueRows(const Report& report) {
    constexpr int kDigits = 5;
    constexpr double kPlainBelow = 1e5;
    std::vector<ValueRow> rows;
    for (const std::string_view key : kShownKeys) {
        const Value* const value = report.Find(key);
        if (value == nullptr) continue;
        rows.push_back({Symbol(value->symbol),
                        Number(TrueNumber(*value), TrueDigits(*value, kDigits), kPlainBelow),
                        Unit(value->unit)});
    }
    return rows;
}

PageBox AddRows(Sheet& sheet, const std::vector<ValueRow>& rows, const Spot& corner) {
    constexpr double kGap = 10.0;
    const double numbersEnd = corner.x + Widest(rows, &ValueRow::symbol, sheet.measure) + kGap +
                              Widest(rows, &ValueRow::number, sheet.measure);
    const double unitStart = numbersEnd + 0.4 * kGap;
    double right = unitStart + Widest(rows, &ValueRow::unit, sheet.measure);
    double baseline = corner.y;
    for (const ValueRow& row : rows) {
        baseline += kRowHeight;
        sheet.Write(row.symbol, {corner.x, baseline}, kSmallSize);
        sheet.Write(row.number, {numbersEnd, baseline}, kSmallSize).anchor = Anchor::Right;
        if (!row.unit.front().text.empty()) {
            sheet.Write(row.unit, {unitStart, baseline}, kSmallSize);
        }
    }
    return {corner.x, corner.y, right, baseline};
}

PageBox AddLegend(Sheet& sheet, const Spot& corner) {
    double right = corner.x;
    double baseline = corner.y;
    for (const LegendEntry& entry : sheet.legend) {
        baseline += kRowHeight;
        AddSample(sheet, entry, corner.x, baseline);
        const Label& text =
            sheet.Write({{entry.text}}, {corner.x + kSample + 6.0, baseline}, kSmallSize);
        right = std::max(right, BoxOf(text, sheet.measure).right);
    }
    return {corner.x, corner.y, right, baseline + 0.3 * kSmallSize};
}

}  // namespace halvorn::engine::figure
