#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

#include "figure/sheet.h"
#include "figure/stress_picture.h"
#include "figure/text.h"

namespace halvorn::engine::figure {

namespace {

constexpr const char* kElastic = "ENA";
constexpr const char* kPlastic = "PNA";
constexpr const char* kEqual = " = ";
constexpr const char* kNoStress = "\u03C3 = 0";

// A neutral axis: a horizontal one at a height y of the section, or a vertical one at an x.
struct NeutralAxis {
    LineKind kind;
    std::string label;
    double at;  // on the page: y of a horizontal one, x of a vertical one
};

// Axes that fall together are drawn as one with the labels of all.
void Merge(std::vector<NeutralAxis>& axes) {
    constexpr double kSame = 0.75;  // [pt], about the weight of a line
    std::vector<NeutralAxis> merged;
    for (const NeutralAxis& axis : axes) {
        const auto same = std::find_if(merged.begin(), merged.end(), [&](const NeutralAxis& other) {
            return std::fabs(other.at - axis.at) <= kSame;
        });
        if (same == merged.end()) {
            merged.push_back(axis);
        } else {
            same->label += kEqual + axis.label;
        }
    }
    std::sort(merged.begin(), merged.end(),
              [](const NeutralAxis& a, const NeutralAxis& b) { return a.at < b.at; });
    axes = merged;
}

std::vector<NeutralAxis> NeutralAxes(const Sheet& sheet, bool isHorizontal) {
    struct Source {
        LineKind kind;
        const char* label;
        const char* key;
    };
    const std::array<Source, 2> sources =
        isHorizontal ? std::array<Source, 2>{{{LineKind::Elastic, kElastic, "centroid_y"},
                                              {LineKind::Plastic, kPlastic, "plastic_axis_y"}}}
                     : std::array<Source, 2>{{{LineKind::Elastic, kElastic, "centroid_x"},
                                              {LineKind::Plastic, kPlastic, "plastic_axis_x"}}};
    std::vector<NeutralAxis> axes;
    for (const Source& source : sources) {
        const Value* const value = sheet.report.Find(source.key);
        if (value == nullptr) continue;
        const Spot spot = sheet.ToPage(value->number, value->number);
        const double at = isHorizontal ? spot.y : spot.x;
        // Far outside the section, where holes outweigh solids, there is nothing to draw it on.
        const PageBox room = sheet.content.Grown(kOverhang);
        const bool isInside = isHorizontal ? room.top <= at && at <= room.bottom
                                           : room.left <= at && at <= room.right;
        if (isInside) axes.push_back({source.kind, source.label, at});
    }
    Merge(axes);
    return axes;
}

// Moves sorted places apart until each has its size to itself, as little as may be.
std::vector<double> Spread(std::vector<double> places, const std::vector<double>& sizes) {
    constexpr int kRounds = 100;
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t i = 0; i + 1 < places.size(); ++i) {
            const double lack = 0.5 * (sizes[i] + sizes[i + 1]) - (places[i + 1] - places[i]);
            if (lack <= 0.0) continue;
            places[i] -= 0.5 * lack;
            places[i + 1] += 0.5 * lack;
        }
    }
    return places;
}

// From side to side.
void AddAxisLine(Sheet& sheet, const NeutralAxis& axis, bool isHorizontal) {
    const PageBox reach = sheet.content.Grown(kOverhang);
    sheet.Add(axis.kind, isHorizontal
                             ? std::vector<Spot>{{reach.left, axis.at}, {reach.right, axis.at}}
                             : std::vector<Spot>{{axis.at, reach.bottom}, {axis.at, reach.top}});
}

void AddNeutralAxes(Sheet& sheet, bool isHorizontal) {
    constexpr double kLeader = 11.0;
    const std::vector<NeutralAxis> axes = NeutralAxes(sheet, isHorizontal);
    const PageBox reach = sheet.content.Grown(kOverhang);
    std::vector<double> wanted;
    std::vector<double> sizes;
    for (const NeutralAxis& axis : axes) {
        wanted.push_back(axis.at);
        sizes.push_back(isHorizontal ? 1.15 * kTextSize
                                     : sheet.measure(axis.label, kTextSize, false) + 6.0);
    }
    const std::vector<double> places = Spread(wanted, sizes);
    const bool isSpread = places != wanted;
    const double gap = isSpread ? kLeader : 2.0;
    for (std::size_t i = 0; i < axes.size(); ++i) {
        const double at = axes[i].at;
        AddAxisLine(sheet, axes[i], isHorizontal);
        if (isHorizontal) {
            sheet.Write({{axes[i].label}}, {reach.right + gap + 2.0, places[i] + 0.35 * kTextSize});
        } else {
            sheet.Write({{axes[i].label}}, {places[i], reach.top - gap - 2.0}).anchor =
                Anchor::Centre;
        }
        if (!isSpread) continue;
        sheet.Add(LineKind::Leader,
                  isHorizontal
                      ? std::vector<Spot>{{reach.right, at}, {reach.right + gap, places[i]}}
                      : std::vector<Spot>{{at, reach.top}, {places[i], reach.top - gap}});
    }
}

// The angle of the first principal axis in (-90, 90] degrees; nothing when it is not known or the
// principal axes are parallel to x and y, where the neutral axes show them.
std::optional<double> PrincipalAngle(const Report& report) {
    constexpr double kParallel = 0.01;  // [deg]
    const Value* const value = report.Find("principal_angle");
    if (value == nullptr) return std::nullopt;
    const double angle = std::remainder(value->number, 180.0);
    if (std::fabs(std::remainder(angle, 90.0)) < kParallel) return std::nullopt;
    return angle;
}

void AddPrincipalAxes(Sheet& sheet) {
    const std::optional<Spot> centre = CentroidOnPage(sheet);
    const std::optional<double> angle = PrincipalAngle(sheet.report);
    if (!centre || !angle) return;
    const PageBox reach = sheet.content.Grown(kOverhang);
    const double far = reach.Width() + reach.Height();
    std::vector<std::pair<Spot, Spot>> axes;
    for (const double turn : {0.0, 90.0}) {
        const double radians = (*angle + turn) * std::numbers::pi / 180.0;
        const Spot step = {far * std::cos(radians), -far * std::sin(radians)};
        const auto line = Clipped({centre->x - step.x, centre->y - step.y},
                                  {centre->x + step.x, centre->y + step.y}, reach);
        if (!line) continue;
        sheet.Add(LineKind::Principal, {line->first, line->second});
        axes.push_back(*line);
    }
    for (std::size_t i = 0; i < axes.size(); ++i) {
        Runs text = {{std::to_string(i + 1)}};
        if (i == 0) text = Joined({{"1 ("}}, Joined(Number(*angle, 4, 1e4), {{"\u00B0)"}}));
        AddFreeLabel(sheet, text, {axes[i].second, axes[i].first});
    }
    sheet.legend.push_back({LineKind::Principal, "principal axes 1 and 2"});
}

// Only the ends of the line outside of the section, along whose thin walls it may run.
void AddLineWithoutStress(Sheet& sheet) {
    const std::optional<NeutralLine>& neutral = sheet.stress->neutral;
    if (!neutral) return;
    const PageBox reach = sheet.content.Grown(kOverhang);
    const double far = 2.0 * (reach.Width() + reach.Height()) / sheet.scale;
    const Point step = far * neutral->direction;
    const Spot from = sheet.ToPage(neutral->at.x - step.x, neutral->at.y - step.y);
    const Spot to = sheet.ToPage(neutral->at.x + step.x, neutral->at.y + step.y);
    const auto line = Clipped(from, to, reach);
    const auto within = Clipped(from, to, sheet.section);
    if (!line || !within) return;
    sheet.Add(LineKind::Elastic, {line->first, within->first});
    sheet.Add(LineKind::Elastic, {within->second, line->second});
    AddFreeLabel(sheet, {{kNoStress}}, {line->second, line->first});
    sheet.legend.push_back({LineKind::Elastic, "neutral axis, without normal stress"});
}

}  // namespace

double AxisLabelRoom(const Report& report, const MeasureText& measure) {
    std::string widest = kElastic;
    const auto has = [&](const char* key) { return report.Find(key) != nullptr; };
    if (has("plastic_axis_x") || has("plastic_axis_y")) widest += std::string(kEqual) + kPlastic;
    return measure(widest, kTextSize, false);
}

void AddAxes(Sheet& sheet) {
    if (sheet.stress != nullptr) {
        AddLineWithoutStress(sheet);
        return;
    }
    AddNeutralAxes(sheet, true);
    AddNeutralAxes(sheet, false);
    // A label tells of a plastic axis also where it falls together with the elastic one.
    bool hasElastic = false;
    bool hasPlastic = false;
    for (const Label& label : sheet.page.labels) {
        const std::string text = PlainText(label.runs);
        hasElastic = hasElastic || text.starts_with(kElastic);
        hasPlastic = hasPlastic || text.find(kPlastic) != std::string::npos;
    }
    if (hasElastic) sheet.legend.push_back({LineKind::Elastic, "ENA, elastic neutral axes"});
    if (hasPlastic) sheet.legend.push_back({LineKind::Plastic, "PNA, plastic neutral axes"});
    AddPrincipalAxes(sheet);
}

void AddCentroid(Sheet& sheet) {
    const std::optional<Spot> centre = CentroidOnPage(sheet);
    if (!centre) return;
    sheet.page.centroids.push_back(*centre);
    const double x = sheet.report.Find("centroid_x")->number;
    const double y = sheet.report.Find("centroid_y")->number;
    Runs text = Joined({{"G ("}}, Coordinate(sheet, x));
    text = Joined(Joined(text, {{"; "}}), Coordinate(sheet, y));
    AddFreeLabel(sheet, Joined(text, {{") " + sheet.report.section.unit}}), {*centre});
    sheet.legend.push_back({LineKind::Arrow, "G, centre of gravity"});
}

}  // namespace halvorn::engine::figure
