#include "evaluate.h"

#include <CSectionTools.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

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

void Push(CSectionTools& tools, const Contour& contour) {
    std::vector<double> coordinates = Interleaved(contour.points);
    tools.PushContour(static_cast<int>(contour.points.size()), coordinates.data(),
                      contour.isSolid ? 1 : 0);
}

void Push(CSectionTools& tools, const StandardProfile& profile) {
    std::vector<double> coordinates = Interleaved(profile.outline);
    tools.PushContourStandard(static_cast<int>(profile.outline.size()), coordinates.data(),
                              profile.angle, profile.centroidX, profile.centroidY, profile.area,
                              profile.shearArea2, profile.shearArea1, profile.torsionConstant,
                              profile.inertia2, profile.inertia1, profile.reserved,
                              profile.torsionModulus, profile.plasticModulusX,
                              profile.plasticModulusY, profile.extra, profile.isSolid ? 1 : 0);
}

template <std::size_t N>
Evaluation Describe(const std::array<ValueDescription, N>& table,
                    const std::array<double, N>& outputs, bool isStopped) {
    Evaluation evaluation;
    for (const ValueDescription& description : table) {
        const double number = outputs[description.output];
        const char* whyMissing = "";
        if (isStopped && description.output >= kFirstStoppedOutput) {
            whyMissing = kStopped;
        } else if (!std::isfinite(number)) {
            whyMissing = kNotFinite;
        }
        evaluation.values.push_back({&description, number, whyMissing});
    }
    return evaluation;
}

Evaluation EvaluateContours(const SectionFile& section, const Shift& shift) {
    CSectionTools tools;
    for (const Contour& contour : section.contours) Push(tools, contour);
    for (const StandardProfile& profile : section.profiles) Push(tools, profile);

    std::array<double, 17> out{};
    out.fill(std::bit_cast<double>(kUnwrittenBits));
    tools.GetCalculValues(shift.dx, shift.dy, &out[0], &out[1], &out[2], &out[3], &out[4], &out[5],
                          &out[6], &out[7], &out[8], &out[9], &out[10], &out[11], &out[12],
                          &out[13], &out[14], &out[15], &out[16]);
    Evaluation evaluation = Describe(kSectionValues, out, IsUnwritten(out.back()));

    if (!section.contours.empty()) evaluation.notes.emplace_back(kEllipseNote);
    const auto isHole = [](const auto& part) { return !part.isSolid; };
    if (std::any_of(section.contours.begin(), section.contours.end(), isHole) ||
        std::any_of(section.profiles.begin(), section.profiles.end(), isHole)) {
        evaluation.notes.emplace_back(kHoleNote);
    }
    return evaluation;
}

Evaluation EvaluatePolyline(const Polyline& polyline) {
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
    Evaluation evaluation = Describe(kPolylineValues, out, false);
    // The library then writes zeros, which are no results.
    for (Value& value : evaluation.values) {
        if (out[0] == 0.0 && value.description->output != 0) value.whyMissing = kNoArea;
    }
    return evaluation;
}

}  // namespace

Evaluation Evaluate(const SectionFile& section, const Shift& shift) {
    return section.polyline ? EvaluatePolyline(*section.polyline)
                            : EvaluateContours(section, shift);
}

}  // namespace halvorn::host
