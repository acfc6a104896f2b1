#include "values/evaluate.h"

#include <CSectionTools.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "base/input_error.h"
#include "geometry/box.h"
#include "geometry/crossings.h"
#include "model/push_element.h"
#include "values/derived.h"
#include "values/methods.h"
#include "values/rounding.h"
#include "values/values.h"

namespace halvorn::engine {

namespace {

constexpr const char* kNotFinite =
    "the result is not a finite number: the area is 0 or the coordinates are too large";
constexpr const char* kStopped =
    "a fibre distance is 0: the reference point lies on the edge of the bounding box (change --dx "
    "or --dy) or the section has no extent";
constexpr const char* kNoArea =
    "the section encloses no area: its points lie on one line or in one place, or holes take it";
constexpr const char* kTooSmall =
    "the area is too small for the library's fixed tolerance; use a smaller unit, such as mm";
constexpr const char* kEllipseNote =
    "It, Wt and the shear areas of free contours are those of the ellipse with each contour's area "
    "and polar moment: an estimate for compact outlines, rough for thin-walled ones, useless for a "
    "hollow section "
    "drawn as one contour (give it as a closed_wall polyline)";
constexpr const char* kClosedWallNote =
    "xG and yG are of all that the outer face encloses, not of the wall; Ix0, Iy0 and Ixy0 are of "
    "the "
    "wall, so that moving them to this point gives inertias that are off unless the wall is "
    "symmetric about it (for the centre of gravity and the inertias of the wall itself draw it as "
    "a "
    "part, \"parts\": [{\"wall\": ...}])";
constexpr const char* kImpossibleWall =
    "the wall crosses itself, so that its formulas give impossible values; make it thinner or draw "
    "its line without crossings";
constexpr const char* kHoleNote =
    "Wpl,x and Wpl,y are gross values: holes count in the search for the axis that halves the area "
    "and have weight 0 in the moduli; ";
constexpr const char* kNetIsThere = "Wpl,x,net and Wpl,y,net are those of the section as it is";
constexpr const char* kNetIsNot = "draw solid and hole as one keyhole contour for net values";

// The first output that GetCalculValues leaves at 0 or unwritten when a fibre distance is 0.
constexpr std::size_t kFirstStoppedOutput = 10;

// A NaN that no arithmetic produces, so that an output never written can be told from a computed
// NaN.
constexpr std::uint64_t kUnwrittenBits = 0x7FF8'5EC7'1015'0BADULL;

bool IsUnwritten(double value) {
    return std::bit_cast<std::uint64_t>(value) == kUnwrittenBits;
}

template <std::size_t N>
std::vector<Value> Describe(const std::array<ValueDescription, N>& table,
                            const std::array<double, N>& outputs, const std::string& unit,
                            bool isStopped) {
    std::vector<Value> values;
    for (const ValueDescription& description : table) {
        Value value;
        value.key = description.key;
        value.name = description.name;
        value.symbol = description.symbol;
        value.unit = UnitLabel(unit, description.power);
        value.power = description.power;
        value.number = outputs[description.output];
        if (isStopped && description.output >= kFirstStoppedOutput) {
            value.whyMissing = kStopped;
        } else if (!std::isfinite(value.number)) {
            value.whyMissing = kNotFinite;
        }
        values.push_back(value);
    }
    return values;
}

// Without an area all but the area itself is rounding over rounding.
void MarkNoArea(std::vector<Value>& values) {
    for (Value& value : values) {
        if (value.key == "area") {
            value.number = 0.0;
        } else {
            value.whyMissing = kNoArea;
        }
    }
}

bool HasGiven(const std::vector<Element>& elements) {
    return std::any_of(elements.begin(), elements.end(),
                       [](const Element& element) { return element.given.has_value(); });
}

double NumberOf(const std::vector<Value>& values, std::string_view key) {
    const auto value = std::find_if(values.begin(), values.end(),
                                    [&](const Value& other) { return other.key == key; });
    return value->number;
}

// Moments about the centre of gravity are differences of those about the origin: of free contours
// what rounding leaves of one is no value, and what follows from it is none.
void MarkWithoutDigits(const SumRounding& rounding, const std::string& why,
                       std::vector<Value>& values) {
    const bool lacksX = std::fabs(NumberOf(values, "inertia_x")) <= rounding.inertiaX;
    const bool lacksY = std::fabs(NumberOf(values, "inertia_y")) <= rounding.inertiaY;
    for (Value& value : values) {
        const std::string_view key = value.key;
        const bool needsX = key.starts_with("inertia_x") || key == "elastic_modulus_bottom" ||
                            key == "elastic_modulus_top";
        const bool needsY = key == "inertia_y" || key == "inertia_xy" ||
                            key == "elastic_modulus_left" || key == "elastic_modulus_right";
        if ((needsX && lacksX) || (needsY && lacksY)) value.whyMissing = why;
    }
}

// The library's tolerance is a fixed number of the unit: of free contours a 0 is no value.
void MarkTooSmall(std::vector<Value>& values) {
    for (Value& value : values) {
        if (value.IsComputed() && value.key == "torsion_constant" && value.number == 0.0) {
            value.whyMissing = kTooSmall;
        }
    }
}

// A contour this small has its centre of gravity at the origin as far as the library knows [L^2].
constexpr double kNoCentroid = 1e-15;

// Whether such contours make out a part of the section.
bool IsWithoutCentroid(const std::vector<Element>& elements, double area) {
    constexpr double kNegligible = 1e-9;  // of the section's area
    double lost = 0.0;
    for (const Element& element : elements) {
        if (element.given) continue;
        const double own = 0.5 * std::fabs(TwiceArea(element.ring));
        if (own <= kNoCentroid) lost += own;
    }
    return lost > kNegligible * std::fabs(area);
}

bool IsNoArea(const std::vector<Element>& elements, double area) {
    double rounding = 0.0;
    for (const Element& element : elements) {
        if (element.given) return area == 0.0;
        rounding += AreaRounding(element.ring);
    }
    return std::isfinite(rounding) && std::fabs(area) <= rounding;
}

// What makes the values other than what is meant, before all other notes. Returns whether an
// outline crosses itself.
bool AddFaultNotes(const SectionModel& section, Report* report) {
    bool hasLoop = false;
    for (const Element& element : section.elements) {
        const auto place = FindLoop(element.ring);
        if (!place) continue;
        const std::string fault = "crosses itself at " + PlaceText(*place);
        if (section.isDrawn) {
            throw InputError(section.source + ": " + element.label, fault,
                             "bring its points into order, or draw each part as an outline");
        }
        hasLoop = true;
        report->notes.push_back(
            element.label + " " + fault +
            ": its areas count negatively or twice, so the values have no meaning");
    }
    const Value* const area = report->Find("area");
    if (area != nullptr && area->number < 0.0) {
        report->doubts.emplace_back(
            "the holes take more than the solids give, so the values are negative");
        report->notes.push_back(report->doubts.back());
    }
    return hasLoop;
}

void EvaluateElements(const SectionModel& section, const Shift& shift, Report* report) {
    CSectionTools tools;
    for (const Element& element : section.elements) PushElement(tools, element);

    std::array<double, 17> out{};
    out.fill(std::bit_cast<double>(kUnwrittenBits));
    tools.GetCalculValues(shift.dx, shift.dy, &out[0], &out[1], &out[2], &out[3], &out[4], &out[5],
                          &out[6], &out[7], &out[8], &out[9], &out[10], &out[11], &out[12],
                          &out[13], &out[14], &out[15], &out[16]);
    report->values = Describe(kSectionValues, out, section.unit, IsUnwritten(out.back()));

    DescribeElementMethods(section, &report->values);
    DigitLosses losses;
    if (IsNoArea(section.elements, out[3])) {
        MarkNoArea(report->values);
    } else if (IsWithoutCentroid(section.elements, out[3])) {
        for (Value& value : report->values) {
            if (value.key != "area") value.whyMissing = kTooSmall;
        }
    } else {
        losses = DigitLossesOf(section.elements, {out[7], out[6], out[8]});
        if (!HasGiven(section.elements)) {
            MarkTooSmall(report->values);
            MarkWithoutDigits(RoundingOf(section.elements), WhyNoDigits(losses.axes),
                              report->values);
        }
        ClearRounding(report);
    }
    AddDerived(report, WhyNoDigits(losses.second));

    const bool hasLoop = AddFaultNotes(section, report);
    const auto isFree = [](const Element& element) { return !element.given; };
    if (std::any_of(section.elements.begin(), section.elements.end(), isFree)) {
        report->notes.emplace_back(kEllipseNote);
    }
    const auto isHole = [](const Element& element) { return !element.isSolid; };
    if (std::any_of(section.elements.begin(), section.elements.end(), isHole)) {
        const bool hasNet = report->Find("plastic_modulus_x_net") != nullptr;
        report->notes.push_back(std::string(kHoleNote) + (hasNet ? kNetIsThere : kNetIsNot));
    }
    // Where areas cancel, small moments tell nothing of their digits.
    const std::string lostDigits = LostDigitsNote(losses);
    if (lostDigits.empty() || hasLoop) return;
    report->notes.push_back(lostDigits);
    report->doubts.push_back(lostDigits);
}

// Values that no wall has: its faces cross and count areas negatively or twice. The centre of
// gravity lies within the box of the points and a thickness around it.
bool IsImpossible(const Polyline& polyline, const std::array<double, 10>& out) {
    constexpr double kSlack = 1.0 + 1e-9;
    const Box box(polyline.points);
    const double room = polyline.thickness;
    const bool isCentroidInside = out[1] >= box.left - room && out[1] <= box.right + room &&
                                  out[2] >= box.bottom - room && out[2] <= box.top + room;
    return !isCentroidInside || out[3] < 0.0 || out[0] < 0.0 || out[7] < 0.0 || out[8] < 0.0 ||
           out[9] * out[9] > kSlack * out[7] * out[8];
}

void EvaluatePolyline(const SectionModel& section, Report* report) {
    const Polyline& polyline = *section.polyline;
    const std::array<double, 10> out = PolylineOutputs(polyline);
    report->values = Describe(kPolylineValues, out, section.unit, false);
    DescribePolylineMethods(polyline, &report->values);
    const double rounding =
        polyline.kind == PolylineKind::Solid ? AreaRounding(polyline.points) : 0.0;
    if (std::isfinite(rounding) && std::fabs(out[0]) <= rounding) {
        MarkNoArea(report->values);
    } else if (std::all_of(out.begin(), out.end(), [](double x) { return std::isfinite(x); }) &&
               polyline.kind != PolylineKind::Solid && IsImpossible(polyline, out)) {
        for (Value& value : report->values) value.whyMissing = kImpossibleWall;
    }
    ClearRounding(report);
    if (polyline.kind == PolylineKind::ClosedWall && report->Find("centroid_x") != nullptr) {
        report->notes.emplace_back(kClosedWallNote);
    }
}

}  // namespace

Report Evaluate(const SectionModel& section, const Shift& shift) {
    Report report;
    report.section = section;
    report.shift = shift;
    if (section.polyline) {
        EvaluatePolyline(section, &report);
    } else {
        EvaluateElements(section, shift, &report);
    }
    return report;
}

const Value* Report::Find(std::string_view key) const {
    for (const std::vector<Value>* list : {&values, &derived}) {
        for (const Value& value : *list) {
            if (value.key == key) return value.IsComputed() ? &value : nullptr;
        }
    }
    return nullptr;
}

}  // namespace halvorn::engine
