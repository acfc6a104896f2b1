#include "results/evaluate.h"

#include <CSectionTools.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "results/values.h"

namespace halvorn::host {

namespace {

constexpr const char* kNotFinite =
    "the result is not a finite number: the area is 0 or the coordinates are too large";
constexpr const char* kStopped =
    "a fibre distance is 0: the reference point lies on the edge of the bounding box (change --dx "
    "or --dy) or the section has no extent";
constexpr const char* kNoArea =
    "the section encloses no area: its points lie on one line or in one place";
constexpr const char* kEllipseNote =
    "It, Wt and the shear areas of free contours are those of the ellipse with each contour's area "
    "and polar moment: an estimate for compact outlines, rough for thin-walled ones, useless for a "
    "hollow section "
    "drawn as one contour (give it as a closed_wall polyline)";
constexpr const char* kHoleNote =
    "Wpl,x and Wpl,y are gross values: holes count in the search for the axis that halves the area "
    "and have weight 0 in the moduli; draw solid and hole as one keyhole contour for net values";

// The first output that GetCalculValues leaves at 0 or unwritten when a fibre distance is 0.
constexpr std::size_t kFirstStoppedOutput = 10;

// A NaN that no arithmetic produces, so that an output never written can be told from a computed
// NaN.
constexpr std::uint64_t kUnwrittenBits = 0x7FF8'5EC7'1015'0BADULL;

bool IsUnwritten(double value) {
    return std::bit_cast<std::uint64_t>(value) == kUnwrittenBits;
}

// x0, y0, x1, y1, ...
std::vector<double> Interleaved(const Points& points) {
    std::vector<double> coordinates;
    coordinates.reserve(2 * points.size());
    for (const auto& [x, y] : points) coordinates.insert(coordinates.end(), {x, y});
    return coordinates;
}

void Push(CSectionTools& tools, const Element& element) {
    std::vector<double> coordinates = Interleaved(element.ring);
    const int count = static_cast<int>(element.ring.size());
    const unsigned char flag = element.isSolid ? 1 : 0;
    if (!element.given) {
        tools.PushContour(count, coordinates.data(), flag);
        return;
    }
    const GivenValues& given = *element.given;
    tools.PushContourStandard(count, coordinates.data(), given.angle, given.centroidX,
                              given.centroidY, given.area, given.shearArea2.value_or(0.0),
                              given.shearArea1.value_or(0.0), given.torsionConstant.value_or(0.0),
                              given.inertia2, given.inertia1, given.reserved,
                              given.torsionModulus.value_or(0.0), given.plasticModulusX,
                              given.plasticModulusY, given.extra, flag);
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

void EvaluateElements(const SectionModel& section, const Shift& shift, Report* report) {
    CSectionTools tools;
    for (const Element& element : section.elements) Push(tools, element);

    std::array<double, 17> out{};
    out.fill(std::bit_cast<double>(kUnwrittenBits));
    tools.GetCalculValues(shift.dx, shift.dy, &out[0], &out[1], &out[2], &out[3], &out[4], &out[5],
                          &out[6], &out[7], &out[8], &out[9], &out[10], &out[11], &out[12],
                          &out[13], &out[14], &out[15], &out[16]);
    report->values = Describe(kSectionValues, out, section.unit, IsUnwritten(out.back()));

    const auto isFree = [](const Element& element) { return !element.given; };
    if (std::any_of(section.elements.begin(), section.elements.end(), isFree)) {
        report->notes.emplace_back(kEllipseNote);
    }
    const auto isHole = [](const Element& element) { return !element.isSolid; };
    if (std::any_of(section.elements.begin(), section.elements.end(), isHole)) {
        report->notes.emplace_back(kHoleNote);
    }
}

void EvaluatePolyline(const SectionModel& section, Report* report) {
    const Polyline& polyline = *section.polyline;
    std::array<double, 10> out{};
    std::pair<double, double> centroid;
    CSectionTools().CalculContourQuelconqueTOOL(
        polyline.kind == PolylineKind::Solid ? 0 : 1,
        polyline.kind == PolylineKind::OpenWall ? 1 : 0,
        polyline.torsion == TorsionFormulas::Tube ? 0 : 1, static_cast<int>(polyline.points.size()),
        polyline.thickness, polyline.points, polyline.radii, out[0], centroid, out[3], out[4],
        out[5], out[6], out[7], out[8], out[9]);
    out[1] = centroid.first;
    out[2] = centroid.second;
    report->values = Describe(kPolylineValues, out, section.unit, false);
    // The library then writes zeros, which are no results.
    for (Value& value : report->values) {
        if (out[0] == 0.0 && value.key != "area") value.whyMissing = kNoArea;
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

}  // namespace halvorn::host
