#include "figure/stress_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "base/numbers.h"
#include "figure/stress_bands.h"
#include "figure/text.h"
#include "values/stress_values.h"

namespace halvorn::engine::figure {

namespace {

constexpr int kStressDigits = 4;
constexpr double kPlainStressBelow = 1e5;
constexpr double kStripTop = 1.8 * kRowHeight;  // of the strip below the top of the scale [pt]

struct KindOfStress {
    const char* name;
    Runs symbol;
};

KindOfStress Words(StressKind kind) {
    switch (kind) {
        case StressKind::Normal:
            return {"normal stress", {{"\u03C3"}}};
        case StressKind::Shear:
            return {"shear stress", {{"\u03C4"}}};
        case StressKind::VonMises:
            break;
    }
    return {"von Mises stress", {{"\u03C3"}, {"v", -1}}};
}

const std::vector<double>& ValuesOf(const StressPicture& picture) {
    switch (picture.kind) {
        case StressKind::Normal:
            return picture.field.normal;
        case StressKind::Shear:
            return picture.field.shear;
        case StressKind::VonMises:
            break;
    }
    return picture.field.vonMises;
}

struct Force {
    const char* name;
    double value;
    bool isMoment;
};

// Those that are not 0.
std::vector<Force> ForcesOf(const SectionForces& forces) {
    std::vector<Force> all = {{"N", forces.n, false},   {"Mx", forces.mx, true},
                              {"My", forces.my, true},  {"Vx", forces.vx, false},
                              {"Vy", forces.vy, false}, {"T", forces.t, true}};
    std::erase_if(all, [](const Force& force) { return force.value == 0.0; });
    return all;
}

std::string StressUnit(const Sheet& sheet) {
    return "F/" + sheet.report.section.unit + "^2";
}

Runs StressNumber(double value) {
    return Number(value, kStressDigits, kPlainStressBelow);
}

// The power of ten that all numbers of a scale share: 0, or a multiple of 3 that leaves them 1 to 6
// digits before the point.
int SharedExponent(double largest) {
    constexpr double kPlainFrom = 1e-2;
    if (largest == 0.0 || (largest >= kPlainFrom && largest < kPlainStressBelow)) return 0;
    return 3 * static_cast<int>(std::floor(std::log10(largest) / 3.0));
}

// Of levels so far apart, so that they differ and none has a digit that is always 0.
int DecimalsOf(double step) {
    constexpr double kRounding = 1e-6;
    int decimals = 0;
    for (; decimals < 15; ++decimals) {
        const double shifted = step * std::pow(10.0, decimals);
        if (std::fabs(shifted - std::round(shifted)) < kRounding && shifted > 0.5) break;
    }
    return decimals;
}

std::string WithMinus(std::string number) {
    if (number.front() == '-') number.replace(0, 1, "\u2212");
    return number;
}

// The numbers beside a scale: of its ends with all digits that a stress has, of its levels with as
// many as tell them apart.
std::vector<std::string> ScaleTexts(const StressScale& scale, double unit) {
    const int decimals = DecimalsOf(scale.step / unit);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < scale.ends.size(); ++i) {
        const double number = scale.ends[i] / unit;
        const bool isEnd = i == 0 || i + 1 == scale.ends.size();
        texts.push_back(
            WithMinus(isEnd ? PlainNumber(number, kStressDigits) : FixedNumber(number, decimals)));
    }
    return texts;
}

Runs ScaleHeading(const Sheet& sheet, int exponent) {
    Runs heading = Joined(Words(sheet.stress->kind).symbol, {{" in "}});
    if (exponent != 0) {
        const std::string power = WithMinus(std::to_string(exponent));
        heading = Joined(std::move(heading), {{"10"}, {power, 1}, {" "}});
    }
    return Joined(std::move(heading), Unit(StressUnit(sheet)));
}

std::vector<Spot> Corners(const PageBox& box) {
    return {
        {box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}};
}

// Bands from the bottom to the top; returns the heights of their ends on the page.
std::vector<double> AddStrip(Sheet& sheet, const StressScale& scale, const PageBox& strip) {
    const double low = scale.ends.front();
    const double range = scale.ends.back() - low;
    std::vector<double> heights;
    for (const double end : scale.ends) {
        const double share = range > 0.0 ? (end - low) / range : heights.empty() ? 0.0 : 1.0;
        heights.push_back(strip.bottom - share * strip.Height());
    }
    for (std::size_t i = 0; i < scale.colours.size(); ++i) {
        const PageBox band = {strip.left, heights[i + 1], strip.right, heights[i]};
        sheet.page.bands.push_back({{Corners(band)}, scale.colours[i]});
        if (i > 0) sheet.Add(LineKind::Rim, {{band.left, band.bottom}, {band.right, band.bottom}});
    }
    sheet.Add(LineKind::Rim, Corners(strip), true);
    return heights;
}

// Writes numbers at heights beside a strip, their decimal points one below the other, and returns
// where they end. The lowest and the highest stay; what is too near to them is left out.
double AddNumbers(Sheet& sheet, const std::vector<std::string>& texts,
                  const std::vector<double>& heights, double left, bool goesOn) {
    constexpr double kTick = 3.0;
    const auto width = [&](const std::string& text) {
        return sheet.measure(text, kSmallSize, false);
    };
    double whole = 0.0;
    double decimals = 0.0;
    for (const std::string& text : texts) {
        const std::string before = text.substr(0, text.find('.'));
        whole = std::max(whole, width(before));
        decimals = std::max(decimals, width(text.substr(before.size())));
    }
    const double point = left + 2.0 * kTick + whole;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto isNear = [&](double end) { return std::fabs(heights[i] - end) < kSmallSize; };
        const bool isEnd = i == 0 || i + 1 == texts.size();
        if (!isEnd && (isNear(heights.front()) || isNear(heights.back()))) continue;
        const double start = point - width(texts[i].substr(0, texts[i].find('.')));
        sheet.Write({{texts[i]}}, {start, heights[i] + 0.35 * kSmallSize}, kSmallSize);
        sheet.Add(LineKind::Rim, {{left, heights[i]}, {left + kTick, heights[i]}});
    }
    const double end = point + decimals;
    if (!goesOn) return end;
    const Label& more =
        sheet.Write({{"and above"}}, {end + 5.0, heights.back() + 0.35 * kSmallSize}, kSmallSize);
    return BoxOf(more, sheet.measure).right;
}

double StripHeight(const StressScale& scale) {
    constexpr double kStepStrip = 14.0;    // at least: room for a number
    constexpr double kLeastStrip = 160.0;  // of a strip with several bands
    constexpr double kOneStrip = 24.0;     // of a strip with one
    if (scale.step == 0.0) return kOneStrip;
    const double steps = scale.ends.back() / scale.step - scale.ends.front() / scale.step;
    return std::max(kLeastStrip, kStepStrip * steps);
}

}  // namespace

StressPicture StressPictureOf(const Report& report, StressKind kind) {
    const auto place = static_cast<std::size_t>(kind);  // the report keeps the order of the kinds
    const std::string& source = report.section.source;
    if (!report.forces || place >= report.stresses.size()) {
        throw InputError(source, "a figure of stresses needs forces", "give forces");
    }
    const auto& [value, at] = report.stresses[place];
    const std::string why = value.IsComputed() ? WhyNoStresses(report) : value.whyMissing;
    if (!why.empty()) {
        throw InputError(source, "there are no stresses to draw: " + why,
                         "draw the section without stresses");
    }
    StressPicture picture;
    picture.kind = kind;
    picture.forces = *report.forces;
    picture.peak = {{value.number, value.error.value_or(0.0)}, at.value_or(Point())};
    picture.leavesOut = !report.warping->values.sharpCorners.empty();
    picture.field = StressFieldOf(*report.warping, *report.forces);
    picture.neutral = NeutralLineOf(*report.warping, *report.forces);
    return picture;
}

StressScale ScaleOf(const StressPicture& picture) {
    const StressBands bands(picture.field.points, picture.field.triangles, ValuesOf(picture));
    const double largest = std::fabs(picture.peak.stress.value);
    StressScale scale = picture.kind == StressKind::Normal
                            ? TwoSidedScale(bands.Lowest(), bands.Highest(), largest)
                            : OneSidedScale(bands.Lowest(), bands.Highest(), largest);
    // The joints of an arc's chords are drawn above what the arc has.
    scale.goesOn = scale.goesOn && picture.leavesOut;
    return scale;
}

std::string StressTitle(const StressPicture& picture) {
    std::string title = Words(picture.kind).name;
    if (title.front() >= 'a') title.front() = static_cast<char>(title.front() - 'a' + 'A');
    const std::vector<Force> forces = ForcesOf(picture.forces);
    if (forces.empty()) return title + " without forces";
    for (std::size_t i = 0; i < forces.size(); ++i) {
        title += i == 0 ? " under " : i + 1 < forces.size() ? ", " : " and ";
        title += forces[i].name;
    }
    return title;
}

std::vector<ValueRow> StressRows(const Sheet& sheet) {
    const StressPicture& picture = *sheet.stress;
    const std::string& unit = sheet.report.section.unit;
    std::vector<ValueRow> rows;
    for (const Force& force : ForcesOf(picture.forces)) {
        constexpr int kForceDigits = 6;
        constexpr double kPlainForceBelow = 1e6;
        rows.push_back({Symbol(force.name),
                        Number(force.value, kForceDigits, kPlainForceBelow),
                        {{force.isMoment ? "F " + unit : "F"}}});
    }
    rows.push_back({Joined({{"largest "}}, Words(picture.kind).symbol),
                    StressNumber(picture.peak.stress.value), Unit(StressUnit(sheet))});
    if (picture.peak.stress.value == 0.0) return rows;
    const auto& [x, y] = picture.peak.place;
    Runs place = Joined(Joined({{"("}}, Coordinate(sheet, x)), {{"; "}});
    place = Joined(Joined(std::move(place), Coordinate(sheet, y)), {{")"}});
    rows.push_back({{{"at"}}, place, {{unit}}});
    return rows;
}

void AddStresses(Sheet& sheet, const StressScale& scale) {
    const StressPicture& picture = *sheet.stress;
    const StressBands bands(picture.field.points, picture.field.triangles, ValuesOf(picture));
    const std::vector<Points> rim = bands.Rim();
    for (std::size_t i = 0; i < scale.colours.size(); ++i) {
        Band band{{}, scale.colours[i]};
        for (const Points& ring : i == 0 ? rim : bands.AtLeast(scale.ends[i])) {
            std::vector<Spot> spots = OnPage(sheet, ring);
            if (spots.size() > 2) band.rings.push_back(std::move(spots));
        }
        if (!band.rings.empty()) sheet.page.bands.push_back(std::move(band));
    }
    for (const Points& ring : rim) sheet.Add(LineKind::Rim, OnPage(sheet, ring), true);
}

void AddPeak(Sheet& sheet) {
    const PeakStress& peak = sheet.stress->peak;
    if (peak.stress.value == 0.0) return;
    const Spot spot = sheet.ToPage(peak.place.x, peak.place.y);
    sheet.page.peaks.push_back(spot);
    AddFreeLabel(sheet, StressNumber(peak.stress.value), {spot});
    const std::string name = Words(sheet.stress->kind).name;
    LegendEntry entry{LineKind::Rule, "largest " + name};
    entry.isPeak = true;
    sheet.legend.push_back(entry);
}

double ScaleHeight(const StressScale& scale) {
    return kStripTop + StripHeight(scale) + 0.5 * kSmallSize;
}

PageBox AddScale(Sheet& sheet, const StressScale& scale, const Spot& corner) {
    constexpr double kStripWidth = 18.0;
    const int exponent =
        SharedExponent(std::max(std::fabs(scale.ends.front()), std::fabs(scale.ends.back())));
    const Label& heading =
        sheet.Write(ScaleHeading(sheet, exponent), {corner.x, corner.y + kRowHeight}, kSmallSize);
    const double right = BoxOf(heading, sheet.measure).right;
    const double top = corner.y + kStripTop;
    const PageBox strip = {corner.x, top, corner.x + kStripWidth, top + StripHeight(scale)};
    std::vector<double> heights = AddStrip(sheet, scale, strip);
    std::vector<std::string> texts = ScaleTexts(scale, std::pow(10.0, exponent));
    if (scale.step == 0.0) {  // one number for all
        heights = {0.5 * (strip.top + strip.bottom)};
        texts.resize(1);
    }
    return {corner.x, corner.y,
            std::max(right, AddNumbers(sheet, texts, heights, strip.right, scale.goesOn)),
            corner.y + ScaleHeight(scale)};
}

}  // namespace halvorn::engine::figure
