#include <string>

#include "figure/sheet.h"
#include "figure/text.h"
#include "values/plastic_halves.h"

namespace halvorn::engine::figure {

namespace {

Runs WithUnit(Runs text, const Sheet& sheet, int power) {
    const std::string& unit = sheet.report.section.unit;
    text = Joined(std::move(text), {{" "}});
    return Joined(std::move(text), Unit(power == 1 ? unit : unit + '^' + std::to_string(power)));
}

// From the centroid of a half square to the axis.
void AddLeverArm(Sheet& sheet, const PlasticHalf& half, bool isHorizontal, double axis) {
    const Spot from = sheet.ToPage(half.centroid.x, half.centroid.y);
    const Spot to =
        isHorizontal ? sheet.ToPage(half.centroid.x, axis) : sheet.ToPage(axis, half.centroid.y);
    sheet.page.centroids.push_back(from);
    sheet.Add(LineKind::Dimension, {from, to});
}

}  // namespace

void AddBlocks(Sheet& sheet, std::size_t axis) {
    if (axis >= sheet.report.halves.size()) return;
    const PlasticHalves& halves = sheet.report.halves[axis];
    const bool isHorizontal = axis == 0;
    if (!halves.whyMissing.empty()) {
        sheet.legend.push_back({LineKind::Rule, "plastic halves not computed"});
        return;
    }
    const auto names = SidesOf(isHorizontal ? AxisDirection::Horizontal : AxisDirection::Vertical);
    for (std::size_t side = 0; side < 2; ++side) {
        const PlasticHalf& half = halves.sides[side];
        for (const Points& piece : half.pieces) {
            sheet.page.blocks.push_back({OnPage(sheet, piece), side == 0});
        }
        AddLeverArm(sheet, half, isHorizontal, halves.axis);
        const std::string name = isHorizontal ? "half " : "half on the ";
        sheet.legend.push_back({LineKind::Rule, name + names[side] + ", its centroid and lever arm",
                                false, side == 0});
    }
}

void LabelBlocks(Sheet& sheet, std::size_t axis) {
    if (axis >= sheet.report.halves.size()) return;
    constexpr int kDigits = 5;
    constexpr double kPlainBelow = 1e5;
    for (const PlasticHalf& half : sheet.report.halves[axis].sides) {
        if (half.area == 0.0) continue;
        const Runs number = Number(half.leverArm, kDigits, kPlainBelow);
        AddFreeLabel(sheet, WithUnit(Joined({{"z = "}}, number), sheet, 1),
                     {sheet.ToPage(half.centroid.x, half.centroid.y)});
    }
}

}  // namespace halvorn::engine::figure
