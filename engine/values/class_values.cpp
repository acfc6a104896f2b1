#include "values/class_values.h"

#include <algorithm>
#include <cmath>

#include "geometry/rings.h"
#include "model/outlines.h"
#include "values/class_rounding.h"
#include "values/digits.h"
#include "values/methods.h"
#include "values/values.h"

namespace halvorn::engine {

namespace {

constexpr const char* kNotFinite =
    "the result is not a finite number: the area is 0 or the coordinates are too large";
constexpr const char* kStopped =
    "a fibre distance is 0: the reference point lies on the edge of the bounding box (change --dx "
    "or --dy) or the section has no extent";
constexpr const char* kTooSmall =
    "the area is too small for the library's fixed tolerance; use a smaller unit, such as mm";
constexpr const char* kImpossibleWall =
    "the wall crosses itself, so that its formulas give impossible values; make it thinner or draw "
    "its line without crossings";

template <typename Descriptions, typename Outputs>
std::vector<Value> Describe(const Descriptions& table, const Outputs& outputs,
                            const std::string& unit) {
    std::vector<Value> values;
    values.reserve(table.size());
    for (const auto& [description, get] : table) {
        Value& value = values.emplace_back(DescribedValue(description, unit));
        value.number = get(outputs) + 0.0;  // no value is -0
        if (!std::isfinite(value.number)) value.whyMissing = kNotFinite;
    }
    return values;
}

void MarkStopped(std::vector<Value>& values) {
    for (Value& value : values) {
        const std::string_view key = value.key;
        if (key.starts_with("elastic_") || key.starts_with("plastic_") || key == "extra_sum") {
            value.whyMissing = kStopped;
        }
    }
}

// All but the area itself.
void MarkAll(std::vector<Value>& values, const char* why) {
    for (Value& value : values) {
        if (value.key != "area") value.whyMissing = why;
    }
}

// Without an area all but the area itself is rounding over rounding.
void MarkNoArea(std::vector<Value>& values) {
    MarkAll(values, kNoArea);
    values.front().number = 0.0;
    values.front().whyMissing.clear();
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
        const double own = AreaOf(element.ring);
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

// Moments about the centre of gravity are differences of those about the origin.
class DigitKeeper {
public:
    DigitKeeper(const SectionModel& section, const ClassOutputs& out, Report* report)
        : rounding_(RoundingOf(section.elements)), out_(out), report_(report) {
        const Box box = BoxOf(section.elements);
        cause_ = LostByOf(std::max(box.Width(), box.Height()),
                          std::max({std::fabs(box.left), std::fabs(box.right),
                                    std::fabs(box.bottom), std::fabs(box.top)}));
        // Each edge may be off by the rounding of its coordinates, at half the extent at most.
        for (const Element& element : section.elements) {
            plasticX_ += 0.5 * box.Height() * AreaRounding(element.ring);
            plasticY_ += 0.5 * box.Width() * AreaRounding(element.ring);
        }
    }

    void Keep() {
        const double ofX = rounding_.inertiaX / std::fabs(out_.inertiaX);
        const double ofY = rounding_.inertiaY / std::fabs(out_.inertiaY);
        const double worst = std::max(ofX, ofY);
        // Given values may be as small as they like.
        const auto& elements = report_->section.elements;
        const bool hasGiven =
            std::any_of(elements.begin(), elements.end(),
                        [](const Element& element) { return element.given.has_value(); });
        if (hasGiven && cause_ != LostBy::Distance) return;
        for (Value& value : report_->classValues) {
            const std::string_view key = value.key;
            const bool isVertical = key == "elastic_modulus_bottom" || key == "elastic_modulus_top";
            const double relative = key == "inertia_x" || isVertical                    ? ofX
                                    : key == "inertia_y" || key.starts_with("elastic_") ? ofY
                                    : key == "inertia_xy"                               ? worst
                                                                                        : 0.0;
            if (LeavesNoDigit(relative)) {
                // A 0 is no better than the moments beside it.
                value.whyMissing = WhyNoDigits(cause_);
                continue;
            }
            const double error = key == "inertia_xy"          ? rounding_.inertiaXY
                                 : key == "plastic_modulus_x" ? plasticX_
                                 : key == "plastic_modulus_y" ? plasticY_
                                                              : relative * std::fabs(value.number);
            KeepDigits(error, WhyNoDigits(cause_), &value);
        }
        if (!(worst > kTooFewDigits)) return;
        Finding finding = LostDigits(report_->section.source, "class_values, the second moments,",
                                     std::min(worst, 1.0), cause_);
        finding.severity = Severity::Remark;
        finding.kind = FindingKind::LostDigitsOfClass;
        report_->findings.push_back(finding);
    }

private:
    SumRounding rounding_;
    const ClassOutputs& out_;
    Report* report_;
    LostBy cause_ = LostBy::Distance;
    double plasticX_ = 0.0;  // what rounding may change the plastic moduli by [L^3]
    double plasticY_ = 0.0;
};

void AddElementValues(Report* report) {
    const std::vector<Element>& elements = report->section.elements;
    const ClassOutputs out = ClassOutputsOf(elements, report->shift.dx, report->shift.dy);
    ClassOutputs cleared = out;
    ClearRounding(RoundingOf(elements), &cleared);
    std::vector<Value>& values = report->classValues;
    values = Describe(kClassValues, cleared, report->section.unit);
    if (out.isStopped) MarkStopped(values);
    DescribeElementMethods(elements, &values);
    if (IsNoArea(elements, out.area)) {
        MarkNoArea(values);
    } else if (IsWithoutCentroid(elements, out.area)) {
        MarkAll(values, kTooSmall);
    } else {
        const auto isFree = [](const Element& element) { return !element.given; };
        if (std::all_of(elements.begin(), elements.end(), isFree)) MarkTooSmall(values);
        if (std::isfinite(out.inertiaX + out.inertiaY + out.inertiaXY)) {
            DigitKeeper(report->section, out, report).Keep();
        }
    }
}

// Values that no wall has: its faces cross and count areas negatively or twice. The centre of
// gravity lies within the box of the points and a thickness around it.
bool IsImpossible(const Polyline& polyline, const PolylineOutputs& out) {
    constexpr double kSlack = 1.0 + 1e-9;
    const Box box(polyline.points);
    const double room = polyline.thickness;
    const bool isCentroidInside =
        out.centroid.x >= box.left - room && out.centroid.x <= box.right + room &&
        out.centroid.y >= box.bottom - room && out.centroid.y <= box.top + room;
    return !isCentroidInside || out.torsionConstant < 0.0 || out.area < 0.0 || out.inertiaX < 0.0 ||
           out.inertiaY < 0.0 ||
           out.inertiaXY * out.inertiaXY > kSlack * out.inertiaX * out.inertiaY;
}

void AddPolylineValues(Report* report) {
    const Polyline& polyline = *report->section.polyline;
    const PolylineOutputs out = PolylineOutputsOf(polyline);
    std::vector<Value>& values = report->classValues;
    PolylineOutputs cleared = out;
    ClearRounding(RoundingOf(polyline), &cleared);
    values = Describe(kPolylineValues, cleared, report->section.unit);
    DescribePolylineMethods(polyline, &values);
    const bool isSolid = polyline.kind == PolylineKind::Solid;
    const double rounding = isSolid ? AreaRounding(polyline.points) : 0.0;
    const bool isFinite = std::all_of(values.begin(), values.end(),
                                      [](const Value& value) { return value.IsComputed(); });
    if (std::isfinite(rounding) && std::fabs(out.area) <= rounding) {
        MarkNoArea(values);
    } else if (isFinite && !isSolid && IsImpossible(polyline, out)) {
        for (Value& value : values) value.whyMissing = kImpossibleWall;
    }
}

}  // namespace

void AddClassValues(Report* report) {
    if (report->section.polyline) {
        AddPolylineValues(report);
    } else {
        AddElementValues(report);
    }
}

}  // namespace halvorn::engine
